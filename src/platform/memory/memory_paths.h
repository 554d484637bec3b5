#pragma once
// Windows path rules for the in-memory disk: canonical full paths, and the
// platform's wildcard matching of file names.
#include <algorithm>
#include <cstddef>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>

namespace tessmark::platform::memory {

// ANSI comparison without regard to case, as the file system compares names.
bool EqualsNoCase(std::string_view a, std::string_view b);
struct NoCaseLess {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const;
};

// What GetFullPathNameA makes of a path: "/" as "\", "." and ".." resolved, empty
// elements dropped, trailing dots and blanks cut from the last element, relative
// and drive-relative paths completed from the current folder ("C:\..." form).
// A trailing backslash stays. Empty for an empty path.
std::optional<std::string> FullPath(std::string_view path, std::string_view currentFolder);

// The file-name match of FindFirstFileA: "*" and "?" as jokers, case ignored,
// trailing "." and "*" in the mask matching nothing. The "*" looks ahead for the
// next mask character literally, so "*?" matches no name.
bool MatchesMask(std::string_view name, std::string_view mask);

// Text into a fixed-size character field, cut to fit with its NUL.
inline void CopyToField(std::string_view text, char* field, std::size_t size) {
    const std::size_t length = std::min(text.size(), size - 1);
    std::memcpy(field, text.data(), length);
    field[length] = '\0';
}

}  // namespace tessmark::platform::memory

#pragma once
// The settings-file object: a path and a section are set before each use, then
// one operation. Its semantics follow the platform's private-profile calls
// (names compared without regard to case, "key=value" lines, sections in
// brackets); every write rewrites the whole file in one step, so a crash never
// leaves it half written.
#include <optional>
#include <string>

#include "platform/files_port.h"
#include "vb/vb.h"

namespace tessmark::storage {

// Sections, keys and values end at their first NUL, as they do for the platform's calls.
class IniFile {
public:
    explicit IniFile(platform::FilesPort& files) : files_(files) {}

    void IniFilePath(const std::string& path) { path_ = path; }
    void IniSection(const std::string& name) { section_ = name; }
    void IniDeleteKey(const std::string& key);
    void IniWriteValue(const std::string& key, const std::string& value);
    std::string IniReadValue(const std::string& key, const std::string& defaultValue = {});
    // One element per line of the section ("key=value"), and one spare empty
    // element at the end that holds no line; a missing file or section gives
    // just the spare element.
    vb::Array<std::string> IniReadSection();

private:
    platform::FilesPort& files_;
    std::string path_;
    std::string section_;
};

// The file's text as IniWriteValue leaves it.
std::string IniTextWithValue(const std::string& contents, const std::string& section, const std::string& key,
                             const std::string& value);
// The file's text as IniDeleteKey leaves it, nothing when the key is missing;
// optionally without the heading of a section left with no lines.
std::optional<std::string> IniTextWithoutKey(const std::string& contents, const std::string& section,
                                             const std::string& key, bool dropEmptySection = false);

}  // namespace tessmark::storage

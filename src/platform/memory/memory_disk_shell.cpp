// The shell side of the in-memory disk: special folders, shortcuts, file
// information and version resources.
#include <charconv>
#include <cstdlib>
#include <cstring>

#include "platform/memory/memory_disk.h"

namespace tessmark::platform::memory {
namespace {

constexpr std::int32_t kInvalidArgument = static_cast<std::int32_t>(0x80070057u);  // E_INVALIDARG
constexpr std::uintptr_t kSmallImageList = 0x51EF30;
constexpr std::uintptr_t kLargeImageList = 0x51EE60;
constexpr std::uintptr_t kPortableExecutable = 0x04004550;  // "PE", Windows 4.0
constexpr std::int32_t kFileIcon = 0;
constexpr std::int32_t kFolderIcon = 2;
constexpr std::int32_t kDriveIcon = 3;

// A shortcut file starts as a real one does, then holds its fields one a line.
const std::string kShortcutHeader = std::string("L\0\0\0", 4) + "shortcut\n";

bool HasExtension(std::string_view path, std::string_view extension) {
    return path.size() >= extension.size() && EqualsNoCase(path.substr(path.size() - extension.size()), extension);
}

std::string EncodeShortcut(const MemoryDisk::Shortcut& s) {
    return kShortcutHeader + s.target + "\n" + s.iconFile + "\n" + std::to_string(s.iconIndex) + "\n" +
           std::to_string(s.windowStyle) + "\n";
}

std::optional<MemoryDisk::Shortcut> DecodeShortcut(const std::string& contents) {
    if (contents.rfind(kShortcutHeader, 0) != 0) return std::nullopt;
    std::vector<std::string> lines;
    for (std::size_t start = kShortcutHeader.size(); start < contents.size();) {
        const std::size_t end = contents.find('\n', start);
        if (end == std::string::npos) return std::nullopt;
        lines.push_back(contents.substr(start, end - start));
        start = end + 1;
    }
    MemoryDisk::Shortcut shortcut;
    if (lines.size() != 4) return std::nullopt;
    shortcut.target = lines[0];
    shortcut.iconFile = lines[1];
    for (auto [text, number] : {std::pair{&lines[2], &shortcut.iconIndex}, std::pair{&lines[3], &shortcut.windowStyle}})
        if (std::from_chars(text->data(), text->data() + text->size(), *number).ec != std::errc{}) return std::nullopt;
    return shortcut;
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// The "URL" entry of the "InternetShortcut" section, as an internet shortcut keeps it.
std::string UrlOf(const std::string& contents) {
    bool inSection = false;
    for (std::size_t start = 0; start < contents.size();) {
        std::size_t end = contents.find('\n', start);
        if (end == std::string::npos) end = contents.size();
        std::string_view line = Trimmed(std::string_view(contents).substr(start, end - start));
        if (!line.empty() && line.back() == '\r') line = Trimmed(line.substr(0, line.size() - 1));
        start = end + 1;
        if (!line.empty() && line.front() == '[') {
            inSection = EqualsNoCase(line, "[InternetShortcut]");
        } else if (const std::size_t equals = line.find('='); inSection && equals != std::string_view::npos &&
                                                               EqualsNoCase(Trimmed(line.substr(0, equals)), "URL")) {
            return std::string(Trimmed(line.substr(equals + 1)));
        }
    }
    return {};
}

// The shell takes a path as it stands: it turns no "/" round and resolves no "." or "..".
bool ShellParses(std::string_view path) {
    if (path.find('/') != std::string_view::npos) return false;
    for (std::size_t start = 0; start <= path.size();) {
        std::size_t end = std::min(path.find('\\', start), path.size());
        const std::string_view element = path.substr(start, end - start);
        if (element == "." || element == "..") return false;
        start = end + 1;
    }
    return true;
}

std::string TypeName(const std::string& name, bool folder) {
    if (folder) return "Folder";
    if (HasExtension(name, ".lnk")) return "Shortcut";
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos ? "File" : name.substr(dot + 1) + " file";
}

}  // namespace

std::int32_t MemoryDisk::SpecialFolderPath(std::int32_t csidl, char* path260) {
    auto it = specialFolders_.find(csidl);
    if (it == specialFolders_.end() || it->second.empty()) return kInvalidArgument;
    CopyToField(it->second, path260, 260);
    return 0;
}

bool MemoryDisk::ShortcutTarget(const std::string& lnkPath, std::string* target) {
    const bool url = HasExtension(lnkPath, ".url");
    if (!url && !HasExtension(lnkPath, ".lnk")) return false;
    const Node* node = Lookup(lnkPath);
    if (!node) {  // a shortcut not yet saved has an empty target
        target->clear();
        return true;
    }
    if (node->folder) return false;
    if (url) {
        *target = UrlOf(node->contents);
        return true;
    }
    const auto shortcut = DecodeShortcut(node->contents);
    if (!shortcut) return false;
    *target = shortcut->target;
    return true;
}

bool MemoryDisk::SaveShortcut(const std::string& lnkPath, const std::string& targetPath,
                              const std::string& iconLocation, std::int32_t windowStyle) {
    // An internet shortcut has no icon location or window style to set.
    if (!HasExtension(lnkPath, ".lnk")) return false;
    Shortcut shortcut;
    // The target is kept as a full path, completed from the current folder.
    if (!targetPath.empty()) shortcut.target = FullPath(targetPath, currentFolder_).value_or(targetPath);
    const std::size_t comma = iconLocation.rfind(',');
    shortcut.iconFile = iconLocation.substr(0, comma);
    shortcut.iconIndex = comma == std::string::npos ? 0 : std::atoi(iconLocation.c_str() + comma + 1);
    shortcut.windowStyle = windowStyle;
    Node* node = MakeFile(lnkPath);
    if (!node) return false;
    node->contents = EncodeShortcut(shortcut);
    return true;
}

std::uintptr_t MemoryDisk::SHGetFileInfoA(const char* path, std::uint32_t, ShFileInfo* info, std::uint32_t flags) {
    const std::string text = path ? path : "";
    if (flags == kShgfiExeType) {
        const Node* node = Lookup(text);
        return node && !node->folder && HasExtension(text, ".exe") ? kPortableExecutable : 0;
    }
    if (!ShellParses(text)) return 0;
    const Node* node = Lookup(text.empty() ? currentFolder_ : text);
    if (!node) return 0;

    // A call that succeeds writes whole fields: nothing of an earlier name stays behind the NUL.
    if (flags & kShgfiDisplayName) {
        std::memset(info->displayName, 0, sizeof info->displayName);
        std::string shown = node->name;
        if (node == drive_.get())
            shown = " (C:)";
        else if (!node->folder && (HasExtension(shown, ".lnk") || HasExtension(shown, ".url")))
            shown.resize(shown.size() - 4);
        CopyToField(shown, info->displayName, sizeof info->displayName);
    }
    if (flags & kShgfiTypeName) {
        std::memset(info->typeName, 0, sizeof info->typeName);
        CopyToField(TypeName(node->name, node->folder), info->typeName, sizeof info->typeName);
    }
    if (!(flags & kShgfiSysIconIndex)) return 1;
    info->iIcon = node == drive_.get() ? kDriveIcon : node->folder ? kFolderIcon : kFileIcon;
    return (flags & kShgfiSmallIcon) ? kSmallImageList : kLargeImageList;
}

std::uint32_t MemoryDisk::GetFileVersionInfoSizeA(const char* path) {
    const Node* node = Lookup(path ? path : "");
    return node && node->version ? static_cast<std::uint32_t>(EncodeVersionBlock(*node->version).size()) : 0;
}

bool MemoryDisk::GetFileVersionInfoA(const char* path, std::vector<std::uint8_t>* block) {
    const Node* node = Lookup(path ? path : "");
    if (!node || !node->version) return false;
    *block = EncodeVersionBlock(*node->version);
    return true;
}

bool MemoryDisk::VerQueryValueA(const std::vector<std::uint8_t>& block, const char* subBlock,
                                std::vector<std::uint8_t>* value) {
    return QueryVersionBlock(block, subBlock ? subBlock : "", value);
}

std::uint32_t MemoryDisk::VerLanguageNameA(std::uint32_t language, char* buffer, std::uint32_t size) {
    static const std::map<std::uint32_t, std::string> kNames = {
        {0x0407, "German"},  {0x0409, "English"},  {0x0809, "English"}, {0x040C, "French"},
        {0x0410, "Italian"}, {0x0411, "Japanese"}, {0x0413, "Dutch"},   {0x0419, "Russian"},
        {0x0804, "Chinese (Simplified)"},          {0x007F, "Invariant Language"},
    };
    auto it = kNames.find(language);
    if (it == kNames.end()) return 0;
    const auto length = static_cast<std::uint32_t>(it->second.size());
    if (!buffer) return length;
    if (size == 0) return 0;
    CopyToField(it->second, buffer, size);
    return length < size ? length : 0;
}

void MemoryDisk::SetVersionResource(const std::string& path, const VersionResource& resource) {
    if (Node* node = Lookup(path); node && !node->folder) node->version = resource;
}

void MemoryDisk::SetSpecialFolder(std::int32_t csidl, const std::string& path) { specialFolders_[csidl] = path; }

std::optional<MemoryDisk::Shortcut> MemoryDisk::ReadShortcut(const std::string& path) {
    const Node* node = Lookup(path);
    if (!node || node->folder) return std::nullopt;
    return DecodeShortcut(node->contents);
}

}  // namespace tessmark::platform::memory

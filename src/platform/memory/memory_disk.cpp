// The file side of the in-memory disk.
#include <algorithm>
#include <cstring>

#include "platform/memory/memory_disk.h"

namespace tessmark::platform::memory {
namespace {

constexpr const char* kUserStartup =
    "C:\\users\\user\\AppData\\Roaming\\Microsoft\\Windows\\Start Menu\\Programs\\StartUp";
constexpr const char* kCommonStartup = "C:\\ProgramData\\Microsoft\\Windows\\Start Menu\\Programs\\StartUp";

constexpr const char* kSeedFolders[] = {
    kUserStartup,
    kCommonStartup,
    "C:\\Program Files\\Common Files",
    "C:\\Program Files (x86)",
    "C:\\users\\Public",
    "C:\\users\\user\\AppData\\Local",
    "C:\\users\\user\\Temp",
    "C:\\windows\\system32",
    "C:\\windows\\temp",
};

constexpr const char* kSeedPrograms[] = {
    "C:\\windows\\explorer.exe",          "C:\\windows\\notepad.exe",
    "C:\\windows\\regedit.exe",           "C:\\windows\\system32\\cmd.exe",
    "C:\\windows\\system32\\explorer.exe", "C:\\windows\\system32\\notepad.exe",
    "C:\\windows\\system32\\rundll32.exe",
};

constexpr std::pair<const char*, const char*> kSeedEnvironment[] = {
    {"ALLUSERSPROFILE", "C:\\ProgramData"},
    {"APPDATA", "C:\\users\\user\\AppData\\Roaming"},
    {"CommonProgramFiles", "C:\\Program Files\\Common Files"},
    {"COMPUTERNAME", "TESSMARK"},
    {"ComSpec", "C:\\windows\\system32\\cmd.exe"},
    {"HOMEDRIVE", "C:"},
    {"HOMEPATH", "\\users\\user"},
    {"LOCALAPPDATA", "C:\\users\\user\\AppData\\Local"},
    {"OS", "Windows_NT"},
    {"PATH", "C:\\windows\\system32;C:\\windows;C:\\windows\\system32\\wbem"},
    {"PATHEXT", ".com;.exe;.bat;.cmd;.vbs;.vbe;.js;.jse;.wsf;.wsh"},
    {"ProgramData", "C:\\ProgramData"},
    {"ProgramFiles", "C:\\Program Files"},
    {"ProgramFiles(x86)", "C:\\Program Files (x86)"},
    {"PUBLIC", "C:\\users\\Public"},
    {"SystemDrive", "C:"},
    {"SystemRoot", "C:\\windows"},
    {"TEMP", "C:\\users\\user\\Temp"},
    {"TMP", "C:\\users\\user\\Temp"},
    {"USERNAME", "user"},
    {"USERPROFILE", "C:\\users\\user"},
    {"windir", "C:\\windows"},
};

FindData EntryData(const std::string& name, std::uint32_t attributes, std::uint64_t size) {
    FindData data;
    data.attributes = attributes;
    data.sizeHigh = static_cast<std::uint32_t>(size >> 32);
    data.sizeLow = static_cast<std::uint32_t>(size);
    CopyToField(name, data.fileName, sizeof data.fileName);
    return data;
}

}  // namespace

MemoryDisk::MemoryDisk() : drive_(std::make_unique<Node>()) {
    drive_->name = "C:";
    drive_->folder = true;
    drive_->attributes = kAttrDirectory;
    for (const char* folder : kSeedFolders) AddFolder(folder);
    for (const char* program : kSeedPrograms) AddFile(program, "MZ");
    AddFile("C:\\windows\\win.ini", "[windows]\r\n");
    AddFile("C:\\windows\\system.ini", "[boot]\r\n");
    for (const auto& [name, value] : kSeedEnvironment) environment_[name] = value;
    specialFolders_[kCsidlStartup] = kUserStartup;
    specialFolders_[kCsidlCommonStartup] = kCommonStartup;
}

MemoryDisk::Place MemoryDisk::Locate(const std::string& path) {
    Place place;
    const auto full = FullPath(path, currentFolder_);
    if (!full || full->size() < 3 || !EqualsNoCase(full->substr(0, 3), "C:\\")) return place;
    place.trailingBackslash = full->size() > 3 && full->back() == '\\';
    std::vector<std::string> elements;
    for (std::size_t start = 3; start < full->size();) {
        std::size_t end = std::min(full->find('\\', start), full->size());
        elements.push_back(full->substr(start, end - start));
        start = end + 1;
    }
    if (elements.empty()) {
        place.node = drive_.get();
        return place;
    }
    Node* folder = drive_.get();
    for (std::size_t i = 0; i + 1 < elements.size(); ++i) {
        auto it = folder->children.find(elements[i]);
        if (it == folder->children.end() || !it->second->folder) return place;
        folder = it->second.get();
    }
    place.parent = folder;
    place.name = elements.back();
    auto it = folder->children.find(place.name);
    if (it != folder->children.end()) place.node = it->second.get();
    return place;
}

MemoryDisk::Node* MemoryDisk::Lookup(const std::string& path) {
    const Place place = Locate(path);
    if (place.node && place.trailingBackslash && !place.node->folder) return nullptr;
    return place.node;
}

MemoryDisk::Node* MemoryDisk::MakeFile(const std::string& path) {
    const Place place = Locate(path);
    if (!place.parent || place.trailingBackslash) return nullptr;
    if (place.node) return place.node->folder ? nullptr : place.node;
    auto node = std::make_unique<Node>();
    node->name = place.name;
    node->attributes = kAttrArchive;
    return (place.parent->children[place.name] = std::move(node)).get();
}

FindHandle MemoryDisk::FindFirstFileA(const char* pattern, FindData* data) {
    const auto full = FullPath(pattern ? pattern : "", currentFolder_);
    if (!full) return kInvalidFindHandle;
    const std::size_t cut = full->rfind('\\');
    const std::string mask = full->substr(cut + 1);
    const Node* folder = Lookup(full->substr(0, cut + 1));
    if (mask.empty() || !folder || !folder->folder) return kInvalidFindHandle;

    std::vector<FindData> entries;
    if (folder != drive_.get())
        for (const char* dots : {".", ".."})
            if (MatchesMask(dots, mask)) entries.push_back(EntryData(dots, kAttrDirectory, 0));
    for (const auto& [name, node] : folder->children)
        if (MatchesMask(name, mask)) entries.push_back(EntryData(node->name, node->attributes, node->contents.size()));
    if (entries.empty()) return kInvalidFindHandle;

    std::reverse(entries.begin(), entries.end());
    *data = entries.back();
    entries.pop_back();
    const FindHandle handle = nextSearch_++;
    searches_[handle] = std::move(entries);
    return handle;
}

std::int32_t MemoryDisk::FindNextFileA(FindHandle handle, FindData* data) {
    auto it = searches_.find(handle);
    if (it == searches_.end() || it->second.empty()) return 0;
    *data = it->second.back();
    it->second.pop_back();
    return 1;
}

std::int32_t MemoryDisk::FindClose(FindHandle handle) { return searches_.erase(handle) ? 1 : 0; }

std::uint32_t MemoryDisk::GetFileAttributesA(const char* path) {
    const Node* node = Lookup(path ? path : "");
    return node ? node->attributes : kInvalidFileAttributes;
}

std::uint32_t MemoryDisk::GetFullPathNameA(const char* path, std::uint32_t bufferLength, char* buffer) {
    const auto full = FullPath(path ? path : "", currentFolder_);
    if (!full) return 0;
    const auto length = static_cast<std::uint32_t>(full->size());
    if (length + 1 > bufferLength) return length + 1;
    std::memcpy(buffer, full->c_str(), length + 1);
    return length;
}

bool MemoryDisk::FileExists(const std::string& path) {
    const Node* node = Lookup(path);
    return node && !node->folder;
}

bool MemoryDisk::FolderExists(const std::string& path) {
    const Node* node = Lookup(path);
    return node && node->folder;
}

bool MemoryDisk::MkDir(const std::string& path) {
    const Place place = Locate(path);
    if (!place.parent || place.node) return false;
    auto node = std::make_unique<Node>();
    node->name = place.name;
    node->folder = true;
    node->attributes = kAttrDirectory;
    place.parent->children[place.name] = std::move(node);
    return true;
}

bool MemoryDisk::Kill(const std::string& path) {
    const Place place = Locate(path);
    if (!place.node || place.node->folder || place.trailingBackslash ||
        (place.node->attributes & kAttrReadOnly))
        return false;
    place.parent->children.erase(place.name);
    return true;
}

bool MemoryDisk::ReadWholeFile(const std::string& path, std::string* contents) {
    const Node* node = Lookup(path);
    if (!node || node->folder) return false;
    *contents = node->contents;
    return true;
}

bool MemoryDisk::WriteWholeFile(const std::string& path, const std::string& contents) {
    Node* node = MakeFile(path);
    if (!node) return false;
    node->contents = contents;
    return true;
}

bool MemoryDisk::AppendToFile(const std::string& path, const std::string& text) {
    Node* node = MakeFile(path);
    if (!node) return false;
    node->contents += text;
    return true;
}

std::string MemoryDisk::Environ(const std::string& name) {
    auto it = environment_.find(name);
    return it == environment_.end() ? std::string() : it->second;
}

void MemoryDisk::AddFolder(const std::string& path) {
    const auto full = FullPath(path, currentFolder_);
    if (!full) return;
    for (std::size_t cut = full->find('\\', 3); cut != std::string::npos; cut = full->find('\\', cut + 1))
        MkDir(full->substr(0, cut));
    MkDir(*full);
}

void MemoryDisk::AddFile(const std::string& path, const std::string& contents) {
    const auto full = FullPath(path, currentFolder_);
    if (!full) return;
    AddFolder(full->substr(0, full->rfind('\\')));
    WriteWholeFile(*full, contents);
}

void MemoryDisk::SetAttributes(const std::string& path, std::uint32_t attributes) {
    Node* node = Lookup(path);
    if (!node) return;
    if (node->folder)
        node->attributes = attributes | kAttrDirectory;
    else
        node->attributes = attributes ? attributes & ~kAttrDirectory : kAttrNormal;
}

void MemoryDisk::SetEnvironmentVariable(const std::string& name, const std::string& value) {
    if (value.empty())
        environment_.erase(name);
    else
        environment_[name] = value;
}

void MemoryDisk::SetCurrentFolder(const std::string& path) {
    if (auto full = FullPath(path, currentFolder_)) {
        if (full->size() > 3 && full->back() == '\\') full->pop_back();
        currentFolder_ = *full;
    }
}

}  // namespace tessmark::platform::memory

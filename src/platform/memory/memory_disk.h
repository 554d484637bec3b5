#pragma once
// A disk and shell held in memory: folders, files, shortcuts, icons and version
// resources, agreeing with the real ones on what the program relies on (the
// files and shell conformance suites pin those).
//
// A fresh disk holds drive C: of a freshly made Windows prefix for the user
// "user": C:\windows with a few programs, the two Startup folders, Program
// Files, and the environment that goes with them. The current folder is the
// user's profile folder.
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/files_port.h"
#include "platform/memory/memory_paths.h"
#include "platform/memory/memory_version.h"
#include "platform/shell_port.h"

namespace tessmark::platform::memory {

class MemoryDisk final : public FilesPort, public ShellPort {
public:
    MemoryDisk();

    FindHandle FindFirstFileA(const char* pattern, FindData* data) override;
    std::int32_t FindNextFileA(FindHandle handle, FindData* data) override;
    std::int32_t FindClose(FindHandle handle) override;
    std::uint32_t GetFileAttributesA(const char* path) override;
    std::uint32_t GetFullPathNameA(const char* path, std::uint32_t bufferLength, char* buffer) override;
    bool FileExists(const std::string& path) override;
    bool FolderExists(const std::string& path) override;
    bool MkDir(const std::string& path) override;
    bool Kill(const std::string& path) override;
    bool ReadWholeFile(const std::string& path, std::string* contents) override;
    bool WriteWholeFile(const std::string& path, const std::string& contents) override;
    bool AppendToFile(const std::string& path, const std::string& text) override;
    std::string Environ(const std::string& name) override;

    std::int32_t SpecialFolderPath(std::int32_t csidl, char* path260) override;
    bool ShortcutTarget(const std::string& lnkPath, std::string* target) override;
    bool SaveShortcut(const std::string& lnkPath, const std::string& targetPath,
                      const std::string& iconLocation, std::int32_t windowStyle) override;
    std::uintptr_t SHGetFileInfoA(const char* path, std::uint32_t fileAttributes, ShFileInfo* info,
                                  std::uint32_t flags) override;
    std::uint32_t GetFileVersionInfoSizeA(const char* path) override;
    bool GetFileVersionInfoA(const char* path, std::vector<std::uint8_t>* block) override;
    bool VerQueryValueA(const std::vector<std::uint8_t>& block, const char* subBlock,
                        std::vector<std::uint8_t>* value) override;
    std::uint32_t VerLanguageNameA(std::uint32_t language, char* buffer, std::uint32_t size) override;

    // --- Set-up and inspection for tests ---

    // Makes the folder and every missing folder above it.
    void AddFolder(const std::string& path);
    // Makes or replaces the file, and the folders above it as needed.
    void AddFile(const std::string& path, const std::string& contents = {});
    // The attribute bits of a file or folder; a folder keeps its directory bit.
    void SetAttributes(const std::string& path, std::uint32_t attributes);
    void SetVersionResource(const std::string& path, const VersionResource& resource);
    // An empty value removes the variable.
    void SetEnvironmentVariable(const std::string& name, const std::string& value);
    void SetCurrentFolder(const std::string& path);
    // An empty path makes the shell know no such folder.
    void SetSpecialFolder(std::int32_t csidl, const std::string& path);

    struct Shortcut {
        std::string target;
        std::string iconFile;
        std::int32_t iconIndex = 0;
        std::int32_t windowStyle = 1;
    };
    // What a shortcut file holds; nothing for a missing file or one that is no shortcut.
    std::optional<Shortcut> ReadShortcut(const std::string& path);

private:
    struct Node {
        std::string name;  // in the case it was made with
        bool folder = false;
        std::uint32_t attributes = 0;
        std::string contents;
        std::optional<VersionResource> version;
        std::map<std::string, std::unique_ptr<Node>, NoCaseLess> children;
    };
    struct Place {
        Node* parent = nullptr;          // the folder the path names an entry of
        std::string name;                // the entry's name, empty for the drive's root
        Node* node = nullptr;            // the entry, when it exists
        bool trailingBackslash = false;  // the path can only name a folder
    };
    Place Locate(const std::string& path);
    Node* Lookup(const std::string& path);
    Node* MakeFile(const std::string& path);

    std::unique_ptr<Node> drive_;
    std::string currentFolder_ = "C:\\users\\user";
    std::map<std::string, std::string, NoCaseLess> environment_;
    std::map<std::int32_t, std::string> specialFolders_;
    std::map<FindHandle, std::vector<FindData>> searches_;
    FindHandle nextSearch_ = 0x100;
};

}  // namespace tessmark::platform::memory

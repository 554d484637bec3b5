#pragma once
// The real file system and shell: kernel32, shell32, ole32 and version.dll.
#include <map>
#include <memory>

#include "platform/files_port.h"
#include "platform/shell_port.h"

namespace tessmark::platform::win32 {

class Win32Disk final : public FilesPort, public ShellPort {
public:
    // Joins the calling (user-interface) thread to a single-threaded COM
    // apartment for the life of the object, for the shell's link objects.
    Win32Disk();
    ~Win32Disk() override;
    Win32Disk(const Win32Disk&) = delete;
    Win32Disk& operator=(const Win32Disk&) = delete;

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

private:
    struct FindCloser {
        void operator()(void* handle) const;
    };
    // Searches the caller has not closed yet end with the object.
    std::map<FindHandle, std::unique_ptr<void, FindCloser>> searches_;
    bool comJoined_ = false;
};

}  // namespace tessmark::platform::win32

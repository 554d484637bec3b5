#pragma once
// A disk and shell that know nothing: a base for unit tests that answer a few calls themselves.
#include "platform/files_port.h"
#include "platform/shell_port.h"

namespace tessmark::testing {

using namespace platform;

class NullDisk : public platform::FilesPort, public platform::ShellPort {
public:
    FindHandle FindFirstFileA(const char*, FindData*) override { return kInvalidFindHandle; }
    std::int32_t FindNextFileA(FindHandle, FindData*) override { return 0; }
    std::int32_t FindClose(FindHandle) override { return 0; }
    std::uint32_t GetFileAttributesA(const char*) override { return kInvalidFileAttributes; }
    std::uint32_t GetFullPathNameA(const char*, std::uint32_t, char*) override { return 0; }
    bool FileExists(const std::string&) override { return false; }
    bool FolderExists(const std::string&) override { return false; }
    bool MkDir(const std::string&) override { return false; }
    bool Kill(const std::string&) override { return false; }
    bool ReadWholeFile(const std::string&, std::string*) override { return false; }
    bool WriteWholeFile(const std::string&, const std::string&) override { return false; }
    bool AppendToFile(const std::string&, const std::string&) override { return false; }
    std::string Environ(const std::string&) override { return {}; }

    std::int32_t SpecialFolderPath(std::int32_t, char*) override { return 1; }
    bool ShortcutTarget(const std::string&, std::string*) override { return false; }
    bool SaveShortcut(const std::string&, const std::string&, const std::string&, std::int32_t) override { return false; }
    std::uintptr_t SHGetFileInfoA(const char*, std::uint32_t, ShFileInfo*, std::uint32_t) override { return 0; }
    std::uint32_t GetFileVersionInfoSizeA(const char*) override { return 0; }
    bool GetFileVersionInfoA(const char*, std::vector<std::uint8_t>*) override { return false; }
    bool VerQueryValueA(const std::vector<std::uint8_t>&, const char*, std::vector<std::uint8_t>*) override { return false; }
    std::uint32_t VerLanguageNameA(std::uint32_t, char*, std::uint32_t) override { return 0; }
};

}  // namespace tessmark::testing

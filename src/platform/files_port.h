#pragma once
// Files and folders: the kernel32 walk and attribute calls, folder and file
// creation and deletion, and whole-file reads and writes for the program's own
// text files. Paths are ANSI Windows paths ("C:\...").
#include <cstdint>
#include <string>

namespace tessmark::platform {

inline constexpr std::uint32_t kInvalidFileAttributes = 0xFFFFFFFFu;
inline constexpr std::uint32_t kAttrReadOnly = 0x01;
inline constexpr std::uint32_t kAttrHidden = 0x02;
inline constexpr std::uint32_t kAttrSystem = 0x04;
inline constexpr std::uint32_t kAttrDirectory = 0x10;
inline constexpr std::uint32_t kAttrArchive = 0x20;
inline constexpr std::uint32_t kAttrNormal = 0x80;

using FindHandle = std::intptr_t;
inline constexpr FindHandle kInvalidFindHandle = -1;

// The part of WIN32_FIND_DATAA the program reads.
struct FindData {
    std::uint32_t attributes = 0;
    std::uint32_t sizeHigh = 0;
    std::uint32_t sizeLow = 0;
    char fileName[260] = {};
};

class FilesPort {
public:
    virtual ~FilesPort() = default;

    virtual FindHandle FindFirstFileA(const char* pattern, FindData* data) = 0;
    virtual std::int32_t FindNextFileA(FindHandle handle, FindData* data) = 0;
    virtual std::int32_t FindClose(FindHandle handle) = 0;
    virtual std::uint32_t GetFileAttributesA(const char* path) = 0;
    // Result as the platform's: characters written without the NUL, the size
    // needed when the buffer is too small, 0 on failure.
    virtual std::uint32_t GetFullPathNameA(const char* path, std::uint32_t bufferLength,
                                           char* buffer) = 0;
    // Scripting.FileSystemObject's FileExists and FolderExists.
    virtual bool FileExists(const std::string& path) = 0;
    virtual bool FolderExists(const std::string& path) = 0;
    // MkDir and Kill: false where the run-time would raise its error.
    virtual bool MkDir(const std::string& path) = 0;
    virtual bool Kill(const std::string& path) = 0;
    // Whole-file access. WriteWholeFile replaces the file in one step, so a
    // reader never sees it half written.
    virtual bool ReadWholeFile(const std::string& path, std::string* contents) = 0;
    virtual bool WriteWholeFile(const std::string& path, const std::string& contents) = 0;
    virtual bool AppendToFile(const std::string& path, const std::string& text) = 0;
    // The value of an environment variable, empty when unset; the name's case is ignored.
    virtual std::string Environ(const std::string& name) = 0;
};

}  // namespace tessmark::platform

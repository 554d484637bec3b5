#pragma once
// The shell: special folders, shortcuts, per-file icons and display names, and
// version resources.
#include <cstdint>
#include <string>
#include <vector>

namespace tessmark::platform {

inline constexpr std::int32_t kCsidlStartup = 7;
inline constexpr std::int32_t kCsidlCommonStartup = 24;

// SHGFI_* flags in use.
inline constexpr std::uint32_t kShgfiSmallIcon = 0x0001;
inline constexpr std::uint32_t kShgfiOpenIcon = 0x0002;
inline constexpr std::uint32_t kShgfiDisplayName = 0x0200;
inline constexpr std::uint32_t kShgfiTypeName = 0x0400;
inline constexpr std::uint32_t kShgfiSysIconIndex = 0x4000;
inline constexpr std::uint32_t kShgfiExeType = 0x2000;

// SHFILEINFOA as the program reads it.
struct ShFileInfo {
    std::uintptr_t hIcon = 0;
    std::int32_t iIcon = 0;
    std::uint32_t attributes = 0;
    char displayName[260] = {};
    char typeName[80] = {};
};

class ShellPort {
public:
    virtual ~ShellPort() = default;

    // SHGetSpecialFolderLocation + SHGetPathFromIDListA: 0 and the path, or a
    // nonzero code and an untouched buffer. The buffer holds 260 characters.
    virtual std::int32_t SpecialFolderPath(std::int32_t csidl, char* path260) = 0;

    // WScript.Shell's CreateShortcut(path).TargetPath: false where the object
    // would raise an error.
    virtual bool ShortcutTarget(const std::string& lnkPath, std::string* target) = 0;
    // WScript.Shell's CreateShortcut with TargetPath, IconLocation ("file,index"),
    // WindowStyle and Save: false where any of those would raise an error.
    virtual bool SaveShortcut(const std::string& lnkPath, const std::string& targetPath,
                              const std::string& iconLocation, std::int32_t windowStyle) = 0;

    // SHGetFileInfoA: the system image list's handle (nonzero) or 0.
    virtual std::uintptr_t SHGetFileInfoA(const char* path, std::uint32_t fileAttributes,
                                          ShFileInfo* info, std::uint32_t flags) = 0;

    // version.dll. The block is opaque to the caller; VerQueryValueA copies what
    // the platform's pointer would point at (length bytes) into value.
    virtual std::uint32_t GetFileVersionInfoSizeA(const char* path) = 0;
    virtual bool GetFileVersionInfoA(const char* path, std::vector<std::uint8_t>* block) = 0;
    virtual bool VerQueryValueA(const std::vector<std::uint8_t>& block, const char* subBlock,
                                std::vector<std::uint8_t>* value) = 0;
    virtual std::uint32_t VerLanguageNameA(std::uint32_t language, char* buffer,
                                           std::uint32_t size) = 0;
};

}  // namespace tessmark::platform

#pragma once
// The registry, files and shell of a machine, counting every call and failing
// one chosen call the way the platform refuses: code 5, false, or nothing.
#include "machine.h"

namespace tessmark::testing {

#define TESSMARK_PASS(ret, name, params, args, refusal) \
    ret name params override { return Fire() ? refusal : inner_.name args; }

class FaultyRegistry final : public platform::RegistryPort {
public:
    FaultyRegistry(platform::RegistryPort& inner, std::function<bool()> fire) : inner_(inner), Fire(std::move(fire)) {}
    using H = platform::RegHandle;
    using U = std::uint32_t;
    TESSMARK_PASS(std::int32_t, RegOpenKeyA, (H k, const char* s, H* r), (k, s, r), 5)
    TESSMARK_PASS(std::int32_t, RegOpenKeyExA, (H k, const char* s, U o, U d, H* r), (k, s, o, d, r), 5)
    TESSMARK_PASS(std::int32_t, RegCreateKeyA, (H k, const char* s, H* r), (k, s, r), 5)
    // A handle is always closed: the refusal above leaves none open.
    std::int32_t RegCloseKey(H k) override { return inner_.RegCloseKey(k); }
    TESSMARK_PASS(std::int32_t, RegDeleteKeyA, (H k, const char* s), (k, s), 5)
    TESSMARK_PASS(std::int32_t, RegDeleteValueA, (H k, const char* v), (k, v), 5)
    TESSMARK_PASS(std::int32_t, RegEnumKeyExA, (H k, U i, char* n, U* l), (k, i, n, l), 5)
    TESSMARK_PASS(std::int32_t, RegEnumValueA, (H k, U i, char* n, U* l, U* t, std::uint8_t* d, U* s),
                  (k, i, n, l, t, d, s), 5)
    TESSMARK_PASS(std::int32_t, RegQueryValueExA, (H k, const char* v, U* t, std::uint8_t* d, U* s), (k, v, t, d, s), 5)
    TESSMARK_PASS(std::int32_t, RegQueryInfoKeyA, (H k, U* s, U* v), (k, s, v), 5)
    TESSMARK_PASS(std::int32_t, RegSetValueExA, (H k, const char* v, U t, const std::uint8_t* d, U s), (k, v, t, d, s), 5)

private:
    platform::RegistryPort& inner_;
    std::function<bool()> Fire;
};

class FaultyDisk final : public platform::FilesPort, public platform::ShellPort {
public:
    FaultyDisk(platform::FilesPort& files, platform::ShellPort& shell, std::function<bool()> fire)
        : inner_(files), shell_(shell), Fire(std::move(fire)) {}
    using S = const std::string&;
    TESSMARK_PASS(platform::FindHandle, FindFirstFileA, (const char* p, platform::FindData* d), (p, d), -1)
    TESSMARK_PASS(std::int32_t, FindNextFileA, (platform::FindHandle h, platform::FindData* d), (h, d), 0)
    std::int32_t FindClose(platform::FindHandle h) override { return inner_.FindClose(h); }
    TESSMARK_PASS(std::uint32_t, GetFileAttributesA, (const char* p), (p), platform::kInvalidFileAttributes)
    TESSMARK_PASS(std::uint32_t, GetFullPathNameA, (const char* p, std::uint32_t n, char* b), (p, n, b), 0)
    TESSMARK_PASS(bool, FileExists, (S p), (p), false)
    TESSMARK_PASS(bool, FolderExists, (S p), (p), false)
    TESSMARK_PASS(bool, MkDir, (S p), (p), false)
    TESSMARK_PASS(bool, Kill, (S p), (p), false)
    TESSMARK_PASS(bool, ReadWholeFile, (S p, std::string* c), (p, c), false)
    TESSMARK_PASS(bool, WriteWholeFile, (S p, S c), (p, c), false)
    TESSMARK_PASS(bool, AppendToFile, (S p, S t), (p, t), false)
    std::string Environ(S name) override { return inner_.Environ(name); }
#undef TESSMARK_PASS
#define TESSMARK_PASS(ret, name, params, args, refusal) \
    ret name params override { return Fire() ? refusal : shell_.name args; }
    TESSMARK_PASS(std::int32_t, SpecialFolderPath, (std::int32_t c, char* p), (c, p), 1)
    TESSMARK_PASS(bool, ShortcutTarget, (S p, std::string* t), (p, t), false)
    TESSMARK_PASS(bool, SaveShortcut, (S p, S t, S i, std::int32_t w), (p, t, i, w), false)
    TESSMARK_PASS(std::uintptr_t, SHGetFileInfoA, (const char* p, std::uint32_t a, platform::ShFileInfo* i, std::uint32_t f),
                  (p, a, i, f), 0)
    TESSMARK_PASS(std::uint32_t, GetFileVersionInfoSizeA, (const char* p), (p), 0)
    TESSMARK_PASS(bool, GetFileVersionInfoA, (const char* p, std::vector<std::uint8_t>* b), (p, b), false)
    TESSMARK_PASS(bool, VerQueryValueA, (const std::vector<std::uint8_t>& b, const char* s, std::vector<std::uint8_t>* v),
                  (b, s, v), false)
    TESSMARK_PASS(std::uint32_t, VerLanguageNameA, (std::uint32_t l, char* b, std::uint32_t s), (l, b, s), 0)
#undef TESSMARK_PASS

private:
    platform::FilesPort& inner_;
    platform::ShellPort& shell_;
    std::function<bool()> Fire;
};

}  // namespace tessmark::testing

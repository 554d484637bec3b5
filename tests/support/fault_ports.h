#pragma once
// The registry, files and shell of a machine, counting every call and failing
// one chosen call the way the platform refuses: code 5, false, or nothing.
#include <functional>

#include "machine.h"

namespace tessmark::testing {

#define TESSMARK_PASS(port, ret, name, params, args, refusal) \
    ret name params override { return Fire() ? refusal : m_.port().name args; }

class FaultyPorts final : public platform::RegistryPort, public platform::FilesPort, public platform::ShellPort {
public:
    FaultyPorts(TestMachine& machine, std::function<bool()> fire) : m_(machine), Fire(std::move(fire)) {}
    platform::Ports Ports() { return {*this, *this, *this, m_.Ui(), m_.Process()}; }

    using H = platform::RegHandle;
    using U = std::uint32_t;
    using S = const std::string&;
    TESSMARK_PASS(Registry, std::int32_t, RegOpenKeyA, (H k, const char* s, H* r), (k, s, r), 5)
    TESSMARK_PASS(Registry, std::int32_t, RegOpenKeyExA, (H k, const char* s, U o, U d, H* r), (k, s, o, d, r), 5)
    TESSMARK_PASS(Registry, std::int32_t, RegCreateKeyA, (H k, const char* s, H* r), (k, s, r), 5)
    // A handle is always closed: the refusals above leave none open.
    std::int32_t RegCloseKey(H k) override { return m_.Registry().RegCloseKey(k); }
    TESSMARK_PASS(Registry, std::int32_t, RegDeleteKeyA, (H k, const char* s), (k, s), 5)
    TESSMARK_PASS(Registry, std::int32_t, RegDeleteValueA, (H k, const char* v), (k, v), 5)
    TESSMARK_PASS(Registry, std::int32_t, RegEnumKeyExA, (H k, U i, char* n, U* l), (k, i, n, l), 5)
    TESSMARK_PASS(Registry, std::int32_t, RegEnumValueA, (H k, U i, char* n, U* l, U* t, std::uint8_t* d, U* s),
                  (k, i, n, l, t, d, s), 5)
    TESSMARK_PASS(Registry, std::int32_t, RegQueryValueExA, (H k, const char* v, U* t, std::uint8_t* d, U* s),
                  (k, v, t, d, s), 5)
    TESSMARK_PASS(Registry, std::int32_t, RegQueryInfoKeyA, (H k, U* s, U* v), (k, s, v), 5)
    TESSMARK_PASS(Registry, std::int32_t, RegSetValueExA, (H k, const char* v, U t, const std::uint8_t* d, U s),
                  (k, v, t, d, s), 5)
    TESSMARK_PASS(Files, platform::FindHandle, FindFirstFileA, (const char* p, platform::FindData* d), (p, d), -1)
    TESSMARK_PASS(Files, std::int32_t, FindNextFileA, (platform::FindHandle h, platform::FindData* d), (h, d), 0)
    std::int32_t FindClose(platform::FindHandle h) override { return m_.Files().FindClose(h); }
    TESSMARK_PASS(Files, U, GetFileAttributesA, (const char* p), (p), platform::kInvalidFileAttributes)
    TESSMARK_PASS(Files, U, GetFullPathNameA, (const char* p, U n, char* b), (p, n, b), 0)
    TESSMARK_PASS(Files, bool, FileExists, (S p), (p), false)
    TESSMARK_PASS(Files, bool, FolderExists, (S p), (p), false)
    TESSMARK_PASS(Files, bool, MkDir, (S p), (p), false)
    TESSMARK_PASS(Files, bool, Kill, (S p), (p), false)
    TESSMARK_PASS(Files, bool, ReadWholeFile, (S p, std::string* c), (p, c), false)
    TESSMARK_PASS(Files, bool, WriteWholeFile, (S p, S c), (p, c), false)
    TESSMARK_PASS(Files, bool, AppendToFile, (S p, S t), (p, t), false)
    std::string Environ(S name) override { return m_.Files().Environ(name); }
    TESSMARK_PASS(Shell, std::int32_t, SpecialFolderPath, (std::int32_t c, char* p), (c, p), 1)
    TESSMARK_PASS(Shell, bool, ShortcutTarget, (S p, std::string* t), (p, t), false)
    TESSMARK_PASS(Shell, bool, SaveShortcut, (S p, S t, S i, std::int32_t w), (p, t, i, w), false)
    TESSMARK_PASS(Shell, std::uintptr_t, SHGetFileInfoA, (const char* p, U a, platform::ShFileInfo* i, U f), (p, a, i, f), 0)
    TESSMARK_PASS(Shell, U, GetFileVersionInfoSizeA, (const char* p), (p), 0)
    TESSMARK_PASS(Shell, bool, GetFileVersionInfoA, (const char* p, std::vector<std::uint8_t>* b), (p, b), false)
    TESSMARK_PASS(Shell, bool, VerQueryValueA, (const std::vector<std::uint8_t>& b, const char* s, std::vector<std::uint8_t>* v),
                  (b, s, v), false)
    TESSMARK_PASS(Shell, U, VerLanguageNameA, (U l, char* b, U s), (l, b, s), 0)

private:
    TestMachine& m_;
    std::function<bool()> Fire;
};
#undef TESSMARK_PASS

}  // namespace tessmark::testing

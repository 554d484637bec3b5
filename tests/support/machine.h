#pragma once
// A whole machine for one test: in memory for the native tier, the real Wine
// prefix for the Wine tier. Suites written against TestMachine run on both.
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/codec_port.h"
#include "platform/memory/recording_ui.h"
#include "platform/ports.h"
#include "raw_values.h"

namespace tessmark::testing {

class TestMachine {
public:
    virtual ~TestMachine() = default;
    virtual bool IsReal() const = 0;
    virtual platform::RegistryPort& Registry() = 0;
    virtual platform::FilesPort& Files() = 0;
    virtual platform::ShellPort& Shell() = 0;
    virtual platform::ProcessPort& Process() = 0;
    // Message boxes are always recorded, never shown, also on Wine.
    platform::memory::RecordingUi& Ui() { return ui_; }
    virtual platform::CodecPort& Codec() = 0;
    platform::Ports Ports() { return {Registry(), Files(), Shell(), Ui(), Process()}; }

    // A folder that exists and is empty when the test starts ("C:\tessmark-test"), or "C:\" + name.
    std::string ScratchFolder() { return ScratchFolder("tessmark-test"); }
    virtual std::string ScratchFolder(const std::string& name) = 0;
    // Sets attribute bits (read-only, hidden, system) beside those the file has, or clears them.
    virtual void AddFileAttributes(const std::string& path, std::uint32_t attributes) = 0;
    virtual void RemoveFileAttributes(const std::string& path, std::uint32_t attributes) = 0;
    // A program file that carries the version resource of version_fixture.h.
    virtual std::string VersionedFile() = 0;
    // The platform's own GetPrivateProfileStringA (empty default) and WritePrivateProfileStringA, where there is one.
    virtual std::optional<std::string> ProfileRead(const std::string&, const std::string&, const std::string&) {
        return std::nullopt;
    }
    virtual void ProfileWrite(const std::string&, const std::string&, const std::string&, const std::string&) {}

private:
    platform::memory::RecordingUi ui_;
};

std::unique_ptr<TestMachine> MakeTestMachine();

// The SHA-256 of a text in lower-case hex, by the machine's codec.
inline std::string DigestOf(TestMachine& machine, const std::string& text) {
    platform::Sha256Digest digest{};
    machine.Codec().Sha256(text, &digest);
    std::string hex;
    for (auto b : digest) hex += "0123456789abcdef"[b >> 4], hex += "0123456789abcdef"[b & 15];
    return hex;
}

// Registry keys used for scratch by the suites: removed whole by DeleteTree.
inline constexpr const char* kScratchKey = "Software\\TessmarkTest";

// Seeds a REG_SZ value with its terminating NUL, as a setup program stores it; false when that fails.
inline bool SeedString(platform::RegistryPort& registry, platform::RegHandle root, const std::string& key,
                       const std::string& name, const std::string& value) {
    return SetRaw(registry, root, key, name, platform::reg::kSz, value + '\0');
}

// Deletes a key and everything beneath it through the port.
void DeleteTree(platform::RegistryPort& registry, platform::RegHandle parent, const std::string& subKey);

}  // namespace tessmark::testing

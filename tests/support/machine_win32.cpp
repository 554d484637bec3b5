#include <cstdlib>
#include <filesystem>

#include <windows.h>

#include "machine.h"
#include "win32/platform/win32_codec.h"
#include "win32/platform/win32_disk.h"
#include "win32/platform/win32_process.h"
#include "win32/platform/win32_registry.h"

namespace tessmark::testing {
namespace {

class Win32Machine final : public TestMachine {
public:
    Win32Machine() {
        DeleteTree(registry_, platform::reg::kCurrentUser, kScratchKey);
        DeleteTree(registry_, platform::reg::kLocalMachine, kScratchKey);
    }
    bool IsReal() const override { return true; }
    platform::RegistryPort& Registry() override { return registry_; }
    platform::FilesPort& Files() override { return disk_; }
    platform::ShellPort& Shell() override { return disk_; }
    platform::ProcessPort& Process() override { return process_; }
    platform::CodecPort& Codec() override { return codec_; }
    std::string ScratchFolder(const std::string& name) override {
        namespace fs = std::filesystem;
        const std::string path = "C:\\" + name;
        std::error_code ignored;
        // Read-only files are not deleted; writable, they are.
        for (fs::recursive_directory_iterator it(path, ignored), end; it != end; it.increment(ignored))
            fs::permissions(it->path(), fs::perms::owner_write, fs::perm_options::add, ignored);
        fs::remove_all(path, ignored);
        fs::create_directory(path, ignored);
        return path;
    }
    void AddFileAttributes(const std::string& path, std::uint32_t bits) override { Attrib(path, bits, '+'); }
    void RemoveFileAttributes(const std::string& path, std::uint32_t bits) override { Attrib(path, bits, '-'); }
    // A copy of this program where the memory machine keeps its versioned file:
    // the build folder's name has a hyphen, which command-line reduction cuts at.
    std::string VersionedFile() override {
        const std::string copy = "C:\\Program Files\\Tessmark Test\\tessmark_wine_tests.exe";
        std::error_code ignored;
        std::filesystem::create_directories("C:\\Program Files\\Tessmark Test", ignored);
        std::filesystem::copy_file(_pgmptr, copy, std::filesystem::copy_options::skip_existing, ignored);
        return copy;
    }

    std::optional<std::string> ProfileRead(const std::string& file, const std::string& section,
                                           const std::string& key) override {
        char value[1024] = {};
        GetPrivateProfileStringA(section.c_str(), key.c_str(), "", value, sizeof value, file.c_str());
        return std::string(value);
    }
    void ProfileWrite(const std::string& file, const std::string& section, const std::string& key,
                      const std::string& value) override {
        WritePrivateProfileStringA(section.c_str(), key.c_str(), value.c_str(), file.c_str());
    }

private:
    // Through the platform's own attrib command, one bit a call: Wine's takes only the last of several.
    static void Attrib(const std::string& path, std::uint32_t bits, char sign) {
        const std::pair<std::uint32_t, char> switches[] = {
            {platform::kAttrReadOnly, 'r'}, {platform::kAttrHidden, 'h'}, {platform::kAttrSystem, 's'}};
        for (const auto& [bit, letter] : switches)
            if (bits & bit) std::system(("attrib " + std::string{sign, letter} + " \"" + path + "\" >nul").c_str());
    }

    platform::win32::Win32Registry registry_;
    platform::win32::Win32Disk disk_;
    platform::win32::Win32Process process_;
    platform::win32::Win32Codec codec_;
};

}  // namespace

std::unique_ptr<TestMachine> MakeTestMachine() { return std::make_unique<Win32Machine>(); }

}  // namespace tessmark::testing

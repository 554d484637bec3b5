#include <cstdlib>
#include <filesystem>

#include "machine.h"
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
    // Through the platform's own attrib command, one bit a call: Wine's takes only
    // the last of several.
    void AddFileAttributes(const std::string& path, std::uint32_t attributes) override {
        const std::pair<std::uint32_t, const char*> switches[] = {
            {platform::kAttrReadOnly, "+r"}, {platform::kAttrHidden, "+h"}, {platform::kAttrSystem, "+s"}};
        for (const auto& [bit, flag] : switches)
            if (attributes & bit) std::system(("attrib " + std::string(flag) + " \"" + path + "\" >nul").c_str());
    }
    // A copy of this program, away from the build folder: that path holds a
    // hyphen, where the command-line reduction would cut it.
    std::string VersionedFile() override {
        const std::string copy = "C:\\TessmarkVersioned\\tessmark_wine_tests.exe";
        std::error_code ignored;
        std::filesystem::create_directory("C:\\TessmarkVersioned", ignored);
        std::filesystem::copy_file(_pgmptr, copy, std::filesystem::copy_options::overwrite_existing, ignored);
        return copy;
    }

private:
    platform::win32::Win32Registry registry_;
    platform::win32::Win32Disk disk_;
    platform::win32::Win32Process process_;
};

}  // namespace

std::unique_ptr<TestMachine> MakeTestMachine() { return std::make_unique<Win32Machine>(); }

}  // namespace tessmark::testing

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
    std::string ScratchFolder() override {
        std::error_code ignored;
        std::filesystem::remove_all("C:\\tessmark-test", ignored);
        std::filesystem::create_directory("C:\\tessmark-test", ignored);
        return "C:\\tessmark-test";
    }

private:
    platform::win32::Win32Registry registry_;
    platform::win32::Win32Disk disk_;
    platform::win32::Win32Process process_;
};

}  // namespace

std::unique_ptr<TestMachine> MakeTestMachine() { return std::make_unique<Win32Machine>(); }

}  // namespace tessmark::testing

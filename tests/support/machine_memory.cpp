#include "machine.h"
#include "platform/memory/memory_disk.h"
#include "platform/memory/memory_process.h"
#include "platform/memory/memory_registry.h"

namespace tessmark::testing {
namespace {

class MemoryMachine final : public TestMachine {
public:
    bool IsReal() const override { return false; }
    platform::RegistryPort& Registry() override { return registry_; }
    platform::FilesPort& Files() override { return disk_; }
    platform::ShellPort& Shell() override { return disk_; }
    platform::ProcessPort& Process() override { return process_; }
    std::string ScratchFolder() override {
        disk_.MkDir("C:\\tessmark-test");
        return "C:\\tessmark-test";
    }

private:
    platform::memory::MemoryRegistry registry_;
    platform::memory::MemoryDisk disk_;
    platform::memory::MemoryProcess process_;
};

}  // namespace

std::unique_ptr<TestMachine> MakeTestMachine() { return std::make_unique<MemoryMachine>(); }

}  // namespace tessmark::testing

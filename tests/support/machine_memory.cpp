#include "machine.h"
#include "platform/memory/memory_codec.h"
#include "platform/memory/memory_disk.h"
#include "platform/memory/memory_process.h"
#include "platform/memory/memory_registry.h"
#include "version_fixture.h"

namespace tessmark::testing {
namespace {

constexpr const char* kVersionedFile = "C:\\Program Files\\Tessmark Test\\tessmark_wine_tests.exe";

// Two 16-bit parts of the fixture's numbers in one word, the first high.
std::uint32_t Word(const std::uint16_t* parts) { return std::uint32_t{parts[0]} << 16 | parts[1]; }

class MemoryMachine final : public TestMachine {
public:
    MemoryMachine() {
        const std::uint16_t file[] = {FIXTURE_FILE_VERSION}, product[] = {FIXTURE_PRODUCT_VERSION};
        disk_.AddFile(kVersionedFile, "MZ");
        disk_.SetVersionResource(kVersionedFile,
            {{.fileVersionMS = Word(file), .fileVersionLS = Word(file + 2),
              .productVersionMS = Word(product), .productVersionLS = Word(product + 2),
              .fileFlags = FIXTURE_FILE_FLAGS, .fileOS = FIXTURE_FILE_OS, .fileType = FIXTURE_FILE_TYPE},
             {{FIXTURE_GERMAN, FIXTURE_CODE_PAGE}, {FIXTURE_ENGLISH, FIXTURE_CODE_PAGE}},
             {{"040704E4", {{"FileDescription", FIXTURE_DESCRIPTION_GERMAN}}},
              {"040904E4", {{"CompanyName", FIXTURE_COMPANY_NAME}, {"FileDescription", FIXTURE_DESCRIPTION_ENGLISH},
                            {"FileVersion", FIXTURE_FILE_VERSION_TEXT}}}}});
    }
    bool IsReal() const override { return false; }
    platform::RegistryPort& Registry() override { return registry_; }
    platform::FilesPort& Files() override { return disk_; }
    platform::ShellPort& Shell() override { return disk_; }
    platform::ProcessPort& Process() override { return process_; }
    platform::CodecPort& Codec() override { return codec_; }
    std::string ScratchFolder(const std::string& name) override {
        disk_.MkDir("C:\\" + name);
        return "C:\\" + name;
    }
    void AddFileAttributes(const std::string& path, std::uint32_t bits) override {
        disk_.SetAttributes(path, disk_.GetFileAttributesA(path.c_str()) | bits);
    }
    void RemoveFileAttributes(const std::string& path, std::uint32_t bits) override {
        disk_.SetAttributes(path, disk_.GetFileAttributesA(path.c_str()) & ~bits);
    }
    std::string VersionedFile() override { return kVersionedFile; }

private:
    platform::memory::MemoryRegistry registry_;
    platform::memory::MemoryDisk disk_;
    platform::memory::MemoryProcess process_;
    platform::memory::MemoryCodec codec_;
};

}  // namespace

std::unique_ptr<TestMachine> MakeTestMachine() { return std::make_unique<MemoryMachine>(); }

}  // namespace tessmark::testing

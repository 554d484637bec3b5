#include "machine.h"
#include "platform/memory/memory_codec.h"
#include "platform/memory/memory_disk.h"
#include "platform/memory/memory_process.h"
#include "platform/memory/memory_registry.h"
#include "version_fixture.h"

namespace tessmark::testing {
namespace {

constexpr const char* kVersionedFile = "C:\\Program Files\\Tessmark Test\\tessmark_wine_tests.exe";

platform::memory::VersionResource FixtureResource() {
    platform::memory::VersionResource resource;
    auto& fixed = resource.fixed;
    fixed.fileVersionMS = fixture::kFileVersion[0] << 16 | fixture::kFileVersion[1];
    fixed.fileVersionLS = fixture::kFileVersion[2] << 16 | fixture::kFileVersion[3];
    fixed.productVersionMS = fixture::kProductVersion[0] << 16 | fixture::kProductVersion[1];
    fixed.productVersionLS = fixture::kProductVersion[2] << 16 | fixture::kProductVersion[3];
    fixed.fileFlags = FIXTURE_FILE_FLAGS;
    fixed.fileOS = FIXTURE_FILE_OS;
    fixed.fileType = FIXTURE_FILE_TYPE;
    resource.translations = {{fixture::kGerman, FIXTURE_CODE_PAGE}, {fixture::kEnglish, FIXTURE_CODE_PAGE}};
    resource.strings[fixture::kGermanTable] = {{"FileDescription", FIXTURE_DESCRIPTION_GERMAN}};
    resource.strings[fixture::kEnglishTable] = {{"CompanyName", FIXTURE_COMPANY_NAME},
                                                {"FileDescription", FIXTURE_DESCRIPTION_ENGLISH},
                                                {"FileVersion", FIXTURE_FILE_VERSION_TEXT}};
    return resource;
}

class MemoryMachine final : public TestMachine {
public:
    MemoryMachine() {
        disk_.AddFile(kVersionedFile, "MZ");
        disk_.SetVersionResource(kVersionedFile, FixtureResource());
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
    void AddFileAttributes(const std::string& path, std::uint32_t attributes) override {
        disk_.SetAttributes(path, disk_.GetFileAttributesA(path.c_str()) | attributes);
    }
    void RemoveFileAttributes(const std::string& path, std::uint32_t attributes) override {
        disk_.SetAttributes(path, disk_.GetFileAttributesA(path.c_str()) & ~attributes);
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

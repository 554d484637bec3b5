// The file-details object on any version block: the block the platform hands
// back for the file is the fuzzer's bytes, read by the memory adapter's parser.
#include "fuzz_input.h"
#include "platform/memory/memory_disk.h"
#include "ui/CFileVersionInfo.h"

namespace {

using namespace tessmark::platform;

class BlockShell final : public ShellPort {
public:
    BlockShell(memory::MemoryDisk& disk, std::vector<std::uint8_t> block) : disk_(disk), block_(std::move(block)) {}
    std::int32_t SpecialFolderPath(std::int32_t csidl, char* path260) override {
        return disk_.SpecialFolderPath(csidl, path260);
    }
    bool ShortcutTarget(const std::string& lnkPath, std::string* target) override {
        return disk_.ShortcutTarget(lnkPath, target);
    }
    bool SaveShortcut(const std::string& lnkPath, const std::string& targetPath, const std::string& iconLocation,
                      std::int32_t windowStyle) override {
        return disk_.SaveShortcut(lnkPath, targetPath, iconLocation, windowStyle);
    }
    std::uintptr_t SHGetFileInfoA(const char* path, std::uint32_t attributes, ShFileInfo* info,
                                  std::uint32_t flags) override {
        return disk_.SHGetFileInfoA(path, attributes, info, flags);
    }
    std::uint32_t GetFileVersionInfoSizeA(const char*) override { return static_cast<std::uint32_t>(block_.size()); }
    bool GetFileVersionInfoA(const char*, std::vector<std::uint8_t>* block) override {
        *block = block_;
        return !block_.empty();
    }
    bool VerQueryValueA(const std::vector<std::uint8_t>& block, const char* subBlock,
                        std::vector<std::uint8_t>* value) override {
        return disk_.VerQueryValueA(block, subBlock, value);
    }
    std::uint32_t VerLanguageNameA(std::uint32_t language, char* buffer, std::uint32_t size) override {
        return disk_.VerLanguageNameA(language, buffer, size);
    }

private:
    memory::MemoryDisk& disk_;
    std::vector<std::uint8_t> block_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // One disk for every run, made once: making one is far dearer than a run.
    static memory::MemoryDisk disk;
    static const bool seeded = (disk.AddFile("C:\\program.exe", "MZ"), true);
    (void)seeded;
    BlockShell shell(disk, std::vector<std::uint8_t>(data, data + size));
    tessmark::ui::CFileVersionInfo info(disk, shell);
    info.FullPathName("C:\\program.exe");
    for (long i = 0; i <= 15; ++i) info.PredefinedValue(i);
    return 0;
}

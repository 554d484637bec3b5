// The file-details object on any version block: the block the platform hands
// back for the file is the fuzzer's bytes, read by the memory adapter's parser.
#include "platform/memory/memory_disk.h"
#include "ui/CFileVersionInfo.h"

namespace {

using namespace tessmark::platform;
using std::string;

// The version calls are the disk's, but for the block; the object asks the shell for nothing else.
class BlockShell final : public ShellPort {
public:
    BlockShell(memory::MemoryDisk& disk, std::vector<std::uint8_t> block) : disk_(disk), block_(std::move(block)) {}
    std::int32_t SpecialFolderPath(std::int32_t, char*) override { return 1; }
    bool ShortcutTarget(const string&, string*) override { return false; }
    bool SaveShortcut(const string&, const string&, const string&, std::int32_t) override { return false; }
    std::uintptr_t SHGetFileInfoA(const char*, std::uint32_t, ShFileInfo*, std::uint32_t) override { return 0; }
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
    disk.AddFile("C:\\program.exe", "MZ");
    BlockShell shell(disk, std::vector<std::uint8_t>(data, data + size));
    tessmark::ui::CFileVersionInfo info(disk, shell);
    info.FullPathName("C:\\program.exe");
    for (long i = 0; i <= 15; ++i) info.PredefinedValue(i);
    return 0;
}

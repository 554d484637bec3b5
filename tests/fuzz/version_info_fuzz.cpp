// The file-details object on any version block: the block the platform hands
// back for the file is the fuzzer's bytes, read by the memory adapter's parser.
#include "fuzz_input.h"
#include "ui/CFileVersionInfo.h"

namespace {

using namespace tessmark::platform;
using std::string;
using Bytes = std::vector<std::uint8_t>;

// The version calls are the disk's, but for the block; the object asks the shell for nothing else.
struct BlockShell final : ShellPort {
    BlockShell(memory::MemoryDisk& disk, Bytes block) : disk(disk), block(std::move(block)) {}
    std::int32_t SpecialFolderPath(std::int32_t, char*) override { return 1; }
    bool ShortcutTarget(const string&, string*) override { return false; }
    bool SaveShortcut(const string&, const string&, const string&, std::int32_t) override { return false; }
    std::uintptr_t SHGetFileInfoA(const char*, std::uint32_t, ShFileInfo*, std::uint32_t) override { return 0; }
    std::uint32_t GetFileVersionInfoSizeA(const char*) override { return static_cast<std::uint32_t>(block.size()); }
    bool GetFileVersionInfoA(const char*, Bytes* out) override { *out = block; return !block.empty(); }
    bool VerQueryValueA(const Bytes& in, const char* sub, Bytes* out) override {
        return disk.VerQueryValueA(in, sub, out);
    }
    std::uint32_t VerLanguageNameA(std::uint32_t id, char* out, std::uint32_t size) override {
        return disk.VerLanguageNameA(id, out, size);
    }

    memory::MemoryDisk& disk;
    const Bytes block;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto& disk = tessmark::fuzz::SharedDisk();
    disk.AddFile("C:\\program.exe", "MZ");
    BlockShell shell(disk, Bytes(data, data + size));
    tessmark::ui::CFileVersionInfo info(disk, shell);
    info.FullPathName("C:\\program.exe");
    for (long i = 0; i <= 15; ++i) info.PredefinedValue(i);
    return 0;
}

// The .reg reader on whatever a file may hold: it must not crash or hang, and
// it may touch no key but those its key lines name (and their parents).
#include <cstdlib>
#include <set>

#include "fuzz_input.h"
#include "platform/memory/memory_registry.h"
#include "platform/memory/recording_ui.h"
#include "registry/AdvRegistryAccess.h"

namespace {

using namespace tessmark;
namespace reg = platform::reg;

// Every key of every root, by its path in capitals.
std::set<std::string> AllKeys(platform::RegistryPort& registry) {
    std::set<std::string> keys;
    const auto collect = [&](const auto& self, platform::RegHandle key, const std::string& path) -> void {
        for (std::uint32_t index = 0;; ++index) {
            char name[1024];
            std::uint32_t length = sizeof name;
            if (registry.RegEnumKeyExA(key, index, name, &length) != reg::kSuccess) return;  // the end, or no such root
            const std::string child(name, length), upper = path + "\\" + vb::UCase(child);
            keys.insert(upper);
            platform::RegHandle handle = 0;
            if (registry.RegOpenKeyA(key, child.c_str(), &handle) != reg::kSuccess) continue;
            self(self, handle, upper);
            registry.RegCloseKey(handle);
        }
    };
    for (platform::RegHandle root : {reg::kClassesRoot, reg::kCurrentUser, reg::kLocalMachine, reg::kUsers,
                                     reg::kPerformanceData, reg::kCurrentConfig, reg::kDynData})
        collect(collect, root, std::to_string(root));
    return keys;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string contents(reinterpret_cast<const char*>(data), size);
    auto& disk = fuzz::SharedDisk();
    static platform::memory::RecordingUi ui;
    disk.AddFile("C:\\in.reg", contents);
    platform::memory::MemoryRegistry imported, named;
    registry::AdvRegistryAccess importer(imported, disk, ui);
    importer.ImportFromReg("C:\\in.reg");
    // Every key the file names, made through the class's own path rules.
    registry::AdvRegistryAccess reference(named, disk, ui);
    for (const std::string& raw : vb::Split(contents, "\r\n")) {
        const std::string line = vb::Replace(vb::Trim(raw), "\"", "");
        if (vb::Left(line, 1) == "[" && line.size() >= 2) reference.CreateKey(vb::Mid(line, 2, vb::Len(line) - 2));
    }
    const std::set<std::string> allowed = AllKeys(named);
    for (const std::string& key : AllKeys(imported))
        if (!allowed.count(key)) std::abort();  // a key no key line names
    return 0;
}

// The Run-key and logon scanners over a registry filled from the fuzzer's
// bytes: values of any name, type, length and content in every key they read.
#include "discovery/Logon.h"
#include "discovery/RowServices.h"
#include "discovery/RunKeys.h"
#include "fuzz_input.h"
#include "platform/memory/memory_disk.h"
#include "platform/memory/memory_process.h"
#include "platform/memory/memory_registry.h"
#include "platform/memory/recording_ui.h"

namespace {

using namespace tessmark;

const char* const kKeys[] = {
    "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run",
    "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run\\AutorunsDisabled",
    "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunOnce",
    "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunOnce\\AutorunsDisabled",
    "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunServices",
    "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunServiceOnce",
    "SYSTEM\\CurrentControlSet\\Control\\Terminal Server\\Wds\\rdpwd",
    "SYSTEM\\CurrentControlSet\\Control\\Terminal Server\\Wds\\rdpwd\\AutorunsDisabled",
    "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon",
    "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon\\AutorunsDisabled",
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input(data, size);
    platform::memory::MemoryRegistry registry;
    // One disk for every run, made once (the scanners only read it).
    static platform::memory::MemoryDisk disk;
    static const bool seeded = (disk.AddFile("C:\\Windows\\System32\\userinit.exe", "MZ"), true);
    (void)seeded;
    platform::memory::RecordingUi ui;
    platform::memory::MemoryProcess process;
    while (!input.Empty()) {
        const std::uint8_t where = input.Byte();
        const platform::RegHandle root = where & 0x80 ? platform::reg::kCurrentUser : platform::reg::kLocalMachine;
        const std::string name = input.Text();
        const std::uint32_t type = input.Byte() % 12;
        const std::string value = input.LongText();
        platform::RegHandle key = 0;
        registry.RegCreateKeyA(root, kKeys[(where & 0x7F) % std::size(kKeys)], &key);
        registry.RegSetValueExA(key, name.c_str(), type, reinterpret_cast<const std::uint8_t*>(value.data()),
                                static_cast<std::uint32_t>(value.size()));
        registry.RegCloseKey(key);
    }

    discovery::SystemFolders folders{"C:\\Windows", "C:\\Program Files"};
    discovery::ItemList list;
    discovery::ImageStore images;
    discovery::PictureBox picture;
    platform::ShFileInfo record{};
    storage::IniFile ini(disk);
    const bool timer = false;
    discovery::ScanContext form{{registry, disk, disk, ui, process}, folders, list, images, picture, record, ini, timer};
    for (bool currentUser : {false, true}) {
        discovery::AddRun(form, currentUser);
        discovery::AddRunOnce(form, currentUser);
        discovery::AddRunServices(form, currentUser);
        discovery::AddRunServiceOnce(form, currentUser);
    }
    for (vb::Integer type = 1; type <= 3; ++type) {
        try {
            discovery::AddLogon(form, discovery::LogonKey(type), type);
        } catch (const vb::VbError&) {
            // Nothing in the logon scanner traps errors: the program ends with the run-time's message.
        }
    }
    std::string total, active;
    discovery::refreshCheckBox(list, total, active, [] {});
    return 0;
}

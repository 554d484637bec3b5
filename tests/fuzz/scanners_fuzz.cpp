// The Run-key and logon scanners over a registry filled from the fuzzer's
// bytes: values of any name, type, length and content in every key they read.
#include "discovery/Logon.h"
#include "discovery/RowServices.h"
#include "discovery/RunKeys.h"
#include "fuzz_input.h"
#include "platform/memory/memory_process.h"
#include "platform/memory/memory_registry.h"
#include "platform/memory/recording_ui.h"
#include "raw_values.h"

namespace {

using namespace tessmark;
using namespace tessmark::discovery;

const std::string kRun = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run", kOff = "\\AutorunsDisabled";
const std::string kRdpwd = "SYSTEM\\CurrentControlSet\\Control\\Terminal Server\\Wds\\rdpwd";
const std::string kWinlogon = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon";
// The keys the scanners read, in the order the seeds' key bytes count them.
const std::string kKeys[] = {kRun, kRun + kOff, kRun + "Once", kRun + "Once" + kOff, kRun + "Services",
                             kRun + "ServiceOnce", kRdpwd, kRdpwd + kOff, kWinlogon, kWinlogon + kOff};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::Input input{data, size};
    platform::memory::MemoryRegistry registry;
    auto& disk = fuzz::SharedDisk();  // the scanners only read it
    disk.AddFile("C:\\Windows\\System32\\userinit.exe", "MZ");
    platform::memory::RecordingUi ui;
    platform::memory::MemoryProcess process;
    while (!input.Empty()) {
        const std::uint8_t where = input.Byte();
        const std::string name = input.Text();
        const std::uint32_t type = input.Byte() % 12;
        testing::SetRaw(registry, where & 0x80 ? platform::reg::kCurrentUser : platform::reg::kLocalMachine,
                        kKeys[(where & 0x7F) % std::size(kKeys)], name, type, input.LongText());
    }

    SystemFolders folders{"C:\\Windows", "C:\\Program Files"};
    ItemList list;
    ImageStore images;
    PictureBox picture;
    platform::ShFileInfo record{};
    storage::IniFile ini(disk);
    const bool timer = false;
    ScanContext form{{registry, disk, disk, ui, process}, folders, list, images, picture, record, ini, timer};
    for (bool currentUser : {false, true})
        for (auto scan : {AddRun, AddRunOnce, AddRunServices, AddRunServiceOnce})
            scan(form, currentUser);
    // Nothing in the logon scanner traps errors: in the program one would end it.
    for (vb::Integer type = 1; type <= 3; ++type)
        try { AddLogon(form, LogonKey(type), type); } catch (const vb::VbError&) {}
    std::string total, active;
    refreshCheckBox(list, total, active, [] {});
    return 0;
}

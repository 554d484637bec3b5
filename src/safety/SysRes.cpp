#include "safety/SysRes.h"

#include "vb/vb.h"

namespace tessmark::safety {

namespace {

// A failed late-bound call is a run-time error with the platform's code.
void Raise(std::int32_t code) {
    if (code != 0) throw vb::VbError(code);
}

}  // namespace

SysRes::SysRes(platform::UiServices& ui, platform::SystemPort& system, std::function<MainList&()> mainForm)
    : ui_(ui), system_(system), mainForm_(std::move(mainForm)) {}

void SysRes::Form_Load() {
    Loaded = true;
    Timer1Enabled = true;
}

void SysRes::Timer1_Timer() {
    Timer1Enabled = false;
    // Never shown, the form waits here for ever.
    while (!Visible) ui_.DoEvents();
    MousePointer = platform::kMousePointerHourglass;

    platform::OsVersionInfoA version;
    version.dwOSVersionInfoSize = 148;
    system_.GetVersionExA(&version);
    MainList& main = mainForm_();
    main.AddAllKeys();
    main.refreshCheckBox();

    // 6 alone stands for the newer versions: anything above it is refused too.
    if (version.dwMajorVersion == 6 || (version.dwMajorVersion == 5 && version.dwMinorVersion >= 1)) {
        registry::VbBool unused = registry::kFalse;
        CreatePoint(unused);
        MousePointer = platform::kMousePointerDefault;
        Unload();
    } else {
        ui_.MsgBox(kNotSupported, 0, "");
        Timer1Enabled = false;
        Unload();
    }
}

void SysRes::CreatePoint(registry::VbBool&) {
    try {
        // Restore point type 12 (settings changed), event 100 (a change begins);
        // no end of the change is ever reported.
        Raise(system_.CallByMoniker(kCreatePointMoniker, "CreateRestorePoint",
                                    {"Quillon Bastion Suite " + system_.Now(), std::int16_t{12}, std::int16_t{100}}));
        Unload();
    } catch (const vb::VbError&) {
    }
}

void SysRes::ListPoints() {
    Raise(system_.CallByMoniker(kListPointsMoniker, "InstancesOf", {std::string("SystemRestore")}));
}

void SysRes::Unload() {
    if (!Loaded) return;
    Loaded = false;
    Visible = false;
    Timer1Enabled = false;
    onUnload();
}

}  // namespace tessmark::safety

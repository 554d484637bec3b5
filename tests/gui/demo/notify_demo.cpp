// Two monitor passes over the real machine with a value of the current user's
// RunOnce key renamed between, so that real notification windows stand for a
// test to drive. Ends with code 0 once the last dialog has gone.
#include <windows.h>

#include "frame/FrmMain2.h"
#include "registry/registry_module.h"
#include "vb/toplevel.h"
#include "win32/app/notify_window.h"
#include "win32/platform/win32_disk.h"
#include "win32/platform/win32_process.h"
#include "win32/platform/win32_registry.h"
#include "win32/platform/win32_ui.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    using namespace tessmark;
    const std::string key = "Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce";
    platform::win32::Win32Registry registry;
    platform::win32::Win32Disk disk;
    platform::win32::Win32Process process;
    platform::win32::Win32Ui ui("Tessmark");
    frame::FrmMain2 form(platform::Ports{registry, disk, disk, ui, process});
    form.folders = {disk.Environ("windir"), disk.Environ("ProgramFiles")};
    app::NotifyWindows views(form.monitor.forms, ui);
    const auto rename = [&](const char* from, const char* to) {
        registry::DeleteRegValue(registry, platform::reg::kCurrentUser, key, from);
        registry::SetRegString(registry, platform::reg::kCurrentUser, key, to, disk.Environ("windir") + "\\notepad.exe");
    };
    rename("TessmarkDemo2", "TessmarkDemo");
    vb::RunEvent(ui, [&] { form.SaveState(); });
    rename("TessmarkDemo", "TessmarkDemo2");
    vb::RunEvent(ui, [&] { form.StartSearch(); });
    for (MSG msg = {}; !form.monitor.forms.Loaded().empty() && GetMessageA(&msg, nullptr, 0, 0) > 0;)
        DispatchMessageA(&msg);
    return 0;
}

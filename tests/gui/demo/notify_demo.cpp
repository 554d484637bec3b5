// Two passes of the change monitor over the real machine with a change in
// between, so that real notification windows stand for a test to drive: a
// value of the current user's RunOnce key is renamed, which is one item gone
// and one new. Ends with code 0 once the last dialog has gone.
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
    constexpr const char* kKey = "Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce";
    platform::win32::Win32Registry registry;
    platform::win32::Win32Disk disk;
    platform::win32::Win32Process process;
    platform::win32::Win32Ui ui("Tessmark");
    frame::FrmMain2 form(platform::Ports{registry, disk, disk, ui, process});
    form.folders = {disk.Environ("windir"), disk.Environ("ProgramFiles")};
    app::NotifyWindows views(form.monitor.forms, ui);

    const auto root = platform::reg::kCurrentUser;
    registry::DeleteRegValue(registry, root, kKey, "TessmarkDemo2");
    registry::SetRegString(registry, root, kKey, "TessmarkDemo", disk.Environ("windir") + "\\notepad.exe");
    vb::RunEvent(ui, [&] { form.SaveState(); });
    registry::DeleteRegValue(registry, root, kKey, "TessmarkDemo");
    registry::SetRegString(registry, root, kKey, "TessmarkDemo2", disk.Environ("windir") + "\\notepad.exe");
    vb::RunEvent(ui, [&] { form.StartSearch(); });

    MSG msg = {};
    while (!form.monitor.forms.Loaded().empty() && GetMessageA(&msg, nullptr, 0, 0) > 0) {
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
    return 0;
}

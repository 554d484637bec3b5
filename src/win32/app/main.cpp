// Program entry: the one-instance rule, then the main form's message loop.
#include <windows.h>

#include "frame/modMultipleInstance.h"
#include "vb/toplevel.h"
#include "win32/app/placeholder_form.h"
#include "win32/platform/win32_process.h"
#include "win32/platform/win32_ui.h"

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
    using namespace tessmark;
    platform::win32::Win32Process process;
    platform::win32::Win32Ui ui("Tessmark");
    frame::modMultipleInstance entry(process, ui);
    app::PlaceholderForm form(instance, entry, ui);

    vb::RunEvent(ui, [&] { entry.Main([&] { form.Show(); }); });
    // With no form open, the program has nothing to live on.
    if (!form.IsOpen()) return 0;

    MSG msg = {};
    while (GetMessageA(&msg, nullptr, 0, 0) > 0) {
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
    return static_cast<int>(msg.wParam);
}

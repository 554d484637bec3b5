// Program entry: the one-instance rule, then the main form and its message loop.
#include <windows.h>

#include <memory>

#include "frame/FrmMain2.h"
#include "frame/modMultipleInstance.h"
#include "vb/toplevel.h"
#include "win32/app/main_window.h"
#include "win32/app/notify_window.h"
#include "win32/platform/win32_disk.h"
#include "win32/platform/win32_process.h"
#include "win32/platform/win32_registry.h"
#include "win32/platform/win32_ui.h"

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
    using namespace tessmark;
    platform::win32::Win32Registry registry;
    platform::win32::Win32Disk disk;
    platform::win32::Win32Process process;
    platform::win32::Win32Ui ui("Tessmark");
    frame::modMultipleInstance entry(process, ui);
    std::unique_ptr<frame::FrmMain2> form;
    std::unique_ptr<app::MainWindow> view;
    std::unique_ptr<app::NotifyWindows> notifyViews;

    vb::RunEvent(ui, [&] {
        entry.Main([&] {
            form = std::make_unique<frame::FrmMain2>(platform::Ports{registry, disk, disk, ui, process});
            form->ReleaseSingleInstance = [&entry] { entry.ReleaseSingleInstance(); };
            form->Form_Initialize();
            view = std::make_unique<app::MainWindow>(instance, *form, ui);
            form->view = view.get();
            notifyViews = std::make_unique<app::NotifyWindows>(form->monitor.forms, ui);
            // What the logic changed shows whenever it lets the message pump run.
            ui.beforeEvents = [&view] { view->Refresh(); };
            form->Form_Load();
        });
    });
    // With no form open, the program has nothing to live on.
    if (!view) return 0;

    MSG msg = {};
    while (GetMessageA(&msg, nullptr, 0, 0) > 0) {
        if (notifyViews->Key(msg)) continue;
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
    return static_cast<int>(msg.wParam);
}

// The restore-point form shown for real: its window, its first tick, and its
// end, with Wine's WMI refusing the restore point.
#include <gtest/gtest.h>
#include <windows.h>

#include <memory>

#include "machine.h"
#include "safety/SysRes.h"
#include "win32/app/sysres_window.h"
#include "win32/platform/win32_system.h"

using tessmark::safety::SysRes;
namespace machines = tessmark::testing;

namespace {

TEST(SysResWindow, ShowsItselfTicksOnceAndCloses) {
    const auto machine = machines::MakeTestMachine();
    tessmark::platform::win32::Win32System system;
    std::unique_ptr<tessmark::frame::FrmMain2> main;
    SysRes form(machine->Ui(), system, [&]() -> tessmark::frame::FrmMain2& {
        if (!main) main = std::make_unique<tessmark::frame::FrmMain2>(machine->Ports());
        return *main;
    });
    tessmark::app::SysResWindow window(GetModuleHandleA(nullptr), form, machine->Ui());
    window.Show();
    const HWND hwnd = window.hWnd();
    ASSERT_TRUE(IsWindow(hwnd));
    char caption[64] = {};
    GetWindowTextA(hwnd, caption, sizeof caption);
    EXPECT_STREQ(caption, "System Restore");
    EXPECT_TRUE(form.Timer1Enabled && form.Visible);

    // The tick comes after 2 s; the limit only keeps a broken form from hanging the suite.
    const DWORD start = GetTickCount();
    while (IsWindow(hwnd) && GetTickCount() - start < 30000) {
        MSG msg;
        if (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&msg);
            DispatchMessageA(&msg);
        } else {
            MsgWaitForMultipleObjects(0, nullptr, FALSE, 100, QS_ALLINPUT);
        }
    }
    EXPECT_FALSE(IsWindow(hwnd));
    EXPECT_FALSE(form.Loaded || form.Timer1Enabled);
    EXPECT_TRUE(main);  // the list was refreshed first

    tessmark::platform::OsVersionInfoA version;
    version.dwOSVersionInfoSize = 148;
    ASSERT_NE(system.GetVersionExA(&version), 0);
    const bool tries = version.dwMajorVersion == 6 || (version.dwMajorVersion == 5 && version.dwMinorVersion >= 1);
    EXPECT_EQ(machine->Ui().messageBoxes.size(), tries ? 0u : 1u) << version.dwMajorVersion;
}

// Wine's WMI refuses the restore point with a run-time error, which the form swallows.
TEST(SysResWindow, TheRestorePointIsRefusedWithARunTimeError) {
    tessmark::platform::win32::Win32System system;
    EXPECT_THROW(system.CallByMoniker(tessmark::safety::kCreatePointMoniker, "CreateRestorePoint",
                                      {std::string("x"), std::int16_t{12}, std::int16_t{100}}),
                 tessmark::vb::VbError);
}

}  // namespace

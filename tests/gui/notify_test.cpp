// Notification windows standing in a helper that ran two monitor passes with a
// value renamed between: what they show, where, and a click on "Discard the change".
#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "gui_driver.h"
#include "win32/app/notify_window.h"

namespace {

using namespace tessmark::gui;
namespace notify = tessmark::app::id::notify;

// A control by its place in the form's design table: 1 LblMsg, 3 LblSection, 5 to 7 the buttons, 8 LblChange.
HWND Item(HWND dialog, int index) { return GetDlgItem(dialog, notify::kFirstControl + index); }

bool DemoValueExists() {
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, "Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce", 0, KEY_READ, &key))
        return false;
    const bool found = RegQueryValueExA(key, "TessmarkDemo2", nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
    RegCloseKey(key);
    return found;
}

TEST(Notify, EachChangeStandsInItsOwnWindowAndDiscardActsOnTheMachine) {
    const std::string program = programPath;  // the helper lies beside the program
    programPath = program.substr(0, program.find_last_of('\\') + 1) + "tessmark_notify_demo.exe";
    Program demo;
    programPath = program;
    ASSERT_TRUE(demo.Started());
    HWND added = nullptr, gone = nullptr;
    ASSERT_TRUE(WaitUntil([&] {
        for (HWND w = nullptr; (w = FindWindowExA(nullptr, w, notify::kWindowClass, nullptr)) != nullptr;)
            (TextOf(Item(w, 8)).starts_with("NAdd;") ? added : gone) = w;
        return added && gone;
    }));
    EXPECT_EQ(TextOf(Item(gone, 8)), "Dele;HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce");
    EXPECT_EQ(TextOf(Item(added, 3)), "Section: Registry\\Current User\\RunOnce");
    EXPECT_TRUE(TextOf(Item(added, 1)).starts_with("TessmarkDemo2"));
    // Both in the middle of the screen, the hidden fields below the bottom edge.
    RECT a = {}, b = {}, field = {};
    GetWindowRect(added, &a);
    GetWindowRect(gone, &b);
    GetWindowRect(Item(added, 8), &field);
    EXPECT_TRUE(EqualRect(&a, &b));
    EXPECT_EQ(a.right - a.left, 400);
    EXPECT_EQ(a.bottom - a.top, 238);
    EXPECT_EQ((a.left + a.right) / 2, GetSystemMetrics(SM_CXSCREEN) / 2);
    EXPECT_GE(field.top, a.bottom);
    EXPECT_FALSE(IsWindowEnabled(Item(gone, 5)));

    ASSERT_TRUE(DemoValueExists());
    ASSERT_EQ(TextOf(Item(added, 7)), "Discard the change");
    PostMessageA(Item(added, 7), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(10, 10));
    PostMessageA(Item(added, 7), WM_LBUTTONUP, 0, MAKELPARAM(10, 10));
    EXPECT_TRUE(WaitUntil([&] { return !IsWindow(added); }));
    EXPECT_FALSE(DemoValueExists());
    PostMessageA(gone, WM_CLOSE, 0, 0);
    DWORD code = 1;
    ASSERT_TRUE(demo.WaitForExit(&code));
    EXPECT_EQ(code, 0u);
}

}  // namespace

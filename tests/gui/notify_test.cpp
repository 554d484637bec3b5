// Notification windows of the change monitor, standing in a helper program
// that ran two passes with a renamed value between: what they show, where,
// and a real click on "Discard the change".
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "gui_driver.h"
#include "win32/app/notify_window.h"

namespace {

using namespace tessmark::gui;
namespace notify = tessmark::app::id::notify;

constexpr const char* kKey = "Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce";

// A control's text by its place in the form's design table.
std::string Label(HWND dialog, int index) { return TextOf(GetDlgItem(dialog, notify::kFirstControl + index)); }

bool ValueExists(const char* name) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, kKey, 0, KEY_READ, &key) != ERROR_SUCCESS) return false;
    const bool found = RegQueryValueExA(key, name, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
    RegCloseKey(key);
    return found;
}

TEST(Notify, EachChangeStandsInItsOwnWindowAndDiscardActsOnTheMachine) {
    // The helper lies beside the program.
    const std::string program = programPath;
    programPath = program.substr(0, program.find_last_of('\\') + 1) + "tessmark_notify_demo.exe";
    Program demo;
    programPath = program;
    ASSERT_TRUE(demo.Started());

    std::vector<HWND> dialogs;
    ASSERT_TRUE(WaitUntil([&] {
        dialogs.clear();
        for (HWND w = nullptr; (w = FindWindowExA(nullptr, w, notify::kWindowClass, nullptr)) != nullptr;)
            if (IsWindowVisible(w)) dialogs.push_back(w);
        return dialogs.size() == 2;
    }));
    // One for the old name, one for the new, at the same place in the middle of the screen.
    auto added = std::find_if(dialogs.begin(), dialogs.end(), [](HWND d) { return Label(d, 8).starts_with("NAdd;"); });
    ASSERT_NE(added, dialogs.end());
    HWND gone = dialogs[added == dialogs.begin() ? 1 : 0];
    EXPECT_EQ(Label(gone, 8), "Dele;HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce");
    EXPECT_EQ(Label(*added, 3), "Section: Registry\\Current User\\RunOnce");
    EXPECT_TRUE(Label(*added, 1).starts_with("TessmarkDemo2")) << Label(*added, 1);
    RECT a = {}, b = {};
    GetWindowRect(*added, &a);
    GetWindowRect(gone, &b);
    EXPECT_TRUE(EqualRect(&a, &b));
    EXPECT_EQ(a.right - a.left, 400);
    EXPECT_EQ(a.bottom - a.top, 238);
    EXPECT_EQ((a.left + a.right) / 2, GetSystemMetrics(SM_CXSCREEN) / 2);
    // The hidden fields lie below the bottom edge.
    RECT field = {};
    GetWindowRect(GetDlgItem(*added, notify::kFirstControl + 8), &field);
    EXPECT_GE(field.top, a.bottom);
    // A deleted Run value can be put back, so Discard is on; Mark as Disabled is not.
    EXPECT_FALSE(IsWindowEnabled(GetDlgItem(gone, notify::kFirstControl + 5)));
    EXPECT_TRUE(IsWindowEnabled(GetDlgItem(gone, notify::kFirstControl + 7)));

    ASSERT_TRUE(ValueExists("TessmarkDemo2"));
    HWND discard = GetDlgItem(*added, notify::kFirstControl + 7);
    ASSERT_EQ(TextOf(discard), "Discard the change");
    PostMessageA(discard, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(10, 10));
    PostMessageA(discard, WM_LBUTTONUP, 0, MAKELPARAM(10, 10));
    EXPECT_TRUE(WaitUntil([&] { return !IsWindow(*added); }));
    EXPECT_FALSE(ValueExists("TessmarkDemo2"));

    PostMessageA(gone, WM_CLOSE, 0, 0);
    DWORD code = 1;
    ASSERT_TRUE(demo.WaitForExit(&code));
    EXPECT_EQ(code, 0u);
}

}  // namespace

// The item menu's Move round trip, and the mouse capture that keeps a press on
// the body from closing the program over the Close button.
#include <windows.h>

#include <gtest/gtest.h>

#include "gui_driver.h"
#include "machine.h"
#include "win32/app/control_ids.h"
#include "win32/platform/win32_registry.h"

namespace {

using namespace tessmark::gui;
namespace id = tessmark::app::id;
namespace reg = tessmark::platform::reg;

const std::string kRunFamily = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\";

// A mouse button as the hardware sends it, at a point of the screen.
void Press(POINT at, bool down) {
    SetCursorPos(at.x, at.y);
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = down ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP;
    SendInput(1, &input, sizeof input);
}

POINT CentreOf(HWND window) {
    RECT area;
    GetWindowRect(window, &area);
    return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
}

// The window that holds the mouse in the program's thread; false when the thread is gone.
bool CaptureIs(HWND window, HWND expected) {
    GUITHREADINFO info = {sizeof info};
    return GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info) && info.hwndCapture == expected;
}

TEST(Dialogs, MoveCopiesTheSelectedRowIntoTheChosenSectionAndKeepsTheSource) {
    tessmark::platform::win32::Win32Registry registry;
    for (auto root : {reg::kLocalMachine, reg::kCurrentUser})
        for (const char* key : {"Run", "RunOnce"}) tessmark::testing::DeleteTree(registry, root, kRunFamily + key);
    ASSERT_TRUE(tessmark::testing::SeedString(registry, reg::kLocalMachine, kRunFamily + "Run", "Alpha",
                                              "C:\\windows\\notepad.exe"));
    Program program;
    HWND window = program.WaitForMainWindow();
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(program.DismissStartMessage());

    // The main tree on All Users\Run, whose only row is selected after the population.
    HWND tree = Descendant(window, id::treeAuto), list = Descendant(window, id::ListView1);
    const auto nodes = TreeNodes(program, tree);
    ASSERT_EQ(nodes.size(), 10u);
    ClickNode(program, tree, nodes[6].item);
    ASSERT_TRUE(WaitUntil([&] { return ListRows(program, list).size() == 1; }));

    PostMessageA(list, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(5, 5));
    HWND menu = program.WaitForWindow("#32768", nullptr);
    ASSERT_NE(menu, nullptr) << "no popup";
    // Backup, Restore, Refresh, Add Program, Disable, Delete, Move.
    for (int i = 0; i < 7; ++i) PostMessageA(menu, WM_KEYDOWN, VK_DOWN, 0);
    PostMessageA(menu, WM_KEYDOWN, VK_RETURN, 0);

    HWND dialog = program.WaitForWindow(id::kDialogClass, "Move");
    ASSERT_NE(dialog, nullptr) << "no Move dialog";
    HWND moveTree = Descendant(dialog, id::moveTree);
    const auto targets = TreeNodes(program, moveTree);
    ASSERT_EQ(targets.size(), 11u);
    EXPECT_TRUE(targets[0].selected);
    ClickNode(program, moveTree, targets[9].item);  // Current User\Run Once
    ASSERT_TRUE(WaitUntil([&] { return TreeNodes(program, moveTree)[9].selected; }));
    PostMessageA(Descendant(dialog, id::cmdCommon0), BM_CLICK, 0, 0);
    ASSERT_TRUE(WaitUntil([&] { return !IsWindowVisible(dialog); }));

    char value[64] = {};
    DWORD size = sizeof value;
    EXPECT_EQ(RegGetValueA(HKEY_CURRENT_USER, (kRunFamily + "RunOnce").c_str(), "Alpha", RRF_RT_REG_SZ, nullptr, value,
                           &size),
              ERROR_SUCCESS);
    EXPECT_STREQ(value, "C:\\windows\\notepad.exe");
    EXPECT_EQ(ListRows(program, list).size(), 1u) << "the source row stays";
    tessmark::testing::DeleteTree(registry, reg::kCurrentUser, kRunFamily + "RunOnce");
}

TEST(Dialogs, OnlyAPressThatStartsOnTheCloseButtonCloses) {
    Program program;
    HWND window = program.WaitForMainWindow();
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(program.DismissStartMessage());
    SetForegroundWindow(window);
    HWND close = Descendant(window, id::CmdClose);
    RECT frame;
    GetWindowRect(window, &frame);
    const POINT body{frame.left + 450, frame.top + 535};  // between the totals and the buttons

    Press(body, true);
    ASSERT_TRUE(WaitUntil([&] { return CaptureIs(window, window); }));
    Press(CentreOf(close), false);
    ASSERT_TRUE(WaitUntil([&] { return CaptureIs(window, nullptr); }));
    EXPECT_TRUE(program.Running());

    Press(CentreOf(close), true);
    ASSERT_TRUE(WaitUntil([&] { return CaptureIs(window, close); }));
    Press(body, false);
    DWORD code = 1;
    ASSERT_TRUE(program.WaitForExit(&code));
    EXPECT_EQ(code, 0u);
}

}  // namespace

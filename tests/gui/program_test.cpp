// The real program under Wine: one instance at a time and the ways of closing it.
#include <windows.h>

#include <gtest/gtest.h>

#include <memory>

#include "gui_driver.h"
#include "win32/app/control_ids.h"

namespace {

using namespace tessmark::gui;
namespace id = tessmark::app::id;

// The program's mutex as another process sees it.
std::unique_ptr<void, decltype(&CloseHandle)> InstanceMutex() {
    return {OpenMutexA(SYNCHRONIZE | MUTEX_MODIFY_STATE, FALSE, "StringForAvoidingMultipleInstance"), CloseHandle};
}

RECT Frame(HWND window) {
    RECT frame = {};
    GetWindowRect(window, &frame);
    return frame;
}

// Another copy says so, shows no window of its own and ends with 0 on OK.
void ExpectTurnedAway() {
    Program copy;
    HWND message = copy.WaitForWindow("#32770", "App Running");
    ASSERT_NE(message, nullptr) << "no message box \"App Running\"";
    EXPECT_EQ(MessageText(message), "This application is already running");
    EXPECT_EQ(copy.VisibleWindow(id::kMainWindowClass, nullptr), nullptr);
    PressOk(message);
    EXPECT_EQ(copy.WaitForExit(), 0u);
}

// The first copy is killed in the end and so leaves its mutex abandoned, which
// still turns the next start away.
TEST(Program, SecondStartIsTurnedAwayWhileTheFirstRunsAndAfterItWasKilled) {
    Program first;
    HWND window = first.WaitForMainWindow();
    ASSERT_NE(window, nullptr) << "no window \"Tessmark\" from \"" << programPath << "\"";
    const RECT box = Frame(window);
    EXPECT_EQ(std::make_pair(box.right - box.left, box.bottom - box.top), std::make_pair(735L, 551L));
    ExpectTurnedAway();
    EXPECT_TRUE(first.Running() && IsWindow(window));

    const auto mutex = InstanceMutex();  // holds the mutex in being once the first is gone
    ASSERT_NE(mutex, nullptr);
    TerminateProcess(first.Process(), 1);
    ASSERT_TRUE(first.WaitForExit());
    SCOPED_TRACE("abandoned by the killed first copy");
    ExpectTurnedAway();
}

// A mouse button as the hardware sends it, at a point of the screen.
void Press(POINT at, bool down) {
    SetCursorPos(at.x, at.y);
    mouse_event(down ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP, 0, 0, 0, 0);
}

// The window that holds the mouse in the program's thread; false when the thread is gone.
bool CaptureIs(HWND window, HWND expected) {
    GUITHREADINFO info = {sizeof info};
    return GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info) && info.hwndCapture == expected;
}

TEST(Program, EveryWayOfClosingEndsTheProgramAndReleasesTheInstanceMutex) {
    const std::pair<const char*, void (*)(HWND window)> cases[] = {
        {"the Close button", [](HWND window) { PostMessageA(Descendant(window, id::BtnClose), BM_CLICK, 0, 0); }},
        {"the caption's close button, pressed and released",
         [](HWND window) { Click(Descendant(window, id::CmdClose)); }},
        {"a close from outside", [](HWND window) { PostMessageA(window, WM_CLOSE, 0, 0); }},
        // The window holds the mouse from a press on its body, so that only a
        // press that starts on the close button closes.
        {"the mouse: a press on the body released over the close button, then one on it",
         [](HWND window) {
             SetForegroundWindow(window);
             HWND close = Descendant(window, id::CmdClose);
             const RECT frame = Frame(window), button = Frame(close);
             // The body between the totals and the buttons.
             const POINT body{frame.left + 450, frame.top + 535}, onClose{button.left + 5, button.top + 5};
             Press(body, true);
             ASSERT_TRUE(WaitUntil([&] { return CaptureIs(window, window); }));
             Press(onClose, false);
             ASSERT_TRUE(WaitUntil([&] { return CaptureIs(window, nullptr); }));
             EXPECT_TRUE(IsWindow(window));
             Press(onClose, true);
             ASSERT_TRUE(WaitUntil([&] { return CaptureIs(window, close); }));
             Press(body, false);
         }},
    };
    for (const auto& [way, close] : cases) {
        SCOPED_TRACE(way);
        Program program;
        HWND window = program.WaitForMainWindow();
        ASSERT_NE(window, nullptr);
        ASSERT_TRUE(program.DismissStartMessage());
        const auto mutex = InstanceMutex();
        ASSERT_NE(mutex, nullptr);
        EXPECT_EQ(WaitForSingleObject(mutex.get(), 0), static_cast<DWORD>(WAIT_TIMEOUT));
        close(window);
        EXPECT_EQ(program.WaitForExit(), 0u);
        EXPECT_EQ(WaitForSingleObject(mutex.get(), 0), static_cast<DWORD>(WAIT_OBJECT_0));  // not WAIT_ABANDONED
        ReleaseMutex(mutex.get());
    }
}

}  // namespace

// The one argument left after the test options is the program under test; none is left while the tests are listed.
int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (argc >= 2) programPath = WindowsPath(argv[1]);
    return RUN_ALL_TESTS();
}

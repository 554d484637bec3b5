// The real program under Wine: one instance at a time, the ways of closing it,
// and the notification windows a helper beside it shows.
#include <windows.h>

#include <gtest/gtest.h>

#include <memory>

#include "gui_driver.h"
#include "win32/app/control_ids.h"
#include "win32/app/notify_window.h"

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

// A control by its place in the form's design table: 1 LblMsg, 3 LblSection, 5 to 7 the buttons, 8 LblChange.
HWND Item(HWND dialog, int index) { return GetDlgItem(dialog, id::notify::kFirstControl + index); }

bool DemoValueExists() {
    return RegGetValueA(HKEY_CURRENT_USER, "Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce", "TessmarkDemo2",
                        RRF_RT_ANY, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
}

TEST(Notify, EachChangeStandsInItsOwnWindowAndDiscardActsOnTheMachine) {
    // The helper lies beside the program.
    Program demo(programPath.substr(0, programPath.find_last_of('\\') + 1) + "tessmark_notify_demo.exe");
    HWND added = nullptr, gone = nullptr;
    ASSERT_TRUE(WaitUntil([&] {
        for (HWND w = nullptr; (w = FindWindowExA(nullptr, w, id::notify::kWindowClass, nullptr)) != nullptr;)
            (TextOf(Item(w, 8)).starts_with("NAdd;") ? added : gone) = w;
        return added && gone;
    }));
    EXPECT_EQ(TextOf(Item(gone, 8)), "Dele;HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce");
    EXPECT_EQ(TextOf(Item(added, 3)), "Section: Registry\\Current User\\RunOnce");
    EXPECT_TRUE(TextOf(Item(added, 1)).starts_with("TessmarkDemo2"));
    // Both in the middle of the screen, the hidden fields below the bottom edge.
    const RECT a = Frame(added), b = Frame(gone), field = Frame(Item(added, 8));
    EXPECT_TRUE(EqualRect(&a, &b));
    EXPECT_EQ((a.left + a.right) / 2, GetSystemMetrics(SM_CXSCREEN) / 2);
    EXPECT_GE(field.top, a.bottom);
    EXPECT_FALSE(IsWindowEnabled(Item(gone, 5)));

    ASSERT_TRUE(DemoValueExists());
    ASSERT_EQ(TextOf(Item(added, 7)), "Discard the change");
    Click(Item(added, 7), 10, 10);
    EXPECT_TRUE(WaitUntil([&] { return !IsWindow(added); }));
    EXPECT_FALSE(DemoValueExists());
    PostMessageA(gone, WM_CLOSE, 0, 0);
    EXPECT_EQ(demo.WaitForExit(), 0u);
}

}  // namespace

// The one argument left after the test options is the program under test; none is left while the tests are listed.
int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    if (argc >= 2) programPath = WindowsPath(argv[1]);
    return RUN_ALL_TESTS();
}

// The real program under Wine: one instance at a time, the ways of closing it, its
// bitmaps, and the notification windows a helper beside it shows.
#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "gui_driver.h"
#include "win32/app/control_ids.h"
#include "win32/app/notify_window.h"

namespace {

using namespace tessmark::gui;
namespace notify = tessmark::app::id::notify;

// The program's mutex as another process sees it.
class InstanceMutex {
public:
    InstanceMutex()
        : handle_(OpenMutexA(SYNCHRONIZE | MUTEX_MODIFY_STATE, FALSE, "StringForAvoidingMultipleInstance")) {}
    ~InstanceMutex() {
        if (handle_) CloseHandle(handle_);
    }
    InstanceMutex(const InstanceMutex&) = delete;
    InstanceMutex& operator=(const InstanceMutex&) = delete;
    bool Open() const { return handle_ != nullptr; }
    DWORD Take() const { return WaitForSingleObject(handle_, 0); }
    void Release() const { ReleaseMutex(handle_); }

private:
    HANDLE handle_;
};

// The first copy is killed in the end and so leaves its mutex abandoned, which
// still turns the next start away.
TEST(Program, SecondStartIsTurnedAwayWhileTheFirstRunsAndAfterItWasKilled) {
    Program first;
    ASSERT_TRUE(first.Started()) << "cannot start \"" << programPath << "\"";
    HWND window = first.WaitForMainWindow();
    ASSERT_NE(window, nullptr) << "no window \"Tessmark\"";
    RECT box = {};
    GetWindowRect(window, &box);
    EXPECT_EQ(box.right - box.left, 735);
    EXPECT_EQ(box.bottom - box.top, 551);

    Program second;
    ASSERT_TRUE(second.Started());
    HWND message = second.WaitForWindow("#32770", "App Running");
    ASSERT_NE(message, nullptr) << "no message box \"App Running\"";
    EXPECT_EQ(StaticTexts(message), std::vector<std::string>{"This application is already running"});
    EXPECT_EQ(second.VisibleWindow(tessmark::app::id::kMainWindowClass, nullptr), nullptr);
    HWND ok = GetDlgItem(message, IDOK);
    ASSERT_NE(ok, nullptr);
    EXPECT_EQ(TextOf(ok), "OK");
    PressOk(message);
    DWORD code = 1;
    ASSERT_TRUE(second.WaitForExit(&code)) << "the second copy did not end";
    EXPECT_EQ(code, 0u);
    EXPECT_TRUE(first.Running());
    EXPECT_TRUE(IsWindow(window));

    InstanceMutex mutex;
    ASSERT_TRUE(mutex.Open());
    TerminateProcess(first.Process(), 1);
    ASSERT_TRUE(first.WaitForExit(&code));
    Program next;
    message = next.WaitForWindow("#32770", "App Running");
    ASSERT_NE(message, nullptr) << "an abandoned mutex should count as a running copy";
    PressOk(message);
    EXPECT_TRUE(next.WaitForExit(&code));
}

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

TEST(Program, EveryWayOfClosingEndsTheProgramAndReleasesTheInstanceMutex) {
    namespace id = tessmark::app::id;
    struct Case {
        const char* way;
        void (*close)(const Program& program, HWND window);
    } cases[] = {
        {"the Close button",
         [](const Program&, HWND window) { PostMessageA(Descendant(window, id::BtnClose), BM_CLICK, 0, 0); }},
        {"the caption's close button, pressed and released",
         [](const Program&, HWND window) {
             HWND button = Descendant(window, id::CmdClose);
             PostMessageA(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
             PostMessageA(button, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
         }},
        {"a close from outside", [](const Program&, HWND window) { PostMessageA(window, WM_CLOSE, 0, 0); }},
        // The window holds the mouse from a press on its body, so that only a
        // press that starts on the close button closes.
        {"the mouse: a press on the body released over the close button, then one on it",
         [](const Program& program, HWND window) {
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
         }},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.way);
        Program program;
        HWND window = program.WaitForMainWindow();
        ASSERT_NE(window, nullptr);
        ASSERT_TRUE(program.DismissStartMessage());
        InstanceMutex mutex;
        ASSERT_TRUE(mutex.Open());
        EXPECT_EQ(mutex.Take(), static_cast<DWORD>(WAIT_TIMEOUT));

        c.close(program, window);
        DWORD code = 1;
        ASSERT_TRUE(program.WaitForExit(&code));
        EXPECT_EQ(code, 0u);
        EXPECT_EQ(mutex.Take(), static_cast<DWORD>(WAIT_OBJECT_0));  // not WAIT_ABANDONED
        mutex.Release();
    }
}

// The caption buttons' bitmaps load by the names the window model gives them.
TEST(Resources, CaptionButtonBitmapsLoadByTheirNames) {
    HMODULE module = LoadLibraryExA(programPath.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    ASSERT_NE(module, nullptr) << programPath;
    for (const char* name : {"close_normal", "close_hover", "CLOSE_DOWN", "minimize_normal", "minimize_hover",
                             "MINIMIZE_DOWN"}) {
        HBITMAP bitmap = LoadBitmapA(module, name);
        EXPECT_NE(bitmap, nullptr) << name;
        if (bitmap) DeleteObject(bitmap);
    }
    FreeLibrary(module);
}

// A control by its place in the form's design table: 1 LblMsg, 3 LblSection, 5 to 7 the buttons, 8 LblChange.
HWND Item(HWND dialog, int index) { return GetDlgItem(dialog, notify::kFirstControl + index); }

bool DemoValueExists() {
    return RegGetValueA(HKEY_CURRENT_USER, "Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce", "TessmarkDemo2",
                        RRF_RT_ANY, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
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

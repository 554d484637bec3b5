// The real program under Wine: one instance at a time, its window and its bitmaps.
#include <windows.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "gui_driver.h"
#include "win32/app/control_ids.h"

namespace {

using namespace tessmark::gui;

TEST(Program, SecondStartIsTurnedAwayWhileTheFirstRunsOnUntilClosed) {
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
    PostMessageA(message, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), reinterpret_cast<LPARAM>(ok));
    DWORD code = 1;
    ASSERT_TRUE(second.WaitForExit(&code)) << "the second copy did not end";
    EXPECT_EQ(code, 0u);
    EXPECT_TRUE(first.Running());
    EXPECT_TRUE(IsWindow(window));

    PostMessageA(window, WM_CLOSE, 0, 0);
    ASSERT_TRUE(first.WaitForExit(&code)) << "closing the window did not end the program";
    EXPECT_EQ(code, 0u);
}

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

TEST(Program, EveryWayOfClosingEndsTheProgramAndReleasesTheInstanceMutex) {
    namespace id = tessmark::app::id;
    struct Case {
        const char* way;
        void (*close)(HWND window);
    } cases[] = {
        {"the Close button", [](HWND window) { PostMessageA(Descendant(window, id::BtnClose), BM_CLICK, 0, 0); }},
        {"the caption's close button, pressed and released",
         [](HWND window) {
             HWND button = Descendant(window, id::CmdClose);
             PostMessageA(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
             PostMessageA(button, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
         }},
        {"a close from outside", [](HWND window) { PostMessageA(window, WM_CLOSE, 0, 0); }},
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

        c.close(window);
        DWORD code = 1;
        ASSERT_TRUE(program.WaitForExit(&code));
        EXPECT_EQ(code, 0u);
        EXPECT_EQ(mutex.Take(), static_cast<DWORD>(WAIT_OBJECT_0));  // not WAIT_ABANDONED
        mutex.Release();
    }
}

TEST(Program, KilledProgramLeavesAnAbandonedMutexThatTurnsTheNextStartAway) {
    std::unique_ptr<InstanceMutex> mutex;
    {
        Program killed;
        ASSERT_NE(killed.WaitForMainWindow(), nullptr);
        mutex = std::make_unique<InstanceMutex>();
    }  // terminated here, still owning the mutex
    ASSERT_TRUE(mutex->Open());

    Program next;
    HWND message = next.WaitForWindow("#32770", "App Running");
    ASSERT_NE(message, nullptr) << "an abandoned mutex should count as a running copy";
    PostMessageA(message, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), 0);
    DWORD code = 1;
    EXPECT_TRUE(next.WaitForExit(&code));
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

}  // namespace

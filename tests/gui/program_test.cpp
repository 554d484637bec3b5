// The real program under Wine: one instance at a time, its window and its resources.
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

// Resources, read from the file without running it.
class Resources : public ::testing::Test {
protected:
    void SetUp() override {
        module = LoadLibraryExA(programPath.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
        ASSERT_NE(module, nullptr) << programPath;
    }
    void TearDown() override {
        if (module) FreeLibrary(module);
    }
    HMODULE module = nullptr;
};

TEST_F(Resources, CaptionButtonBitmapsLoadByTheirNames) {
    struct Case { const char* name; LONG width; } cases[] = {
        {"close_normal", 43},    {"close_hover", 43},    {"CLOSE_DOWN", 43},
        {"minimize_normal", 26}, {"minimize_hover", 26}, {"MINIMIZE_DOWN", 26},
    };
    for (const auto& c : cases) {
        HBITMAP bitmap = LoadBitmapA(module, c.name);
        ASSERT_NE(bitmap, nullptr) << c.name;
        BITMAP info = {};
        GetObjectA(bitmap, sizeof info, &info);
        EXPECT_EQ(info.bmWidth, c.width) << c.name;
        EXPECT_EQ(info.bmHeight, 17) << c.name;
        DeleteObject(bitmap);
    }
}

TEST_F(Resources, Icon101HoldsSmallAndLargeImages) {
    HRSRC group = FindResourceA(module, MAKEINTRESOURCEA(101), MAKEINTRESOURCEA(14));  // RT_GROUP_ICON
    ASSERT_NE(group, nullptr);
    auto* directory = static_cast<BYTE*>(LockResource(LoadResource(module, group)));
    for (int size : {16, 32}) {
        int id = LookupIconIdFromDirectoryEx(directory, TRUE, size, size, LR_DEFAULTCOLOR);
        HRSRC image = FindResourceA(module, MAKEINTRESOURCEA(id), MAKEINTRESOURCEA(3));  // RT_ICON
        ASSERT_NE(image, nullptr) << size;
        auto* header = static_cast<BITMAPINFOHEADER*>(LockResource(LoadResource(module, image)));
        EXPECT_EQ(header->biWidth, size);
    }
}

TEST_F(Resources, ManifestAsksForCommonControlsSix) {
    HRSRC found = FindResourceA(module, MAKEINTRESOURCEA(1), MAKEINTRESOURCEA(24));  // RT_MANIFEST
    ASSERT_NE(found, nullptr);
    std::string manifest(static_cast<const char*>(LockResource(LoadResource(module, found))),
                         SizeofResource(module, found));
    auto controls = manifest.find("name=\"Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\"");
    EXPECT_NE(controls, std::string::npos) << manifest;
}

}  // namespace

// Start-up under the one-instance rule, with processes and the desktop in memory;
// the program tests under Wine cover the first start, the release on closing
// and an abandoned mutex.
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "frame/modMultipleInstance.h"
#include "platform/memory/memory_process.h"

using namespace tessmark;
using platform::WindowHandle;
using platform::memory::KernelNamespace;
using platform::memory::MemoryProcess;
using std::string;

namespace {

// A desktop that finds windows by exact title and keeps the calls that matter here in order.
class OrderedUi final : public platform::UiServices {
public:
    std::vector<std::pair<string, WindowHandle>> windows;
    std::vector<string> calls;

    int MsgBox(const string& prompt, int style, const string& title) override {
        calls.push_back("MsgBox " + std::to_string(style) + " " + title + ": " + prompt);
        return 1;
    }
    WindowHandle FindWindowA(const char* className, const char* title) override {
        calls.push_back(string("FindWindowA ") + (className ? className : "(null)") + ", " + (title ? title : "(null)"));
        for (const auto& [caption, handle] : windows)
            if (title && caption == title) return handle;
        return 0;
    }
    bool ShowWindow(WindowHandle window, int command) override {
        calls.push_back("ShowWindow " + std::to_string(window) + ", " + std::to_string(command));
        return true;
    }
    bool SetForegroundWindow(WindowHandle window) override {
        calls.push_back("SetForegroundWindow " + std::to_string(window));
        return true;
    }
    void DoEvents() override {}
    void SetMousePointer(int) override {}
    int MousePointer() const override { return 0; }
    void Beep() override {}
    void ActivityLog(const string&) override {}
    void RemoveTrayIcon() override {}
    void ShowAboutBox() override {}
    bool ShowOpen(const string&, string&, WindowHandle) override { return false; }
    void DragForm(WindowHandle) override {}
    [[noreturn]] void EndProcess(int) override { std::abort(); }
};

// One started copy of the program on a shared machine.
struct Instance {
    explicit Instance(std::shared_ptr<KernelNamespace> space) : process(std::move(space)), entry(process, ui) {}
    // Runs Main; true when the main form was shown.
    bool Start() {
        bool shown = false;
        entry.Main([&] { shown = true; });
        return shown;
    }
    MemoryProcess process;
    OrderedUi ui;
    frame::modMultipleInstance entry;
};

const string kAlreadyRunning = "MsgBox 64 App Running: This application is already running";

TEST(SingleInstance, SecondStartReportsFirstThenLooksForTheLongTitle) {
    const WindowHandle kQuillon = 0x1234, kShort = 0x99;
    const std::pair<std::vector<std::pair<string, WindowHandle>>, std::vector<string>> cases[] = {
        // A window with the long title is brought forward,
        {{{"Tessmark", kShort}, {"Quillon Tessmark", kQuillon}},
         {kAlreadyRunning, "FindWindowA (null), Quillon Tessmark", "ShowWindow 4660, 5", "SetForegroundWindow 4660"}},
        // the first instance's own caption is not looked for.
        {{{"Tessmark", kShort}}, {kAlreadyRunning, "FindWindowA (null), Quillon Tessmark"}},
    };
    for (const auto& [windows, calls] : cases) {
        auto space = std::make_shared<KernelNamespace>();
        Instance first(space), second(space);
        ASSERT_TRUE(first.Start());
        second.ui.windows = windows;
        EXPECT_FALSE(second.Start());
        EXPECT_EQ(second.ui.calls, calls);
        // The second process let go of its handle; the first still owns the mutex.
        const auto& mutex = space->mutexes["StringForAvoidingMultipleInstance"];
        EXPECT_EQ(mutex.references, 1);
        EXPECT_EQ(mutex.owner, &first.process);
    }
}

TEST(SingleInstance, RefusedMutexIsReportedAndInstancesRunSideBySide) {
    auto space = std::make_shared<KernelNamespace>();
    space->refuseCreation = true;
    Instance first(space), second(space);
    EXPECT_TRUE(first.Start());
    EXPECT_TRUE(second.Start());
    for (Instance* i : {&first, &second}) {
        EXPECT_EQ(i->entry.InstanceMutex, 0u);
        EXPECT_EQ(i->ui.calls, std::vector<string>{"MsgBox 16 Error: The mechanism to ensure only one instance of "
                                                   "this app has failed for unknown reasons."});
    }
}

}  // namespace

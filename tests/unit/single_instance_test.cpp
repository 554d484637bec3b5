// Start-up under the one-instance rule, with processes and the desktop in memory;
// the program tests under Wine cover the first start, the release on closing
// and an abandoned mutex.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "frame/modMultipleInstance.h"
#include "platform/memory/memory_process.h"
#include "platform/memory/recording_ui.h"

using namespace tessmark;
using platform::WindowHandle;
using platform::memory::KernelNamespace;
using platform::memory::MemoryProcess;
using platform::memory::MessageBoxCall;
using platform::memory::RecordingUi;
using std::string;


namespace {

// The recording desktop, plus one list of the calls that matter here in the order they came.
class OrderedUi final : public platform::UiServices {
public:
    RecordingUi recorded;
    std::vector<string> calls;

    int MsgBox(const string& prompt, int style, const string& title) override {
        calls.push_back("MsgBox " + title);
        return recorded.MsgBox(prompt, style, title);
    }
    void DoEvents() override { recorded.DoEvents(); }
    void SetMousePointer(int pointer) override { recorded.SetMousePointer(pointer); }
    int MousePointer() const override { return recorded.MousePointer(); }
    void Beep() override { recorded.Beep(); }
    void ActivityLog(const string& line) override { recorded.ActivityLog(line); }
    void RemoveTrayIcon() override { recorded.RemoveTrayIcon(); }
    void ShowAboutBox() override { recorded.ShowAboutBox(); }
    bool ShowOpen(const string& filter, string& fileName, WindowHandle owner) override {
        return recorded.ShowOpen(filter, fileName, owner);
    }
    void DragForm(WindowHandle window) override { recorded.DragForm(window); }
    WindowHandle FindWindowA(const char* className, const char* title) override {
        calls.push_back(string("FindWindowA ") + (className ? className : "(null)") + ", " + (title ? title : "(null)"));
        return recorded.FindWindowA(className, title);
    }
    bool ShowWindow(WindowHandle window, int command) override {
        calls.push_back("ShowWindow " + std::to_string(window) + ", " + std::to_string(command));
        return recorded.ShowWindow(window, command);
    }
    bool SetForegroundWindow(WindowHandle window) override {
        calls.push_back("SetForegroundWindow " + std::to_string(window));
        return recorded.SetForegroundWindow(window);
    }
    [[noreturn]] void EndProcess(int exitCode) override { recorded.EndProcess(exitCode); }
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

const char* const kMutexName = "StringForAvoidingMultipleInstance";
const MessageBoxCall kAlreadyRunning{"This application is already running", 64, "App Running"};
const MessageBoxCall kMutexFailed{
    "The mechanism to ensure only one instance of this app has failed for unknown reasons.", 16, "Error"};

TEST(SingleInstance, SecondStartReportsFirstThenLooksForTheLongTitle) {
    const WindowHandle kQuillon = 0x1234, kShort = 0x99;
    struct Case {
        const char* name;
        std::vector<std::pair<string, WindowHandle>> windows;
        std::vector<string> calls;
    } cases[] = {
        {"a window with the long title is brought forward",
         {{"Tessmark", kShort}, {"Quillon Tessmark", kQuillon}},
         {"MsgBox App Running", "FindWindowA (null), Quillon Tessmark", "ShowWindow 4660, 5",
          "SetForegroundWindow 4660"}},
        {"the first instance's own caption is not looked for",
         {{"Tessmark", kShort}},
         {"MsgBox App Running", "FindWindowA (null), Quillon Tessmark"}},
    };
    for (const auto& c : cases) {
        auto space = std::make_shared<KernelNamespace>();
        Instance first(space), second(space);
        ASSERT_TRUE(first.Start());
        second.ui.recorded.windows = c.windows;

        EXPECT_FALSE(second.Start()) << c.name;
        EXPECT_EQ(second.ui.calls, c.calls) << c.name;
        EXPECT_EQ(second.ui.recorded.messageBoxes, std::vector<MessageBoxCall>{kAlreadyRunning}) << c.name;
        // The second process let go of its handle; the first still owns the mutex.
        EXPECT_EQ(space->mutexes[kMutexName].references, 1) << c.name;
        EXPECT_EQ(space->mutexes[kMutexName].owner, &first.process) << c.name;
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
        EXPECT_EQ(i->ui.recorded.messageBoxes, std::vector<MessageBoxCall>{kMutexFailed});
        EXPECT_EQ(i->ui.calls, std::vector<string>{"MsgBox Error"});
    }
}

}  // namespace

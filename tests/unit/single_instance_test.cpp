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
using Windows = std::vector<std::pair<string, WindowHandle>>;

namespace {

// One copy of the program on a shared machine, with a desktop that finds windows by exact title
// and keeps the calls that matter here in order.
class Instance final : public platform::UiServices {
public:
    explicit Instance(std::shared_ptr<KernelNamespace> space) : process(std::move(space)) {}
    // Runs Main; true when the main form was shown.
    bool Start() {
        bool shown = false;
        entry.Main([&] { shown = true; });
        return shown;
    }
    MemoryProcess process;
    frame::modMultipleInstance entry{process, *this};
    Windows windows;
    std::vector<string> calls;

    int MsgBox(const string& prompt, int style, const string& title) override {
        calls.push_back("MsgBox " + std::to_string(style) + " " + title + ": " + prompt);
        return 1;
    }
    WindowHandle FindWindowA(const char* className, const char* title) override {
        const string arguments = string(className ? className : "(null)") + ", " + (title ? title : "(null)");
        calls.push_back("FindWindowA " + arguments);
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

TEST(SingleInstance, SecondStartReportsFirstThenLooksForTheLongTitleUnlessTheMutexIsRefused) {
    const WindowHandle kQuillon = 0x1234, kShort = 0x99;
    const string running = "MsgBox 64 App Running: This application is already running";
    const string refused =
        "MsgBox 16 Error: The mechanism to ensure only one instance of this app has failed for unknown reasons.";
    struct Case { bool refuse; Windows windows; std::vector<string> first, second; } cases[] = {
        // A window with the long title is brought forward,
        {false, {{"Tessmark", kShort}, {"Quillon Tessmark", kQuillon}}, {},
         {running, "FindWindowA (null), Quillon Tessmark", "ShowWindow 4660, 5", "SetForegroundWindow 4660"}},
        // the first instance's own caption is not looked for,
        {false, {{"Tessmark", kShort}}, {}, {running, "FindWindowA (null), Quillon Tessmark"}},
        // and with the mutex refused both report it and run side by side.
        {true, {{"Quillon Tessmark", kQuillon}}, {refused}, {refused}},
    };
    for (const auto& c : cases) {
        auto space = std::make_shared<KernelNamespace>();
        space->refuseCreation = c.refuse;
        Instance first(space), second(space);
        second.windows = c.windows;
        EXPECT_TRUE(first.Start());
        EXPECT_EQ(second.Start(), c.refuse);
        EXPECT_EQ(first.calls, c.first);
        EXPECT_EQ(second.calls, c.second);
        EXPECT_EQ(first.entry.InstanceMutex == 0, c.refuse);
        // The second process let go of its handle; the first still owns the mutex.
        const auto& mutex = space->mutexes["StringForAvoidingMultipleInstance"];
        EXPECT_EQ(mutex.references, c.refuse ? 0 : 1);
        EXPECT_EQ(mutex.owner, c.refuse ? nullptr : &first.process);
    }
}

}  // namespace

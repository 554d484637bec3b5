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
using platform::memory::MessageBoxCall;

namespace {

// One copy of the program on a shared machine; true when it showed its main form.
struct Instance {
    explicit Instance(std::shared_ptr<platform::memory::KernelNamespace> space) : process(std::move(space)) {}
    bool Start() {
        bool shown = false;
        entry.Main([&] { shown = true; });
        return shown;
    }
    platform::memory::MemoryProcess process;
    platform::memory::RecordingUi ui;
    frame::modMultipleInstance entry{process, ui};
};

TEST(SingleInstance, SecondStartReportsFirstThenBringsTheLongTitleForwardUnlessTheMutexIsRefused) {
    const WindowHandle kQuillon = 0x1234, kShort = 0x99;
    const MessageBoxCall running{"This application is already running", 64, "App Running"};
    const MessageBoxCall refused{"The mechanism to ensure only one instance of this app has failed for unknown reasons.",
                                 16, "Error"};
    struct Case {
        bool refuse;
        std::vector<std::pair<std::string, WindowHandle>> windows;
        std::vector<MessageBoxCall> first, second;
        std::vector<WindowHandle> forward;
    } cases[] = {
        // A window with the long title is brought forward; the first instance's own caption is not looked for;
        {false, {{"Tessmark", kShort}, {"Quillon Tessmark", kQuillon}}, {}, {running}, {kQuillon}},
        {false, {{"Tessmark", kShort}}, {}, {running}, {}},
        // with the mutex refused both report it and run side by side.
        {true, {{"Quillon Tessmark", kQuillon}}, {refused}, {refused}, {}},
    };
    for (const auto& c : cases) {
        auto space = std::make_shared<platform::memory::KernelNamespace>();
        space->refuseCreation = c.refuse;
        Instance first(space), second(space);
        second.ui.windows = c.windows;
        EXPECT_TRUE(first.Start());
        EXPECT_EQ(second.Start(), c.refuse);
        EXPECT_EQ(first.ui.messageBoxes, c.first);
        EXPECT_EQ(second.ui.messageBoxes, c.second);
        EXPECT_EQ(second.ui.foregrounded, c.forward);
        std::vector<std::pair<WindowHandle, int>> shown;
        for (WindowHandle w : c.forward) shown.push_back({w, 5});
        EXPECT_EQ(second.ui.shown, shown);
        EXPECT_EQ(first.entry.InstanceMutex == 0, c.refuse);
        // The second process let go of its handle; the first still owns the mutex.
        const auto& mutex = space->mutexes["StringForAvoidingMultipleInstance"];
        EXPECT_EQ(mutex.references, c.refuse ? 0 : 1);
        EXPECT_EQ(mutex.owner, c.refuse ? nullptr : &first.process);
    }
}

}  // namespace

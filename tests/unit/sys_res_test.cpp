// The restore-point form's first tick: the main list is refreshed, then the
// version decides between a restore point and the message, and the form goes.
#include <gtest/gtest.h>

#include <memory>

#include "machine.h"
#include "platform/memory/memory_system.h"
#include "safety/SysRes.h"

using tessmark::safety::SysRes;
namespace machines = tessmark::testing;
namespace reg = tessmark::platform::reg;

namespace {

struct Tick {
    std::unique_ptr<machines::TestMachine> machine = machines::MakeTestMachine();
    tessmark::platform::memory::MemorySystem system;
    std::unique_ptr<tessmark::frame::FrmMain2> main;
    SysRes form{machine->Ui(), system, [this]() -> tessmark::frame::FrmMain2& {
                    if (!main) main = std::make_unique<tessmark::frame::FrmMain2>(machine->Ports());
                    return *main;
                }};
    int unloads = 0;

    void Run(std::uint32_t major, std::uint32_t minor) {
        system.major = major;
        system.minor = minor;
        form.onUnload = [this] { ++unloads; };
        form.Form_Load();
        EXPECT_TRUE(form.Timer1Enabled);
        form.Visible = true;
        form.Timer1_Timer();
    }
};

TEST(SysRes, VersionDecidesBetweenARestorePointAndTheMessage) {
    struct Case { std::uint32_t major, minor; bool tries; } cases[] = {
        {4, 90, false}, {5, 0, false}, {5, 1, true}, {5, 2, true}, {6, 0, true}, {6, 3, true}, {7, 0, false},
        {10, 0, false},
    };
    for (const auto& c : cases) {
        Tick tick;
        ASSERT_TRUE(machines::SeedString(tick.machine->Registry(), reg::kLocalMachine,
                                         "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run", "Pad", "C:\\pad.exe"));
        tick.Run(c.major, c.minor);
        const std::string version = std::to_string(c.major) + "." + std::to_string(c.minor);
        EXPECT_EQ(tick.system.sizesSeen, std::vector<std::uint32_t>{148}) << version;
        ASSERT_TRUE(tick.main) << version;
        EXPECT_EQ(tick.main->ListView1.Count(), 1) << version;  // refreshed before the decision
        EXPECT_EQ(tick.system.calls.size(), c.tries ? 1u : 0u) << version;
        const auto& boxes = tick.machine->Ui().messageBoxes;
        ASSERT_EQ(boxes.size(), c.tries ? 0u : 1u) << version;
        if (!c.tries) EXPECT_EQ(boxes[0].prompt, tessmark::safety::kNotSupported);
        // Only the restore-point road puts the pointer back.
        EXPECT_EQ(tick.form.MousePointer, c.tries ? 0 : 11) << version;
        EXPECT_EQ(tick.unloads, 1) << version;
        EXPECT_FALSE(tick.form.Timer1Enabled || tick.form.Loaded) << version;
    }
}

TEST(SysRes, TheCallIsLateBoundAndEveryFailureIsSwallowed) {
    Tick tick;
    tick.system.failWith = static_cast<int>(0x80004001);  // not implemented, as Wine answers
    tick.Run(5, 1);
    ASSERT_EQ(tick.system.calls.size(), 1u);
    const auto& call = tick.system.calls[0];
    EXPECT_EQ(call.moniker, "winmgmts:{impersonationLevel=impersonate}!root/default:SystemRestore");
    EXPECT_EQ(call.method, "CreateRestorePoint");
    using Arg = tessmark::platform::LateBoundArg;
    EXPECT_EQ(call.args, (std::vector<Arg>{Arg{"Quillon Bastion Suite 11/24/2026 3:35:49 PM"},
                                           Arg{std::int16_t{12}}, Arg{std::int16_t{100}}}));
    EXPECT_TRUE(tick.machine->Ui().messageBoxes.empty());
    EXPECT_EQ(tick.unloads, 1);
}

}  // namespace

// The restore-point form's first tick: the main list is refreshed, then the
// version decides between a restore point and the message, and the form goes.
#include <gtest/gtest.h>

#include <memory>

#include "frame/FrmMain2.h"
#include "machine.h"
#include "platform/memory/memory_system.h"
#include "safety/SysRes.h"

using tessmark::safety::SysRes;
namespace machines = tessmark::testing;
namespace reg = tessmark::platform::reg;
using Boxes = std::vector<tessmark::platform::memory::MessageBoxCall>;

namespace {

// A failing restore point is swallowed, as when Wine answers "not implemented".
TEST(SysRes, VersionDecidesBetweenARestorePointAndTheMessage) {
    using Arg = tessmark::platform::LateBoundArg;
    const std::vector<Arg> args = {Arg{"Quillon Bastion Suite 11/24/2026 3:35:49 PM"}, Arg{std::int16_t{12}},
                                   Arg{std::int16_t{100}}};
    const std::string moniker = "winmgmts:{impersonationLevel=impersonate}!root/default:SystemRestore";
    using Calls = std::vector<std::tuple<std::string, std::string, std::vector<Arg>>>;
    struct Case { std::uint32_t major, minor; bool tries; int failWith = 0; } cases[] = {
        {4, 90, false}, {5, 0, false}, {5, 1, true}, {5, 2, true}, {6, 0, true}, {6, 3, true}, {7, 0, false},
        {10, 0, false}, {5, 1, true, static_cast<int>(0x80004001)},
    };
    for (const auto& c : cases) {
        const auto machine = machines::MakeTestMachine();
        tessmark::platform::memory::MemorySystem system;
        system.major = c.major;
        system.minor = c.minor;
        system.failWith = c.failWith;
        std::unique_ptr<tessmark::frame::FrmMain2> main;
        SysRes form(machine->Ui(), system, [&]() -> tessmark::frame::FrmMain2& {
            if (!main) main = std::make_unique<tessmark::frame::FrmMain2>(machine->Ports());
            return *main;
        });
        int unloads = 0;
        form.onUnload = [&] { ++unloads; };
        ASSERT_TRUE(machines::SeedString(machine->Registry(), reg::kLocalMachine,
                                         "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run", "Pad", "C:\\pad.exe"));
        form.Form_Load();
        EXPECT_TRUE(form.Timer1Enabled);
        form.Visible = true;
        form.Timer1_Timer();
        const std::string version = std::to_string(c.major) + "." + std::to_string(c.minor);
        EXPECT_EQ(system.sizesSeen, std::vector<std::uint32_t>{148}) << version;
        ASSERT_TRUE(main) << version;
        EXPECT_EQ(main->ListView1.Count(), 1) << version;  // refreshed before the decision
        Calls calls;
        for (const auto& call : system.calls) calls.emplace_back(call.moniker, call.method, call.args);
        EXPECT_EQ(calls, (c.tries ? Calls{{moniker, "CreateRestorePoint", args}} : Calls{})) << version;
        EXPECT_EQ(machine->Ui().messageBoxes, (c.tries ? Boxes{} : Boxes{{tessmark::safety::kNotSupported, 0, ""}}))
            << version;
        // Only the restore-point road puts the pointer back; either way the form goes.
        EXPECT_EQ(std::make_tuple(form.MousePointer, unloads, form.Timer1Enabled, form.Loaded),
                  std::make_tuple(c.tries ? 0 : 11, 1, false, false))
            << version;
        // Nothing calls it: the collection is asked for, and a failure raises.
        system.calls.clear();
        if (c.failWith) EXPECT_THROW(form.ListPoints(), tessmark::vb::VbError); else form.ListPoints();
        ASSERT_EQ(system.calls.size(), 1u);
        EXPECT_EQ(std::make_tuple(system.calls[0].moniker, system.calls[0].method, system.calls[0].args),
                  std::make_tuple("winmgmts:root/default", "InstancesOf", std::vector<Arg>{Arg{"SystemRestore"}}));
    }
}

}  // namespace

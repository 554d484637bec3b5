// The forms' models on memory machines: the notification's keys and design, menus under a modal dialog, the
// restore-point form, start-up under the one-instance rule, and the pass that turns raw rows into what is shown.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "discovery/RowServices.h"
#include "frame/FrmMain2.h"
#include "frame/modMultipleInstance.h"
#include "machine.h"
#include "platform/memory/memory_process.h"
#include "platform/memory/memory_system.h"
#include "platform/memory/recording_ui.h"
#include "safety/SysRes.h"
#include "scripted_view.h"
#include "vb/vb.h"

using tessmark::safety::SysRes;
namespace machines = tessmark::testing;
namespace reg = tessmark::platform::reg;
using Boxes = std::vector<tessmark::platform::memory::MessageBoxCall>;
using namespace tessmark;
using platform::WindowHandle;
using platform::memory::MessageBoxCall;

namespace {

// Tab and Shift+Tab go round the enabled buttons in tab order, from the first (Shift: the last).
TEST(FrmNotify, TabAndShiftTabGoRoundTheEnabledButtonsInTabOrder) {
    const auto machine = tessmark::testing::MakeTestMachine();
    tessmark::frame::FrmMain2 main(machine->Ports());
    tessmark::monitor::FrmNotify& form = main.monitor.forms.New();
    const struct { bool disable, allow, discard; const char *tab, *shiftTab; } cases[] = {
        {true, true, true, "CmdDisable CmdAllow CmdDiscard CmdDisable ", "CmdDiscard CmdAllow CmdDisable CmdDiscard "},
        {false, true, true, "CmdAllow CmdDiscard CmdAllow CmdDiscard ", "CmdDiscard CmdAllow CmdDiscard CmdAllow "},
        {false, true, false, "CmdAllow CmdAllow CmdAllow CmdAllow ", "CmdAllow CmdAllow CmdAllow CmdAllow "},
        {false, false, false, "    ", "    "},
    };
    for (const auto& c : cases) {
        std::tie(form.CmdDisable.Enabled, form.CmdAllow.Enabled, form.CmdDiscard.Enabled) =
            std::tie(c.disable, c.allow, c.discard);
        for (bool back : {false, true}) {
            std::string walk;
            std::string_view at;
            for (int press = 0; press < 4; ++press) walk += std::string(at = form.NextButton(at, back)) + " ";
            EXPECT_EQ(walk, back ? c.shiftTab : c.tab) << c.disable << c.allow << c.discard;
        }
    }
}

// The design the view lays the notification out by: sizes, then each control's place, size and font.
TEST(FrmNotify, DesignIsTheOneDrawn) {
    using namespace tessmark::monitor;
    std::string design;
    for (int n : {kNotifyWidth, kNotifyHeight, kNotifyBackgroundWidth, kNotifyBackgroundHeight, kNotifyPanelWidth,
                  kNotifyPanelHeight, kNotifyCloseWidth, kNotifyCloseHeight})
        design += std::to_string(n) + " ";
    for (const NotifyControl& c : kNotifyControls)
        design += "\n" + std::string(c.name) + (c.button ? " button " : " label ") + std::to_string(c.left) + "," +
                  std::to_string(c.top) + " " + std::to_string(c.width) + "x" + std::to_string(c.height) + " font " +
                  std::to_string(static_cast<int>(c.font));
    EXPECT_EQ(tessmark::testing::DigestOf(*tessmark::testing::MakeTestMachine(), design),
              "034b0f26f40253955ec541ef9c61daa77f737479a9cf90de06ccf27ab2f53b86") << design;
}

// The tray's menu, as a right click on the notification area would ask for it.
TEST(FrmMain2, NoMenuOpensWhileADialogIsModal) {
    const auto machine = tessmark::testing::MakeTestMachine();
    tessmark::frame::FrmMain2 main(machine->Ports());
    tessmark::testing::ScriptedView view;
    main.view = &view;
    main.treeAuto.Nodes = {{"runexall", "Run"}};
    main.treeAuto.selected = 0;
    main.ListView1.Select(main.ListView1.Add());
    auto trayMenu = [&] { main.pictray_MouseDown(2, 0, 517 * 15, 0); };
    view.edit = [&](tessmark::forms::FrmEdit&) { trayMenu(); };
    main.mnuProp_Click();
    trayMenu();
    EXPECT_EQ(view.popups, std::vector<std::string>{"mnutrayoption"});
}

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
        EXPECT_EQ(machine->Ui().messageBoxes, (c.tries ? Boxes{}
                      : Boxes{{"System Restore not supported, run Mendwick to backup your registry.", 0, ""}}))
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

// An empty list still runs the details handler, and a failing handler stops nothing. Of filled
// rows only "Yes" is checked, an empty path is missing, and a second pass changes nothing.
TEST(Refresh, OnlyYesIsCheckedAnEmptyPathIsMissingAndASecondPassChangesNothing) {
    discovery::ItemList list;
    std::string total, active;
    bool selected = true;
    discovery::refreshCheckBox(list, total, active, [&] {
        selected = list.HasSelection();
        throw vb::VbError(vb::err::kObjectNotSet);
    });
    EXPECT_FALSE(selected);
    EXPECT_EQ(total + "|" + active, "Total  Item(s) :      0|Active Item(s):      0");

    struct Case { long icon; const char *path, *flag, *pathAfter; bool checked; } cases[] = {
        {3, "", "No", "File Not Found", false},    {2, "C:\\b.exe", "NO", "C:\\b.exe", false},
        {4, "C:\\c.exe", "yes", "C:\\c.exe", false}, {3, "C:\\a.exe", "Yes", "C:\\a.exe", true},
    };
    for (const auto& c : cases) {
        auto& row = list.Add();
        row.SmallIcon = c.icon;
        row.SubItems(1) = c.path;
        row.SubItems(2) = c.flag;
        row.Checked = !c.checked;
    }
    int clicks = 0;
    for (int pass = 1; pass <= 2; ++pass) {
        discovery::refreshCheckBox(list, total, active, [&] { ++clicks; });
        for (long i = 1; i <= list.Count(); ++i) {
            const auto& c = cases[i - 1];
            EXPECT_EQ(std::make_tuple(list(i).SmallIcon, list(i).SubItems(1), list(i).Checked),
                      std::make_tuple(c.path[0] ? c.icon : 1, std::string(c.pathAfter), c.checked))
                << "row " << i << " pass " << pass;
        }
        EXPECT_EQ(active, "Active Item(s):      1");
        EXPECT_EQ(clicks, pass);
    }
}

}  // namespace

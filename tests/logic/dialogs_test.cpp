// The menu form, the Move and Edit Properties dialogs, and the tray's dormant
// paths, driven through the main form with a scripted view.
#include <gtest/gtest.h>

#include "forms/FrmEdit.h"
#include "forms/FrmMove.h"
#include "frame/FrmMain2.h"
#include "frame/catalogue.h"
#include "item_places.h"
#include "scan_fixture.h"
#include "scripted_view.h"

using namespace tessmark;
using platform::memory::MessageBoxCall;
using platform::memory::ProcessEnded;
using tessmark::testing::StoredValue;

namespace {

constexpr platform::RegHandle HKLM = platform::reg::kLocalMachine;
constexpr platform::RegHandle HKCU = platform::reg::kCurrentUser;
const std::string kBase = tessmark::testing::kRunBase;
constexpr const char* kNotepad = "C:\\windows\\notepad.exe";
constexpr int kCritical = platform::kMbCritical;

class Dialogs : public ::testing::Test {
protected:
    std::unique_ptr<tessmark::testing::TestMachine> machine = tessmark::testing::MakeTestMachine();
    tessmark::testing::ItemPlaces places{*machine};
    frame::FrmMain2 form{machine->Ports()};
    tessmark::testing::ScriptedView view;
    std::vector<MessageBoxCall>& boxes = machine->Ui().messageBoxes;

    void SetUp() override {
        form.view = &view;
        for (const auto& node : frame::kMainTree)
            form.treeAuto.Nodes.push_back({std::string(node.key), "", std::string(node.parent), 0, true});
        tessmark::testing::DeleteTree(machine->Registry(), HKLM, kBase + "RunOnceEx");
    }
    void TearDown() override { tessmark::testing::DeleteTree(machine->Registry(), HKLM, kBase + "RunOnceEx"); }

    // The main tree on the node, its rows listed, the first one selected.
    void Show(std::string_view key) {
        form.treeAuto.Select(std::string(key));
        form.treeAuto_Click();
    }
    discovery::ItemRow& AddRow(const std::string& section, discovery::RowTag tag) {
        discovery::ItemRow& row = form.ListView1.Add();
        row.Text = "Tool";
        row.SubItems(1) = kNotepad;
        row.SubItems(3) = section;
        row.Tag = tag;
        form.ListView1.Select(row);
        return row;
    }
};

TEST_F(Dialogs, MoveWritesTheTargetOfItsTableAndKeepsTheSource) {
    struct Case {
        std::string_view source, target;
        platform::RegHandle root;
        const char* key;  // null: nothing is written anywhere
        const char* note;
    };
    const Case cases[] = {
        {"runexall", "runoncecurr", HKCU, "RunOnce", "an ordinary target"},
        {"runexall", "runserviceall", HKLM, "RunOnceEx", "Run Services of all users writes RunOnceEx"},
        {"runexall", "runservicecurr", HKCU, nullptr, "the table's spelling reaches no node"},
        {"runexall", "main", HKCU, nullptr, "All Items is no target"},
        {"runexall", "runserviceonceall", HKLM, nullptr, "equal positions in the two trees"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.note);
        places.Set(HKLM, kBase + "Run", "Tool", kNotepad);
        Show(c.source);
        form.Tag.clear();
        view.move = [&](forms::FrmMove& dialog) {
            EXPECT_EQ(tessmark::testing::Shown(dialog.lblEntry.Caption), "Selected item: Tool");
            EXPECT_EQ(dialog.treeAuto.SelectedItem().Key, "main");
            dialog.treeAuto.Select(std::string(c.target));
            dialog.cmdCommon_Click(0);
            EXPECT_FALSE(dialog.Loaded());
        };
        form.FrmMenu.Choose(form.FrmMenu.mnuMove);
        EXPECT_EQ(form.Tag, "DELETESELECTED");
        EXPECT_TRUE(boxes.empty());
        for (auto root : {HKLM, HKCU})
            for (const char* key : {"Run", "RunOnce", "RunOnceEx", "RunServices", "RunServiceOnce"}) {
                const bool source = std::string(key) == "Run" && root == HKLM;
                const bool target = c.key != nullptr && root == c.root && std::string(key) == c.key;
                EXPECT_EQ(places.Value(root, kBase + key, "Tool").has_value(), source || target) << key;
            }
        for (auto root : {HKLM, HKCU})
            for (const char* key : {"Run", "RunOnce", "RunOnceEx"})
                tessmark::testing::DeleteTree(machine->Registry(), root, kBase + key);
    }
}

TEST_F(Dialogs, MoveRefusesAndStaysOpenAsItsMessagesSay) {
    form.treeAuto.Select("runexall");
    form.FrmMenu.mnuMove_Click();  // no rows
    AddRow("Registry\\All Users\\Run", 3L);
    form.treeAuto.Select("main");
    form.FrmMenu.mnuMove_Click();  // rows of several sections
    form.treeAuto.Select("runexall");
    int shown = 0;
    view.move = [&](forms::FrmMove& dialog) {
        ++shown;
        dialog.treeAuto.Select("registry");
        dialog.cmdCommon_Click(0);
        EXPECT_TRUE(dialog.Loaded());
        dialog.cmdCommon_Click(1);
    };
    form.FrmMenu.mnuMove_Click();
    form.ListView1.Clear();
    form.ListView1.Add();
    form.FrmMenu.mnuMove_Click();  // rows but none selected: the dialog never shows

    EXPECT_EQ(shown, 1);
    EXPECT_EQ(form.Tag, "");
    EXPECT_EQ(boxes, (std::vector<MessageBoxCall>{
                         {"Select an item to move", kCritical, "No Item Selected!"},
                         {"You are not allowed to move item from this section", kCritical, "Invalid Move!!!"},
                         {"Select a target section.", 0, ""},
                         {"No Application Selected", kCritical, ""}}));
}

TEST_F(Dialogs, EditPropertiesChangesNothingAndBeepsAfterEveryEdit) {
    struct Case {
        std::string_view node;
        std::string section;
        discovery::RowTag tag;
        const char* newName;  // null: OK with nothing changed
        bool enabled, locked;
        const char* mark;
    };
    const Case cases[] = {
        {"runexall", "Registry\\All Users\\Run", 3L, "Renamed", true, false, "DELETESELECTED"},
        {"runexall", "Registry\\All Users\\Run", 3L, nullptr, true, false, ""},
        {"main", "Registry\\All Users\\Run", 3L, "Renamed", false, false, ""},
        {"allUsers", "All Users\\Startup", 1L, "Renamed", false, true, ""},
        {"main", "Registry\\All Users\\Logon\\Shell", std::string("8"), nullptr, false, false, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.section + " under " + std::string(c.node));
        form.ListView1.Clear();
        form.Tag.clear();
        boxes.clear();
        const discovery::ItemRow& row = AddRow(c.section, c.tag);
        form.treeAuto.Select(std::string(c.node));
        const int beeps = machine->Ui().beeps;
        view.edit = [&](forms::FrmEdit& dialog) {
            EXPECT_EQ(dialog.lblSection.Caption, vb::UCase(c.section));
            EXPECT_EQ(dialog.txtPath.Text, kNotepad);
            EXPECT_EQ(dialog.txtName.Enabled, c.enabled);
            EXPECT_EQ(dialog.cmdChangeEnabled, c.enabled);
            EXPECT_EQ(dialog.txtPath.Locked, c.locked);
            if (c.newName) dialog.txtName.Text = c.newName;
            dialog.Command1_Click(0);
            EXPECT_FALSE(dialog.Loaded());
            EXPECT_EQ(form.publicVar.EditedItemName, c.newName ? c.newName : "");
        };
        form.FrmMenu.Choose(form.FrmMenu.mnuProp);
        EXPECT_EQ(form.Tag, c.mark);
        EXPECT_EQ(boxes.size(), c.locked ? 1u : 0u);
        EXPECT_EQ(machine->Ui().beeps, beeps + 1);
        EXPECT_EQ(form.publicVar.EditedItemName, "");
        EXPECT_EQ(row.Text, "Tool");
    }
    // Rows but none selected: nothing traps the failed read.
    form.ListView1.Clear();
    form.ListView1.Add();
    EXPECT_THROW(form.mnuProp_Click(), vb::VbError);
}

TEST_F(Dialogs, BrowsingOpensOnTheProgramAndNamesItInAFolderSection) {
    AddRow("All Users\\Startup", 1L);
    form.treeAuto.Select("allUsers");
    forms::FrmEdit dialog(form);
    dialog.txtPath.Text = "\"C:\\windows\\notepad.exe\" /a";
    dialog.cmdChange_Click();  // cancelled: nothing changes
    EXPECT_EQ(dialog.txtPath.Text, "\"C:\\windows\\notepad.exe\" /a");
    machine->Ui().openChoices.push_back("C:\\tools\\picked.exe");
    dialog.cmdChange_Click();
    EXPECT_EQ(machine->Ui().openDialogs.front(),
              (std::pair<std::string, std::string>{"Executable Files(*.Exe)|*.exe|", kNotepad}));
    EXPECT_EQ(dialog.txtPath.Text, "C:\\tools\\picked.exe");
    EXPECT_EQ(dialog.txtName.Text, "picked.exe");
}

TEST_F(Dialogs, OnlyHandledMenuEntriesAct) {
    for (auto* entry : {&form.FrmMenu.mnubackup, &form.FrmMenu.mnurestore, &form.FrmMenu.mnuAddProgram,
                        &form.FrmMenu.mnuDelete})
        form.FrmMenu.Choose(*entry);
    form.FrmMenu.Choose(form.FrmMenu.mnutrayhelp);
    form.FrmMenu.Choose(form.FrmMenu.mnutrayabout);
    EXPECT_EQ(boxes, (std::vector<MessageBoxCall>{{"HelpClick", 0, ""}, {"AboutClick", 0, ""}}));

    // A right click pops the item menu; the chosen Refresh fills the list.
    places.Set(HKLM, kBase + "Run", "Tool", kNotepad);
    form.treeAuto.Select("runexall");
    view.choose = [&](const forms::Menu&) { return &form.FrmMenu.mnuRefresh; };
    form.ListView1_MouseDown(2, 0, 0, 0);
    EXPECT_EQ(form.ListView1.Count(), 1);
}

TEST_F(Dialogs, TrayMessagesComeAsTheXCoordinateShowHideActsOnlyWhenCheckedExitKeepsTheInstance) {
    form.treeAuto.Select("runexall");
    int rightUps = 0;
    view.choose = [&](const forms::Menu& menu) {
        rightUps += menu.Name == "mnutrayoption";
        return nullptr;
    };
    for (float x : {514 * 15.f, 516 * 15.f, 517 * 15.f - 7}) form.pictray_MouseDown(0, 0, x, 0);
    EXPECT_EQ(rightUps, 1);
    EXPECT_EQ(machine->Ui().trayRemovals, 0);
    form.pictray_MouseDown(0, 0, 515 * 15.f, 0);
    EXPECT_EQ(form.Tag, "Stop");
    EXPECT_EQ(view.shows, 1);
    EXPECT_EQ(machine->Ui().trayRemovals, 1);

    form.Tag.clear();
    form.FrmMenu.mnutrayshowhide_Click();
    form.FrmMenu.mnutrayshowhide_Click();
    EXPECT_FALSE(form.FrmMenu.mnutrayshowhide.Checked);
    EXPECT_EQ(view.shows, 2);

    // The tray's Exit ends without unloading, so the instance stays taken.
    int released = 0;
    form.ReleaseSingleInstance = [&] { ++released; };
    EXPECT_THROW(form.FrmMenu.mnutrayexit_Click(), ProcessEnded);
    EXPECT_EQ(released, 0);
    EXPECT_EQ(machine->Ui().trayRemovals, 3);
}

}  // namespace

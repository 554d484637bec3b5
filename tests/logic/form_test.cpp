// The main form's model: start-up, the population behind each tree node, the
// details panel and the caption strip; the menu form and the Move and Edit
// Properties dialogs, driven with a scripted view.
#include <gtest/gtest.h>

#include <algorithm>

#include "discovery/Logon.h"
#include "forms/FrmEdit.h"
#include "forms/FrmMove.h"
#include "frame/FrmMain2.h"
#include "frame/catalogue.h"
#include "item_places.h"
#include "scripted_view.h"
#include "version_fixture.h"

using namespace tessmark;
using platform::memory::MessageBoxCall;
using platform::memory::ProcessEnded;
using tessmark::testing::StoredValue;
using namespace std::string_literals;
namespace section = frame::section;

namespace {

constexpr platform::RegHandle HKLM = platform::reg::kLocalMachine;
constexpr platform::RegHandle HKCU = platform::reg::kCurrentUser;
const std::string kBase = tessmark::testing::kRunBase;
const std::string kRun = kBase + "Run";
constexpr const char* kNotepad = "C:\\windows\\notepad.exe";
constexpr int kCritical = platform::kMbCritical;

class MainForm : public ::testing::Test {
protected:
    std::unique_ptr<tessmark::testing::TestMachine> machine = tessmark::testing::MakeTestMachine();
    tessmark::testing::ItemPlaces places{*machine};
    frame::FrmMain2 form{machine->Ports()};
    tessmark::testing::ScriptedView view;
    std::vector<MessageBoxCall>& boxes = machine->Ui().messageBoxes;

    // One item in every place a node can list, and nothing else in those places.
    void SeedEverySection() {
        // As the load would set them, but with a small tree for the logon scanner's file search.
        form.folders = {machine->Files().Environ("windir"), machine->ScratchFolder()};
        for (auto root : {HKLM, platform::reg::kCurrentUser})
            for (const char* key : {"Run", "RunOnce", "RunServices", "RunServiceOnce"})
                places.Set(root, std::string(tessmark::testing::kRunBase) + key, key, "C:\\x.exe");
        places.Set(HKLM, discovery::LogonKey(1), "StartupPrograms", "rdpclip");
        places.Set(HKLM, discovery::LogonKey(2), "Userinit", "userinit.exe");
        places.Set(HKLM, discovery::LogonKey(3), "Shell", "explorer.exe");
        ASSERT_TRUE(machine->Files().WriteWholeFile(
            places.SettingsFile(), "[StartupAllUser]\r\nA=C:\\a.exe\r\n[StartupCurrUser]\r\nC=C:\\c.exe\r\n"));
    }

    // The sections of the rows, each once, in the order they first appear.
    std::vector<std::string_view> Sections() {
        std::vector<std::string_view> seen;
        for (const auto& row : form.ListView1.Rows())
            if (std::find(seen.begin(), seen.end(), row->SubItems(3)) == seen.end()) seen.push_back(row->SubItems(3));
        return seen;
    }
    void ClickNode(std::string_view key) {
        form.treeAuto.Nodes.push_back({std::string(key), "", "", 0, false});
        form.treeAuto.Select(std::string(key));
        form.treeAuto_Click();
    }
};

TEST_F(MainForm, LoadBuildsTheTreeFillsAllItemsAndGreetsEveryStart) {
    SeedEverySection();
    form.Form_Load();

    // Key, caption, parent and picture of each node, all expanded.
    std::vector<std::string> nodes;
    for (const auto& n : form.treeAuto.Nodes)
        nodes.push_back(n.Key + "|" + n.Text + "|" + n.ParentKey + "|" + std::to_string(n.Image) + (n.Expanded ? "" : "|shut"));
    EXPECT_EQ(nodes, (std::vector<std::string>{"main|All Items||5", "startFolder|Startup Folder|main|1",
        "allUsers|All Users|startFolder|4", "currUser|Current User|startFolder|2", "registry|Registry|main|3",
        "regall|All Users|registry|4", "runexall|Run|regall|3", "runonceall|Run Once|regall|3",
        "runserviceall|Run Services|regall|3", "runserviceonceall|Run Services Once|regall|3"}));
    EXPECT_EQ(form.treeAuto.SelectedItem().Key, "main");
    EXPECT_EQ(form.WindowsFolder(), machine->Files().Environ("windir"));
    EXPECT_EQ(form.ListView1.Count(), 9);
    EXPECT_EQ(form.lbltotalitem.Caption, "Total  Item(s) :      9");
    EXPECT_EQ(form.lblactiveitem.Caption, "Active Item(s):      7");

    auto& ui = machine->Ui();
    EXPECT_EQ(ui.messageBoxes, (std::vector<MessageBoxCall>{{"Uncheck the items you don't use every day then restart "
        "your PC to feel the Corvane Pulse!", platform::kMbInformation, ""}}));
    // The monitor's pass logs each row, then fails on the missing baseline: no dialog, no baseline.
    ASSERT_EQ(ui.log.size(), 10u);
    EXPECT_EQ(ui.log[8], "Tessmark - C Path-> File Not Found Section-> Current User\\Startup");
    EXPECT_EQ(ui.log.back(), "Tessmark - Form_Load");
    EXPECT_TRUE(form.monitor.forms.Loaded().empty());
    EXPECT_FALSE(form.monitor.rows.SavedRows.IsDimensioned());
    EXPECT_EQ(form.monitor.rows.CurrentRows.UBound(), 9);
    // The hourglass while the list fills and while the monitor rescans; the list is visible again.
    EXPECT_EQ(ui.mousePointers, (std::vector<int>{11, 11, 0, 0}));
    EXPECT_TRUE(form.ListView1.Visible);
    EXPECT_FALSE(form.lblwait.Visible);
}

TEST_F(MainForm, EachNodeListsItsOwnSectionsOnly) {
    SeedEverySection();
    using V = std::vector<std::string_view>;
    const V allRun = {section::kAllRun, section::kAllRunOnce, section::kAllRunServices, section::kAllRunServicesOnce};
    const V currRun = {section::kCurrRun, section::kCurrRunOnce, section::kCurrRunServices};
    const V logon = {section::kLogonStartupPrograms, section::kLogonUserInit, section::kLogonShell};
    const V startup = {section::kAllUsersStartup, section::kCurrentUserStartup};
    auto join = [](std::initializer_list<V> parts) {
        V all;
        for (const V& part : parts) all.insert(all.end(), part.begin(), part.end());
        return all;
    };
    const struct {
        std::string_view key;
        V sections;
    } cases[] = {
        // All Items: the Run family and the folders, never the logon values.
        {frame::key::kMain, join({allRun, currRun, startup})}, {frame::key::kStartFolder, startup},
        {frame::key::kAllUsers, {startup[0]}}, {frame::key::kCurrUser, {startup[1]}},
        {frame::key::kRegistry, join({allRun, logon, currRun})}, {frame::key::kRegAll, join({allRun, logon})},
        {frame::key::kRunExAll, {allRun[0]}}, {frame::key::kRunOnceAll, {allRun[1]}},
        {frame::key::kRunServiceAll, {allRun[2]}}, {frame::key::kRunServiceOnceAll, {allRun[3]}},
        // Keys no node of the main tree carries still dispatch.
        {frame::key::kRegCurr, currRun}, {frame::key::kRunServiceCurr, {currRun[2]}}, {frame::key::kLogonAll, logon},
        {frame::key::kShellAll, {section::kLogonShell}}, {frame::key::kDriverAll, {}}, {frame::key::kBhoAll, {}},
        {frame::key::kRunCurr, {currRun[0]}}, {frame::key::kRunOnceCurr, {currRun[1]}}, {frame::key::kServiceAll, {}},
        {frame::key::kStartupAll, {logon[0]}}, {frame::key::kUserinitAll, {logon[1]}}, {"nosuchnode", {}},
    };
    for (const auto& c : cases) {
        ClickNode(c.key);
        EXPECT_EQ(Sections(), c.sections) << c.key;
        EXPECT_TRUE(form.treeAuto.Enabled) << c.key;
        EXPECT_TRUE(form.ListView1.Visible) << c.key;
    }
    // Clicking an empty section leaves both totals at 0.
    EXPECT_EQ(form.lbltotalitem.Caption, "Total  Item(s) :      0");
    EXPECT_EQ(form.lblactiveitem.Caption, "Active Item(s):      0");
}

TEST_F(MainForm, EachPopulationShowsItsFirstRowInTheDetailsPanel) {
    SeedEverySection();
    // Name and version, company, description, section; the ticks and the menu's mark.
    auto panel = [&] {
        return std::make_tuple(form.lblNameVer.Caption, form.lblCompanyName.Caption, form.LblDescription.Caption,
                               form.LblSection.Caption, form.imgCheckVisible, form.imgNoCheckVisible,
                               form.FrmMenu.mnuDisable.Checked);
    };
    // The first row is selected after a population and the panel follows it. A
    // company but no product name: "N/A" first, the company below it.
    places.Set(HKLM, kRun, "Run", "\"" + machine->VersionedFile() + "\"");
    ClickNode(frame::key::kRunExAll);
    EXPECT_EQ(panel(), std::make_tuple("N/A", "Company: " FIXTURE_COMPANY_NAME,
                                       "Description: " FIXTURE_DESCRIPTION_ENGLISH,
                                       "Section: Registry\\All Users\\Run", true, false, false));
    const auto& icon = form.picIcon;
    EXPECT_EQ(std::make_tuple(icon.Width, icon.Height, icon.hasPicture, icon.picture.large),
              std::make_tuple(960, 960, true, true));
    // A disabled row whose program is missing.
    ClickNode(frame::key::kAllUsers);
    EXPECT_EQ(panel(), std::make_tuple("N/A", "Company: N/A", "Description: N/A", "Section: All Users\\Startup", false,
                                       true, true));
    // Filling an empty section clicks the empty list, which clears the panel.
    ClickNode(frame::key::kBhoAll);
    EXPECT_EQ(panel(), std::make_tuple("", "", "", "", false, false, true));
    EXPECT_FALSE(form.picIcon.hasPicture);
}

TEST_F(MainForm, SingleSectionsGrowTheImageStoreUntilAllItemsRebuildsIt) {
    SeedEverySection();
    places.Set(HKLM, kRun, "Run", "\"" + machine->VersionedFile() + "\"");
    // Before any full population the first image is the row's, not the program's.
    ClickNode(frame::key::kRunExAll);
    ASSERT_EQ(form.imgListIcons.Count(), 1);
    EXPECT_NE(form.imgListIcons[1], frame::kProgramIcon);
    ClickNode(frame::key::kRunExAll);
    EXPECT_EQ(form.imgListIcons.Count(), 2);
    EXPECT_EQ(std::make_pair(form.ListView1(1).SmallIcon, form.Picture1.Width), std::make_pair(2L, 320L));

    ClickNode(frame::key::kMain);
    ASSERT_EQ(form.imgListIcons.Count(), 2);
    EXPECT_EQ(form.imgListIcons[1], frame::kProgramIcon);
    for (const auto& row : form.ListView1.Rows())
        EXPECT_EQ(row->SmallIcon, row->SubItems(3) == section::kAllRun ? 2 : 1) << row->Text;
}

TEST_F(MainForm, TheLeftButtonMinimisesClosesAndDragsByTheCaptionStripAndOnlyTheTrayEndsWithoutReleasing) {
    form.CmdMinimise_MouseUp(2);
    EXPECT_EQ(form.WindowState, 0);
    form.CmdMinimise_MouseUp(1);
    EXPECT_EQ(form.WindowState, 1);
    form.hWnd = 77;
    form.Form_MouseDown(2, 374);
    form.Form_MouseDown(1, 375);
    EXPECT_EQ(machine->Ui().drags, std::vector<platform::WindowHandle>{77});

    int released = 0;
    form.ReleaseSingleInstance = [&] { ++released; };
    form.CmdClose_MouseUp(2);
    EXPECT_EQ(released, 0);
    // The tray's Exit ends without unloading, so the instance stays taken.
    const std::pair<const char*, void (*)(frame::FrmMain2&)> ends[] = {
        {"caption button", [](frame::FrmMain2& f) { f.CmdClose_MouseUp(1); }}, {"button", [](frame::FrmMain2& f) { f.BtnClose_Click(); }},
        {"tray", [](frame::FrmMain2& f) { f.FrmMenu.mnutrayexit_Click(); }}};
    for (const auto& [name, end] : ends) {
        try {
            end(form);
            ADD_FAILURE() << name;
        } catch (const ProcessEnded& ended) {
            EXPECT_EQ(ended.exitCode, 0) << name;
        }
    }
    EXPECT_EQ(released, 2);
    EXPECT_EQ(machine->Ui().trayRemovals, 3);
}

TEST_F(MainForm, CaptionButtonsChangeTheirBitmapsOnlyWhenTheMouseEntersAnotherPart) {
    // Over Close (h), Close pressed with the right or left button (d, D), over Minimise (m), Minimise
    // pressed (p, P), over the form (f), resized (r); then the bitmaps of Close and Minimise.
    const std::pair<char, const char*> steps[] = {
        {'h', "close_hover minimize_normal"}, {'d', "close_hover minimize_normal"}, {'D', "CLOSE_DOWN minimize_normal"},
        {'h', "CLOSE_DOWN minimize_normal"}, {'m', "close_normal minimize_hover"}, {'p', "close_normal minimize_hover"},
        {'P', "close_normal MINIMIZE_DOWN"}, {'m', "close_normal MINIMIZE_DOWN"}, {'h', "close_hover minimize_normal"},
        {'f', "close_normal minimize_normal"}, {'P', "close_normal MINIMIZE_DOWN"}, {'f', "close_normal MINIMIZE_DOWN"},
        {'r', "close_normal minimize_normal"}};
    EXPECT_EQ(form.CmdClosePicture + " " + form.CmdMinimisePicture, "close_normal minimize_normal");
    for (const auto& [event, pictures] : steps) {
        if (event == 'h') form.CmdClose_MouseMove();
        if (event == 'd' || event == 'D') form.CmdClose_MouseDown(event == 'D' ? 1 : 2);
        if (event == 'm') form.CmdMinimise_MouseMove();
        if (event == 'p' || event == 'P') form.CmdMinimise_MouseDown(event == 'P' ? 1 : 2);
        if (event == 'f') form.Form_MouseMove();
        if (event == 'r') form.Form_Resize();
        EXPECT_EQ(form.CmdClosePicture + " " + form.CmdMinimisePicture, pictures) << "step " << &event - &steps[0].first;
    }
    // The dialogs' one button, the change notification never resetting it from the form; any button drags.
    forms::FrmMove move(form);
    monitor::FrmNotify& notify = form.monitor.forms.New();
    for (forms::SkinnedDialog* dialog : {static_cast<forms::SkinnedDialog*>(&move), static_cast<forms::SkinnedDialog*>(&notify)}) {
        const bool resets = dialog == &move;
        std::string seen = dialog->CmdClosePicture + " ";
        for (char event : std::string("hDhfDfu")) {
            if (event == 'h') dialog->CmdClose_MouseMove();
            if (event == 'D') dialog->CmdClose_MouseDown(1);
            if (event == 'f') dialog->Form_MouseMove();
            if (event == 'u') dialog->CmdClose_MouseUp(2);
            seen += dialog->CmdClosePicture + " ";
        }
        EXPECT_EQ(seen, resets ? "close_normal close_hover CLOSE_DOWN CLOSE_DOWN close_normal CLOSE_DOWN CLOSE_DOWN CLOSE_DOWN "
                               : "close_normal close_hover CLOSE_DOWN CLOSE_DOWN CLOSE_DOWN CLOSE_DOWN CLOSE_DOWN CLOSE_DOWN ");
        dialog->hWnd = resets ? 5 : 6;
        dialog->Form_MouseDown(4, 374);
        dialog->Form_MouseDown(1, 375);
        dialog->CmdClose_MouseUp(1);
        EXPECT_EQ(std::make_pair(dialog->CmdClosePicture, dialog->Loaded()), std::make_pair("close_normal"s, false));
    }
    EXPECT_EQ(machine->Ui().drags, (std::vector<platform::WindowHandle>{5, 6}));
}

class Dialogs : public MainForm {
protected:
    void SetUp() override {
        form.view = &view;
        for (const auto& node : frame::kMainTree)
            form.treeAuto.Nodes.push_back({std::string(node.key), "", std::string(node.parent), 0, true});
        tessmark::testing::DeleteTree(machine->Registry(), HKLM, kBase + "RunOnceEx");
    }
    void TearDown() override { tessmark::testing::DeleteTree(machine->Registry(), HKLM, kBase + "RunOnceEx"); }

    discovery::ItemRow& AddRow(const std::string& section, discovery::RowTag tag, const std::string& text = "Tool") {
        discovery::ItemRow& row = form.ListView1.Add();
        std::tie(row.Text, row.SubItems(1), row.SubItems(3), row.Tag) = std::tie(text, kNotepad, section, tag);
        form.ListView1.Select(row);
        return row;
    }
};

TEST_F(Dialogs, MoveWritesTheListedPathToTheTargetOfItsTableAndKeepsTheSource) {
    const std::string source = "HKLM Run Tool=\"C:\\windows\\notepad.exe\" /min";
    const std::string written = " Tool=C:\\windows\\notepad.exe";
    // By the dialog's nodes in order; empty: nothing written.
    const struct {
        const char* target;
        std::string value;
        const char *mark, *node;  // caption, parent and picture; the current user's as the main tree's twins
    } cases[] = {
        {"main", "", "DELETESELECTED", "All Items||5"}, {"registry", "", "", "Registry|main|3"},
        {"regall", "", "", "All Users|registry|4"},
        {"runexall", "HKLM Run" + written, "DELETESELECTED", "Run|regall|3"},
        {"runonceall", "HKLM RunOnce" + written, "DELETESELECTED", "Run Once|regall|3"},
        {"runserviceall", "HKLM RunOnceEx" + written, "DELETESELECTED", "Run Services|regall|3"},  // of all users
        // Its position is the source node's in the main tree.
        {"runserviceonceall", "", "DELETESELECTED", "Run Services Once|regall|3"},
        {"regcurr", "", "", "Current User|registry|4"},
        {"runcurr", "HKCU Run" + written, "DELETESELECTED", "Run|regcurr|3"},
        {"runoncecurr", "HKCU RunOnce" + written, "DELETESELECTED", "Run Once|regcurr|3"},
        {"runservicecurr", "", "DELETESELECTED", "Run Services|regcurr|3"},  // the table's spelling reaches no node
    };
    ASSERT_EQ(std::size(cases), frame::kMoveTree.size());
    for (std::size_t i = 0; i < std::size(cases); ++i) {
        const auto& c = cases[i];
        places.Set(HKLM, kRun, "Tool", "\"C:\\windows\\notepad.exe\" /min");
        form.treeAuto.Select("runexall");
        form.treeAuto_Click();
        form.Tag.clear();
        boxes.clear();
        view.move = [&](forms::FrmMove& dialog) {
            EXPECT_EQ(tessmark::testing::Shown(dialog.lblEntry.Caption), "Selected item: Tool");
            EXPECT_EQ(dialog.treeAuto.SelectedItem().Key, "main");
            EXPECT_EQ(dialog.treeAuto.Nodes[i].Key, c.target);
            EXPECT_EQ(dialog.treeAuto.Nodes[i].Text + "|" + dialog.treeAuto.Nodes[i].ParentKey + "|" +
                          std::to_string(dialog.treeAuto.Nodes[i].Image), c.node);
            dialog.treeAuto.Select(c.target);
            EXPECT_EQ(dialog.cmdCommon, (std::array<std::string, 2>{"&Ok", "&Cancel"}));
            dialog.cmdCommon_Click(0);
            EXPECT_EQ(dialog.Loaded(), !*c.mark) << "only a refusal keeps it open";
            if (dialog.Loaded()) dialog.cmdCommon_Click(1);
        };
        form.FrmMenu.Choose(form.FrmMenu.mnuMove);
        // The source stays, unless it is itself the target.
        std::vector<std::string> expected;
        if (c.target != "runexall"s) expected.push_back(source);
        if (!c.value.empty()) expected.push_back(c.value);
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(places.Everything(), expected) << c.target;
        EXPECT_EQ(form.Tag, c.mark) << c.target;
        EXPECT_EQ(boxes.size(), *c.mark ? 0u : 1u) << c.target;
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
                         {"Select a target section.", 0, ""}, {"No Application Selected", kCritical, ""}}));
}

TEST_F(Dialogs, EditPropertiesChangesNothingAndBeepsAfterEveryEdit) {
    const struct {
        std::string_view node;
        std::string section;
        discovery::RowTag tag;
        const char* newName;  // null: OK with nothing changed
        bool enabled, locked;
        const char* mark;
        std::string text = "Tool";
        bool cancel = false;
    } cases[] = {
        {"runexall", "Registry\\All Users\\Run", 3L, "Renamed", true, false, "DELETESELECTED"},
        {"runexall", "Registry\\All Users\\Run", 3L, nullptr, true, false, ""},
        {"runexall", "Registry\\All Users\\Run", 3L, "Renamed", true, false, "", "Tool", true},
        {"runexall", "Registry\\All Users\\Run", 3L, nullptr, true, false, "", "Tool\0"s},  // as a value name is listed
        {"main", "Registry\\All Users\\Run", 3L, "Renamed", false, false, ""},
        {"allUsers", "All Users\\Startup", 1L, "Renamed", false, true, ""},
        {"main", "Registry\\All Users\\Logon\\Shell", std::string("8"), nullptr, false, false, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.section + " under " + std::string(c.node));
        form.ListView1.Clear();
        form.Tag.clear();
        boxes.clear();
        const discovery::ItemRow& row = AddRow(c.section, c.tag, c.text);
        form.treeAuto.Select(std::string(c.node));
        const int beeps = machine->Ui().beeps;
        view.edit = [&](forms::FrmEdit& dialog) {
            EXPECT_EQ(std::make_tuple(dialog.lblSection.Caption, dialog.txtName.Text, dialog.txtPath.Text,
                                      dialog.txtName.Enabled, dialog.cmdChangeEnabled, dialog.txtPath.Locked),
                      std::make_tuple(vb::UCase(c.section), "Tool", kNotepad, c.enabled, c.enabled, c.locked));
            if (c.newName) dialog.txtName.Text = c.newName;
            dialog.Command1_Click(c.cancel ? 1 : 0);
            EXPECT_FALSE(dialog.Loaded());
            EXPECT_EQ(form.publicVar.EditedItemName, c.newName && !c.cancel ? c.newName : "");
        };
        form.FrmMenu.Choose(form.FrmMenu.mnuProp);
        EXPECT_EQ(form.Tag, c.mark);
        EXPECT_EQ(boxes.size(), c.locked ? 1u : 0u);
        EXPECT_EQ(machine->Ui().beeps, beeps + 1);
        EXPECT_EQ(form.publicVar.EditedItemName + form.publicVar.EditedItemPath, "");
        EXPECT_EQ(row.Text, c.text);
    }
    // The browse button opens on the reduced path; only under a Startup node does the file name the item.
    const char* nodes[] = {"runexall", "allUsers", "currUser", "allUsers"};  // the last one cancelled
    for (const char* const& node : nodes) {
        forms::FrmEdit dialog(form);
        dialog.txtName.Text = "Tool", dialog.txtPath.Text = "\"C:\\x\\tool.exe\" /a";
        form.treeAuto.Select(node);
        const bool cancelled = &node == &nodes[3];
        if (!cancelled) machine->Ui().openChoices = {"C:\\apps\\chosen.exe"};
        dialog.cmdChange_Click();
        EXPECT_EQ(machine->Ui().openDialogs.back(), std::make_pair(std::string(forms::FrmEdit::kFilter), "C:\\x\\tool.exe"s));
        EXPECT_EQ(dialog.txtPath.Text, cancelled ? "\"C:\\x\\tool.exe\" /a" : "C:\\apps\\chosen.exe") << node;
        EXPECT_EQ(dialog.txtName.Text, node[0] == 'r' || cancelled ? "Tool" : "chosen.exe") << node;
    }
    // Rows but none selected: nothing traps the failed read.
    form.ListView1.Clear();
    form.ListView1.Add();
    EXPECT_THROW(form.mnuProp_Click(), vb::VbError);
}

TEST_F(Dialogs, TrayMessagesAndShowHideBringTheListBackWithTheMarkStop) {
    places.Set(HKLM, kRun, "Tool", kNotepad);
    form.treeAuto.Select("runexall");
    // The tray's message arrives as X in twips: a double click shows and fills, a right click pops the tray menu.
    const struct {
        std::function<void()> act;
        int shows, removals, rows;
        std::vector<std::string> popups;
        const char* tag;
    } steps[] = {
        {[&] { form.pictray_MouseDown(0, 0, 512 * 15, 0); }, 0, 0, 0, {}, ""},
        {[&] { form.pictray_MouseDown(0, 0, 517 * 15, 0); }, 0, 0, 0, {"mnutrayoption"}, ""},
        {[&] { form.pictray_MouseDown(0, 0, 515 * 15 + 7, 0); }, 1, 1, 1, {"mnutrayoption"}, "Stop"},
        // The entry's check goes on and off; only switching it on acts.
        {[&] { form.FrmMenu.mnutrayshowhide_Click(); }, 2, 2, 1, {"mnutrayoption"}, "Stop"},
        {[&] { form.FrmMenu.mnutrayshowhide_Click(); }, 2, 2, 0, {"mnutrayoption"}, ""},
        {[&] { form.treeAuto_KeyPress(13); }, 2, 2, 1, {"mnutrayoption"}, ""},
    };
    for (const auto& step : steps) {
        form.Tag.clear();
        form.ListView1.Clear();
        step.act();
        EXPECT_EQ(std::make_tuple(view.shows, machine->Ui().trayRemovals, form.ListView1.Count(), view.popups),
                  std::make_tuple(step.shows, step.removals, step.rows, step.popups))
            << "step " << &step - steps;
        EXPECT_EQ(form.Tag, step.tag) << "step " << &step - steps;
    }
}

TEST_F(Dialogs, OnlyHandledMenuEntriesAct) {
    for (auto* entry : {&form.FrmMenu.mnubackup, &form.FrmMenu.mnurestore, &form.FrmMenu.mnuAddProgram,
                        &form.FrmMenu.mnuDelete})
        form.FrmMenu.Choose(*entry);
    form.FrmMenu.Choose(form.FrmMenu.mnutrayhelp);
    form.FrmMenu.Choose(form.FrmMenu.mnutrayabout);
    EXPECT_EQ(boxes, (std::vector<MessageBoxCall>{{"HelpClick", 0, ""}, {"AboutClick", 0, ""}}));
    // The two menus as the view builds them: each entry's caption and its shortcut's key; "-" separates.
    std::string shown;
    for (const forms::Menu* menu : {&form.FrmMenu.mnuPopup, &form.FrmMenu.mnutrayoption})
        for (const forms::MenuEntry* e : menu->Entries) shown += menu->Name + ":" + e->Caption + " " + e->Shortcut + "|";
    EXPECT_EQ(shown, "mnuPopup:Backup |mnuPopup:Restore |mnuPopup:- |mnuPopup:Refresh |mnuPopup:- |mnuPopup:Add Program |"
                     "mnuPopup:- |mnuPopup:Disable F2|mnuPopup:Delete Del|mnuPopup:Move |mnuPopup:- |mnuPopup:Edit Properties |"
                     "mnutrayoption:Help |mnutrayoption:About... |mnutrayoption:- |mnutrayoption:Show / Hide ... |"
                     "mnutrayoption:- |mnutrayoption:Exit |");

    // A right click pops the item menu; the chosen Refresh fills the list.
    places.Set(HKLM, kBase + "Run", "Tool", kNotepad);
    form.treeAuto.Select("runexall");
    view.choose = [&](const forms::Menu&) { return &form.FrmMenu.mnuRefresh; };
    form.ListView1_MouseDown(2, 0, 0, 0);
    EXPECT_EQ(form.ListView1.Count(), 1);
}

}  // namespace

// The main form's model: start-up, the population behind each tree node, the
// details panel and the caption buttons.
#include <gtest/gtest.h>

#include <algorithm>

#include "discovery/Logon.h"
#include "frame/FrmMain2.h"
#include "frame/catalogue.h"
#include "item_places.h"
#include "version_fixture.h"

using namespace tessmark;
using platform::memory::ProcessEnded;
namespace section = frame::section;

namespace {

const std::string kRun = std::string(tessmark::testing::kRunBase) + "Run";

class MainForm : public ::testing::Test {
protected:
    std::unique_ptr<tessmark::testing::TestMachine> machine = tessmark::testing::MakeTestMachine();
    frame::FrmMain2 form{machine->Ports()};

    tessmark::testing::ItemPlaces places{*machine};
    static constexpr platform::RegHandle HKLM = platform::reg::kLocalMachine;

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

    ASSERT_EQ(form.treeAuto.Nodes.size(), 10u);
    EXPECT_EQ(form.treeAuto.SelectedItem().Key, "main");
    EXPECT_TRUE(std::all_of(form.treeAuto.Nodes.begin(), form.treeAuto.Nodes.end(),
                            [](const frame::TreeNodeState& n) { return n.Expanded; }));
    EXPECT_EQ(form.WindowsFolder(), machine->Files().Environ("windir"));
    EXPECT_TRUE(machine->Files().FolderExists(machine->Files().Environ("appdata") + "\\Corvane Pulse"));
    EXPECT_EQ(form.ListView1.Count(), 9);
    EXPECT_EQ(form.lbltotalitem.Caption, "Total  Item(s) :      9");
    EXPECT_EQ(form.lblactiveitem.Caption, "Active Item(s):      7");

    auto& ui = machine->Ui();
    ASSERT_EQ(ui.messageBoxes.size(), 1u);  // its text is checked on the window
    EXPECT_EQ(ui.messageBoxes[0].style, platform::kMbInformation);
    // The monitor's pass logs each row, then fails on the missing baseline: no dialog, no baseline.
    ASSERT_EQ(ui.log.size(), 10u);
    EXPECT_EQ(ui.log[8], "Tessmark - C Path-> File Not Found Section-> Current User\\Startup");
    EXPECT_EQ(ui.log.back(), "Tessmark - Form_Load");
    EXPECT_TRUE(form.monitor.forms.Loaded().empty());
    EXPECT_FALSE(form.monitor.rows.SavedRows.IsDimensioned());
    EXPECT_EQ(form.monitor.rows.CurrentRows.UBound(), 9);
    // Hourglass first, default pointer last; the list is visible again.
    ASSERT_FALSE(ui.mousePointers.empty());
    EXPECT_EQ(std::make_pair(ui.mousePointers.front(), ui.mousePointers.back()),
              std::make_pair(platform::kMousePointerHourglass, platform::kMousePointerDefault));
    EXPECT_TRUE(form.ListView1.Visible);
    EXPECT_FALSE(form.lblwait.Visible);
}

TEST_F(MainForm, EachNodeListsItsOwnSectionsOnly) {
    SeedEverySection();
    using V = std::vector<std::string_view>;
    const V allUsersRegistry = {section::kAllRun, section::kAllRunOnce, section::kAllRunServices,
                                section::kAllRunServicesOnce, section::kLogonStartupPrograms,
                                section::kLogonUserInit, section::kLogonShell};
    V registry = allUsersRegistry;
    registry.insert(registry.end(), {section::kCurrRun, section::kCurrRunOnce, section::kCurrRunServices});
    const V logon = {section::kLogonStartupPrograms, section::kLogonUserInit, section::kLogonShell};
    const struct {
        std::string_view key;
        V sections;
    } cases[] = {
        // All Items: the Run family and the folders, never the logon values.
        {frame::key::kMain,
         {section::kAllRun, section::kAllRunOnce, section::kAllRunServices, section::kAllRunServicesOnce,
          section::kCurrRun, section::kCurrRunOnce, section::kCurrRunServices, section::kAllUsersStartup,
          section::kCurrentUserStartup}},
        {frame::key::kStartFolder, {section::kAllUsersStartup, section::kCurrentUserStartup}},
        {frame::key::kAllUsers, {section::kAllUsersStartup}},
        {frame::key::kCurrUser, {section::kCurrentUserStartup}},
        {frame::key::kRegistry, registry},
        {frame::key::kRegAll, allUsersRegistry},
        {frame::key::kRunExAll, {section::kAllRun}},
        {frame::key::kRunOnceAll, {section::kAllRunOnce}},
        {frame::key::kRunServiceAll, {section::kAllRunServices}},
        {frame::key::kRunServiceOnceAll, {section::kAllRunServicesOnce}},
        // Keys no node of the main tree carries still dispatch.
        {frame::key::kRegCurr, {section::kCurrRun, section::kCurrRunOnce, section::kCurrRunServices}},
        {frame::key::kRunServiceCurr, {section::kCurrRunServices}},
        {frame::key::kLogonAll, logon},
        {frame::key::kShellAll, {section::kLogonShell}},
        {frame::key::kDriverAll, {}},
        {frame::key::kBhoAll, {}},
        {"nosuchnode", {}},
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
    // The first row is selected after a population and the panel follows it.
    places.Set(HKLM, kRun, "Run", "\"" + machine->VersionedFile() + "\"");
    ClickNode(frame::key::kRunExAll);
    EXPECT_EQ(form.LblSection.Caption, "Section: Registry\\All Users\\Run");
    // A company but no product name: "N/A" first, the company below it.
    EXPECT_EQ(form.lblNameVer.Caption, "N/A");
    EXPECT_EQ(form.lblCompanyName.Caption, "Company: " FIXTURE_COMPANY_NAME);
    EXPECT_NE(form.LblDescription.Caption, "Description: N/A");
    EXPECT_TRUE(form.imgCheckVisible);
    EXPECT_FALSE(form.imgNoCheckVisible);
    EXPECT_FALSE(form.FrmMenu.mnuDisable.Checked);
    EXPECT_EQ(form.picIcon.Height, 960);

    // A disabled row whose program is missing: "N/A" three times, section filled.
    ClickNode(frame::key::kAllUsers);
    EXPECT_EQ(form.lblNameVer.Caption, "N/A");
    EXPECT_EQ(form.lblCompanyName.Caption, "Company: N/A");
    EXPECT_EQ(form.LblDescription.Caption, "Description: N/A");
    EXPECT_EQ(form.LblSection.Caption, "Section: All Users\\Startup");
    EXPECT_FALSE(form.imgCheckVisible);
    EXPECT_TRUE(form.imgNoCheckVisible);
    EXPECT_TRUE(form.FrmMenu.mnuDisable.Checked);

    // Filling an empty section clicks the empty list, which clears the panel.
    ClickNode(frame::key::kBhoAll);
    EXPECT_EQ(form.LblSection.Caption, "");
    EXPECT_FALSE(form.imgNoCheckVisible);
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
    EXPECT_EQ(form.ListView1(1).SmallIcon, 2);

    ClickNode(frame::key::kMain);
    ASSERT_EQ(form.imgListIcons.Count(), 2);
    EXPECT_EQ(form.imgListIcons[1], frame::kProgramIcon);
    for (const auto& row : form.ListView1.Rows())
        EXPECT_EQ(row->SmallIcon, row->SubItems(3) == section::kAllRun ? 2 : 1) << row->Text;
}

TEST_F(MainForm, CaptionButtonsChangeBitmapsOnlyWhenTheHotPartChanges) {
    form.CmdClose_MouseMove();
    EXPECT_EQ(form.CmdClosePicture, "close_hover");
    form.CmdClose_MouseDown(2);
    EXPECT_EQ(form.CmdClosePicture, "close_hover");
    form.CmdClose_MouseDown(1);
    form.CmdClose_MouseMove();  // still the hot part: the pressed bitmap stays
    EXPECT_EQ(form.CmdClosePicture, "CLOSE_DOWN");
    // Straight from Close to Minimise.
    form.CmdMinimise_MouseMove();
    EXPECT_EQ(form.CmdClosePicture, "close_normal");
    EXPECT_EQ(form.CmdMinimisePicture, "minimize_hover");
    form.Form_MouseMove();
    EXPECT_EQ(form.HotControl, "Form");
    EXPECT_EQ(form.CmdMinimisePicture, "minimize_normal");

    form.CmdMinimise_MouseUp(2);
    EXPECT_EQ(form.WindowState, 0);
    form.CmdMinimise_MouseUp(1);
    EXPECT_EQ(form.WindowState, 1);

    form.hWnd = 77;
    form.Form_MouseDown(2, 374);
    form.Form_MouseDown(1, 375);
    EXPECT_EQ(machine->Ui().drags, std::vector<platform::WindowHandle>{77});
}

TEST_F(MainForm, ClosingReleasesTheInstanceRemovesTheTrayIconAndEnds) {
    int released = 0;
    form.ReleaseSingleInstance = [&] { ++released; };
    form.CmdClose_MouseUp(2);
    EXPECT_EQ(released, 0);
    EXPECT_THROW(form.CmdClose_MouseUp(1), ProcessEnded);
    EXPECT_THROW(form.BtnClose_Click(), ProcessEnded);
    EXPECT_EQ(released, 2);
    EXPECT_EQ(machine->Ui().trayRemovals, 2);
}

}  // namespace

// The scanners on seeded machines: Run keys, Startup folders and logon values, the rows they list, the rows' icons.
#include <gtest/gtest.h>

#include <optional>

#include "catalogue/sections.h"
#include "discovery/Logon.h"
#include "discovery/RowServices.h"
#include "discovery/RunKeys.h"
#include "discovery/ScanContext.h"
#include "discovery/StartupFolders.h"
#include "item_places.h"

using namespace tessmark;
using namespace tessmark::testing;
using namespace std::string_literals;

namespace {

constexpr platform::RegHandle HKLM = platform::reg::kLocalMachine, HKCU = platform::reg::kCurrentUser;
constexpr int kAllUsers = platform::kCsidlCommonStartup, kCurrentUser = platform::kCsidlStartup;

// A main form's worth of list state on a test machine.
class Scanners : public ::testing::Test {
protected:
    std::unique_ptr<TestMachine> machine = MakeTestMachine();
    std::optional<ItemPlaces> places{std::in_place, *machine};
    // windir and ProgramFiles, where the reduction cuts nowhere, holding only what a test makes.
    std::string scratch = machine->ScratchFolder("TessmarkScan");
    discovery::SystemFolders folders{scratch + "\\Windows", scratch + "\\Programs"};
    discovery::ItemList list;
    discovery::ImageStore images;
    discovery::PictureBox picture;
    platform::ShFileInfo record{};
    storage::IniFile ini{machine->Files()};
    bool timer1Enabled = false;
    discovery::ScanContext form{machine->Ports(), folders, list, images, picture, record, ini, timer1Enabled};
    const std::string &W = folders.windowsFolder, &P = folders.programFilesFolder;
    const std::string tool = W + "\\tool.exe";
    // Any key will do for the logon scanner: the variants go by value name, not by key.
    const std::string logonKey = std::string(kScratchKey) + "\\Logon";

    void Reset() {
        places.emplace(*machine);  // the old one puts the machine back first
        DeleteTree(machine->Registry(), HKLM, logonKey);
        list.Clear();
        machine->Ui().doEvents = 0;
    }
    void Touch(const std::string& path) {
        std::string folder = path;
        storage::MakeFolderPath(machine->Files(), folder);
        ASSERT_TRUE(machine->Files().WriteWholeFile(path, "MZ")) << path;
    }
    void Seed(platform::RegHandle root, const std::string& key, const std::string& name, const std::string& value) {
        places->Set(root, kRunBase + key, name, value);
    }
    void Settings(const std::string& text) { ASSERT_TRUE(machine->Files().WriteWholeFile(places->SettingsFile(), text)); }
    void Refresh() { std::string total, active; discovery::refreshCheckBox(list, total, active, [] {}); }
    std::vector<RowView> Rows() { return RowViews(list); }
};

TEST_F(Scanners, EachRunScannerListsItsHivesKeyThenItsDisabledValuesAndTheMonitorNamesThatKey) {
    Touch(tool);
    // monitored: the monitor names the key in its dialogs; it has no path for the current user's RunServiceOnce.
    using Scan = void (*)(discovery::ScanContext&, bool);
    const struct { Scan scan; bool currentUser; const char *key, *section, *tag; bool monitored = true; } cases[] = {
        {discovery::AddRun, false, "Run", "Registry\\All Users\\Run", "3"},
        {discovery::AddRunOnce, false, "RunOnce", "Registry\\All Users\\RunOnce", "4"},
        {discovery::AddRunServices, false, "RunServices", "Registry\\All Users\\RunServices", "5"},
        {discovery::AddRunServiceOnce, false, "RunServiceOnce", "Registry\\All Users\\RunServicesOnce", "6"},
        {discovery::AddRun, true, "Run", "Registry\\Current User\\Run", "21"},
        {discovery::AddRunOnce, true, "RunOnce", "Registry\\Current User\\RunOnce", "22"},
        {discovery::AddRunServices, true, "RunServices", "Registry\\Current User\\RunServices", "23"},
        {discovery::AddRunServiceOnce, true, "RunServiceOnce", "Registry\\Current User\\RunServicesOnce", "23", false},
    };
    for (const auto& c : cases) {
        Reset();
        const auto root = c.currentUser ? HKCU : HKLM;
        Seed(root, std::string(c.key) + "\\AutorunsDisabled", "Off", tool);
        Seed(root, c.key, "On", tool);
        Seed(c.currentUser ? HKLM : HKCU, c.key, "Other hive", tool);
        c.scan(form, c.currentUser);
        EXPECT_EQ(Rows(), (std::vector<RowView>{{"On", tool, "Yes", c.section, c.tag}, {"Off", tool, "No", c.section, c.tag}}))
            << c.section;
        // Names keep the NUL behind them; paths end at their first.
        EXPECT_EQ(std::make_pair(list(1).Text, list(1).SubItems(1)), std::make_pair("On\0"s, tool)) << c.section;
        const std::string read = std::string(c.currentUser ? "HKEY_CURRENT_USER\\" : "HKEY_LOCAL_MACHINE\\") + kRunBase + c.key;
        const std::string path = catalogue::FindPath(c.section);
        EXPECT_EQ(vb::UCase(path), c.monitored ? vb::UCase(read) : "") << c.section;
        EXPECT_EQ(catalogue::FindKey(c.section).empty(), path.empty()) << c.section;
    }
}

TEST_F(Scanners, OnlyTheRunKeysEnabledRowsShowTheReducedPathYetEveryRowTakesItsIconFromIt) {
    Touch(tool);
    Touch(P + "\\Foo\\foo.exe");
    Touch(scratch + "\\Anti-Virus\\av.exe");
    // found: the reduced form names a file, so the row keeps its path.
    const struct { std::string data, reduced; bool found; } cases[] = {
        {"\"" + tool + "\" /start", tool, true},       {"%SystemRoot%\\tool.exe", tool, true},
        {"%systemroot%\\tool.exe -s", tool, true},     {"%ProgramFiles%\\Foo\\foo.exe", P + "\\Foo\\foo.exe", true},
        {"%windir%\\tool.exe,1", tool, true},         {tool + " arg", tool + " arg", false},
        {"D:\\any\\%windir%\\tool.exe", W + "\\any\\%windir%\\tool.exe", false},
        {scratch + "\\Anti-Virus\\av.exe", scratch + "\\Anti", false},
        {"rundll32.exe shell32.dll,Control_RunDLL desk.cpl", "rundll32.exe shell32.dll", false},
    };
    for (const auto& c : cases) {
        Reset();
        Seed(HKLM, "Run", "On", c.data);
        Seed(HKLM, "Run\\AutorunsDisabled", "Off", c.data);
        Seed(HKLM, "RunOnce", "Once", c.data);
        discovery::AddRun(form, false);
        discovery::AddRunOnce(form, false);
        auto rows = Rows();
        ASSERT_EQ(rows.size(), 3u) << c.data;
        EXPECT_EQ(std::make_tuple(rows[0].path, rows[1].path, rows[2].path), std::make_tuple(c.reduced, c.data, c.data));
        for (long i = 1; i <= 3; ++i) EXPECT_EQ(list(i).SmallIcon != 0, c.found) << c.data << " row " << i;
        // A reduced form that names no file costs every row its path.
        Refresh();
        rows = Rows();
        EXPECT_EQ(rows[0].path + "|" + rows[2].path, c.found ? c.reduced + "|" + c.data : "File Not Found|File Not Found")
            << c.data;
    }
}

TEST_F(Scanners, AValueTooLongForTheEnumerationIsListedWithoutANameAndWithTheDefaultValuesData) {
    // 255 bytes fit the enumeration's data buffer, 256 do not: the name stays blank and reads the default value.
    Seed(HKLM, "RunOnce", "", "C:\\default.exe");
    Seed(HKLM, "RunOnce", "Fits", std::string(254, 'a'));
    Seed(HKLM, "RunOnce", "Long", std::string(255, 'b'));
    discovery::AddRunOnce(form, false);
    auto rows = Rows();
    std::sort(rows.begin(), rows.end());
    const RowView unnamed{"", "C:\\default.exe", "Yes", "Registry\\All Users\\RunOnce", "4"};
    EXPECT_EQ(rows, (std::vector<RowView>{unnamed, unnamed, {"Fits", std::string(254, 'a'), "Yes", unnamed.section, "4"}}));
}

TEST_F(Scanners, RefreshMarksUnreachableFilesAndATrimmedNameFindsNoData) {
    discovery::AddRun(form, true);  // a missing key gives no rows
    Seed(HKLM, "Run", "Gone", "C:\\nowhere\\gone.exe");
    Seed(HKLM, "Run\\AutorunsDisabled", "Off", "C:\\nowhere\\off.exe");
    // The trimmed name no longer finds the data: the row has no path.
    Touch(scratch + "\\blank.exe");
    Seed(HKLM, "RunOnce", " Blank", scratch + "\\blank.exe");
    discovery::AddRun(form, false);
    discovery::AddRunOnce(form, false);
    std::string total, active;
    int clicks = 0;
    discovery::refreshCheckBox(list, total, active, [&] { ++clicks; });
    EXPECT_EQ(std::make_pair(list(1).Selected, clicks), std::make_pair(true, 1));
    EXPECT_EQ(total + "|" + active, "Total  Item(s) :      3|Active Item(s):      2");
    EXPECT_EQ(Rows(), (std::vector<RowView>{{"Gone", "File Not Found", "Yes", "Registry\\All Users\\Run", "3"},
                                             {"Off", "File Not Found", "No", "Registry\\All Users\\Run", "3"},
                                             {"Blank", "File Not Found", "Yes", "Registry\\All Users\\RunOnce", "4"}}));
}

TEST_F(Scanners, EachFolderListsItsShortcutsThenItsSettingsLines) {
    for (const std::string& file : {tool, W + "\\other.exe"}) Touch(file);
    // pumps: the all-users walk yields once per shortcut.
    const struct { void (*scan)(discovery::ScanContext&); int folder, other; RowView disabled; int pumps; } cases[] = {
        {discovery::AddStartupAllUser, kAllUsers, kCurrentUser, {"All", "C:\\a.exe", "No", "All Users\\Startup", "1"}, 2},
        {discovery::AddStartupCurrUser, kCurrentUser, kAllUsers, {"Curr", "C:\\c.exe", "No", "Current User\\Startup", "2"}, 0},
    };
    for (const auto& c : cases) {
        Reset();
        places->Shortcut(c.folder, "Tool Link.lnk", tool);
        places->Shortcut(c.folder, "Again.lnk", tool);
        places->Shortcut(c.other, "Other.lnk", W + "\\other.exe");
        Settings("[StartupAllUser]\r\nAll=C:\\a.exe\r\n[StartupCurrUser]\r\nCurr=C:\\c.exe\r\n");
        c.scan(form);

        // Two equal rows, named as the shell names the target, without the NULs that pad the record's field.
        const RowView enabled{"tool.exe", tool, "Yes", c.disabled.section, c.disabled.tag};
        EXPECT_EQ(Rows(), (std::vector<RowView>{enabled, enabled, c.disabled})) << c.disabled.section;
        EXPECT_EQ(list(1).Text, "tool.exe");
        EXPECT_NE(list(1).SmallIcon, list(2).SmallIcon) << "icons are never shared";
        EXPECT_FALSE(images[list(1).SmallIcon].large) << "rows take small icons";
        EXPECT_EQ(machine->Ui().doEvents, c.pumps) << c.disabled.section;
    }
}

TEST_F(Scanners, ARowWhoseTargetTheShellCannotFindShowsTheNameThePreviousCallLeft) {
    const std::string prior = W + "\\prior.exe";
    Touch(prior);
    for (const auto& [file, path] : {std::pair<const char*, std::string>{"gone.lnk", scratch + "\\nowhere\\gone.exe"},
                                     {"notes.txt", "Error occured."}}) {  // a file that is no shortcut
        Reset();
        if (path != "Error occured.") places->Shortcut(kCurrentUser, file, path);
        else Touch(places->Path(kCurrentUser, file));
        form.RowIcon(prior);  // any earlier row fills the form's one record
        discovery::AddStartupCurrUser(form);
        EXPECT_EQ(Rows(), (std::vector<RowView>{{"prior.exe", path, "Yes", "Current User\\Startup", "2"}})) << file;
        EXPECT_EQ(list(1).SmallIcon, 0) << file;
        Refresh();
        EXPECT_EQ(std::make_pair(Rows()[0].path, list(1).SmallIcon), std::make_pair("File Not Found"s, 1L)) << file;
    }
}

TEST_F(Scanners, SettingsLinesAreNamedUpToTheirFirstEqualsSign) {
    Touch(tool);
    Settings("[StartupCurrUser]\r\nPlain=" + tool + "\r\nEq=C:\\a=b.exe\r\nA=B=" + tool +
             "\r\nNoEquals\r\n[StartupAllUser]\r\nElsewhere=" + tool + "\r\n");
    discovery::AddStartupCurrUser(form);
    Refresh();
    // Every line gives one row, the spare element after them none. Only the first names a file: an "=" in the
    // value is kept and names nothing, an "=" in the name cuts it short, and a line without one reads no value.
    const std::string section = "Current User\\Startup", gone = "File Not Found";
    EXPECT_EQ(Rows(), (std::vector<RowView>{{"Plain", tool, "No", section, "2"}, {"Eq", gone, "No", section, "2"},
                                             {"A", gone, "No", section, "2"}, {"NoEquals", gone, "No", section, "2"}}));
    EXPECT_FALSE(list(1).Checked);

    // A missing section gives nothing (a missing file too: see the row whose target the shell cannot find).
    list.Clear();
    Settings("[StartupCurrUser]\r\nOnly=" + tool + "\r\n");
    discovery::AddStartupAllUser(form);
    EXPECT_EQ(list.Count(), 0);
}

TEST_F(Scanners, EachVariantSplitsItsValueIntoRowsFoundInTheGivenFolders) {
    for (const char* file : {"\\shell.exe", "\\System\\old.exe", "\\System32\\userinit.exe", "\\System32\\rdpclip.exe",
                             "\\sub\\a.exe"})
        Touch(W + file);
    for (const char* file : {"\\Program.exe", "\\x\\x.exe", "\\Vendor\\deep\\tool.exe"}) Touch(P + file);

    struct Row { std::string text, path, flag; };
    const std::string userinit = W + "\\System32\\userinit.exe", rdpclip = W + "\\System32\\rdpclip.exe";
    const struct { int type; bool disabled; const char* name; std::string data; std::vector<Row> rows; } cases[] = {
        // A trailing separator gives no row; none gives one; the rows of a value
        // follow its text. Userinit names its rows after the last path element.
        {2, false, "Userinit", "%SystemRoot%\\system32\\userinit.exe,", {{"userinit.exe", userinit, "Yes"}}},
        {2, false, "Userinit", "userinit.exe,\"" + P + "\\Vendor\\deep\\tool.exe\"",
         {{"userinit.exe", userinit, "Yes"}, {"tool.exe", P + "\\Vendor\\deep\\tool.exe", "Yes"}}},
        {2, false, "Userinit", W + "\\shell.exe", {{"shell.exe", W + "\\shell.exe", "Yes"}}},
        {2, false, "Userinit", "System\\old", {{"old", W + "\\System\\old.exe", "Yes"}}},
        // Only a backslash farther than one character from the end cuts.
        {2, false, "Userinit", "sub\\a,sub\\ab", {{"sub\\a", W + "\\sub\\a.exe", "Yes"}, {"ab", "", "Yes"}}},
        // A piece the reduction empties still has a row, looked up as ".exe".
        {2, false, "Userinit", "-x,userinit.exe", {{"", "", "Yes"}, {"userinit.exe", userinit, "Yes"}}},
        // Shell names its rows before the cut, trims both ends and splits at blanks.
        {3, false, "Shell", "  shell.exe  ", {{"shell.exe", W + "\\shell.exe", "Yes"}}},
        {3, false, "Shell", W + "\\shell.exe", {{W + "\\shell.exe", W + "\\shell.exe", "Yes"}}},
        {3, false, "Shell", scratch + "\\Program Files\\x\\x.exe",
         {{scratch + "\\Program", P + "\\Program.exe", "Yes"}, {"Files\\x\\x.exe", P + "\\x\\x.exe", "Yes"}}},
        {3, false, "Shell", "a.exe  b.exe", {{"a.exe", "", "Yes"}, {"", "", "Yes"}, {"b.exe", "", "Yes"}}},
        {3, false, "Shell", "USERINIT.EXE", {{"USERINIT.EXE", "", "Yes"}}},  // the extension test is case-sensitive
        {1, false, "StartupPrograms", "rdpclip", {{"rdpclip", rdpclip, "Yes"}}},
        {1, false, "StartupPrograms", "rdpclip,foo", {{"rdpclip", rdpclip, "Yes"}, {"foo", "", "Yes"}}},
        // Disabled copies (in AutorunsDisabled): "NO" for the pieces before a StartupPrograms separator.
        {2, true, "Userinit", "a.exe,userinit.exe", {{"a.exe", "", "No"}, {"userinit.exe", userinit, "No"}}},
        {3, true, "Shell", "a.exe shell.exe", {{"a.exe", "", "No"}, {"shell.exe", W + "\\shell.exe", "No"}}},
        {1, true, "StartupPrograms", "rdpclip,foo", {{"rdpclip", rdpclip, "NO"}, {"foo", "", "No"}}},
        // A disabled StartupPrograms goes by its name alone, under the calling type.
        {2, true, "StartupPrograms", "rdpclip,foo", {{"rdpclip", rdpclip, "NO"}, {"foo", "", "No"}}},
        {3, true, "StartupPrograms", "rdpclip", {{"rdpclip", rdpclip, "No"}}},
        // Otherwise name and type must both match, the name in its exact case.
        {2, false, "StartupPrograms", "rdpclip", {}}, {3, false, "Userinit", "userinit.exe", {}},
        {3, true, "Userinit", "userinit.exe", {}},    {2, false, "userinit", "userinit.exe", {}},
    };
    const std::pair<std::string, std::string> kSection[] = {{}, {"Registry\\All Users\\Logon\\Startup Programs", "\"7\""},
        {"Registry\\All Users\\Logon\\UserInit", "\"9\""}, {"Registry\\All Users\\Logon\\Shell", "\"8\""}};
    for (const auto& c : cases) {
        Reset();
        places->Set(HKLM, c.disabled ? logonKey + "\\AutorunsDisabled" : logonKey, c.name, c.data);
        discovery::AddLogon(form, logonKey, static_cast<std::int16_t>(c.type));
        std::vector<RowView> expected;
        for (const Row& row : c.rows)
            expected.push_back({row.text, row.path, row.flag, kSection[c.type].first, kSection[c.type].second});
        EXPECT_EQ(Rows(), expected) << c.type << " " << c.name << " = " << c.data;
    }
}

TEST_F(Scanners, EnabledLogonRowsPumpMessagesUnderTheHourglassUnlessTheTimerRuns) {
    Touch(W + "\\System32\\userinit.exe");
    places->Set(HKLM, logonKey, "Userinit", "userinit.exe,userinit.exe");
    places->Set(HKLM, logonKey + "\\AutorunsDisabled", "Userinit", "userinit.exe");
    auto& ui = machine->Ui();
    discovery::AddLogon(form, logonKey, 2);
    EXPECT_EQ(std::make_pair(list.Count(), ui.doEvents), std::make_pair(3L, 2));
    EXPECT_EQ(ui.mousePointers, (std::vector<int>{platform::kMousePointerHourglass, platform::kMousePointerDefault}));
    ui.mousePointers.clear();
    timer1Enabled = true;
    discovery::AddLogon(form, logonKey, 2);
    EXPECT_EQ(ui.mousePointers, std::vector<int>{platform::kMousePointerDefault});

    // A handler that clears the list while the search pumps leaves the rows added after it.
    Reset();
    Touch(P + "\\b.exe");
    places->Set(HKLM, logonKey, "Userinit", "a.exe,b.exe");
    ui.onDoEvents = [&] { list.Clear(); };
    discovery::AddLogon(form, logonKey, 2);
    ui.onDoEvents = nullptr;
    ASSERT_EQ(list.Count(), 1);
    EXPECT_EQ(list(1).SubItems(1), P + "\\b.exe");
}

}  // namespace

// Start-up items going round through the main form's list and commands, and the operations the trips do not reach.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

#include "discovery/Logon.h"
#include "frame/FrmMain2.h"
#include "frame/catalogue.h"
#include "item_places.h"
#include "operations/ItemOperations.h"
#include "scripted_view.h"

using namespace tessmark;
using namespace tessmark::testing;
using platform::reg::kSz;
using namespace std::string_literals;

namespace {

constexpr const char *kNotepad = "C:\\windows\\notepad.exe", *kRegedit = "C:\\windows\\regedit.exe";
constexpr int kAllUsersFolder = platform::kCsidlCommonStartup, kCurrentUserFolder = platform::kCsidlStartup;
constexpr platform::RegHandle HKLM = ItemPlaces::HKLM, HKCU = ItemPlaces::HKCU;
const std::string kBase = kRunBase, kAllRun = "Registry\\All Users\\Run";
constexpr int kF2 = 113, kF5 = 116, kDeleteKey = 46, kLeft = 1, kRight = 2;

class Items : public ::testing::Test {
protected:
    std::unique_ptr<TestMachine> machine = MakeTestMachine();
    ItemPlaces places{*machine};
    frame::FrmMain2 form{machine->Ports()};
    operations::ItemOperations ops{form.Context()};

    const std::vector<std::string>& Log() { return machine->Ui().log; }
    // Selects the node, whether or not the main tree has it, and fills the list; logon lookups search a small tree.
    void Populate(std::string_view key) {
        form.folders = {machine->Files().Environ("windir"), machine->ScratchFolder()};
        form.treeAuto.Nodes.push_back({std::string(key), "", "", 0, false});
        form.treeAuto.Select(std::string(key));
        form.treeAuto_Click();
    }
    discovery::ItemRow& Row(const std::string& section, const std::string& text) {
        for (const auto& row : form.ListView1.Rows())
            if (row->SubItems(3) == section && Shown(row->Text) == text) return *row;
        throw std::runtime_error("no row " + text + " in " + section);
    }
    // A click on the row's check box: the box changes first, then the event.
    void ClickCheckBox(discovery::ItemRow& row) { row.Checked = !row.Checked; form.ListView1_ItemCheck(row); }
    // An enabled row that no scanner makes.
    discovery::ItemRow& AddRow(const std::string& text, const std::string& section, long tag, const std::string& key) {
        discovery::ItemRow& row = form.ListView1.Add();
        std::tie(row.Text, row.SubItems(1), row.SubItems(2), row.SubItems(3)) = std::tie(text, kNotepad, "Yes", section);
        std::tie(row.Tag, row.Key, row.Checked) = std::make_tuple(tag, key, true);
        form.ListView1.Select(row);
        return row;
    }
    std::string LogLine(const std::string& section, const std::string& name, const std::string& path) {
        return "Tessmark - Section-" + section + " ItemName-" + name + " ItemPath-" + path;
    }
    void ExpectInvalidCall(const std::function<void()>& act, const char* why) {
            try { act(); ADD_FAILURE() << why; }
        catch (const vb::VbError& e) { EXPECT_EQ(e.number(), vb::err::kInvalidCall) << why; }
    }
};

TEST_F(Items, RunFamilyValuesGoRoundByteForByteWhicheverWaySwitchedWithOrWithoutARefreshBetween) {
    // The Run key's enabled rows hand on the reduced path, so its value is one the reduction leaves as it is.
    const std::string line = "\"C:\\windows\\notepad.exe\" /min";
    // Nothing lists the current user's RunServiceOnce key.
    const struct { platform::RegHandle root; const char *key, *section; } keys[] = {
        {HKLM, "Run", "Registry\\All Users\\Run"}, {HKLM, "RunOnce", "Registry\\All Users\\RunOnce"},
        {HKLM, "RunServices", "Registry\\All Users\\RunServices"},
        {HKLM, "RunServiceOnce", "Registry\\All Users\\RunServicesOnce"},
        {HKCU, "Run", "Registry\\Current User\\Run"}, {HKCU, "RunOnce", "Registry\\Current User\\RunOnce"},
        {HKCU, "RunServices", "Registry\\Current User\\RunServices"},
    };
    // Four items a key: enabled or disabled at start, switched twice with or without a refresh between.
    const struct { const char* name; bool enabled, refresh; } items[] = {
        {"On", true, false}, {"On refreshed", true, true}, {"Off", false, false}, {"Off refreshed", false, true}};
    auto data = [&](const char* key) { return std::string(key) == "Run" ? std::string(kNotepad) : line; };
    auto place = [&](const char* key, bool enabled) { return kBase + key + (enabled ? "" : "\\AutorunsDisabled"); };
    auto each = [&](auto act) { for (auto& k : keys) for (auto& item : items) act(k, item); };
    // The check box, a double click, F2 and the popup command take turns; each switches its selected row alone.
    const std::function<void(discovery::ItemRow&)> ways[] = {
        [&](auto& row) { ClickCheckBox(row); }, [&](auto&) { form.ListView1_DblClick(); },
        [&](auto&) { form.ListView1_KeyDown(kF2, 0); }, [&](auto&) { form.mnuDisable_Click(); }};
    std::size_t turn = 0;
    auto switchRow = [&](const char* section, const char* name) {
        discovery::ItemRow& row = Row(section, name);
        const bool was = row.Checked;
        form.ListView1.Select(row);
        ways[turn++ % 4](row);
        EXPECT_EQ(std::make_tuple(row.SubItems(2), row.Checked, row.Selected), std::make_tuple(was ? "No"s : "Yes"s, !was, true))
            << section << " / " << name << ", way " << (turn - 1) % 4;
    };
    each([&](auto& k, auto& item) { places.Set(k.root, place(k.key, item.enabled), item.name, data(k.key)); });
    // Values come back at the end of their key, so the list is compared in order of its rows' texts.
    auto sortedRows = [&] { auto rows = RowViews(form.ListView1); std::sort(rows.begin(), rows.end()); return rows; };
    Populate(frame::key::kMain);
    const auto before = sortedRows();
    each([&](auto& k, auto& item) {
        switchRow(k.section, item.name);
        if (!item.refresh) switchRow(k.section, item.name);
    });
    Populate(frame::key::kMain);
    each([&](auto& k, auto& item) {
        if (!item.refresh) return;
        EXPECT_TRUE(places.Raw(k.root, place(k.key, !item.enabled), item.name)) << k.section << " / " << item.name;
        switchRow(k.section, item.name);
    });

    Populate(frame::key::kMain);
    EXPECT_EQ(sortedRows(), before);
    each([&](auto& k, auto& item) {
        EXPECT_EQ(places.Raw(k.root, place(k.key, item.enabled), item.name), RawValue(kSz, data(k.key) + '\0'))
            << k.section << " / " << item.name;
    });
    EXPECT_EQ(places.Everything().size(), std::size(keys) * std::size(items)) << "and no value elsewhere";
    EXPECT_EQ(Log().size(), std::size(keys) * std::size(items)) << "only disabling logs";
}

TEST_F(Items, StartupShortcutsGoRoundThroughTheSettingsFile) {
    const struct { int csidl; std::string_view node; const char *section, *settingsSection, *tag; } folders[] = {
        {kAllUsersFolder, frame::key::kAllUsers, "All Users\\Startup", "StartupAllUser", "1"},
        {kCurrentUserFolder, frame::key::kCurrUser, "Current User\\Startup", "StartupCurrUser", "2"},
    };
    for (const auto& f : folders)
        for (bool refresh : {true, false}) {
            places.Shortcut(f.csidl, "Editor.lnk", kNotepad);
            places.Shortcut(f.csidl, "Editor again.lnk", kNotepad);
            Populate(f.node);
            auto enabled = RowViews(form.ListView1);
            ASSERT_EQ(enabled.size(), 2u) << f.section;
            // The row shows the shell's name for the target, not the shortcut's.
            const std::string name = enabled[0].text, ini = "ini ["s + f.settingsSection + "]\r\n";
            EXPECT_EQ(enabled[0], (RowView{name, kNotepad, "Yes", f.section, f.tag}));

            ClickCheckBox(Row(f.section, name));
            EXPECT_EQ(places.Everything(), std::vector<std::string>{ini + name + "=" + kNotepad + "\r\n"}) << f.section;
            if (refresh) {
                Populate(f.node);
                EXPECT_EQ(RowViews(form.ListView1), (std::vector<RowView>{{name, kNotepad, "No", f.section, f.tag}}));
            }
            ClickCheckBox(Row(f.section, name));
            // One shortcut comes back, named after the row, and the line goes.
            const std::string lnk = "lnk " + std::to_string(f.csidl) + " " + name + ".lnk -> " + kNotepad;
            EXPECT_EQ(places.Everything(), (std::vector<std::string>{ini, lnk})) << f.section << refresh;

            Populate(f.node);
            EXPECT_EQ(RowViews(form.ListView1), (std::vector<RowView>{{name, kNotepad, "Yes", f.section, f.tag}}));
            places.RemoveNewFolderFiles();
            machine->Files().Kill(places.SettingsFile());
        }
}

TEST_F(Items, LogonMembersGoRoundAndTheLastDisabledUserinitTakesTheShellRecordAlong) {
    const std::string rdpwd = kRdpwd, winlogon = kWinlogon;
    const std::pair<std::string, const char*> values[] = {
        {rdpwd, "StartupPrograms"}, {winlogon, "Userinit"}, {winlogon, "Shell"}};
    for (const auto& [key, name] : values) places.Set(HKLM, key, name, name == "Shell"s ? "A B C" : "A,B,C");
    const std::string sections[] = {"Registry\\All Users\\Logon\\Startup Programs",
                                    "Registry\\All Users\\Logon\\UserInit", "Registry\\All Users\\Logon\\Shell"};
    Populate(frame::key::kRegAll);
    for (const auto& section : sections) ClickCheckBox(Row(section, "B"));
    EXPECT_EQ(places.Everything(), (std::vector<std::string>{"HKLM Shell=A C", "HKLM Shell\\AutorunsDisabled=B",
              "HKLM StartupPrograms=A,C", "HKLM StartupPrograms\\AutorunsDisabled=B", "HKLM Userinit=A,C",
              "HKLM Userinit\\AutorunsDisabled=B"}));

    Populate(frame::key::kRegAll);
    ClickCheckBox(Row(sections[1], "B"));
    // Userinit's emptied record goes with its key, which held Shell's as well.
    EXPECT_FALSE(places.KeyExists(HKLM, winlogon + "\\AutorunsDisabled"));
    ClickCheckBox(Row(sections[2], "B"));
    ClickCheckBox(Row(sections[0], "B"));
    EXPECT_FALSE(places.KeyExists(HKLM, rdpwd + "\\AutorunsDisabled"));
    EXPECT_EQ(places.Everything(),
              (std::vector<std::string>{"HKLM Shell=A C B", "HKLM StartupPrograms=A,C,B", "HKLM Userinit=A,C,B"}));

    // A disabled StartupPrograms member before a separator shows "NO", which flips to "No" when enabled.
    places.Set(HKLM, rdpwd + "\\AutorunsDisabled", "StartupPrograms", "D,E");
    Populate(frame::key::kRegAll);
    discovery::ItemRow& row = Row(sections[0], "D");
    ASSERT_EQ(std::make_pair(row.SubItems(2), row.Checked), std::make_pair("NO"s, false));
    ClickCheckBox(row);
    EXPECT_EQ(places.Value(HKLM, rdpwd, "StartupPrograms"), (StoredValue{kSz, "A,C,B,D"}));
    EXPECT_EQ(std::make_pair(row.SubItems(2), row.Checked), std::make_pair("No"s, false));
}

TEST_F(Items, RightClickNamesTheCommandAfterTheRowColumnsSortAscendingOnlyF5ActsOfOtherKeysAndErrorsEndCommands) {
    ScriptedView view;
    form.view = &view;
    for (const char* name : {"beta", "Gamma", "alpha"}) places.Set(HKLM, kBase + "Run", name, kNotepad);
    places.Set(HKLM, kBase + "Run\\AutorunsDisabled", "delta", kNotepad);
    Populate(frame::key::kRunExAll);
    places.Set(HKLM, kBase + "Run", "Newer", kNotepad);
    const auto rows = RowViews(form.ListView1);
    form.ListView1_KeyDown(kDeleteKey, 0);
    form.ListView1_KeyDown('A', 0);
    EXPECT_EQ(RowViews(form.ListView1), rows) << "and F5 below still finds every value";

    form.ListView1.Select(Row(kAllRun, "delta"));
    form.ListView1_MouseDown(kLeft, 0, 0, 0);
    form.ListView1_MouseDown(kRight, 0, 0, 0);
    EXPECT_EQ(view.popups, std::vector<std::string>{"mnuPopup"});
    EXPECT_EQ(std::make_pair(form.FrmMenu.mnuDisable.Caption, form.FrmMenu.mnuDisable.Checked), std::make_pair("Enable"s, true));
    discovery::ItemRow& gamma = Row(kAllRun, "Gamma");
    form.ListView1.Select(gamma);
    form.ListView1_MouseDown(kRight, 0, 0, 0);
    EXPECT_EQ(view.popups.size(), 2u);
    EXPECT_EQ(std::make_pair(form.FrmMenu.mnuDisable.Caption, form.FrmMenu.mnuDisable.Checked), std::make_pair("Disable"s, false));

    auto names = [&] { std::string all; for (auto& r : RowViews(form.ListView1)) all += r.text + ","; return all; };
    for (int click = 1; click <= 2; ++click) {  // a second click does not reverse
        form.ListView1_ColumnClick(1);
        EXPECT_EQ(names(), "alpha,beta,delta,Gamma,") << click;
    }
    EXPECT_EQ(std::make_pair(form.ListView1.SortKey, form.ListView1.SortOrder), std::make_pair(0L, 0L));
    form.ListView1_ColumnClick(3);  // the hidden flag column: "No" before "Yes", equal flags keep their order
    EXPECT_EQ(names(), "delta,alpha,beta,Gamma,");
    EXPECT_EQ(form.ListView1.SortKey, 2);
    // The sorted rows are the same rows: F2 switches the selected one.
    form.ListView1_KeyDown(kF2, 0);
    EXPECT_EQ(places.Value(HKLM, kBase + "Run\\AutorunsDisabled", "Gamma"), (StoredValue{kSz, kNotepad}));
    EXPECT_EQ(gamma.SubItems(2), "No");

    form.ListView1_KeyDown(kF5, 0);
    EXPECT_EQ(form.ListView1.Count(), 5);

    // Errors. No rows: the commands do nothing, the popup still comes and keeps its caption.
    Populate(frame::key::kBhoAll);
    view.popups.clear();
    form.FrmMenu.mnuDisable.Caption = "Enable";
    form.ListView1_DblClick();
    form.ListView1_KeyDown(kF2, 0);
    form.mnuDisable_Click();
    form.ListView1_MouseDown(kRight, 0, 10, 10);
    EXPECT_EQ(view.popups, std::vector<std::string>{"mnuPopup"});
    EXPECT_EQ(form.FrmMenu.mnuDisable.Caption, "Enable");

    // A driver row whose Key has no comma cannot be read.
    discovery::ItemRow& row = AddRow("TessmarkTestService", "Registry\\All Users\\Drivers", 19, "Two");
    form.ListView1_DblClick();
    EXPECT_EQ(std::make_pair(row.Checked, row.SubItems(2)), std::make_pair(false, "Yes"s)) << "the box alone changes";
    form.ListView1_KeyDown(kF2, 0);
    form.mnuDisable_Click();
    EXPECT_EQ(Log().size(), 1u) << "Gamma's alone";
    ExpectInvalidCall([&] { ClickCheckBox(row); }, "the error should leave the handler");
    // Rows but no selection: the error goes up to the top-level handler.
    form.ListView1.Clear();
    form.ListView1.Add();
    EXPECT_THROW(form.ListView1_MouseDown(kRight, 0, 0, 0), vb::VbError);
}

TEST_F(Items, LogonListsLoseAndGainMembersByTheirOwnRules) {
    using Op = std::function<void(const std::string&, const std::string&, const std::string&)>;
    const Op D = [&](auto&... a) { ops.DisableLogon(a...); }, E = [&](auto&... a) { ops.EnableLogon(a...); },
             X = [&](auto&... a) { ops.DeleteLogon(a...); },
             A = [&](const std::string& key, const std::string& member, const std::string& folder) {
                 discovery::AddLogonFolder(form.Context(), key, folder, member);
             };
    const struct { Op op; const char *folder, *live, *disabled, *member, *liveAfter, *disabledAfter; } cases[] = {
        // Disabling takes the member out of the live list and appends it to the disabled one.
        {D, "Userinit", "A,B,C", nullptr, "B", "A,C", "B"}, {D, "Userinit", "A, B, C", nullptr, "B", "A, C", "B"},
        {D, "Userinit", "B,C", nullptr, "B", "C", "B"},     {D, "Userinit", "A,B", nullptr, "B", "A", "B"},
        {D, "Userinit", "B", nullptr, "B", nullptr, "B"},   {D, "Userinit", "B,", nullptr, "B", nullptr, "B"},
        {D, "Shell", "A B", nullptr, "B", "A", "B"},        {D, "StartupPrograms", "A,B,C", nullptr, "B", "A,C", "B"},
        {D, "Userinit", "\"A\",B  ", nullptr, "B", "A", "B"},
        // The first occurrence counts, also inside another member.
        {D, "Userinit", "C:\\app\\x.exe,app", nullptr, "app", "C:,x.exe,app", "app"},
        // A member that is not there costs the list its first Len + 1 characters.
        {D, "Userinit", "alpha,beta", nullptr, "zz", "ha,beta", "zz"}, {D, "Shell", "ab", nullptr, "zz", nullptr, "zz"},
        {D, "Userinit", "A,B", "X,", "B", "A", "X,B"},      {D, "Userinit", "A,B", "X, ", "B", "A", "X,B"},
        {D, "StartupPrograms", "A,B", "X", "B", "A", "X,B"}, {D, "Shell", "A B", "X", "B", "A", "X B"},
        {D, "Shell", "A B", "X,", "B", "A", "X, B"},         {D, "Shell", "A B", "X ", "B", "A", "X B"},
        // Deleting touches the live list only, keeps the comma behind the member and writes it even emptied or missing.
        {X, "Userinit", "A, B, C", nullptr, "B", "A,, C", nullptr}, {X, "Userinit", "B", nullptr, "B", "", nullptr},
        {X, "Shell", nullptr, nullptr, "B", "", nullptr},           {X, "Shell", "A B", nullptr, "B", "A", nullptr},
        // Enabling appends to the live list; the disabled one's last member leaves only the first character before it.
        {E, "Userinit", "L", "A,B,C", "B", "L,B", "A,C"},    {E, "Userinit", "L", "B,C", "B", "L,B", "C"},
        {E, "Shell", "L", "A B", "B", "L B", "A"},           {E, "Userinit", "L", "A,B,C", "C", "L,C", "A"},
        {E, "StartupPrograms", "L", "first,second", "second", "L,second", "f"},
        {E, "Userinit", "L", "alpha,beta", "zz", "L,zz", "ha,beta"},
        {E, "Userinit", "L", "B", "B", "L,B", nullptr},      {E, "StartupPrograms", "L", "B,", "B", "L,B", nullptr},
        // Putting a member back appends it to the live list alone.
        {A, "Userinit", "L", "B", "B", "L,B", "B"},          {A, "Shell", "\"L\"  ", nullptr, "B", "L B", nullptr},
        {A, "StartupPrograms", "L, ", nullptr, "B", "L,B", nullptr}, {A, "Userinit", nullptr, nullptr, "B", "B", nullptr},
    };
    auto stored = [](const char* text) { return text ? std::optional(StoredValue{kSz, text}) : std::nullopt; };
    for (const auto& c : cases) {
        const std::string key = c.folder == "StartupPrograms"s ? kRdpwd : kWinlogon, disabled = key + "\\AutorunsDisabled";
        const std::string label = std::string(c.folder) + " " + (c.live ? c.live : "-") + " / " +
                                  (c.disabled ? c.disabled : "-") + ", member " + c.member;
        DeleteTree(machine->Registry(), HKLM, disabled);
        places.Delete(HKLM, key, c.folder);
        places.Delete(HKLM, key, "Z other");
        places.Set(HKLM, key, "A other", "stays");  // the list is neither the key's first value nor its last
        if (c.live) places.Set(HKLM, key, c.folder, c.live);
        places.Set(HKLM, key, "Z other", "stays");
        if (c.disabled) places.Set(HKLM, disabled, c.folder, c.disabled);
        c.op(key, c.member, c.folder);
        EXPECT_EQ(places.Value(HKLM, key, c.folder), stored(c.liveAfter)) << label;
        EXPECT_EQ(places.Value(HKLM, disabled, c.folder), stored(c.disabledAfter)) << label;
        EXPECT_EQ(places.KeyExists(HKLM, disabled), c.disabledAfter != nullptr) << label;
        EXPECT_EQ(places.Value(HKLM, key, "A other"), (StoredValue{kSz, "stays"})) << label;
    }
}

TEST_F(Items, StartupCommandsTouchOnlyTheirTargetsShortcutsAndLineAndStopMidwayAtAFailure) {
    // A shortcut that cannot be deleted: the line was written first, so the item counts as enabled and disabled.
    places.Shortcut(kCurrentUserFolder, "Locked.lnk", kRegedit);
    machine->AddFileAttributes(places.Path(kCurrentUserFolder, "Locked.lnk"), platform::kAttrReadOnly);
    EXPECT_THROW(ops.MarkDisable("Current User\\Startup", "Locked", kRegedit, 0), vb::VbError);
    EXPECT_TRUE(Log().empty());
    EXPECT_EQ(places.Ini("StartupCurrUser").IniReadValue("Locked"), kRegedit);
    // A shortcut that cannot be saved: the line stays.
    places.Ini("StartupCurrUser").IniWriteValue("Missing\\Tool", kNotepad);
    EXPECT_THROW(ops.MarkEnable("Current User\\Startup", "Missing\\Tool", kNotepad, 0), vb::VbError);
    EXPECT_EQ(places.Ini("StartupCurrUser").IniReadValue("Missing\\Tool"), kNotepad);

    // Disabling leaves other targets, files and folders, and replaces the line.
    places.Shortcut(kCurrentUserFolder, "Editor.lnk", kNotepad);
    places.Shortcut(kCurrentUserFolder, "Other.lnk", kRegedit);
    places.Shortcut(kAllUsersFolder, "Editor.lnk", kNotepad);
    ASSERT_TRUE(machine->Files().WriteWholeFile(places.Path(kCurrentUserFolder, "notes.txt"), "x"));
    places.Ini("StartupCurrUser").IniWriteValue("Notepad", "C:\\old.exe");
    ops.MarkDisable("Current User\\Startup", "Notepad", kNotepad, 0);
    EXPECT_EQ(places.Ini("StartupCurrUser").IniReadValue("Notepad"), kNotepad);
    EXPECT_EQ(Log(), std::vector<std::string>{LogLine("Current User\\Startup", "Notepad", kNotepad)});

    // Enabling overwrites a shortcut of the same name and forgets only a line that names the path.
    places.Ini("StartupAllUser").IniWriteValue("Tool", kRegedit);
    places.Shortcut(kAllUsersFolder, "Tool.lnk", kRegedit);
    ops.MarkEnable("All Users\\Startup", "Tool", "File Not Found", 0);
    char full[261] = {};
    machine->Files().GetFullPathNameA("File Not Found", sizeof full, full);
    EXPECT_EQ(places.Target(kAllUsersFolder, "Tool.lnk"), full);
    EXPECT_EQ(places.Ini("StartupAllUser").IniReadValue("Tool"), kRegedit);

    // Shortcut names always get ".lnk" added.
    const std::string folder = places.StartupFolder(kCurrentUserFolder);
    for (const char* name : {"pad.exe", "ab", "Tool.lnk"}) ops.CreateShortcut(folder + "\\" + name, kNotepad, name);
    const std::vector<std::string> left{"Locked.lnk", "Other.lnk", "Tool.lnk.lnk", "ab.lnk", "notes.txt", "pad.exe.lnk"};
    EXPECT_EQ(places.NewFolderFiles(kCurrentUserFolder), left) << "only the disabled target's shortcuts go";
    EXPECT_EQ(places.NewFolderFiles(kAllUsersFolder), (std::vector<std::string>{"Editor.lnk", "Tool.lnk"}));
    ExpectInvalidCall([&] { ops.CreateShortcut("abcd", kNotepad, "x"); }, "a four-character path has no slice to test");
}

// ---- services, drivers and browser helpers, which nothing lists: rows of their own

TEST_F(Items, ServiceRowsComeBackAutomaticDriverRowsWithTheirKeysStartTypeAndHelperRowsWithTheirSubkeys) {
    const std::string key = kServiceKey;
    const char *services = "Registry\\All Users\\Services", *drivers = "Registry\\All Users\\Drivers";
    const struct { const char *section, *word; std::uint32_t mark, startAfterEnable; } cases[] = {
        {services, "Three,x", 1, 2}, {drivers, "Zero,x", 0, 0}, {drivers, "One,x", 1, 1}, {drivers, "Two,x", 2, 2},
        {drivers, "Three,x", 3, 3},  {drivers, "two,x", 0, 0},  {drivers, "Four,x", 0, 0}, {drivers, ",x", 0, 0},
    };
    const std::optional<RawValue> kNone;
    auto start = [&] { return std::make_pair(places.Raw(HKLM, key, "Start"), places.Raw(HKLM, key, "AutorunsDisabled")); };
    for (const auto& c : cases) {
        places.Put(HKLM, key, "Start", Dword(3));
        discovery::ItemRow& row = AddRow("TessmarkTestService", c.section, 19, c.word);
        ClickCheckBox(row);
        EXPECT_EQ(start(), std::make_pair(std::optional(Dword(4)), std::optional(Dword(c.mark)))) << c.section << c.word;
        ClickCheckBox(row);
        EXPECT_EQ(start(), std::make_pair(std::optional(Dword(c.startAfterEnable)), kNone)) << c.section << c.word;
    }
    // The mark is never read: a driver comes back with the number handed in.
    ops.MarkDisable(drivers, "TessmarkTestService", "", 3);
    ops.MarkEnable(drivers, "TessmarkTestService", "", 1);
    EXPECT_EQ(start(), std::make_pair(std::optional(Dword(1)), kNone));

    // Browser helper rows carry the subkeys as padded text and lose the class key's own values.
    const std::string live = kBhoBase + std::string(kTestClsid), disabled = kBhoBase + "AutorunsDisabled\\"s + kTestClsid;
    auto exist = [&] { return std::make_pair(places.KeyExists(HKLM, live), places.KeyExists(HKLM, disabled)); };
    const auto kLive = std::make_pair(true, false), kDisabled = std::make_pair(false, true);
    // The row hands on its Key. Without subkeys the class key goes round empty.
    discovery::ItemRow& helper = AddRow("Helper", "Registry\\All Users\\Browser Helper Objects", 20, kTestClsid);
    places.Set(HKLM, live, "Own", "lost");
    ClickCheckBox(helper);
    EXPECT_EQ(exist(), kDisabled);
    places.Set(HKLM, disabled, "Own", "lost");
    ClickCheckBox(helper);
    EXPECT_EQ(exist(), kLive);
    EXPECT_EQ(places.Value(HKLM, live, "Own"), std::nullopt);

    places.Set(HKLM, live, "Own", "lost");
    places.Set(HKLM, live + "\\Settings", "Name", "helper");
    places.Put(HKLM, live + "\\Settings", "Flags", Dword(0x41));
    places.Set(HKLM, live + "\\Other", "Path", kNotepad);
    ClickCheckBox(helper);
    EXPECT_EQ(places.Value(HKLM, disabled + "\\Settings", "Name"), (StoredValue{kSz, "helper"}));
    EXPECT_EQ(places.Value(HKLM, disabled + "\\Settings", "Flags"), (StoredValue{kSz, "A"}));
    EXPECT_EQ(places.Value(HKLM, disabled + "\\Other", "Path"), (StoredValue{kSz, kNotepad}));
    EXPECT_EQ(places.Value(HKLM, disabled, "Own"), std::nullopt);
    EXPECT_EQ(exist(), kDisabled);

    ClickCheckBox(helper);
    EXPECT_EQ(exist(), kLive);
    EXPECT_TRUE(places.KeyExists(HKLM, kBhoBase + "AutorunsDisabled"s));
    // The copies hold the whole 1024-character read, too long for the enumeration's data buffer:
    // on the way back every value comes out nameless and lands in the subkey's default value.
    for (const char* sub : {"\\Settings", "\\Other"}) {
        EXPECT_EQ(places.Value(HKLM, live + sub, ""), (StoredValue{kSz, ""})) << sub;
        EXPECT_EQ(places.Value(HKLM, live + sub, "Name"), std::nullopt) << sub;
        EXPECT_EQ(places.Value(HKLM, live + sub, "Path"), std::nullopt) << sub;
    }

    // A subkey with subkeys of its own stays behind with its parent.
    places.Set(HKLM, live + "\\Deep", "Name", "deep");
    places.Set(HKLM, live + "\\Deep\\Deeper", "Name", "deeper");
    ClickCheckBox(helper);
    EXPECT_EQ(places.Value(HKLM, disabled + "\\Deep", "Name"), (StoredValue{kSz, "deep"}));
    const std::string deeper = "\\Deep\\Deeper";
    EXPECT_EQ(std::make_pair(places.KeyExists(HKLM, live + deeper), places.KeyExists(HKLM, disabled + deeper)), kLive);
}

}  // namespace

// Start-up items on the main form's list: items that go round from enabled to
// disabled and back, seen after each repopulation, the commands and keys that
// switch them, and the operations where the list's round trips do not reach:
// the log, the quirks of logon lists, Startup failures, services and browser helpers.
#include <gtest/gtest.h>

#include <algorithm>

#include "frame/FrmMain2.h"
#include "frame/catalogue.h"
#include "item_places.h"
#include "operations/ItemOperations.h"
#include "platform/memory/memory_disk.h"
#include "scan_fixture.h"
#include "scripted_view.h"

using namespace tessmark;
using tessmark::testing::ItemPlaces;
using tessmark::testing::RowView;
using tessmark::testing::Shown;
using tessmark::testing::StoredValue;
using platform::reg::kSz;

namespace {

constexpr const char* kNotepad = "C:\\windows\\notepad.exe";
constexpr const char* kRegedit = "C:\\windows\\regedit.exe";
constexpr int kAllUsersFolder = platform::kCsidlCommonStartup, kCurrentUserFolder = platform::kCsidlStartup;
constexpr platform::RegHandle HKLM = platform::reg::kLocalMachine;
constexpr platform::RegHandle HKCU = platform::reg::kCurrentUser;
const std::string kBase = tessmark::testing::kRunBase;
constexpr int kF2 = 113, kF5 = 116, kDeleteKey = 46;
constexpr int kLeft = 1, kRight = 2;

class Items : public ::testing::Test {
protected:
    std::unique_ptr<tessmark::testing::TestMachine> machine = tessmark::testing::MakeTestMachine();
    ItemPlaces places{*machine};
    frame::FrmMain2 form{machine->Ports()};
    operations::ItemOperations ops{form.Context()};
    storage::IniFile ini{machine->Files()};

    storage::IniFile& Ini(const std::string& section) {
        ini.IniFilePath(places.SettingsFile());
        ini.IniSection(section);
        return ini;
    }
    const std::vector<std::string>& Log() { return machine->Ui().log; }

    // Selects the node, whether or not the main tree has it, and fills the list;
    // the logon scanner searches a small tree.
    void Populate(std::string_view key) {
        form.folders = {machine->Files().Environ("windir"), machine->ScratchFolder()};
        form.treeAuto.Nodes.push_back({std::string(key), "", "", 0, false});
        form.treeAuto.Select(std::string(key));
        form.treeAuto_Click();
    }
    // The rows of the given sections, in list order.
    std::vector<RowView> Rows(const std::vector<std::string>& sections) {
        auto rows = tessmark::testing::RowViews(form.ListView1);
        std::erase_if(rows, [&](const RowView& row) {
            return std::find(sections.begin(), sections.end(), row.section) == sections.end();
        });
        return rows;
    }
    discovery::ItemRow& Row(const std::string& section, const std::string& text) {
        for (const auto& row : form.ListView1.Rows())
            if (row->SubItems(3) == section && Shown(row->Text) == text) return *row;
        throw std::runtime_error("no row " + text + " in " + section);
    }
    // A click on the row's check box: the box changes first, then the event.
    void ClickCheckBox(discovery::ItemRow& row) {
        row.Checked = !row.Checked;
        form.ListView1_ItemCheck(row);
    }
    // A row that no scanner makes.
    discovery::ItemRow& AddRow(const std::string& text, const std::string& section, long tag, const std::string& key) {
        discovery::ItemRow& row = form.ListView1.Add();
        std::tie(row.Text, row.SubItems(1), row.SubItems(2), row.SubItems(3)) = std::tie(text, kNotepad, "Yes", section);
        std::tie(row.Tag, row.Key, row.Checked) = std::make_tuple(tag, key, true);
        form.ListView1.Select(row);
        return row;
    }
};

TEST_F(Items, RunFamilyValuesGoRoundByteForByteWithOrWithoutARefreshBetween) {
    // The Run key's enabled rows hand on the reduced path, so its value is one
    // the reduction leaves as it is; the others hand on the data as stored.
    const std::string line = "\"C:\\windows\\notepad.exe\" /min";
    const struct {
        platform::RegHandle root;
        const char *key, *section;
    } keys[] = {
        {HKLM, "Run", "Registry\\All Users\\Run"}, {HKLM, "RunOnce", "Registry\\All Users\\RunOnce"},
        {HKLM, "RunServices", "Registry\\All Users\\RunServices"},
        {HKLM, "RunServiceOnce", "Registry\\All Users\\RunServicesOnce"},
        {HKCU, "Run", "Registry\\Current User\\Run"}, {HKCU, "RunOnce", "Registry\\Current User\\RunOnce"},
        {HKCU, "RunServices", "Registry\\Current User\\RunServices"},
    };
    // Nothing lists the current user's RunServiceOnce key.
    // Four items a key: enabled or disabled at start, clicked twice with or without a refresh between.
    const struct {
        const char* name;
        bool enabled, refresh;
    } items[] = {{"On stays", true, false}, {"On refreshed", true, true}, {"Off stays", false, false}, {"Off refreshed", false, true}};
    auto data = [&](const char* key) { return std::string(key) == "Run" ? std::string(kNotepad) : line; };
    auto place = [&](const char* key, bool enabled) { return kBase + key + (enabled ? "" : "\\AutorunsDisabled"); };
    for (const auto& k : keys)
        for (const auto& item : items) places.Set(k.root, place(k.key, item.enabled), item.name, data(k.key));

    // Values come back at the end of their key, so the list is compared in order of its rows' texts.
    auto sortedRows = [&] {
        auto rows = tessmark::testing::RowViews(form.ListView1);
        std::sort(rows.begin(), rows.end());
        return rows;
    };
    Populate(frame::key::kMain);
    const auto before = sortedRows();
    for (const auto& k : keys)
        for (const auto& item : items) {
            ClickCheckBox(Row(k.section, item.name));
            if (!item.refresh) ClickCheckBox(Row(k.section, item.name));
        }
    Populate(frame::key::kMain);
    for (const auto& k : keys)
        for (const auto& item : items)
            if (item.refresh) ClickCheckBox(Row(k.section, item.name));

    Populate(frame::key::kMain);
    EXPECT_EQ(sortedRows(), before);
    for (const auto& k : keys)
        for (const auto& item : items) {
            EXPECT_EQ(places.Raw(k.root, place(k.key, item.enabled), item.name),
                      std::make_pair(kSz, data(k.key) + '\0'))
                << k.section << " / " << item.name;
            EXPECT_EQ(places.Raw(k.root, place(k.key, !item.enabled), item.name), std::nullopt)
                << k.section << " / " << item.name;
        }
}

TEST_F(Items, StartupShortcutsGoRoundThroughTheSettingsFile) {
    const struct {
        int csidl;
        std::string_view node;
        const char* section;
        const char* settingsSection;
        const char* tag;
    } folders[] = {
        {platform::kCsidlCommonStartup, frame::key::kAllUsers, "All Users\\Startup", "StartupAllUser", "1"},
        {platform::kCsidlStartup, frame::key::kCurrUser, "Current User\\Startup", "StartupCurrUser", "2"},
    };
    storage::IniFile ini(machine->Files());
    auto iniValue = [&](const char* section, const std::string& name) {
        ini.IniFilePath(places.SettingsFile());
        ini.IniSection(section);
        return ini.IniReadValue(name);
    };
    for (const auto& f : folders)
        for (bool refresh : {true, false}) {
            places.Shortcut(f.csidl, "Editor.lnk", kNotepad);
            places.Shortcut(f.csidl, "Editor again.lnk", kNotepad);
            Populate(f.node);
            auto enabled = Rows({f.section});
            ASSERT_EQ(enabled.size(), 2u) << f.section;
            // The row shows the shell's name for the target, not the shortcut's.
            const std::string name = enabled[0].text;
            EXPECT_EQ(enabled[0], (RowView{name, kNotepad, "Yes", f.section, f.tag}));

            ClickCheckBox(Row(f.section, name));
            EXPECT_EQ(places.NewFolderFiles(f.csidl), std::vector<std::string>{}) << "both shortcuts to the target go";
            EXPECT_EQ(iniValue(f.settingsSection, name), kNotepad);

            if (refresh) {
                Populate(f.node);
                EXPECT_EQ(Rows({f.section}), (std::vector<RowView>{{name, kNotepad, "No", f.section, f.tag}}));
            }
            ClickCheckBox(Row(f.section, name));
            // One shortcut comes back, named after the row.
            EXPECT_EQ(places.NewFolderFiles(f.csidl), std::vector<std::string>{name + ".lnk"}) << f.section << refresh;
            EXPECT_EQ(places.Target(f.csidl, name + ".lnk"), kNotepad);
            EXPECT_EQ(iniValue(f.settingsSection, name), "");

            Populate(f.node);
            EXPECT_EQ(Rows({f.section}), (std::vector<RowView>{{name, kNotepad, "Yes", f.section, f.tag}}));
            places.RemoveNewFolderFiles();
        }
}

TEST_F(Items, LogonMembersGoRoundAndTheLastDisabledUserinitTakesTheShellRecordAlong) {
    const std::string rdpwd = tessmark::testing::kRdpwd, winlogon = tessmark::testing::kWinlogon;
    places.Set(HKLM, rdpwd, "StartupPrograms", "A,B,C");
    places.Set(HKLM, winlogon, "Userinit", "A,B,C");
    places.Set(HKLM, winlogon, "Shell", "A B C");
    const std::vector<std::string> sections = {"Registry\\All Users\\Logon\\Startup Programs",
                                               "Registry\\All Users\\Logon\\UserInit",
                                               "Registry\\All Users\\Logon\\Shell"};
    const char* tags[] = {"\"7\"", "\"9\"", "\"8\""};
    auto expected = [&](const std::vector<std::pair<const char*, const char*>>& members) {
        std::vector<RowView> rows;
        for (std::size_t s = 0; s < sections.size(); ++s)
            for (const auto& [text, flag] : members) rows.push_back({text, "File Not Found", flag, sections[s], tags[s]});
        return rows;
    };

    Populate(frame::key::kRegAll);
    ASSERT_EQ(Rows(sections), expected({{"A", "Yes"}, {"B", "Yes"}, {"C", "Yes"}}));
    for (const auto& section : sections) ClickCheckBox(Row(section, "B"));
    EXPECT_EQ(places.Value(HKLM, rdpwd, "StartupPrograms"), (StoredValue{kSz, "A,C"}));
    EXPECT_EQ(places.Value(HKLM, winlogon, "Userinit"), (StoredValue{kSz, "A,C"}));
    EXPECT_EQ(places.Value(HKLM, winlogon, "Shell"), (StoredValue{kSz, "A C"}));
    EXPECT_EQ(places.Value(HKLM, rdpwd + "\\AutorunsDisabled", "StartupPrograms"), (StoredValue{kSz, "B"}));
    EXPECT_EQ(places.Value(HKLM, winlogon + "\\AutorunsDisabled", "Userinit"), (StoredValue{kSz, "B"}));
    EXPECT_EQ(places.Value(HKLM, winlogon + "\\AutorunsDisabled", "Shell"), (StoredValue{kSz, "B"}));

    Populate(frame::key::kRegAll);
    ASSERT_EQ(Rows(sections), expected({{"A", "Yes"}, {"C", "Yes"}, {"B", "No"}}));
    ClickCheckBox(Row(sections[1], "B"));
    // Userinit's emptied record goes with its key, which held Shell's as well.
    EXPECT_FALSE(places.KeyExists(HKLM, winlogon + "\\AutorunsDisabled"));
    ClickCheckBox(Row(sections[2], "B"));
    ClickCheckBox(Row(sections[0], "B"));
    EXPECT_FALSE(places.KeyExists(HKLM, rdpwd + "\\AutorunsDisabled"));
    EXPECT_EQ(places.Value(HKLM, rdpwd, "StartupPrograms"), (StoredValue{kSz, "A,C,B"}));
    EXPECT_EQ(places.Value(HKLM, winlogon, "Userinit"), (StoredValue{kSz, "A,C,B"}));
    EXPECT_EQ(places.Value(HKLM, winlogon, "Shell"), (StoredValue{kSz, "A C B"}));

    Populate(frame::key::kRegAll);
    EXPECT_EQ(Rows(sections), expected({{"A", "Yes"}, {"C", "Yes"}, {"B", "Yes"}}));
}

TEST_F(Items, ADisabledStartupProgramsRowInCapitalsFlipsToNoWhenEnabled) {
    const std::string rdpwd = tessmark::testing::kRdpwd;
    const std::string section = "Registry\\All Users\\Logon\\Startup Programs";
    places.Set(HKLM, rdpwd, "StartupPrograms", "A");
    places.Set(HKLM, rdpwd + "\\AutorunsDisabled", "StartupPrograms", "B,C");
    Populate(frame::key::kRegAll);
    discovery::ItemRow& row = Row(section, "B");
    ASSERT_EQ(row.SubItems(2), "NO");
    ASSERT_FALSE(row.Checked);

    ClickCheckBox(row);
    EXPECT_EQ(places.Value(HKLM, rdpwd, "StartupPrograms"), (StoredValue{kSz, "A,B"}));
    EXPECT_EQ(row.SubItems(2), "No");
    EXPECT_FALSE(row.Checked);
}

TEST_F(Items, DoubleClickF2AndThePopupCommandSwitchTheSelectedRow) {
    const std::pair<const char*, void (*)(frame::FrmMain2&)> triggers[] = {
        {"double click", [](frame::FrmMain2& f) { f.ListView1_DblClick(); }},
        {"F2", [](frame::FrmMain2& f) { f.ListView1_KeyDown(kF2, 0); }},
        {"popup command", [](frame::FrmMain2& f) { f.mnuDisable_Click(); }},
    };
    places.Set(HKLM, kBase + "Run", "First", kNotepad);
    places.Set(HKLM, kBase + "Run", "Second", kNotepad);
    for (const auto& [name, fire] : triggers) {
        Populate(frame::key::kRunExAll);
        discovery::ItemRow& second = *form.ListView1.Rows()[1];
        const std::string text = Shown(second.Text);
        form.ListView1.Select(second);

        fire(form);
        EXPECT_EQ(second.SubItems(2), "No") << name;
        EXPECT_FALSE(second.Checked) << name;
        EXPECT_TRUE(second.Selected) << name;
        EXPECT_EQ(form.ListView1.Rows()[0]->SubItems(2), "Yes") << name;
        EXPECT_EQ(places.Value(HKLM, kBase + "Run\\AutorunsDisabled", text), (StoredValue{kSz, kNotepad})) << name;

        fire(form);
        EXPECT_EQ(second.SubItems(2), "Yes") << name;
        EXPECT_TRUE(second.Selected) << name;
        EXPECT_EQ(places.Value(HKLM, kBase + "Run", text), (StoredValue{kSz, kNotepad})) << name;
    }
}

TEST_F(Items, RightClickNamesTheCommandAfterTheSelectedRowAndOfOtherKeysOnlyF5Acts) {
    Populate(frame::key::kBhoAll);  // no rows: the commands do nothing, the popup still comes
    tessmark::testing::ScriptedView view;
    form.view = &view;
    form.FrmMenu.mnuDisable.Caption = "Enable";
    form.ListView1_DblClick();
    form.ListView1_KeyDown(kF2, 0);
    form.mnuDisable_Click();
    EXPECT_TRUE(machine->Ui().log.empty());
    form.ListView1_MouseDown(kRight, 0, 10, 10);
    EXPECT_EQ(view.popups, std::vector<std::string>{"mnuPopup"});
    EXPECT_EQ(form.FrmMenu.mnuDisable.Caption, "Enable");

    places.Set(HKLM, kBase + "Run", "On", kNotepad);
    places.Set(HKLM, kBase + "Run\\AutorunsDisabled", "Off", kNotepad);
    Populate(frame::key::kRunExAll);
    places.Set(HKLM, kBase + "Run", "Newer", kNotepad);
    form.ListView1_KeyDown(kDeleteKey, 0);
    form.ListView1_KeyDown('A', 0);
    EXPECT_EQ(form.ListView1.Count(), 2);
    EXPECT_EQ(Row("Registry\\All Users\\Run", "On").SubItems(2), "Yes");
    EXPECT_EQ(places.Value(HKLM, kBase + "Run", "On"), (StoredValue{kSz, kNotepad}));

    view.popups.clear();
    form.ListView1.Select(Row("Registry\\All Users\\Run", "Off"));
    form.ListView1_MouseDown(kLeft, 0, 0, 0);
    EXPECT_TRUE(view.popups.empty());
    form.ListView1_MouseDown(kRight, 0, 0, 0);
    EXPECT_EQ(view.popups.size(), 1u);
    EXPECT_EQ(form.FrmMenu.mnuDisable.Caption, "Enable");
    EXPECT_TRUE(form.FrmMenu.mnuDisable.Checked);
    form.ListView1.Select(Row("Registry\\All Users\\Run", "On"));
    form.ListView1_MouseDown(kRight, 0, 0, 0);
    EXPECT_EQ(view.popups.size(), 2u);
    EXPECT_EQ(form.FrmMenu.mnuDisable.Caption, "Disable");
    EXPECT_FALSE(form.FrmMenu.mnuDisable.Checked);

    form.ListView1_KeyDown(kF5, 0);
    EXPECT_EQ(form.ListView1.Count(), 3);
    // Rows but no selection: the error goes up to the top-level handler.
    form.ListView1.Clear();
    form.ListView1.Add();
    EXPECT_THROW(form.ListView1_MouseDown(kRight, 0, 0, 0), vb::VbError);
}

TEST_F(Items, ColumnClicksSortAscendingAndRowsKeepTheirIdentity) {
    for (const char* name : {"beta", "Gamma", "alpha"}) places.Set(HKLM, kBase + "Run", name, kNotepad);
    places.Set(HKLM, kBase + "Run\\AutorunsDisabled", "delta", kNotepad);
    Populate(frame::key::kRunExAll);
    discovery::ItemRow& gamma = Row("Registry\\All Users\\Run", "Gamma");
    form.ListView1.Select(gamma);

    auto names = [&] {
        std::vector<std::string> shown;
        for (const auto& row : form.ListView1.Rows()) shown.push_back(Shown(row->Text));
        return shown;
    };
    const std::vector<std::string> byName = {"alpha", "beta", "delta", "Gamma"};
    form.ListView1_ColumnClick(1);
    EXPECT_EQ(names(), byName);
    form.ListView1_ColumnClick(1);
    EXPECT_EQ(names(), byName) << "a second click does not reverse";
    EXPECT_EQ(form.ListView1.SortKey, 0);
    EXPECT_EQ(form.ListView1.SortOrder, 0);

    form.ListView1_ColumnClick(3);  // the hidden flag column: "No" before "Yes"
    EXPECT_EQ(names().front(), "delta");
    EXPECT_EQ(form.ListView1.SortKey, 2);

    form.ListView1_KeyDown(kF2, 0);
    EXPECT_EQ(places.Value(HKLM, kBase + "Run\\AutorunsDisabled", "Gamma"), (StoredValue{kSz, kNotepad}));
    EXPECT_EQ(gamma.SubItems(2), "No");
}

TEST_F(Items, DriverAndBrowserHelperRowsHandOnTheirKey) {
    const std::pair<const char*, std::uint32_t> words[] = {
        {"Zero,x", 0}, {"One,x", 1}, {"Two,x", 2}, {"Three,x", 3}, {"two,x", 0}, {"Four,x", 0}, {",x", 0},
    };
    const std::string key = tessmark::testing::kServiceKey, clsid = tessmark::testing::kTestClsid;
    for (const auto& [word, number] : words) {
        ClickCheckBox(AddRow("TessmarkTestService", "Registry\\All Users\\Drivers", 19, word));
        EXPECT_EQ(places.Dword(HKLM, key, "AutorunsDisabled"), number) << word;
        EXPECT_EQ(places.Dword(HKLM, key, "Start"), 4u) << word;
    }
    places.MakeKey(HKLM, tessmark::testing::kBhoBase + clsid);
    discovery::ItemRow& row = AddRow("Helper", "Registry\\All Users\\Browser Helper Objects", 20, clsid);
    ClickCheckBox(row);
    EXPECT_FALSE(places.KeyExists(HKLM, tessmark::testing::kBhoBase + clsid));
    EXPECT_TRUE(places.KeyExists(HKLM, std::string(tessmark::testing::kBhoBase) + "AutorunsDisabled\\" + clsid));
    EXPECT_EQ(row.SubItems(2), "No");
}

TEST_F(Items, AnErrorInsideEndsTheCommandsButEscapesACheckBoxClick) {
    // A driver row whose Key has no comma cannot be read.
    discovery::ItemRow& row = AddRow("TessmarkTestService", "Registry\\All Users\\Drivers", 19, "Two");
    form.ListView1_DblClick();
    EXPECT_FALSE(row.Checked) << "the box keeps its new state";
    EXPECT_EQ(row.SubItems(2), "Yes") << "the row's text is not renewed";
    form.ListView1_KeyDown(kF2, 0);
    form.mnuDisable_Click();
    EXPECT_TRUE(machine->Ui().log.empty());
    try {
        ClickCheckBox(row);
        ADD_FAILURE() << "the error should leave the handler";
    } catch (const vb::VbError& error) {
        EXPECT_EQ(error.number(), vb::err::kInvalidCall);
    }
}

// ---- the operations alone

TEST_F(Items, OnlyDisablingLogsAndTheCopyIsTextOfThePathHandedIn) {
    // Nothing lists this key, yet it is handled; section texts compare exactly, case included.
    const std::string live = kBase + "RunServiceOnce", disabled = live + "\\AutorunsDisabled";
    places.Set(HKCU, live, "Tool", "%windir%\\notepad.exe", platform::reg::kExpandSz);
    places.Set(HKLM, live, "Tool", "elsewhere");
    ops.MarkDisable("Registry\\Current User\\RunServicesOnce", "Tool", kNotepad, 0);
    EXPECT_EQ(places.Value(HKCU, disabled, "Tool"), (StoredValue{kSz, kNotepad}));
    EXPECT_EQ(Log().back(), "Tessmark - Section-Registry\\Current User\\RunServicesOnce ItemName-Tool ItemPath-" +
                                std::string(kNotepad));
    for (int twice = 0; twice < 2; ++twice) ops.MarkEnable("Registry\\Current User\\RunServicesOnce", "Tool", kNotepad, 0);
    EXPECT_EQ(places.Value(HKCU, live, "Tool"), (StoredValue{kSz, kNotepad}));
    EXPECT_TRUE(places.KeyExists(HKCU, disabled)) << "the emptied subkey stays";
    EXPECT_EQ(places.Value(HKLM, live, "Tool"), (StoredValue{kSz, "elsewhere"}));
    EXPECT_EQ(Log().size(), 1u);

    for (const char* section : {"Registry\\All Users\\run", "registry\\all users\\Run", ""}) {
        places.Set(HKLM, kBase + "Run", "Tool", kNotepad);
        places.Set(HKLM, kBase + "Run\\AutorunsDisabled", "Tool", kRegedit);
        ops.MarkDisable(section, "Tool", kNotepad, 0);
        EXPECT_EQ(Log().back(), "Tessmark - Section-" + std::string(section) + " ItemName-Tool ItemPath-" + kNotepad);
        ops.MarkEnable(section, "Tool", kNotepad, 0);
        EXPECT_EQ(places.Value(HKLM, kBase + "Run", "Tool"), (StoredValue{kSz, kNotepad})) << section;
        EXPECT_EQ(places.Value(HKLM, kBase + "Run\\AutorunsDisabled", "Tool"), (StoredValue{kSz, kRegedit})) << section;
    }
    EXPECT_EQ(Log().size(), 4u);
}

// ---- lists of programs in one logon value

std::string KeyOf(const std::string& logonFolder) {
    return logonFolder == "StartupPrograms" ? tessmark::testing::kRdpwd : tessmark::testing::kWinlogon;
}

TEST_F(Items, DisablingTakesTheMemberOutOfTheLiveListAndAppendsItToTheDisabledOne) {
    const struct {
        const char *before, *member, *logonFolder;
        std::optional<std::string> after;  // nothing: the value is gone
    } cases[] = {
        {"A,B,C", "B", "Userinit", "A,C"}, {"A, B, C", "B", "Userinit", "A, C"}, {"B,C", "B", "Userinit", "C"},
        {"A,B", "B", "Userinit", "A"},     {"B", "B", "Userinit", std::nullopt}, {"B,", "B", "Userinit", std::nullopt},
        {"A B", "B", "Shell", "A"},        {"A,B,C", "B", "StartupPrograms", "A,C"},
        {"\"A\",B  ", "B", "Userinit", "A"},
        // The first occurrence counts, also inside another member.
        {"C:\\app\\x.exe,app", "app", "Userinit", "C:,x.exe,app"},
        // A member that is not there costs the list its first Len + 1 characters.
        {"alpha,beta", "zz", "Userinit", "ha,beta"}, {"ab", "zz", "Shell", std::nullopt},
    };
    for (const auto& c : cases) {
        const std::string key = KeyOf(c.logonFolder);
        tessmark::testing::DeleteTree(machine->Registry(), HKLM, key + "\\AutorunsDisabled");
        places.Set(HKLM, key, c.logonFolder, c.before);
        places.Set(HKLM, key, "Other", "stays");
        ops.DisableLogon(key, c.member, c.logonFolder);
        auto after = places.Value(HKLM, key, c.logonFolder);
        EXPECT_EQ(after, c.after ? std::optional(StoredValue{kSz, *c.after}) : std::nullopt) << c.before << " less " << c.member;
        EXPECT_EQ(places.Value(HKLM, key, "Other"), (StoredValue{kSz, "stays"}));
        EXPECT_EQ(places.Value(HKLM, key + "\\AutorunsDisabled", c.logonFolder), (StoredValue{kSz, c.member})) << c.before;
    }
    const struct {
        const char *logonFolder, *disabledBefore, *disabledAfter;
    } grown[] = {{"Userinit", "X,", "X,B"}, {"Userinit", "X, ", "X,B"}, {"StartupPrograms", "X", "X,B"},
                 {"Shell", "X", "X B"},     {"Shell", "X,", "X, B"},    {"Shell", "X ", "X B"}};
    for (const auto& c : grown) {
        const std::string key = KeyOf(c.logonFolder);
        places.Set(HKLM, key + "\\AutorunsDisabled", c.logonFolder, c.disabledBefore);
        places.Set(HKLM, key, c.logonFolder, "A,B");
        ops.DisableLogon(key, "B", c.logonFolder);
        EXPECT_EQ(places.Value(HKLM, key + "\\AutorunsDisabled", c.logonFolder), (StoredValue{kSz, c.disabledAfter}))
            << c.logonFolder << " after \"" << c.disabledBefore << "\"";
    }
}

TEST_F(Items, DeletingTakesTheMemberOutOfTheLiveListOnly) {
    const struct {
        const char *before, *member, *logonFolder, *after;
    } cases[] = {
        {"A, B, C", "B", "Userinit", "A,, C"},  // the comma behind the member stays
        {"B", "B", "Userinit", ""},             // emptied, and still there
        {"", "B", "Shell", ""},                 // missing, and created
        {"A B", "B", "Shell", "A"},
    };
    for (const auto& c : cases) {
        const std::string key = KeyOf(c.logonFolder);
        tessmark::testing::DeleteTree(machine->Registry(), HKLM, key + "\\AutorunsDisabled");
        if (*c.before) places.Set(HKLM, key, c.logonFolder, c.before);
        ops.DeleteLogon(key, c.member, c.logonFolder);
        EXPECT_EQ(places.Value(HKLM, key, c.logonFolder), (StoredValue{kSz, c.after})) << c.before;
        EXPECT_FALSE(places.KeyExists(HKLM, key + "\\AutorunsDisabled")) << c.before;
    }
}

TEST_F(Items, EnablingTakesTheMemberOutOfTheDisabledListWithItsOwnRules) {
    const struct {
        const char *before, *member, *logonFolder;
        std::optional<std::string> after;  // nothing: the key is gone
    } cases[] = {
        {"A,B,C", "B", "Userinit", "A,C"}, {"B,C", "B", "Userinit", "C"}, {"A B", "B", "Shell", "A"},
        // The last member leaves only the first character of what stood before it.
        {"A,B,C", "C", "Userinit", "A"},   {"first,second", "second", "StartupPrograms", "f"},
        {"alpha,beta", "zz", "Userinit", "ha,beta"},
        {"B", "B", "Userinit", std::nullopt}, {"B,", "B", "StartupPrograms", std::nullopt},
    };
    for (const auto& c : cases) {
        const std::string key = KeyOf(c.logonFolder), disabled = key + "\\AutorunsDisabled";
        places.Set(HKLM, disabled, c.logonFolder, c.before);
        places.Set(HKLM, key, c.logonFolder, "L");
        ops.EnableLogon(key, c.member, c.logonFolder);
        const std::string separator = std::string(c.logonFolder) == "Shell" ? " " : ",";
        EXPECT_EQ(places.Value(HKLM, key, c.logonFolder), (StoredValue{kSz, "L" + separator + c.member})) << c.before;
        if (c.after) EXPECT_EQ(places.Value(HKLM, disabled, c.logonFolder), (StoredValue{kSz, *c.after})) << c.before;
        else EXPECT_FALSE(places.KeyExists(HKLM, disabled)) << c.before;
    }
}

// ---- Startup folders

TEST_F(Items, DisablingAShortcutLeavesOtherTargetsFilesAndFoldersAndReplacesTheLine) {
    places.Shortcut(kCurrentUserFolder, "Editor.lnk", kNotepad);
    places.Shortcut(kCurrentUserFolder, "Registry.lnk", kRegedit);
    places.Shortcut(kAllUsersFolder, "Editor.lnk", kNotepad);
    ASSERT_TRUE(machine->Files().WriteWholeFile(places.StartupFolder(kCurrentUserFolder) + "\\notes.txt", "x"));
    Ini("StartupCurrUser").IniWriteValue("Notepad", "C:\\old.exe");
    ops.MarkDisable("Current User\\Startup", "Notepad", kNotepad, 0);
    EXPECT_EQ(places.NewFolderFiles(kCurrentUserFolder), (std::vector<std::string>{"Registry.lnk", "notes.txt"}));
    EXPECT_EQ(places.NewFolderFiles(kAllUsersFolder), std::vector<std::string>{"Editor.lnk"});
    EXPECT_EQ(Ini("StartupCurrUser").IniReadValue("Notepad"), kNotepad);
    EXPECT_EQ(Log().back(), "Tessmark - Section-Current User\\Startup ItemName-Notepad ItemPath-C:\\windows\\notepad.exe");
}

TEST_F(Items, AShortcutThatCannotBeDeletedOrSavedStopsTheCommandMidway) {
    places.Shortcut(kCurrentUserFolder, "Locked.lnk", kNotepad);
    machine->AddFileAttributes(places.StartupFolder(kCurrentUserFolder) + "\\Locked.lnk", platform::kAttrReadOnly);
    EXPECT_THROW(ops.MarkDisable("Current User\\Startup", "Locked", kNotepad, 0), vb::VbError);
    EXPECT_TRUE(Log().empty());
    // The line was written first, so the item now counts as enabled and disabled.
    EXPECT_EQ(Ini("StartupCurrUser").IniReadValue("Locked"), kNotepad);
    EXPECT_EQ(places.NewFolderFiles(kCurrentUserFolder), std::vector<std::string>{"Locked.lnk"});

    Ini("StartupCurrUser").IniWriteValue("Missing\\Tool", kNotepad);
    EXPECT_THROW(ops.MarkEnable("Current User\\Startup", "Missing\\Tool", kNotepad, 0), vb::VbError);
    EXPECT_EQ(Ini("StartupCurrUser").IniReadValue("Missing\\Tool"), kNotepad);
}

TEST_F(Items, EnablingOverwritesAShortcutOfTheSameNameAndForgetsOnlyALineThatNamesThePath) {
    Ini("StartupAllUser").IniWriteValue("Tool", kRegedit);
    Ini("StartupAllUser").IniWriteValue("Other", "File Not Found");
    places.Shortcut(kAllUsersFolder, "Tool.lnk", kRegedit);
    ops.MarkEnable("All Users\\Startup", "Tool", "File Not Found", 0);
    char full[261] = {};
    machine->Files().GetFullPathNameA("File Not Found", sizeof full, full);
    EXPECT_EQ(places.Target(kAllUsersFolder, "Tool.lnk"), full);
    EXPECT_EQ(Ini("StartupAllUser").IniReadValue("Tool"), kRegedit);
    ops.MarkEnable("All Users\\Startup", "Other", "File Not Found", 0);
    EXPECT_EQ(Ini("StartupAllUser").IniReadValue("Other"), "");
    EXPECT_EQ(Ini("StartupAllUser").IniReadValue("Tool"), kRegedit);
}

TEST_F(Items, ShortcutNamesAlwaysGetLnkAddedAndVeryShortNamesFail) {
    const std::string folder = places.StartupFolder(kCurrentUserFolder);
    for (const char* name : {"notepad.exe", "ab", "Tool.lnk"}) ops.CreateShortcut(folder + "\\" + name, kNotepad, name);
    EXPECT_EQ(places.NewFolderFiles(kCurrentUserFolder),
              (std::vector<std::string>{"Tool.lnk.lnk", "ab.lnk", "notepad.exe.lnk"}));
    // Only the memory shell lets the icon location be read back.
    if (auto* disk = dynamic_cast<platform::memory::MemoryDisk*>(&machine->Shell())) {
        auto shortcut = disk->ReadShortcut(folder + "\\notepad.exe.lnk");
        ASSERT_TRUE(shortcut);
        EXPECT_EQ(std::make_tuple(shortcut->iconFile, shortcut->iconIndex, shortcut->windowStyle),
                  std::make_tuple(std::string("notepad.exe.exe"), 0, 1));
    }
    try {
        ops.CreateShortcut("abcd", kNotepad, "x");
        ADD_FAILURE() << "a four-character path has no slice to test";
    } catch (const vb::VbError& error) {
        EXPECT_EQ(error.number(), vb::err::kInvalidCall);
    }
}

// ---- services, drivers and browser helpers, which nothing lists

TEST_F(Items, ServicesComeBackAutomaticDriversWithTheNumberHandedIn) {
    const std::string key = tessmark::testing::kServiceKey;
    const struct {
        const char* section;
        std::int32_t disableValue;
        std::uint32_t mark;
        std::int32_t enableValue;
        std::uint32_t startAfterEnable;
    } cases[] = {{"Registry\\All Users\\Services", 3, 1, 3, 2},
                 {"Registry\\All Users\\Drivers", 3, 3, 1, 1},
                 {"Registry\\All Users\\Drivers", 3, 3, 0, 0}};
    for (const auto& c : cases) {
        places.SetDword(HKLM, key, "Start", 3);
        ops.MarkDisable(c.section, "TessmarkTestService", "", c.disableValue);
        EXPECT_EQ(places.Dword(HKLM, key, "Start"), 4u) << c.section;
        EXPECT_EQ(places.Dword(HKLM, key, "AutorunsDisabled"), c.mark) << c.section;
        ops.MarkEnable(c.section, "TessmarkTestService", "", c.enableValue);
        EXPECT_EQ(places.Dword(HKLM, key, "Start"), c.startAfterEnable) << c.section;
        EXPECT_EQ(places.Value(HKLM, key, "AutorunsDisabled"), std::nullopt) << c.section;
    }
}

TEST_F(Items, BrowserHelperSubkeysTravelAsPaddedTextAndTheClassKeysOwnValuesAreLost) {
    const std::string clsid = tessmark::testing::kTestClsid, base = tessmark::testing::kBhoBase;
    const std::string live = base + clsid, disabled = base + "AutorunsDisabled\\" + clsid;
    const char* section = "Registry\\All Users\\Browser Helper Objects";
    places.Set(HKLM, live, "Own", "lost");
    places.Set(HKLM, live + "\\Settings", "Name", "helper");
    places.SetDword(HKLM, live + "\\Settings", "Flags", 0x41);
    places.Set(HKLM, live + "\\Other", "Path", kNotepad);

    ops.MarkDisable(section, "Helper", clsid, 0);
    EXPECT_EQ(places.Value(HKLM, disabled + "\\Settings", "Name"), (StoredValue{kSz, "helper"}));
    EXPECT_EQ(places.Value(HKLM, disabled + "\\Settings", "Flags"), (StoredValue{kSz, "A"}));
    EXPECT_EQ(places.Value(HKLM, disabled + "\\Other", "Path"), (StoredValue{kSz, kNotepad}));
    EXPECT_EQ(places.Value(HKLM, disabled, "Own"), std::nullopt);
    EXPECT_FALSE(places.KeyExists(HKLM, live));

    ops.MarkEnable(section, "Helper", clsid, 0);
    EXPECT_FALSE(places.KeyExists(HKLM, disabled));
    EXPECT_TRUE(places.KeyExists(HKLM, base + "AutorunsDisabled"));
    // The copies hold the whole 1024-character read, too long for the name
    // enumeration's data buffer: on the way back every value comes out
    // nameless and lands in the subkey's default value.
    for (const char* sub : {"\\Settings", "\\Other"}) {
        EXPECT_EQ(places.Value(HKLM, live + sub, ""), (StoredValue{kSz, ""})) << sub;
        EXPECT_EQ(places.Value(HKLM, live + sub, "Name"), std::nullopt) << sub;
        EXPECT_EQ(places.Value(HKLM, live + sub, "Path"), std::nullopt) << sub;
    }

    // A subkey with subkeys of its own stays behind with its parent.
    places.Set(HKLM, live + "\\Deep", "Name", "deep");
    places.MakeKey(HKLM, live + "\\Deep\\Deeper");
    ops.DisableBHO(clsid);
    EXPECT_EQ(places.Value(HKLM, disabled + "\\Deep", "Name"), (StoredValue{kSz, "deep"}));
    EXPECT_FALSE(places.KeyExists(HKLM, disabled + "\\Deep\\Deeper"));
    EXPECT_TRUE(places.KeyExists(HKLM, live + "\\Deep\\Deeper"));
}

TEST_F(Items, ABrowserHelperWithoutSubkeysGoesRoundAsAnEmptyKey) {
    const std::string base = tessmark::testing::kBhoBase, clsid = tessmark::testing::kTestClsid;
    const std::string live = base + clsid, disabled = base + "AutorunsDisabled\\" + clsid;
    places.Set(HKLM, disabled, "Own", "lost");
    ops.MarkEnable("Registry\\All Users\\Browser Helper Objects", "Helper", clsid, 0);
    EXPECT_FALSE(places.KeyExists(HKLM, disabled));
    EXPECT_TRUE(places.KeyExists(HKLM, live));
    EXPECT_EQ(places.Value(HKLM, live, "Own"), std::nullopt);
}

}  // namespace

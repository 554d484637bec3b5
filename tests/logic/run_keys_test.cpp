// The Run-key scanners on seeded registries: enabled rows before disabled
// ones, which loop reduces the path, sections and tags of both hives.
#include <gtest/gtest.h>

#include "discovery/RowServices.h"
#include "discovery/RunKeys.h"
#include "scan_fixture.h"

using namespace tessmark;
using tessmark::testing::RowView;

namespace {

constexpr const char* kBase = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\";
const char* const kKeys[] = {"Run", "RunOnce", "RunServices", "RunServiceOnce"};

class RunKeys : public tessmark::testing::ScanFixture {
protected:
    void SetUp() override {
        for (auto root : {HKLM, HKCU})
            for (const char* key : kKeys) tessmark::testing::DeleteTree(machine->Registry(), root, std::string(kBase) + key);
    }
    void Seed(platform::RegHandle root, const std::string& key, const std::string& name, const std::string& value) {
        SetString(root, std::string(kBase) + key, name, value);
    }
};

TEST_F(RunKeys, EachScannerListsItsKeyThenItsDisabledSubkey) {
    struct Case {
        void (*scan)(discovery::ScanContext&, bool);
        const char* key;
        bool currentUser;
        const char* section;
        const char* tag;
        const char* enabledPath;  // what the enabled row shows for the seeded line
    };
    const std::string line = "\"C:\\Program Files\\Anti-Virus\\av.exe\" /boot";
    const Case cases[] = {
        {discovery::AddRun, "Run", false, "Registry\\All Users\\Run", "3", "C:\\Program Files\\Anti"},
        {discovery::AddRunOnce, "RunOnce", false, "Registry\\All Users\\RunOnce", "4", nullptr},
        {discovery::AddRunServices, "RunServices", false, "Registry\\All Users\\RunServices", "5", nullptr},
        {discovery::AddRunServiceOnce, "RunServiceOnce", false, "Registry\\All Users\\RunServicesOnce", "6", nullptr},
        {discovery::AddRun, "Run", true, "Registry\\Current User\\Run", "21", "C:\\Program Files\\Anti"},
        {discovery::AddRunOnce, "RunOnce", true, "Registry\\Current User\\RunOnce", "22", nullptr},
        {discovery::AddRunServices, "RunServices", true, "Registry\\Current User\\RunServices", "23", nullptr},
        {discovery::AddRunServiceOnce, "RunServiceOnce", true, "Registry\\Current User\\RunServicesOnce", "23", nullptr},
    };
    for (const auto& c : cases) {
        SetUp();
        list.Clear();
        auto root = c.currentUser ? HKCU : HKLM;
        Seed(root, std::string(c.key) + "\\AutorunsDisabled", "Off", line);
        Seed(root, c.key, "On", line);
        // The other hive's entries stay out of this scan.
        Seed(c.currentUser ? HKLM : HKCU, c.key, "Elsewhere", "C:\\x.exe");
        c.scan(form, c.currentUser);
        std::string enabledPath = c.enabledPath ? c.enabledPath : line;
        EXPECT_EQ(Rows(), (std::vector<RowView>{{"On", enabledPath, "Yes", c.section, c.tag},
                                                 {"Off", line, "No", c.section, c.tag}}))
            << c.key << (c.currentUser ? " (current user)" : "");
    }
}

TEST_F(RunKeys, PathsEndAtTheirFirstNulWhileNamesKeepTheirs) {
    Seed(HKLM, "RunOnce", "Once", "C:\\once.exe");
    discovery::AddRunOnce(form, false);
    ASSERT_EQ(list.Count(), 1);
    EXPECT_EQ(list(1).SubItems(1), "C:\\once.exe");
    EXPECT_EQ(list(1).Text, std::string("Once\0", 5));
}

TEST_F(RunKeys, OnlyTheRunKeysEnabledRowsShowTheReducedPathYetEveryRowTakesItsIconFromIt) {
    const std::string tool = folders.windowsFolder + "\\tool.exe";
    Touch(tool);
    Touch(folders.programFilesFolder + "\\Foo\\foo.exe");
    Touch(scratch + "\\Anti-Virus\\av.exe");
    struct Case {
        std::string data;
        std::string reduced;
        bool found;  // the reduced form names a file, so the row keeps its path
    };
    const Case cases[] = {
        {"\"" + tool + "\" /start", tool, true},
        {"%SystemRoot%\\tool.exe", tool, true},
        {"%systemroot%\\tool.exe -s", tool, true},
        {"%ProgramFiles%\\Foo\\foo.exe", folders.programFilesFolder + "\\Foo\\foo.exe", true},
        {"%windir%\\tool.exe,1", tool, true},
        {"D:\\any\\%windir%\\tool.exe", folders.windowsFolder + "\\any\\%windir%\\tool.exe", false},
        {scratch + "\\Anti-Virus\\av.exe", scratch + "\\Anti", false},
        {"rundll32.exe shell32.dll,Control_RunDLL desk.cpl", "rundll32.exe shell32.dll", false},
        {tool + " arg", tool + " arg", false},
    };
    for (const auto& c : cases) {
        SetUp();
        list.Clear();
        Seed(HKLM, "Run", "On", c.data);
        Seed(HKLM, "Run\\AutorunsDisabled", "Off", c.data);
        Seed(HKLM, "RunOnce", "Once", c.data);
        discovery::AddRun(form, false);
        discovery::AddRunOnce(form, false);
        auto rows = Rows();
        ASSERT_EQ(rows.size(), 3u) << c.data;
        EXPECT_EQ(rows[0].path, c.reduced) << c.data;
        EXPECT_EQ(rows[1].path, c.data) << c.data;
        EXPECT_EQ(rows[2].path, c.data) << c.data;
        for (long i = 1; i <= 3; ++i) EXPECT_EQ(list(i).SmallIcon != 0, c.found) << c.data << " row " << i;

        std::string total, active;
        discovery::refreshCheckBox(list, total, active, [] {});
        // A reduced form that names no file costs every row its path.
        rows = Rows();
        EXPECT_EQ(rows[0].path, c.found ? c.reduced : "File Not Found") << c.data;
        EXPECT_EQ(rows[2].path, c.found ? c.data : "File Not Found") << c.data;
    }
}

TEST_F(RunKeys, ValuesAtTheEnumerationAndReadLimits) {
    struct Case {
        const char* label;
        std::string name;
        std::size_t length;  // characters of the value, stored with a NUL behind them
        std::string text, path;
    };
    const std::string a254(254, 'a'), a1023(1023, 'a');
    const Case cases[] = {
        // 255 bytes fit the enumeration's data buffer, 256 do not: the call
        // fails and leaves the name buffer blank, which reads the default value.
        {"254 characters", "Named", 254, "Named", a254},
        {"255 characters", "Named", 255, "", ""},
        // The default value is read by name only: up to 1024 bytes.
        {"default, 1023 characters", "", 1023, "", a1023},
        {"default, 1024 characters", "", 1024, "", ""},
    };
    for (const auto& c : cases) {
        SetUp();
        list.Clear();
        Seed(HKLM, "RunOnce", c.name, std::string(c.length, 'a'));
        discovery::AddRunOnce(form, false);
        EXPECT_EQ(Rows(), (std::vector<RowView>{{c.text, c.path, "Yes", "Registry\\All Users\\RunOnce", "4"}}))
            << c.label;
    }
    // A long value beside a default one shows the default's data under an empty name.
    SetUp();
    list.Clear();
    Seed(HKLM, "RunOnce", "", "C:\\default.exe");
    Seed(HKLM, "RunOnce", "Long", std::string(300, 'b'));
    discovery::AddRunOnce(form, false);
    auto rows = Rows();
    ASSERT_EQ(rows.size(), 2u);
    for (const auto& row : rows) EXPECT_EQ(row.text + "|" + row.path, "|C:\\default.exe");
}

TEST_F(RunKeys, MissingKeysGiveNoRows) {
    discovery::AddRun(form, true);
    discovery::AddRunServiceOnce(form, false);
    EXPECT_EQ(list.Count(), 0);
}

TEST_F(RunKeys, RefreshMarksUnreachableFilesAndCountsActiveRows) {
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
    EXPECT_EQ(Rows(), (std::vector<RowView>{{"Gone", "File Not Found", "Yes", "Registry\\All Users\\Run", "3"},
                                             {"Off", "File Not Found", "No", "Registry\\All Users\\Run", "3"},
                                             {"Blank", "File Not Found", "Yes", "Registry\\All Users\\RunOnce", "4"}}));
    EXPECT_TRUE(list(1).Checked);
    EXPECT_FALSE(list(2).Checked);
    EXPECT_EQ(list(1).SmallIcon, 1);
    EXPECT_TRUE(list(1).Selected);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(total, "Total  Item(s) :      3");
    EXPECT_EQ(active, "Active Item(s):      2");
}

}  // namespace

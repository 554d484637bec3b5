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

TEST_F(RunKeys, RawPathsKeepTheWholeReadBuffer) {
    Seed(HKLM, "RunOnce", "Once", "C:\\once.exe");
    discovery::AddRunOnce(form, false);
    ASSERT_EQ(list.Count(), 1);
    // The unreduced data is the 1024-character read, NULs included.
    EXPECT_EQ(list(1).SubItems(1).size(), 1024u);
    EXPECT_EQ(list(1).Text, std::string("Once\0", 5));
}

TEST_F(RunKeys, OddValuesStillGetRows) {
    Seed(HKLM, "Run", "", "C:\\default.exe");
    Seed(HKLM, "Run", "Long", "C:\\" + std::string(300, 'a') + ".exe");
    Seed(HKLM, "Run", "Huge", std::string(1100, 'b'));
    discovery::AddRun(form, false);
    auto rows = Rows();
    ASSERT_EQ(rows.size(), 3u);
    std::vector<std::string> texts, paths;
    for (const auto& row : rows) {
        texts.push_back(row.text);
        paths.push_back(row.path);
    }
    // The default value has no name. A value whose data passes 255 bytes loses
    // its name in the enumeration and is then read as the default value; data
    // over 1024 bytes reads as NULs only.
    EXPECT_EQ(std::count(texts.begin(), texts.end(), ""), 3);
    EXPECT_EQ(std::count(paths.begin(), paths.end(), "C:\\default.exe"), 3);
}

TEST_F(RunKeys, MissingKeysGiveNoRows) {
    discovery::AddRun(form, true);
    discovery::AddRunServiceOnce(form, false);
    EXPECT_EQ(list.Count(), 0);
}

TEST_F(RunKeys, RefreshMarksUnreachableFilesAndCountsActiveRows) {
    Seed(HKLM, "Run", "Gone", "C:\\nowhere\\gone.exe");
    Seed(HKLM, "Run\\AutorunsDisabled", "Off", "C:\\nowhere\\off.exe");
    discovery::AddRun(form, false);
    std::string total, active;
    int clicks = 0;
    discovery::refreshCheckBox(list, total, active, [&] { ++clicks; });
    EXPECT_EQ(Rows(), (std::vector<RowView>{{"Gone", "File Not Found", "Yes", "Registry\\All Users\\Run", "3"},
                                             {"Off", "File Not Found", "No", "Registry\\All Users\\Run", "3"}}));
    EXPECT_TRUE(list(1).Checked);
    EXPECT_FALSE(list(2).Checked);
    EXPECT_EQ(list(1).SmallIcon, 1);
    EXPECT_TRUE(list(1).Selected);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(total, "Total  Item(s) :      2");
    EXPECT_EQ(active, "Active Item(s):      1");
}

}  // namespace

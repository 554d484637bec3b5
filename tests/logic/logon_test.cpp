// The logon scanner on seeded list values: how each of the six variants splits
// its value, names its rows and finds their files in the folders it is given;
// and appending a program to such a value.
#include <gtest/gtest.h>

#include "discovery/Logon.h"
#include "registry/regenum.h"
#include "scan_fixture.h"

using namespace tessmark;
using tessmark::testing::RowView;

namespace {

class Logon : public tessmark::testing::ScanFixture {
protected:
    // Any key will do: the variants go by value name, not by key.
    const std::string key = std::string(tessmark::testing::kScratchKey) + "\\Logon";
    const std::string& W = folders.windowsFolder;
    const std::string& P = folders.programFilesFolder;

    void SetUp() override {
        tessmark::testing::DeleteTree(machine->Registry(), HKLM, key);
        list.Clear();
    }

    std::string Read(const std::string& name) {
        auto& registry = machine->Registry();
        auto handle = registry::OpenRegKey(registry, HKLM, key);
        std::string value = tessmark::testing::Shown(registry::QueryRegValue(registry, handle, name));
        registry.RegCloseKey(handle);
        return value;
    }
};

TEST_F(Logon, EachVariantSplitsItsValueIntoRowsFoundInTheGivenFolders) {
    for (const char* file : {"\\shell.exe", "\\System\\old.exe", "\\System32\\userinit.exe", "\\System32\\rdpclip.exe",
                             "\\sub\\a.exe"})
        Touch(W + file);
    for (const char* file : {"\\Program.exe", "\\x\\x.exe", "\\Vendor\\deep\\tool.exe"}) Touch(P + file);

    struct Row {
        std::string text, path, flag;
    };
    struct Case {
        int type;
        bool disabled;  // seeded in the AutorunsDisabled subkey
        const char* name;
        std::string data;
        std::vector<Row> rows;
    };
    const std::string userinit = W + "\\System32\\userinit.exe", rdpclip = W + "\\System32\\rdpclip.exe";
    const Case cases[] = {
        // A trailing separator gives no row; none gives one; the rows of a value
        // follow its text. Userinit names its rows after the last path element.
        {2, false, "Userinit", "%SystemRoot%\\system32\\userinit.exe,", {{"userinit.exe", userinit, "Yes"}}},
        {2, false, "Userinit", "userinit.exe", {{"userinit.exe", userinit, "Yes"}}},
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
        // The extension test is case-sensitive.
        {3, false, "Shell", "USERINIT.EXE", {{"USERINIT.EXE", "", "Yes"}}},
        {1, false, "StartupPrograms", "rdpclip", {{"rdpclip", rdpclip, "Yes"}}},
        {1, false, "StartupPrograms", "rdpclip,foo", {{"rdpclip", rdpclip, "Yes"}, {"foo", "", "Yes"}}},
        // Disabled copies: "NO" for the pieces before a StartupPrograms separator.
        {2, true, "Userinit", "a.exe,userinit.exe", {{"a.exe", "", "No"}, {"userinit.exe", userinit, "No"}}},
        {3, true, "Shell", "a.exe shell.exe", {{"a.exe", "", "No"}, {"shell.exe", W + "\\shell.exe", "No"}}},
        {1, true, "StartupPrograms", "rdpclip,foo", {{"rdpclip", rdpclip, "NO"}, {"foo", "", "No"}}},
        // A disabled StartupPrograms goes by its name alone, under the calling type.
        {2, true, "StartupPrograms", "rdpclip,foo", {{"rdpclip", rdpclip, "NO"}, {"foo", "", "No"}}},
        {3, true, "StartupPrograms", "rdpclip", {{"rdpclip", rdpclip, "No"}}},
        // Otherwise name and type must both match, the name in its exact case.
        {2, false, "StartupPrograms", "rdpclip", {}},
        {3, false, "Userinit", "userinit.exe", {}},
        {3, true, "Userinit", "userinit.exe", {}},
        {2, false, "userinit", "userinit.exe", {}},
    };
    const RowView kSection[] = {{},
                                {"", "", "", "Registry\\All Users\\Logon\\Startup Programs", "\"7\""},
                                {"", "", "", "Registry\\All Users\\Logon\\UserInit", "\"9\""},
                                {"", "", "", "Registry\\All Users\\Logon\\Shell", "\"8\""}};
    for (const auto& c : cases) {
        SetUp();
        SetString(HKLM, c.disabled ? key + "\\AutorunsDisabled" : key, c.name, c.data);
        discovery::AddLogon(form, key, static_cast<std::int16_t>(c.type));
        std::vector<RowView> expected;
        for (const Row& row : c.rows)
            expected.push_back({row.text, row.path, row.flag, kSection[c.type].section, kSection[c.type].tag});
        EXPECT_EQ(Rows(), expected) << c.type << " " << c.name << " = " << c.data;
    }
}

TEST_F(Logon, EnabledRowsPumpMessagesAndThePointerShowsTheHourglassUnlessTheTimerRuns) {
    Touch(W + "\\System32\\userinit.exe");
    SetString(HKLM, key, "Userinit", "userinit.exe,userinit.exe");
    SetString(HKLM, key + "\\AutorunsDisabled", "Userinit", "userinit.exe");
    auto& ui = machine->Ui();
    discovery::AddLogon(form, key, 2);
    EXPECT_EQ(list.Count(), 3);
    EXPECT_EQ(ui.doEvents, 2);
    EXPECT_EQ(ui.mousePointers, (std::vector<int>{platform::kMousePointerHourglass, platform::kMousePointerDefault}));

    ui.mousePointers.clear();
    timer1Enabled = true;
    discovery::AddLogon(form, key, 2);
    EXPECT_EQ(ui.mousePointers, std::vector<int>{platform::kMousePointerDefault});
}

TEST_F(Logon, AHandlerThatClearsTheListWhileTheSearchPumpsLeavesTheRowsAddedAfterIt) {
    Touch(P + "\\b.exe");
    SetString(HKLM, key, "Userinit", "a.exe,b.exe");
    machine->Ui().onDoEvents = [&] { list.Clear(); };
    discovery::AddLogon(form, key, 2);
    machine->Ui().onDoEvents = nullptr;
    ASSERT_EQ(list.Count(), 1);
    EXPECT_EQ(list(1).SubItems(1), P + "\\b.exe");
}

TEST_F(Logon, AddLogonFolderAppendsAProgramWithTheValuesSeparator) {
    struct Case {
        const char* name;  // the value seeded, when `before` is given
        const char* before;
        const char* valueName;  // the value asked for
        const char* after;
    };
    const Case cases[] = {
        {"Userinit", "userinit.exe", "Userinit", "userinit.exe,b.exe"},
        {"Userinit", "\"a.exe\",  ", "Userinit", "a.exe,b.exe"},
        {"StartupPrograms", "rdpclip", "StartupPrograms", "rdpclip,b.exe"},
        {"Shell", "explorer.exe", "Shell", "explorer.exe b.exe"},
        {"Shell", "explorer.exe,", "Shell", "explorer.exe, b.exe"},
        {nullptr, nullptr, "Userinit", "b.exe"},
        {"Userinit", "", "Userinit", "b.exe"},
        // Names match without regard to case; only "Shell" exactly takes a blank.
        {"Shell", "explorer.exe", "shell", "explorer.exe,b.exe"},
    };
    for (const auto& c : cases) {
        SetUp();
        if (c.before) SetString(HKLM, key, c.name, c.before);
        SetString(HKLM, key, "Other", "other.exe");
        discovery::AddLogonFolder(form, key, c.valueName, "b.exe");
        EXPECT_EQ(Read(c.valueName), c.after) << c.valueName << " = " << (c.before ? c.before : "(none)");
        EXPECT_EQ(Read("Other"), "other.exe");
    }
}

}  // namespace

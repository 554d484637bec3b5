// The Startup-folder scanners on real shortcuts and a real settings file:
// shortcuts first, then the settings lines, names from the shell's record.
#include <gtest/gtest.h>

#include "discovery/RowServices.h"
#include "discovery/StartupFolders.h"
#include "scan_fixture.h"

using namespace tessmark;
using tessmark::testing::RowView;

namespace {

class StartupFolders : public tessmark::testing::ScanFixture {
protected:
    platform::FilesPort& files = machine->Files();
    const std::string allUsers = storage::GetSpecialFolder(machine->Shell(), platform::kCsidlCommonStartup);
    const std::string currentUser = storage::GetSpecialFolder(machine->Shell(), platform::kCsidlStartup);
    const std::string settings = files.Environ("Appdata") + "\\Corvane Pulse\\Settings.ini";
    const std::string tool = folders.windowsFolder + "\\tool.exe";

    void SetUp() override {
        ASSERT_FALSE(allUsers.empty());
        ASSERT_FALSE(currentUser.empty());
        Clean();
        list.Clear();
        machine->Ui().doEvents = 0;
    }
    // The real folders outlive the test; later suites expect them empty.
    void TearDown() override { Clean(); }

    void Clean() {
        for (const std::string& folder : {allUsers, currentUser})
            for (const std::string& name : storage::DirNormalFiles(files, folder + "\\*.*")) files.Kill(folder + "\\" + name);
        files.Kill(settings);
    }

    void Shortcut(const std::string& folder, const std::string& name, const std::string& target) {
        ASSERT_TRUE(machine->Shell().SaveShortcut(folder + "\\" + name, target, target + ",0", 1)) << name;
    }

    void Settings(const std::string& contents) {
        std::string folder = settings;
        storage::MakeFolderPath(files, folder);
        ASSERT_TRUE(files.WriteWholeFile(settings, contents));
    }

    void Refresh() {
        std::string total, active;
        discovery::refreshCheckBox(list, total, active, [] {});
    }
};

TEST_F(StartupFolders, EachFolderListsItsShortcutsThenItsSettingsLines) {
    Touch(tool);
    Touch(folders.windowsFolder + "\\other.exe");
    struct Case {
        void (*scan)(discovery::ScanContext&);
        std::string folder, otherFolder;
        RowView disabled;
        int pumps;  // the all-users walk yields once per shortcut
    };
    const Case cases[] = {
        {discovery::AddStartupAllUser, allUsers, currentUser, {"All", "C:\\a.exe", "No", "All Users\\Startup", "1"}, 2},
        {discovery::AddStartupCurrUser, currentUser, allUsers, {"Curr", "C:\\c.exe", "No", "Current User\\Startup", "2"}, 0},
    };
    for (const auto& c : cases) {
        SetUp();
        // Two shortcuts to one target give two equal rows.
        Shortcut(c.folder, "Tool Link.lnk", tool);
        Shortcut(c.folder, "Again.lnk", tool);
        Shortcut(c.otherFolder, "Other.lnk", folders.windowsFolder + "\\other.exe");
        Settings("[StartupAllUser]\r\nAll=C:\\a.exe\r\n[StartupCurrUser]\r\nCurr=C:\\c.exe\r\n");
        c.scan(form);

        // The shell's name for the target, not the shortcut's own name.
        const RowView enabled{"tool.exe", tool, "Yes", c.disabled.section, c.disabled.tag};
        EXPECT_EQ(Rows(), (std::vector<RowView>{enabled, enabled, c.disabled})) << c.disabled.section;
        // The row holds the name without the NULs that pad the shell record's field.
        EXPECT_EQ(list(1).Text, "tool.exe");
        EXPECT_NE(list(1).SmallIcon, list(2).SmallIcon) << "icons are never shared";
        EXPECT_EQ(machine->Ui().doEvents, c.pumps) << c.disabled.section;
    }
}

TEST_F(StartupFolders, ARowWhoseTargetTheShellCannotFindShowsTheNameThePreviousCallLeft) {
    const std::string prior = folders.windowsFolder + "\\prior.exe";
    Touch(prior);
    struct Case {
        const char* file;
        std::string path;
    };
    const Case cases[] = {
        {"gone.lnk", scratch + "\\nowhere\\gone.exe"},
        {"notes.txt", "Error occured."},  // no shortcut at all
    };
    for (const auto& c : cases) {
        SetUp();
        if (c.path != "Error occured.") Shortcut(currentUser, c.file, c.path);
        else Touch(currentUser + "\\" + c.file);
        form.RowIcon(prior);  // any earlier row fills the form's one record
        discovery::AddStartupCurrUser(form);
        EXPECT_EQ(Rows(), (std::vector<RowView>{{"prior.exe", c.path, "Yes", "Current User\\Startup", "2"}})) << c.file;
        EXPECT_EQ(list(1).SmallIcon, 0) << c.file;
        Refresh();
        EXPECT_EQ(Rows()[0].path, "File Not Found") << c.file;
        EXPECT_EQ(list(1).SmallIcon, 1) << c.file;
    }
}

TEST_F(StartupFolders, SettingsLinesAreNamedUpToTheirFirstEqualsSign) {
    Touch(tool);
    Settings("[StartupCurrUser]\r\nPlain=" + tool + "\r\nEq=C:\\a=b.exe\r\nA=B=" + tool +
             "\r\nNoEquals\r\n[StartupAllUser]\r\nElsewhere=" + tool + "\r\n");
    discovery::AddStartupCurrUser(form);
    Refresh();
    // Every line gives one row; the spare element after them none. Only the
    // first names a file: an "=" in the value is kept and names nothing, an
    // "=" in the name cuts it short, and a line without one reads no value.
    const std::string section = "Current User\\Startup";
    EXPECT_EQ(Rows(), (std::vector<RowView>{{"Plain", tool, "No", section, "2"},
                                             {"Eq", "File Not Found", "No", section, "2"},
                                             {"A", "File Not Found", "No", section, "2"},
                                             {"NoEquals", "File Not Found", "No", section, "2"}}));
    EXPECT_FALSE(list(1).Checked);

    // A missing section, then a missing file, gives nothing.
    list.Clear();
    Settings("[StartupCurrUser]\r\nOnly=" + tool + "\r\n");
    discovery::AddStartupAllUser(form);
    EXPECT_EQ(list.Count(), 0);
    files.Kill(settings);
    discovery::AddStartupCurrUser(form);
    EXPECT_EQ(list.Count(), 0);
}

}  // namespace

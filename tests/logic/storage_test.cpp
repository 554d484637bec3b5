// Settings file, folder creation, shortcut targets and the recursive search,
// on the memory disk and on the real one.
#include <gtest/gtest.h>

#include <algorithm>

#include "machine.h"
#include "storage/IniFile.h"
#include "storage/filesearch.h"
#include "storage/modStartup.h"

using namespace tessmark;

namespace {

struct Storage : ::testing::Test {
    std::unique_ptr<tessmark::testing::TestMachine> machine = tessmark::testing::MakeTestMachine();
    platform::FilesPort& files = machine->Files();
    std::string scratch = machine->ScratchFolder();

    void Touch(const std::string& path) { ASSERT_TRUE(files.WriteWholeFile(path, "x")) << path; }
    void Folder(const std::string& path) { ASSERT_TRUE(files.MkDir(path)) << path; }
};

TEST_F(Storage, MakeFolderPathMakesEverythingAboveTheLastBackslash) {
    std::string withSlash = scratch + "\\a\\b\\c\\";
    EXPECT_EQ(storage::MakeFolderPath(files, withSlash), withSlash);
    EXPECT_TRUE(files.FolderExists(scratch + "\\a\\b\\c"));

    std::string withoutSlash = scratch + "\\x\\y\\z";
    EXPECT_EQ(storage::MakeFolderPath(files, withoutSlash), withoutSlash);
    EXPECT_TRUE(files.FolderExists(scratch + "\\x\\y"));
    EXPECT_FALSE(files.FolderExists(scratch + "\\x\\y\\z"));

    std::string bare = "nobackslash";
    EXPECT_EQ(storage::MakeFolderPath(files, bare), "");
}

TEST_F(Storage, MakeFolderPathGivesEmptyWhenAFolderCannotBeMade) {
    Touch(scratch + "\\file");
    std::string below = scratch + "\\file\\sub\\";
    EXPECT_EQ(storage::MakeFolderPath(files, below), "");
}

TEST_F(Storage, FindFilesListsAFoldersOwnFilesBeforeItsSubfolders) {
    Folder(scratch + "\\pf");
    Folder(scratch + "\\pf\\A");
    Folder(scratch + "\\pf\\A\\deep");
    Folder(scratch + "\\pf\\Processed");
    Folder(scratch + "\\pf\\old processed");
    Folder(scratch + "\\pf\\SYSTEM FILES");
    Touch(scratch + "\\pf\\A\\deep\\tool.exe");
    Touch(scratch + "\\pf\\A\\tool.exe");
    Touch(scratch + "\\pf\\tool.exe");
    Touch(scratch + "\\pf\\Processed\\tool.exe");
    Touch(scratch + "\\pf\\old processed\\tool.exe");
    Touch(scratch + "\\pf\\SYSTEM FILES\\tool.exe");
    Touch(scratch + "\\pf\\other.exe");

    for (std::string root : {scratch + "\\pf", scratch + "\\pf\\"}) {
        auto found = storage::FindFiles(files, machine->Ui(), root, "tool.exe", 1);
        ASSERT_EQ(found.size(), 4u) << root;
        EXPECT_EQ(found[0], scratch + "\\pf\\tool.exe");
        auto at = [&](const std::string& path) {
            return std::find(found.begin(), found.end(), scratch + path) - found.begin();
        };
        EXPECT_LT(at("\\pf\\A\\tool.exe"), at("\\pf\\A\\deep\\tool.exe"));
        EXPECT_LT(at("\\pf\\old processed\\tool.exe"), 4);
        EXPECT_EQ(at("\\pf\\Processed\\tool.exe"), 4);
        EXPECT_EQ(at("\\pf\\SYSTEM FILES\\tool.exe"), 4);
    }
    EXPECT_TRUE(storage::FindFiles(files, machine->Ui(), scratch + "\\pf", "none.exe", 1).empty());
    EXPECT_GT(machine->Ui().doEvents, 0);
}

TEST_F(Storage, ShortcutTargetsAndSpecialFolders) {
    auto& shell = machine->Shell();
    Touch(scratch + "\\app.exe");
    ASSERT_TRUE(shell.SaveShortcut(scratch + "\\app.lnk", scratch + "\\app.exe", scratch + "\\app.exe,0", 1));
    EXPECT_EQ(storage::GetShortcutTarget(shell, scratch + "\\app.lnk"), scratch + "\\app.exe");
    Touch(scratch + "\\notes.txt");
    EXPECT_EQ(storage::GetShortcutTarget(shell, scratch + "\\notes.txt"), "Error occured.");
    for (int folder : {platform::kCsidlStartup, platform::kCsidlCommonStartup}) {
        std::string path = storage::GetSpecialFolder(shell, folder);
        EXPECT_FALSE(path.empty()) << folder;
        EXPECT_TRUE(files.FolderExists(path)) << path;
    }
}

struct Settings : Storage {
    storage::IniFile ini{files};
    std::string path = scratch + "\\Settings.ini";
    void Use(const char* section) {
        ini.IniFilePath(path);
        ini.IniSection(section);
    }
    std::vector<std::string> Section(const char* section) {
        Use(section);
        auto lines = ini.IniReadSection();
        return lines.items();
    }
};

TEST_F(Settings, MissingFileOrSectionGivesOnlyTheSpareElement) {
    EXPECT_EQ(Section("StartupAllUser"), std::vector<std::string>{""});
    Use("StartupCurrUser");
    ini.IniWriteValue("a", "C:\\a.exe");
    EXPECT_EQ(Section("StartupAllUser"), std::vector<std::string>{""});
    Use("StartupAllUser");
    EXPECT_EQ(ini.IniReadValue("a"), "");
}

TEST_F(Settings, WritesReplaceReadAndDeleteLinesOfOneSection) {
    Use("StartupAllUser");
    ini.IniWriteValue("Tool", "C:\\t.exe");
    ini.IniWriteValue("Other", "C:\\o=x.exe");
    Use("StartupCurrUser");
    ini.IniWriteValue("Tool", "C:\\cu.exe");
    Use("startupalluser");
    ini.IniWriteValue("TOOL", "C:\\new.exe");

    EXPECT_EQ(Section("StartupAllUser"), (std::vector<std::string>{"Tool=C:\\new.exe", "Other=C:\\o=x.exe", ""}));
    EXPECT_EQ(Section("StartupCurrUser"), (std::vector<std::string>{"Tool=C:\\cu.exe", ""}));
    Use("StartupAllUser");
    EXPECT_EQ(ini.IniReadValue("other"), "C:\\o=x.exe");
    ini.IniDeleteKey("Tool");
    EXPECT_EQ(Section("StartupAllUser"), (std::vector<std::string>{"Other=C:\\o=x.exe", ""}));
    EXPECT_EQ(Section("StartupCurrUser"), (std::vector<std::string>{"Tool=C:\\cu.exe", ""}));
}

}  // namespace

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
    // The empty path of a folder the shell could not name has no files, though the drive's root has.
    auto names = storage::ShellFolderFiles(files, scratch);
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"app.exe", "app.lnk", "notes.txt"}));
    const std::string rootFile = "C:\\tessmark-root.txt";
    Touch(rootFile);
    EXPECT_EQ(storage::ShellFolderFiles(files, ""), std::vector<std::string>{});
    files.Kill(rootFile);
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

// The settings file follows the platform's private-profile calls, which read
// the same files on the Wine tier.
TEST_F(Settings, ReadsAndWritesAgreeWithThePlatformsProfileCalls) {
    const struct {
        const char* contents;  // nullptr: no file
        const char* section;
        const char* key;
        const char* value;
    } reads[] = {
        {"[S]\r\nkey = value \r\n", "S", "key", "value"},
        {"[ S ]\r\nKEY=v\r\n", "s", "key", "v"},
        {"[S]\r\n;key=hidden\r\n", "S", ";key", "hidden"},
        {"[S]\r\nkey=\"quoted\"\r\n", "S", "key", "quoted"},
        {"[S]\r\nkey=a\r\nkey=b\r\n", "S", "key", "a"},
        {"[S]\r\nkey\r\n", "S", "key", ""},
        {"[T]\r\nkey=v\r\n", "S", "key", ""},
        {nullptr, "S", "key", ""},
    };
    for (const auto& r : reads) {
        files.Kill(path);
        if (r.contents) ASSERT_TRUE(files.WriteWholeFile(path, r.contents));
        Use(r.section);
        const std::string label = r.contents ? r.contents : "(no file)";
        EXPECT_EQ(ini.IniReadValue(r.key), r.value) << label;
        if (auto platform = machine->ProfileRead(path, r.section, r.key)) EXPECT_EQ(*platform, r.value) << label;
    }
    // What one side writes, the other reads.
    for (const char* contents : {"[S]\r\nkey = old\r\n", "[T]\r\nx=y\r\n", static_cast<const char*>(nullptr)}) {
        const std::string label = contents ? contents : "(no file)";
        files.Kill(path);
        if (contents) ASSERT_TRUE(files.WriteWholeFile(path, contents));
        Use("S");
        ini.IniWriteValue("Key", "C:\\new.exe");
        if (auto platform = machine->ProfileRead(path, "S", "key")) EXPECT_EQ(*platform, "C:\\new.exe") << label;
        machine->ProfileWrite(path, "s", "other", "C:\\other.exe");
        if (machine->IsReal()) EXPECT_EQ(ini.IniReadValue("OTHER"), "C:\\other.exe") << label;
        EXPECT_EQ(ini.IniReadValue("key"), "C:\\new.exe") << label;
    }
}

}  // namespace

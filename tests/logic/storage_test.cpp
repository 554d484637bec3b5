// Settings file, folder creation and the recursive search, on the memory disk and on the real one.
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
};

TEST_F(Storage, FindFilesListsAFoldersOwnFilesBeforeItsSubfoldersAndTheShellsFoldersTheirFiles) {
    for (const char* sub : {"", "\\A", "\\A\\deep", "\\Processed", "\\old processed", "\\SYSTEM FILES"})
        ASSERT_TRUE(files.MkDir(scratch + "\\pf" + sub)) << sub;
    for (const char* file : {"\\A\\deep\\tool.exe", "\\A\\tool.exe", "\\tool.exe", "\\Processed\\tool.exe",
                             "\\old processed\\tool.exe", "\\SYSTEM FILES\\tool.exe", "\\other.exe"})
        Touch(scratch + "\\pf" + file);
    for (std::string root : {scratch + "\\pf", scratch + "\\pf\\"}) {
        auto found = storage::FindFiles(files, machine->Ui(), root, "tool.exe", 1);
        ASSERT_EQ(found.size(), 4u) << root;
        EXPECT_EQ(found[0], scratch + "\\pf\\tool.exe");
        auto at = [&](const char* path) { return std::ranges::find(found, scratch + "\\pf" + path) - found.begin(); };
        EXPECT_LT(at("\\A\\tool.exe"), at("\\A\\deep\\tool.exe"));
        EXPECT_LT(at("\\old processed\\tool.exe"), 4);
        EXPECT_EQ(at("\\Processed\\tool.exe") + at("\\SYSTEM FILES\\tool.exe"), 8) << "neither is searched";
    }
    EXPECT_TRUE(storage::FindFiles(files, machine->Ui(), scratch + "\\pf", "none.exe", 1).empty());
    EXPECT_GT(machine->Ui().doEvents, 0);

    // A folder the shell cannot name has no files, though the drive's root has.
    Touch(scratch + "\\app.exe");
    EXPECT_EQ(storage::ShellFolderFiles(files, scratch), std::vector<std::string>{"app.exe"});
    const std::string rootFile = "C:\\tessmark-root.txt";
    Touch(rootFile);
    EXPECT_EQ(storage::ShellFolderFiles(files, ""), std::vector<std::string>{});
    files.Kill(rootFile);
}

struct Settings : Storage {
    storage::IniFile ini{files};
    std::string path = scratch + "\\Settings.ini";
    void Use(const char* section) { ini.IniFilePath(path); ini.IniSection(section); }
    std::vector<std::string> Section(const char* section) { Use(section); return ini.IniReadSection().items(); }
};

TEST_F(Settings, WritesReplaceReadAndDeleteLinesOfOneSection) {
    // A missing file or section gives only the spare element.
    EXPECT_EQ(Section("StartupAllUser"), std::vector<std::string>{""});
    Use("StartupCurrUser");
    ini.IniWriteValue("Tool", "C:\\cu.exe");
    EXPECT_EQ(Section("StartupAllUser"), std::vector<std::string>{""});
    EXPECT_EQ(ini.IniReadValue("Tool"), "");
    ini.IniWriteValue("Tool", "C:\\t.exe");
    ini.IniWriteValue("Other", "C:\\o=x.exe");
    Use("startupalluser");
    ini.IniWriteValue("TOOL", "C:\\new.exe");

    EXPECT_EQ(Section("StartupAllUser"), (std::vector<std::string>{"Tool=C:\\new.exe", "Other=C:\\o=x.exe", ""}));
    Use("StartupAllUser");
    EXPECT_EQ(ini.IniReadValue("other"), "C:\\o=x.exe");
    ini.IniDeleteKey("Tool");
    EXPECT_EQ(Section("StartupAllUser"), (std::vector<std::string>{"Other=C:\\o=x.exe", ""}));
    EXPECT_EQ(Section("StartupCurrUser"), (std::vector<std::string>{"Tool=C:\\cu.exe", ""}));
    // The text without one line: its section goes with it only when asked and emptied.
    const std::string two = "[S]\r\na=1\r\nb=2\r\n[T]\r\nc=3\r\n";
    const std::tuple<const char*, const char*, bool, std::optional<std::string>> cuts[] = {
        {"s", "A", true, "[S]\r\nb=2\r\n[T]\r\nc=3\r\n"}, {"s", "c", true, std::nullopt},
        {"t", "c", false, "[S]\r\na=1\r\nb=2\r\n[T]\r\n"}, {"T", "c", true, "[S]\r\na=1\r\nb=2\r\n"}};
    for (const auto& [section, key, drop, text] : cuts)
        EXPECT_EQ(storage::IniTextWithoutKey(two, section, key, drop), text) << section << key;
}

TEST_F(Settings, ReadsAndWritesAgreeWithThePlatformsProfileCalls) {
    // The platform's calls answer only on the Wine tier; elsewhere they stand aside.
    auto platformRead = [&](const char* section, const char* key, const std::string& expected) {
        return machine->ProfileRead(path, section, key).value_or(expected);
    };
    auto start = [&](const char* text) { files.Kill(path); ASSERT_TRUE(!text || files.WriteWholeFile(path, text)); };
    const struct { const char *contents, *section, *key, *value; } reads[] = {  // no contents: no file
        {"[S]\r\nkey = value \r\n", "S", "key", "value"}, {"[ S ]\r\nKEY=v\r\n", "s", "key", "v"},
        {"[S]\r\n;key=hidden\r\n", "S", ";key", "hidden"}, {"[S]\r\nkey=\"quoted\"\r\n", "S", "key", "quoted"},
        {"[S]\r\nkey=a\r\nkey=b\r\n", "S", "key", "a"},  {"[S]\r\nkey\r\n", "S", "key", ""},
        {"[T]\r\nkey=v\r\n", "S", "key", ""},             {nullptr, "S", "key", ""},
    };
    for (const auto& r : reads) {
        SCOPED_TRACE(r.contents ? r.contents : "(no file)");
        start(r.contents);
        Use(r.section);
        EXPECT_EQ(ini.IniReadValue(r.key), r.value);
        EXPECT_EQ(platformRead(r.section, r.key, r.value), r.value);
    }
    // What one side writes, the other reads.
    for (const char* contents : {"[S]\r\nkey = old\r\n", "[T]\r\nx=y\r\n", static_cast<const char*>(nullptr)}) {
        SCOPED_TRACE(contents ? contents : "(no file)");
        start(contents);
        Use("S");
        ini.IniWriteValue("Key", "C:\\new.exe");
        EXPECT_EQ(platformRead("S", "key", "C:\\new.exe"), "C:\\new.exe");
        machine->ProfileWrite(path, "s", "other", "C:\\other.exe");
        EXPECT_EQ(ini.IniReadValue("OTHER"), machine->IsReal() ? "C:\\other.exe" : "");
        EXPECT_EQ(ini.IniReadValue("key"), "C:\\new.exe");
    }
}

}  // namespace

// What the program relies on from the shell: the Startup folders, shortcuts,
// file names and icons, and version resources.
#include <gtest/gtest.h>

#include <cctype>
#include <cstring>
#include <string>
#include <vector>

#include "machine.h"
#include "version_fixture.h"

namespace tessmark::testing {
namespace {

constexpr std::uint32_t kIconFlags = 0x6602;       // as rows get their icons, large
constexpr std::uint32_t kSmallIconFlags = 0x6603;  // and small
constexpr const char* kProgram = "C:\\windows\\notepad.exe";

std::string Lower(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

class ShellConformance : public ::testing::Test {
protected:
    std::unique_ptr<TestMachine> machine = MakeTestMachine();
    platform::ShellPort& shell = machine->Shell();
    platform::FilesPort& files = machine->Files();
    const std::string scratch = machine->ScratchFolder();

    std::string In(const std::string& name) const { return scratch + "\\" + name; }

    std::string Target(const std::string& lnkPath) {
        std::string target = "<unread>";
        return shell.ShortcutTarget(lnkPath, &target) ? target : "<error>";
    }

    std::string FullPath(const std::string& path) {
        char buffer[261];
        const std::uint32_t length = files.GetFullPathNameA(path.c_str(), sizeof buffer, buffer);
        return std::string(buffer, length < sizeof buffer ? length : 0);
    }
};

TEST_F(ShellConformance, BothStartupFoldersExist) {
    char user[260] = {}, common[260] = {};
    ASSERT_EQ(shell.SpecialFolderPath(platform::kCsidlStartup, user), 0);
    ASSERT_EQ(shell.SpecialFolderPath(platform::kCsidlCommonStartup, common), 0);

    for (const std::string folder : {user, common}) {
        EXPECT_TRUE(files.FolderExists(folder)) << folder;
        EXPECT_EQ(Lower(folder.substr(folder.rfind('\\'))), "\\startup") << folder;
    }
    EXPECT_NE(Lower(user), Lower(common));
    EXPECT_EQ(Lower(user).rfind(Lower(files.Environ("APPDATA")) + "\\", 0), 0u) << user;
    // An unknown folder number fails and leaves the buffer.
    char path[260] = "unchanged";
    EXPECT_NE(shell.SpecialFolderPath(-1, path), 0);
    EXPECT_STREQ(path, "unchanged");
}

// A saved shortcut gives its target back; anything but a shortcut gives none.
TEST_F(ShellConformance, ShortcutsGiveTheirTargetsBack) {
    ASSERT_TRUE(shell.SaveShortcut(In("again.lnk"), "C:\\first.exe", "first.exe.exe,0", 1));
    const std::pair<const char*, std::string> saved[] = {
        {"again.lnk", "C:\\second.exe"},  // saving again replaces the shortcut
        {"program.lnk", kProgram}, {"CAPITALS.LNK", kProgram}, {"gone.lnk", "C:\\nowhere\\gone.exe"},
        {"folder.lnk", scratch},   {"with blanks.exe.lnk", "C:\\Program Files\\Some Vendor\\tool.exe"},
        {"empty.lnk", ""},
    };
    for (const auto& [name, target] : saved) {
        ASSERT_TRUE(shell.SaveShortcut(In(name), target, "tool.exe.exe,0", 1)) << name;
        EXPECT_EQ(Target(In(name)), target) << name;
    }
    // A relative target is completed from the current folder.
    ASSERT_TRUE(shell.SaveShortcut(In("lost.lnk"), "File Not Found", "File Not Found.exe,0", 1));
    EXPECT_EQ(Target(In("lost.lnk")), FullPath("File Not Found"));
    // Saving fails where the shortcut cannot be made.
    for (const std::string& path : {In("note.txt"), In("web.url"), In("Missing\\a.lnk")}) {
        EXPECT_FALSE(shell.SaveShortcut(path, kProgram, "notepad.exe.exe,0", 1)) << path;
        EXPECT_FALSE(files.FileExists(path)) << path;
    }
    ASSERT_TRUE(files.WriteWholeFile(In("garbage.lnk"), "this is no shortcut"));
    ASSERT_TRUE(files.WriteWholeFile(In("plain.txt"), "text"));
    ASSERT_TRUE(files.WriteWholeFile(In("real.exe"), "MZ"));
    ASSERT_TRUE(files.WriteWholeFile(In("site.url"), "[InternetShortcut]\r\nURL=http://example.com/start\r\n"));
    const std::pair<std::string, std::string> read[] = {
        {In("not saved yet.lnk"), ""},  {In("garbage.lnk"), "<error>"}, {In("plain.txt"), "<error>"},
        {In("missing.txt"), "<error>"}, {In("real.exe"), "<error>"},    {In("PROGRAM.LNK"), kProgram},
        {In("site.url"), "http://example.com/start"},
    };
    for (const auto& [path, expected] : read) EXPECT_EQ(Target(path), expected) << path;
}

// The shell's name of a file and an image list, the whole name field written; the empty path
// stands for the current folder. Unknown paths fail, as do paths that are not as the shell
// would write them, and leave the record.
TEST_F(ShellConformance, FileInfoGivesTheShellsNameAndAnImageListOrLeavesTheRecord) {
    ASSERT_TRUE(files.WriteWholeFile(In("Mixed.TXT"), "text"));
    ASSERT_TRUE(shell.SaveShortcut(In("editor.lnk"), kProgram, "notepad.exe.exe,0", 1));
    const std::string current = FullPath(".");
    const std::pair<std::string, std::string> cases[] = {
        {kProgram, "notepad.exe"},   {Lower(In("Mixed.TXT")), "Mixed.TXT"}, {In("editor.lnk"), "editor"},
        {scratch, "tessmark-test"}, {scratch + "\\", "tessmark-test"},
        {"", current.substr(current.rfind('\\') + 1)},
        {In("missing.exe"), ""},    {"Error occured.", ""},                {In("no\\such\\file.exe"), ""},
        {In("..\\tessmark-test\\Mixed.TXT"), ""}, {In(".\\Mixed.TXT"), ""}, {"C:/tessmark-test/Mixed.TXT", ""},
    };
    for (const auto& [path, shown] : cases) {
        for (std::uint32_t flags : {kIconFlags, kSmallIconFlags}) {
            platform::ShFileInfo info;
            info.iIcon = -77;
            std::memset(info.displayName, 'x', sizeof info.displayName);
            std::strcpy(info.typeName, "kept");
            const bool found = shell.SHGetFileInfoA(path.c_str(), 0, &info, flags) != 0;
            EXPECT_EQ(found, !shown.empty()) << path;
            std::string field = shown.empty() ? std::string(sizeof info.displayName, 'x') : shown;
            field.resize(sizeof info.displayName, '\0');
            EXPECT_EQ(std::string(info.displayName, sizeof info.displayName), field) << path;
            EXPECT_TRUE(found ? info.iIcon >= 0 : info.iIcon == -77 && info.typeName == std::string("kept")) << path;
        }
    }
}

// A file without a version resource has no block. In the fixture's block the fixed record holds
// the resource's numbers, the translation table lists language and code page in order, and
// strings are found by table and key without regard to case.
TEST_F(ShellConformance, VersionBlocksAndLanguageNames) {
    using namespace fixture;
    ASSERT_TRUE(files.WriteWholeFile(In("plain.exe"), "MZ"));
    std::vector<std::uint8_t> block;
    for (const std::string& path : {In("plain.exe"), In("missing.exe")}) {
        EXPECT_EQ(shell.GetFileVersionInfoSizeA(path.c_str()), 0u) << path;
        EXPECT_FALSE(shell.GetFileVersionInfoA(path.c_str(), &block)) << path;
    }
    const std::string file = machine->VersionedFile();
    ASSERT_GT(shell.GetFileVersionInfoSizeA(file.c_str()), 0u) << file;
    ASSERT_TRUE(shell.GetFileVersionInfoA(file.c_str(), &block)) << file;
    const auto Words = [&](const char* subBlock) {
        std::vector<std::uint8_t> value;
        EXPECT_TRUE(shell.VerQueryValueA(block, subBlock, &value)) << subBlock;
        std::vector<std::uint32_t> words(value.size() / 4);
        std::memcpy(words.data(), value.data(), words.size() * 4);
        return words;
    };
    std::vector<std::uint32_t> fixed = Words("\\");
    ASSERT_EQ(fixed.size(), 13u);
    // Signature, file and product versions, then flags, system and type: the structure's version,
    // the flags mask, the subtype and the date are left out.
    for (int left : {12, 11, 10, 6, 1}) fixed.erase(fixed.begin() + left);
    const auto High = [](std::uint32_t high, std::uint32_t low) { return high << 16 | low; };
    const auto& [file0, file1, file2, file3] = kFileVersion;
    const auto& [product0, product1, product2, product3] = kProductVersion;
    EXPECT_EQ(fixed, (std::vector<std::uint32_t>{0xFEEF04BDu, High(file0, file1), High(file2, file3),
                                                 High(product0, product1), High(product2, product3), FIXTURE_FILE_FLAGS,
                                                 FIXTURE_FILE_OS, FIXTURE_FILE_TYPE}));
    EXPECT_EQ(Words("\\VarFileInfo\\Translation"),
              (std::vector<std::uint32_t>{High(FIXTURE_CODE_PAGE, kGerman), High(FIXTURE_CODE_PAGE, kEnglish)}));
    const std::pair<const char*, const char*> strings[] = {
        {"\\StringFileInfo\\040904E4\\CompanyName", FIXTURE_COMPANY_NAME},
        {"\\stringfileinfo\\040904e4\\companyname", FIXTURE_COMPANY_NAME},
        {"\\StringFileInfo\\040904E4\\FileVersion", FIXTURE_FILE_VERSION_TEXT},
        {"\\StringFileInfo\\040704E4\\FileDescription", FIXTURE_DESCRIPTION_GERMAN},
        {"\\StringFileInfo\\040904E4\\FileDescription", FIXTURE_DESCRIPTION_ENGLISH},
        {"\\StringFileInfo\\040704E4\\CompanyName", nullptr}, {"\\StringFileInfo\\041104B0\\CompanyName", nullptr},
        {"\\StringFileInfo\\040904E4\\Comments", nullptr},    {"\\VarFileInfo\\Nothing", nullptr},
    };
    for (const auto& [subBlock, text] : strings) {
        std::vector<std::uint8_t> value{1, 2, 3};
        EXPECT_EQ(shell.VerQueryValueA(block, subBlock, &value), text != nullptr) << subBlock;
        EXPECT_EQ(std::string(value.begin(), value.end()), text ? std::string(text) + '\0' : "") << subBlock;
    }
    // Language names count their characters.
    const std::pair<std::uint32_t, const char*> languages[] = {{0x0409, "English"}, {0x0407, "German"}};
    char buffer[256];
    for (const auto& [language, name] : languages) {
        std::memset(buffer, ' ', sizeof buffer);
        EXPECT_EQ(shell.VerLanguageNameA(language, buffer, sizeof buffer), std::strlen(name)) << name;
        EXPECT_STREQ(buffer, name);
    }
    EXPECT_EQ(shell.VerLanguageNameA(0x1234, buffer, sizeof buffer), 0u);
}

}  // namespace
}  // namespace tessmark::testing

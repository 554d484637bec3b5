// What the program relies on from the file system and the shell, which the memory disk serves
// both: walks and their patterns, attributes, full path names, folder and file making, the
// environment, the Startup folders, shortcuts, file names and icons, and version resources.
#include <gtest/gtest.h>

#include <cstring>
#include <map>
#include <set>
#include <tuple>

#include "machine.h"
#include "vb/vb.h"
#include "version_fixture.h"

namespace tessmark::testing {
namespace {

using namespace platform;
using namespace std::string_literals;
using Names = std::set<std::string>;
constexpr const char* kProgram = "C:\\windows\\notepad.exe";

std::string Padded(std::string s, std::size_t size, char fill) { return s.resize(size, fill), s; }

class FilesConformance : public ::testing::Test {
protected:
    std::unique_ptr<TestMachine> machine = MakeTestMachine();
    FilesPort& files = machine->Files();
    ShellPort& shell = machine->Shell();
    const std::string scratch = machine->ScratchFolder();

    std::string In(const std::string& name) const { return scratch + "\\" + name; }
    void Put(std::string name, std::string text = "x") { ASSERT_TRUE(files.WriteWholeFile(In(name), text)) << name; }
    std::string FullPath(const std::string& path) {
        char buffer[261];
        const std::uint32_t length = files.GetFullPathNameA(path.c_str(), sizeof buffer, buffer);
        return length < sizeof buffer ? std::string(buffer, length) : "<too long>";
    }
    // Every entry a walk gives, by name; the order is not the program's concern.
    std::map<std::string, FindData> Walk(const std::string& pattern) {
        std::map<std::string, FindData> entries;
        FindData data;
        const FindHandle handle = files.FindFirstFileA(pattern.c_str(), &data);
        if (handle == kInvalidFindHandle) return entries;
        do EXPECT_TRUE(entries.emplace(data.fileName, data).second) << "twice: " << data.fileName;
        while (files.FindNextFileA(handle, &data));
        EXPECT_NE(files.FindClose(handle), 0);
        return entries;
    }
    Names NamesOf(const std::string& pattern) {
        Names names;
        for (const auto& entry : Walk(pattern)) names.insert(entry.first);
        return names;
    }
    std::string Target(const std::string& lnkPath) {
        std::string target = "<unread>";
        return shell.ShortcutTarget(lnkPath, &target) ? target : "<error>";
    }
};
using ShellConformance = FilesConformance;

// A walk gives every entry once, dots and folders included, with attributes and sizes; patterns
// (the program walks with file names it reads from the registry) match names without regard to case.
TEST_F(FilesConformance, WalksPatternsAndAttributes) {
    for (const char* name : {"a.txt", "ab.txt", "abc.txt", "File.TXT", "Long Name.text", "x.lnk"}) Put(name);
    Put("noext", "12345");
    machine->AddFileAttributes(In("noext"), kAttrHidden | kAttrSystem);
    ASSERT_TRUE(files.MkDir(In("Sub")));
    const auto entries = Walk(In("*"));
    for (const char* folder : {".", "..", "Sub"}) EXPECT_TRUE(entries.at(folder).attributes & kAttrDirectory) << folder;
    EXPECT_EQ(entries.at("a.txt").attributes & (kAttrDirectory | kAttrHidden | kAttrSystem), 0u);
    EXPECT_EQ(entries.at("noext").attributes & (kAttrHidden | kAttrSystem), kAttrHidden | kAttrSystem);
    EXPECT_EQ(std::tuple(entries.at("a.txt").sizeLow, entries.at("noext").sizeLow, entries.at("noext").sizeHigh),
              std::tuple(1u, 5u, 0u));
    const Names all = {".", "..", "a.txt", "ab.txt", "abc.txt", "File.TXT", "noext", "Long Name.text", "x.lnk", "Sub"};
    const Names txt = {"a.txt", "ab.txt", "abc.txt", "File.TXT"};
    const std::pair<const char*, Names> cases[] = {
        {"*", all},          {"*.*", all},               {"*.txt", txt},          {"*.TXT", txt},
        {"?.txt", {"a.txt"}}, {"a?.txt", {"ab.txt"}},    {"A*", {"a.txt", "ab.txt", "abc.txt"}},
        {"file.txt", {"File.TXT"}},                      {"a.txt.", {"a.txt"}},   {"noext.*", {"noext"}},
        {"*.t*", {"a.txt", "ab.txt", "abc.txt", "File.TXT", "Long Name.text"}},
        {"n*.*", {"noext"}},  {"*.lnk", {"x.lnk"}},      {"sub", {"Sub"}},        {"*.tx", {}},     {"zz*", {}},
        {"zz.txt", {}},       {"missing\\*", {}},        {"", {}},
    };
    for (const auto& [pattern, expected] : cases) EXPECT_EQ(NamesOf(In(pattern)), expected) << pattern;
    // Attributes and existence tell files from folders and missing paths.
    enum Kind { File, Folder, Missing };
    const std::pair<std::string, Kind> kinds[] = {
        {In("a.txt"), File},   {In("A.TXT"), File},      {In("Sub\\..\\a.txt"), File}, {In("Sub"), Folder},
        {In("sub\\"), Folder}, {"C:\\", Folder},         {In("a.txt\\"), Missing},    {In("nope.txt"), Missing},
        {"", Missing},         {In("a*.txt"), Missing},
    };
    for (const auto& [path, kind] : kinds) {
        const std::uint32_t attributes = files.GetFileAttributesA(path.c_str());
        EXPECT_EQ(attributes == kInvalidFileAttributes ? Missing : attributes & kAttrDirectory ? Folder : File, kind)
            << path;
        EXPECT_EQ(files.FileExists(path), kind == File) << path;
        EXPECT_EQ(files.FolderExists(path), kind == Folder) << path;
    }
}

// Absolute paths are made canonical; relative ones are completed from the current folder. A short
// buffer gets the size needed, NUL included, and nothing written.
TEST_F(FilesConformance, FullPathNameCanonicalisesAbsolutePathsAndCompletesRelativeOnes) {
    const std::string current = FullPath("."), parent = current.substr(0, current.rfind('\\'));
    ASSERT_GT(current.size(), 3u) << "the current folder is expected below a drive's root";
    ASSERT_EQ(current.substr(1, 2), ":\\");
    const std::pair<const char*, std::string> cases[] = {
        {"C:\\a\\..\\b", "C:\\b"},   {"C:\\a\\.\\b\\", "C:\\a\\b\\"}, {"C:\\a\\b\\..\\..\\..\\c", "C:\\c"},
        {"C:\\a/b", "C:\\a\\b"},      {"C:\\a\\\\b", "C:\\a\\b"},   {"C:\\a\\b.", "C:\\a\\b"},
        {"C:\\a\\b. .", "C:\\a\\b"}, {"C:\\a\\...", "C:\\a\\"},    {"c:\\Mixed\\Case", "c:\\Mixed\\Case"},
        {"C:\\", "C:\\"},             {"foo", current + "\\foo"},  {".\\foo\\..\\bar", current + "\\bar"},
        {"\\foo", current.substr(0, 2) + "\\foo"}, {"..", parent.size() > 2 ? parent : parent + "\\"}, {"", ""},
    };
    for (const auto& [path, expected] : cases) EXPECT_EQ(FullPath(path), expected) << path;
    const std::tuple<std::uint32_t, std::uint32_t, std::string> sizes[] = {
        {8, 4, "C:\\x\0"s}, {5, 4, "C:\\x\0"s}, {4, 5, "#"}, {1, 5, "#"}};
    for (const auto& [bufferLength, result, written] : sizes) {
        char buffer[8] = "#######";
        EXPECT_EQ(files.GetFullPathNameA("C:\\x", bufferLength, buffer), result) << bufferLength;
        EXPECT_EQ(std::string(buffer, written.size()), written) << bufferLength;
    }
}

// Only a new folder under an existing one is made, and only a writable file is deleted. A whole
// file write replaces the file whatever the case of the name, which keeps its first spelling.
TEST_F(FilesConformance, FoldersAndWholeFiles) {
    Put("a.txt");
    Put("locked.txt");
    machine->AddFileAttributes(In("locked.txt"), kAttrReadOnly);
    const std::pair<std::string, bool> folders[] = {
        {In("New"), true},    {In("New"), false},    {In("new"), false},       {In("Deep\\Er"), false},
        {In("a.txt"), false}, {In("Slash\\"), true}, {In("New\\Inner"), true},
    };
    for (const auto& [path, made] : folders) EXPECT_EQ(files.MkDir(path), made) << path;
    const std::pair<std::string, bool> kills[] = {
        {In("A.TXT"), true}, {In("a.txt"), false}, {In("New\\Inner"), false}, {In("locked.txt"), false}};
    for (const auto& [path, killed] : kills) EXPECT_EQ(files.Kill(path), killed) << path;
    EXPECT_TRUE(files.FolderExists(In("New\\Inner")));
    const std::string binary("line one\r\n\0zero\xff\r\nend", 22);
    const std::tuple<const char*, const char*, std::string> writes[] = {
        {"data.bin", "DATA.BIN", binary}, {"DATA.BIN", "data.bin", "short"}, {"empty", "empty", ""}};
    std::string read;
    for (const auto& [writtenAs, readAs, contents] : writes) {
        ASSERT_TRUE(files.WriteWholeFile(In(writtenAs), contents)) << writtenAs;
        ASSERT_TRUE(files.ReadWholeFile(In(readAs), &read)) << readAs;
        EXPECT_EQ(read, contents) << readAs;
    }
    EXPECT_FALSE(files.ReadWholeFile(In("none.txt"), &read) || files.ReadWholeFile(In("New"), &read));
    EXPECT_FALSE(files.WriteWholeFile(In("Missing\\a.txt"), "x") || files.WriteWholeFile(In("New"), "x"));
    EXPECT_EQ(NamesOf(In("*")), (Names{".", "..", "locked.txt", "New", "Slash", "data.bin", "empty"}));
}

// Names ignore case; the program's folders are there.
TEST_F(FilesConformance, EnvironmentNamesIgnoreCase) {
    const std::string appData = files.Environ("appdata");
    const std::pair<const char*, std::string> cases[] = {
        {"windir", "C:\\windows"},             {"WINDIR", "C:\\windows"}, {"ProgramFiles", "C:\\Program Files"},
        {"programfiles", "C:\\Program Files"}, {"APPDATA", appData},      {"TESSMARK_NO_SUCH_VARIABLE", ""},
    };
    for (const auto& [name, value] : cases) {
        EXPECT_EQ(files.Environ(name), value) << name;
        EXPECT_EQ(files.FolderExists(value), !value.empty()) << name;
    }
    EXPECT_EQ(appData.rfind("C:\\", 0), 0u) << appData;
}

TEST_F(ShellConformance, BothStartupFoldersExist) {
    char user[260] = {}, common[260] = {};
    ASSERT_EQ(shell.SpecialFolderPath(kCsidlStartup, user), 0);
    ASSERT_EQ(shell.SpecialFolderPath(kCsidlCommonStartup, common), 0);
    for (const std::string folder : {user, common}) {
        EXPECT_TRUE(files.FolderExists(folder)) << folder;
        EXPECT_EQ(vb::LCase(folder.substr(folder.rfind('\\'))), "\\startup") << folder;
    }
    EXPECT_NE(vb::LCase(user), vb::LCase(common));
    EXPECT_EQ(vb::LCase(user).rfind(vb::LCase(files.Environ("APPDATA")) + "\\", 0), 0u) << user;
    EXPECT_NE(shell.SpecialFolderPath(-1, user), 0);  // an unknown folder number fails
}

// A saved shortcut gives its target back, a relative one completed from the current folder; saving
// fails where the shortcut cannot be made. Anything but a shortcut gives no target.
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
    ASSERT_TRUE(shell.SaveShortcut(In("lost.lnk"), "File Not Found", "File Not Found.exe,0", 1));
    EXPECT_EQ(Target(In("lost.lnk")), FullPath("File Not Found"));
    for (const std::string& path : {In("note.txt"), In("web.url"), In("Missing\\a.lnk")}) {
        EXPECT_FALSE(shell.SaveShortcut(path, kProgram, "notepad.exe.exe,0", 1)) << path;
        EXPECT_FALSE(files.FileExists(path)) << path;
    }
    Put("garbage.lnk", "this is no shortcut");
    Put("plain.txt", "text");
    Put("real.exe", "MZ");
    Put("site.url", "[InternetShortcut]\r\nURL=http://example.com/start\r\n");
    const std::pair<std::string, std::string> read[] = {
        {In("not saved yet.lnk"), ""},  {In("garbage.lnk"), "<error>"}, {In("plain.txt"), "<error>"},
        {In("missing.txt"), "<error>"}, {In("real.exe"), "<error>"},    {In("PROGRAM.LNK"), kProgram},
        {In("site.url"), "http://example.com/start"},
    };
    for (const auto& [path, expected] : read) EXPECT_EQ(Target(path), expected) << path;
}

// The shell's name of a file and an image list, the whole name field written, for large and for small
// icons; the empty path stands for the current folder. Unknown paths fail, as do paths that are not as
// the shell would write them, and leave the record.
TEST_F(ShellConformance, FileInfoGivesTheShellsNameAndAnImageListOrLeavesTheRecord) {
    Put("Mixed.TXT", "text");
    ASSERT_TRUE(shell.SaveShortcut(In("editor.lnk"), kProgram, "notepad.exe.exe,0", 1));
    const std::string current = FullPath(".");
    const std::pair<std::string, std::string> cases[] = {
        {kProgram, "notepad.exe"},   {vb::LCase(In("Mixed.TXT")), "Mixed.TXT"}, {In("editor.lnk"), "editor"},
        {scratch, "tessmark-test"}, {scratch + "\\", "tessmark-test"}, {"", current.substr(current.rfind('\\') + 1)},
        {In("missing.exe"), ""},    {"Error occured.", ""},                {In("no\\such\\file.exe"), ""},
        {In("..\\tessmark-test\\Mixed.TXT"), ""}, {In(".\\Mixed.TXT"), ""}, {"C:/tessmark-test/Mixed.TXT", ""},
    };
    for (const auto& [path, shown] : cases) {
        for (std::uint32_t flags : {0x6602u, 0x6603u}) {  // as rows get their icons, large and small
            ShFileInfo info{0, -77, 0, {}, "kept"};
            std::memset(info.displayName, 'x', sizeof info.displayName);
            const bool found = shell.SHGetFileInfoA(path.c_str(), 0, &info, flags) != 0;
            EXPECT_EQ(found, !shown.empty()) << path;
            const std::string field = Padded(shown.empty() ? std::string(260, 'x') : shown, 260, '\0');
            EXPECT_EQ(std::string(info.displayName, 260), field) << path;
            EXPECT_TRUE(found ? info.iIcon >= 0 : info.iIcon == -77 && info.typeName == "kept"s) << path;
        }
    }
}

// A file without a version resource has no block. In the fixture's block the fixed record holds
// the resource's numbers, the translation table lists language and code page in order, and
// strings are found by table and key without regard to case. Language names count their characters.
TEST_F(ShellConformance, VersionBlocksAndLanguageNames) {
    const std::uint16_t fileVersion[] = {FIXTURE_FILE_VERSION}, productVersion[] = {FIXTURE_PRODUCT_VERSION};
    Put("plain.exe", "MZ");
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
    const auto High = [](const std::uint16_t* words) { return std::uint32_t{words[0]} << 16 | words[1]; };
    EXPECT_EQ(fixed, (std::vector<std::uint32_t>{0xFEEF04BDu, High(fileVersion), High(fileVersion + 2),
                                                 High(productVersion), High(productVersion + 2), FIXTURE_FILE_FLAGS,
                                                 FIXTURE_FILE_OS, FIXTURE_FILE_TYPE}));
    const std::uint32_t page = FIXTURE_CODE_PAGE << 16;
    EXPECT_EQ(Words("\\VarFileInfo\\Translation"), (std::vector{page | FIXTURE_GERMAN, page | FIXTURE_ENGLISH}));
    const std::string en = "\\StringFileInfo\\040904E4\\", de = "\\StringFileInfo\\040704E4\\";
    const std::pair<std::string, const char*> strings[] = {
        {en + "CompanyName", FIXTURE_COMPANY_NAME}, {"\\stringfileinfo\\040904e4\\companyname", FIXTURE_COMPANY_NAME},
        {en + "FileVersion", FIXTURE_FILE_VERSION_TEXT},       {de + "FileDescription", FIXTURE_DESCRIPTION_GERMAN},
        {en + "FileDescription", FIXTURE_DESCRIPTION_ENGLISH}, {de + "CompanyName", nullptr},
        {"\\StringFileInfo\\041104B0\\CompanyName", nullptr}, {en + "Comments", nullptr},
        {"\\VarFileInfo\\Nothing", nullptr},
    };
    for (const auto& [subBlock, text] : strings) {
        std::vector<std::uint8_t> value{1, 2, 3};
        EXPECT_EQ(shell.VerQueryValueA(block, subBlock.c_str(), &value), text != nullptr) << subBlock;
        EXPECT_EQ(std::string(value.begin(), value.end()), text ? std::string(text) + '\0' : "") << subBlock;
    }
    char buffer[256];
    for (const auto& [language, name] : {std::pair{0x0409u, "English"}, std::pair{0x0407u, "German"}}) {
        std::memset(buffer, ' ', sizeof buffer);
        EXPECT_EQ(shell.VerLanguageNameA(language, buffer, sizeof buffer), std::strlen(name)) << name;
        EXPECT_STREQ(buffer, name);
    }
    EXPECT_EQ(shell.VerLanguageNameA(0x1234, buffer, sizeof buffer), 0u);
}

}  // namespace
}  // namespace tessmark::testing

// What the program relies on from the file system: walks and their patterns,
// attributes, full path names, folder and file making, and the environment.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <set>
#include <tuple>

#include "machine.h"

namespace tessmark::testing {
namespace {

using platform::FindData;
using platform::kAttrDirectory;
using platform::kAttrHidden;
using platform::kAttrReadOnly;
using platform::kAttrSystem;
using platform::kInvalidFileAttributes;
using platform::kInvalidFindHandle;

class FilesConformance : public ::testing::Test {
protected:
    std::unique_ptr<TestMachine> machine = MakeTestMachine();
    platform::FilesPort& files = machine->Files();
    const std::string scratch = machine->ScratchFolder();

    std::string In(const std::string& name) const { return scratch + "\\" + name; }

    void Put(const std::string& name, const std::string& contents = "x") {
        ASSERT_TRUE(files.WriteWholeFile(In(name), contents)) << name;
    }

    // Every entry a walk gives, by name; the order is not the program's concern. Past the last
    // entry the walk keeps saying no.
    std::map<std::string, FindData> Walk(const std::string& pattern) {
        std::map<std::string, FindData> entries;
        FindData data;
        const platform::FindHandle handle = files.FindFirstFileA(pattern.c_str(), &data);
        if (handle == kInvalidFindHandle) return entries;
        do {
            EXPECT_TRUE(entries.emplace(data.fileName, data).second) << "twice: " << data.fileName;
        } while (files.FindNextFileA(handle, &data));
        EXPECT_EQ(files.FindNextFileA(handle, &data), 0);
        EXPECT_NE(files.FindClose(handle), 0);
        return entries;
    }

    std::set<std::string> Names(const std::string& pattern) {
        std::set<std::string> names;
        for (const auto& [name, data] : Walk(pattern)) names.insert(name);
        return names;
    }

    std::string FullPath(const std::string& path) {
        char buffer[261];
        const std::uint32_t length = files.GetFullPathNameA(path.c_str(), sizeof buffer, buffer);
        return length > 0 && length < sizeof buffer ? std::string(buffer, length) : "<failed>";
    }
};

// A walk gives every entry once, dots and folders included, with attributes and sizes; patterns
// match names without regard to case.
TEST_F(FilesConformance, WalksPatternsAndAttributes) {
    for (const char* name : {"a.txt", "ab.txt", "abc.txt", "File.TXT", "Long Name.text", "x.lnk"}) Put(name);
    Put("noext", "12345");
    machine->AddFileAttributes(In("noext"), kAttrHidden | kAttrSystem);
    ASSERT_TRUE(files.MkDir(In("Sub")));
    const auto entries = Walk(In("*"));
    for (const char* folder : {".", "..", "Sub"}) EXPECT_TRUE(entries.at(folder).attributes & kAttrDirectory) << folder;
    EXPECT_EQ(entries.at("a.txt").attributes & (kAttrDirectory | kAttrHidden | kAttrSystem), 0u);
    EXPECT_EQ(entries.at("noext").attributes & (kAttrHidden | kAttrSystem), kAttrHidden | kAttrSystem);
    EXPECT_EQ(files.GetFileAttributesA(In("noext").c_str()) & (kAttrHidden | kAttrSystem), kAttrHidden | kAttrSystem);
    EXPECT_EQ(entries.at("a.txt").sizeLow, 1u);
    EXPECT_EQ(entries.at("noext").sizeLow, 5u);
    EXPECT_EQ(entries.at("noext").sizeHigh, 0u);

    const std::set<std::string> all = {".", "..", "a.txt", "ab.txt", "abc.txt", "File.TXT",
                                       "noext", "Long Name.text", "x.lnk", "Sub"};
    const std::set<std::string> txt = {"a.txt", "ab.txt", "abc.txt", "File.TXT"};
    const std::pair<const char*, std::set<std::string>> cases[] = {
        {"*", all},          {"*.*", all},               {"*.txt", txt},          {"*.TXT", txt},
        {"?.txt", {"a.txt"}}, {"a?.txt", {"ab.txt"}},    {"A*", {"a.txt", "ab.txt", "abc.txt"}},
        {"file.txt", {"File.TXT"}},                      {"a.txt.", {"a.txt"}},   {"noext.*", {"noext"}},
        {"*.t*", {"a.txt", "ab.txt", "abc.txt", "File.TXT", "Long Name.text"}},
        {"n*.*", {"noext"}},  {"*.lnk", {"x.lnk"}},      {"sub", {"Sub"}},        {"*.tx", {}},     {"zz*", {}},
        {"zz.txt", {}},       {"missing\\*", {}},        {"", {}},
    };
    for (const auto& [pattern, expected] : cases) EXPECT_EQ(Names(In(pattern)), expected) << pattern;
    // A folder path without a pattern finds the folder itself; the drive's root has no dot entries.
    const auto folder = Walk(scratch);
    EXPECT_EQ(folder.size(), 1u);
    EXPECT_TRUE(folder.at("tessmark-test").attributes & kAttrDirectory);
    const auto names = Names("C:\\*");
    EXPECT_FALSE(names.count(".") || names.count(".."));
    EXPECT_TRUE(names.count("windows") && names.count("Program Files"));

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

// Absolute paths are made canonical; relative ones are completed from the current folder.
TEST_F(FilesConformance, FullPathNameCanonicalisesAbsolutePathsAndCompletesRelativeOnes) {
    const std::string current = FullPath("."), parent = current.substr(0, current.rfind('\\'));
    ASSERT_GT(current.size(), 3u) << "the current folder is expected below a drive's root";
    ASSERT_EQ(current.substr(1, 2), ":\\");
    const std::pair<const char*, std::string> cases[] = {
        {"C:\\a\\..\\b", "C:\\b"},   {"C:\\a\\.\\b\\", "C:\\a\\b\\"}, {"C:\\a\\b\\..\\..\\..\\c", "C:\\c"},
        {"C:\\a/b", "C:\\a\\b"},      {"C:\\a\\\\b", "C:\\a\\b"},   {"C:\\a\\b.", "C:\\a\\b"},
        {"C:\\a\\b. .", "C:\\a\\b"}, {"C:\\a\\...", "C:\\a\\"},    {"c:\\Mixed\\Case", "c:\\Mixed\\Case"},
        {"C:\\", "C:\\"},             {"foo", current + "\\foo"},  {".\\foo\\..\\bar", current + "\\bar"},
        {"\\foo", current.substr(0, 2) + "\\foo"}, {"..", parent.size() > 2 ? parent : parent + "\\"},
    };
    for (const auto& [path, expected] : cases) EXPECT_EQ(FullPath(path), expected) << path;
    // A short buffer gets the size needed, NUL included, and nothing written.
    using namespace std::string_literals;
    char buffer[8];
    const std::tuple<std::uint32_t, std::uint32_t, std::string> sizes[] = {
        {8, 4, "C:\\x\0"s}, {5, 4, "C:\\x\0"s}, {4, 5, "#"}, {1, 5, "#"}};
    for (const auto& [bufferLength, result, written] : sizes) {
        std::memset(buffer, '#', sizeof buffer);
        EXPECT_EQ(files.GetFullPathNameA("C:\\x", bufferLength, buffer), result) << bufferLength;
        EXPECT_EQ(std::string(buffer, written.size()), written) << bufferLength;
    }
    EXPECT_EQ(files.GetFullPathNameA("C:\\x", 0, nullptr), 5u);
    EXPECT_EQ(files.GetFullPathNameA("", sizeof buffer, buffer), 0u);
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
    for (const char* folder : {"New", "Slash", "New\\Inner"}) EXPECT_TRUE(files.FolderExists(In(folder))) << folder;
    EXPECT_FALSE(files.FolderExists(In("Deep")));

    const std::string binary("line one\r\n\0zero\xff\r\nend", 22);
    const std::tuple<const char*, const char*, std::string> writes[] = {
        {"data.bin", "DATA.BIN", binary}, {"DATA.BIN", "data.bin", "short"}, {"empty", "empty", ""}};
    std::string read;
    for (const auto& [writtenAs, readAs, contents] : writes) {
        ASSERT_TRUE(files.WriteWholeFile(In(writtenAs), contents)) << writtenAs;
        ASSERT_TRUE(files.ReadWholeFile(In(readAs), &read)) << readAs;
        EXPECT_EQ(read, contents) << readAs;
    }
    EXPECT_FALSE(files.ReadWholeFile(In("none.txt"), &read));
    EXPECT_FALSE(files.ReadWholeFile(In("New"), &read));
    EXPECT_FALSE(files.WriteWholeFile(In("Missing\\a.txt"), "x"));
    EXPECT_FALSE(files.WriteWholeFile(In("New"), "x"));
    EXPECT_EQ(Names(In("*")), (std::set<std::string>{".", "..", "locked.txt", "New", "Slash", "data.bin", "empty"}));
}

TEST_F(FilesConformance, EnvironmentNamesIgnoreCase) {
    const std::pair<const char*, const char*> cases[] = {
        {"windir", "C:\\windows"},             {"WINDIR", "C:\\windows"}, {"ProgramFiles", "C:\\Program Files"},
        {"programfiles", "C:\\Program Files"}, {"TESSMARK_NO_SUCH_VARIABLE", ""},
    };
    for (const auto& [name, value] : cases) EXPECT_EQ(files.Environ(name), value) << name;

    const std::string appData = files.Environ("appdata");
    EXPECT_EQ(files.Environ("APPDATA"), appData);
    EXPECT_EQ(appData.rfind("C:\\", 0), 0u) << appData;
    EXPECT_TRUE(files.FolderExists(appData)) << appData;
}

}  // namespace
}  // namespace tessmark::testing

// Command-line reduction: literal cuts, not parsing.
#include <gtest/gtest.h>

#include "discovery/GetExeName.h"

using tessmark::discovery::GetExeName;
using tessmark::discovery::SystemFolders;

namespace {

const SystemFolders kFolders{"C:\\WINDOWS", "C:\\Program Files"};

std::string Reduce(std::string input) { return GetExeName(input, kFolders); }

TEST(GetExeName, WorkedExamples) {
    struct Case { const char* input; const char* want; } cases[] = {
        {"C:\\WINDOWS\\system32\\ctfmon.exe", "C:\\WINDOWS\\system32\\ctfmon.exe"},
        {"\"C:\\Program Files\\Foo\\foo.exe\" /start", "C:\\Program Files\\Foo\\foo.exe"},
        {"%SystemRoot%\\system32\\userinit.exe", "C:\\WINDOWS\\system32\\userinit.exe"},
        {"%systemroot%\\a.exe", "C:\\WINDOWS\\a.exe"},
        {"%ProgramFiles%\\Foo\\foo.exe", "C:\\Program Files\\Foo\\foo.exe"},
        {"%windir%\\foo.exe -s", "C:\\WINDOWS\\foo.exe"},
        {"C:\\Foo\\foo.exe -minimized", "C:\\Foo\\foo.exe"},
        {"C:\\Program Files\\Anti-Virus\\av.exe", "C:\\Program Files\\Anti"},
        {"rundll32.exe shell32.dll,Control_RunDLL desk.cpl", "rundll32.exe shell32.dll"},
        {"C:\\Foo\\foo.exe arg", "C:\\Foo\\foo.exe arg"},
        {"/background", ""},
        {"-x", ""},
        {"%SystemRoot%", "C:\\WINDOWS\\%SystemRoot%"},
        {"D:\\a\\%windir%\\b.exe", "C:\\WINDOWS\\a\\%windir%\\b.exe"},
        {"Userinit", "Userinit"},
        {"", ""},
    };
    for (const auto& c : cases) EXPECT_EQ(Reduce(c.input), c.want) << c.input;
}

TEST(GetExeName, CutsAtTheFirstNulOfARegistryBuffer) {
    std::string buffer = "C:\\a.exe";
    buffer.resize(1024, '\0');
    EXPECT_EQ(Reduce(buffer), "C:\\a.exe");
    EXPECT_EQ(Reduce(std::string("Shell\0", 6)), "Shell");
    EXPECT_EQ(Reduce(std::string("a\0b", 3)), "a");
}

TEST(GetExeName, SlashCutsBeforeAnyTokenIsExamined) {
    EXPECT_EQ(Reduce("http://host/%windir%\\x"), "http:");
    EXPECT_EQ(Reduce("%windir%\\a.exe /x-y"), "C:\\WINDOWS\\a.exe");
}

TEST(GetExeName, TokenTestsAreIndependentAndMayAllFire) {
    // %SystemRoot% expands first; the %windir% left in the tail fires again and
    // throws away the folder just put in front.
    EXPECT_EQ(Reduce("%SystemRoot%\\%windir%\\x.exe"), "C:\\WINDOWS\\WINDOWS\\%windir%\\x.exe");
    // The %SystemRoot% test runs before the %ProgramFiles% one, whose token is gone by then.
    EXPECT_EQ(Reduce("%ProgramFiles%\\%SystemRoot%\\x.exe"), "C:\\WINDOWS\\%SystemRoot%\\x.exe");
}

TEST(GetExeName, HyphenOrCommaInAnExpandedFolderAlsoTruncates) {
    SystemFolders folders{"C:\\WIN-DOWS", "C:\\Programs,x86"};
    std::string line = "%windir%\\a.exe";
    EXPECT_EQ(GetExeName(line, folders), "C:\\WIN");
    line = "%ProgramFiles%\\a.exe";
    EXPECT_EQ(GetExeName(line, folders), "C:\\Programs");
}

TEST(GetExeName, HandsBackTheUnquotedFormBeforeExpansion) {
    std::string line = std::string("\"%windir%\\a.exe\" -x  \0junk", 25);
    EXPECT_EQ(GetExeName(line, kFolders), "C:\\WINDOWS\\a.exe");
    EXPECT_EQ(line, "%windir%\\a.exe -x");
}

}  // namespace

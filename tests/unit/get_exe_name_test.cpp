// Command-line reduction: literal cuts, not parsing.
#include <gtest/gtest.h>

#include "discovery/GetExeName.h"

using tessmark::discovery::GetExeName;
using tessmark::discovery::SystemFolders;

namespace {

const SystemFolders kFolders{"C:\\WINDOWS", "C:\\Program Files"}, kOdd{"C:\\WIN-DOWS", "C:\\Programs,x86"};

// The scanner tests reduce the common forms; these are the remaining cuts.
TEST(GetExeName, WorkedExamples) {
    using namespace std::string_literals;
    struct Case { std::string input, want; SystemFolders folders = kFolders; } cases[] = {
        {"/background", ""}, {"-x", ""}, {"", ""}, {"Userinit", "Userinit"},
        {"%SystemRoot%", "C:\\WINDOWS\\%SystemRoot%"},
        // Cut at the first NUL of a registry buffer.
        {"C:\\a.exe" + std::string(1016, '\0'), "C:\\a.exe"},
        {"Shell\0"s, "Shell"}, {"a\0b"s, "a"},
        // The slash cuts before any token is examined.
        {"http://host/%windir%\\x", "http:"}, {"%windir%\\a.exe /x-y", "C:\\WINDOWS\\a.exe"},
        // Token tests are independent: %SystemRoot% expands first, then the
        // %windir% left in the tail fires and throws away the folder just put in front;
        {"%SystemRoot%\\%windir%\\x.exe", "C:\\WINDOWS\\WINDOWS\\%windir%\\x.exe"},
        // and the %ProgramFiles% token is gone by the time its test runs.
        {"%ProgramFiles%\\%SystemRoot%\\x.exe", "C:\\WINDOWS\\%SystemRoot%\\x.exe"},
        // A hyphen or comma in an expanded folder also cuts.
        {"%windir%\\a.exe", "C:\\WIN", kOdd}, {"%ProgramFiles%\\a.exe", "C:\\Programs", kOdd},
    };
    for (const auto& c : cases) {
        std::string line = c.input;
        EXPECT_EQ(GetExeName(line, c.folders), c.want) << c.input;
    }
    // The line comes back unquoted, not expanded.
    std::string line = std::string("\"%windir%\\a.exe\" -x  \0junk", 25);
    EXPECT_EQ(GetExeName(line, kFolders), "C:\\WINDOWS\\a.exe");
    EXPECT_EQ(line, "%windir%\\a.exe -x");
}

}  // namespace

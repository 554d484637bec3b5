// The run-time's semantics and the small models built on it: text, numbers, errors, arrays, hexadecimal pairs,
// command-line reduction (literal cuts, not parsing), the progress bar's arithmetic and the backup set's folders.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <tuple>

#include "discovery/GetExeName.h"
#include "platform/memory/memory_disk.h"
#include "platform/memory/memory_registry.h"
#include "platform/memory/recording_ui.h"
#include "registry/AdvRegistryAccess.h"
#include "safety/BackupRegistry.h"
#include "storage/modStartup.h"
#include "ui/XP_ProgressBar.h"
#include "vb/toplevel.h"
#include "vb/vb.h"

using namespace tessmark::vb;
using tessmark::registry::AdvRegistryAccess;
using std::string;
using tessmark::discovery::GetExeName;
using tessmark::discovery::SystemFolders;
using namespace tessmark::ui;

namespace {

int ErrorOf(const std::function<void()>& f) {
    try {
        f();
    } catch (const VbError& e) {
        return e.number();
    }
    return 0;
}

// Slices are one-based; trims remove blanks only, never NULs or tabs; a replacement drops the text
// before its start.
TEST(VbText, SlicesTrimsReplacementsAndCharacterCodes) {
    struct Case { string got, want; } cases[] = {
        {Mid("abcdef", 2, 3), "bcd"}, {Mid("abcdef", 5), "ef"}, {Mid("abc", 4), ""},    {Mid("abc", 2, 99), "bc"},
        {Left("abc", 0), ""},         {Left("abc", 9), "abc"},  {Right("abcdef", 2), "ef"}, {Right("ab", 5), "ab"},
        {Trim(string(" a\0 ", 4)), string("a\0", 2)}, {Trim("\tx "), "\tx"}, {LTrim("  x  "), "x  "},
        {RTrim("  x  "), "  x"}, {Trim("   "), ""}, {Replace("a\"b\"", "\"", ""), "ab"},
        {Replace("HKEY_LOCAL_MACHINE\\x", "hkey_local_machine", "HKLM", 1, -1, Compare::Text), "HKLM\\x"},
        {Replace("hkey_local_machine", "HKEY_LOCAL_MACHINE", "HKLM"), "hkey_local_machine"},
        {Replace("aaa", "a", "b", 2), "bb"}, {Replace("aaa", "a", "b", 1, 1), "baa"}, {Chr(0), string(1, '\0')},
        {UCase("ab1"), "AB1"}, {Hex(31), "1F"}, {Hex(-1), "FFFFFFFF"},
    };
    for (const auto& c : cases) EXPECT_EQ(c.got, c.want) << "case " << &c - cases;
}

// Searches give the first or last occurrence; conversions round half to even.
TEST(VbNumbers, SearchesConversionsAndComparisons) {
    struct Case { long got, want; } cases[] = {
        {InStr("a-b-c", "-"), 2},  {InStr(3, "a-b-c", "-"), 4},           {InStr("abc", "x"), 0},
        {InStr("abc", ""), 1},     {InStr("", "a"), 0},                   {InStr("ABC", "b"), 0},
        {InStr(9, "abc", "a"), 0}, {InStr("ABC", "b", Compare::Text), 2}, {InStrRev("a\\b\\c", "\\"), 4},
        {InStrRev("abc", "x"), 0}, {InStrRev("abcabc", "abc", 5), 1},     {Asc(Chr(200)), 200},
        {CInt(0.5), 0}, {CInt(1.5), 2}, {CInt(2.5), 2}, {CInt(3.5), 4}, {CInt(-0.5), 0}, {CInt(-1.5), -2},
        {CInt(2.4999), 2}, {CInt(2.51), 3}, {TextEquals("Shell", "SHELL"), 1}, {TextEquals("Shell", "Shel"), 0},
    };
    for (const auto& c : cases) EXPECT_EQ(c.got, c.want) << "case " << &c - cases;
    // Val reads a leading number or a hexadecimal literal.
    struct Read { double got, want; } reads[] = {
        {Val("&H1F"), 31},   {Val("&h41"), 65},  {Val("&HFFFF"), -1},  {Val("&H10000"), 65536}, {Val("&HFFFFFFFF"), -1},
        {Val("&H0x1F"), 0},  {Val("&H4G"), 4},   {Val("&H"), 0},       {Val("12abc"), 12},      {Val(" 1 2"), 12},
        {Val("-3.5"), -3.5}, {Val("abc"), 0},    {Val("&O17"), 15},    {Val("1e2"), 100},
    };
    for (const auto& r : reads) EXPECT_EQ(r.got, r.want) << "read " << &r - reads;
}

TEST(VbErrors, BadArgumentsOverflowsAndUndimensionedArraysRaiseTheirNumbers) {
    Integer counter = 32766, low = -32768;
    Array<string> none;
    const std::pair<std::function<void()>, int> cases[] = {
        {[] { Left("abc", -1); }, err::kInvalidCall},  {[] { Mid("abc", 0); }, err::kInvalidCall},
        {[] { Mid("abc", 1, -1); }, err::kInvalidCall}, {[] { InStr(0, "a", "a"); }, err::kInvalidCall},
        {[] { Chr(256); }, err::kInvalidCall},         {[] { Asc(""); }, err::kInvalidCall},
        {[] { Space(0), String(0, 'x'); }, 0},          {[] { Space(-1); }, err::kInvalidCall},
        {[] { CInt(32767.5); }, err::kOverflow},       {[&] { ++counter; }, 0},
        {[&] { ++counter; }, err::kOverflow},          {[&] { low -= 1; }, err::kOverflow},
        {[] { AdvRegistryAccess::BinToStr(string(32768, 'A')); }, err::kOverflow},
        {[&] { none.UBound(); }, err::kSubscript},     {[&] { none[0]; }, err::kSubscript},
    };
    for (const auto& c : cases) EXPECT_EQ(ErrorOf(c.first), c.second) << "case " << &c - cases;
    EXPECT_EQ(counter, 32767);
}

TEST(VbArray, ReDimPreserveKeepsWhatFitsAndEraseUndimensions) {
    Array<string> a;
    a.ReDimPreserve(0);
    a[0] = "x";
    a.ReDimPreserve(2);
    EXPECT_EQ(a.UBound(), 2);
    EXPECT_EQ(a[0], "x");
    EXPECT_EQ(ErrorOf([&] { a[3]; }), err::kSubscript);
    a.ReDim(1);
    EXPECT_EQ(a[0], "");
    a[0] = "y";
    a.Erase();
    EXPECT_FALSE(a.IsDimensioned());
    a.ReDimPreserve(0);
    EXPECT_EQ(a[0], "") << "nothing survives an erase";
}

TEST(VbErrors, ResumeSkipsOnlyTheFailingStatement) {
    string s = "abc";
    Resume([&] { s = Left(s, InStr(s, "-") - 1); });  // no hyphen: the cut fails, s stays
    Resume([&] { s += Left(s, 1); });
    EXPECT_EQ(s, "abca");
    EXPECT_THROW(Resume([] { throw std::logic_error("not a run-time error"); }), std::logic_error);
}

TEST(VbErrors, TopLevelHandlerShowsTheMessageAndEndsWhateverWasThrown) {
    struct Case { std::function<void()> fail; int number; string prompt; };
    std::vector<Case> cases = {
        {[] { throw std::bad_alloc(); }, 7, "Run-time error '7':\r\n\r\nOut of memory"},
        {[] { throw std::logic_error("x"); }, 51, "Run-time error '51':\r\n\r\nInternal error"},
    };
    const std::pair<int, const char*> descriptions[] = {{5, "Invalid procedure call or argument"}, {6, "Overflow"},
        {9, "Subscript out of range"}, {11, "Division by zero"}, {13, "Type mismatch"}, {52, "Bad file name or number"},
        {53, "File not found"}, {70, "Permission denied"}, {75, "Path/File access error"}, {76, "Path not found"},
        {91, "Object variable or With block variable not set"}, {424, "Object required"},
        {429, "ActiveX component can't create object"}, {438, "Object doesn't support this property or method"},
        {1000, "Application-defined or object-defined error"}};
    for (auto [number, text] : descriptions)
        cases.push_back({[number] { throw VbError(number); }, number,
                         "Run-time error '" + std::to_string(number) + "':\r\n\r\n" + text});
    for (const auto& c : cases) {
        tessmark::platform::memory::RecordingUi ui;
        int ended = -1;
        try {
            RunEvent(ui, c.fail);
        } catch (const tessmark::platform::memory::ProcessEnded& end) {
            ended = end.exitCode;
        }
        EXPECT_EQ(ended, c.number);
        EXPECT_EQ(ui.messageBoxes, (std::vector<tessmark::platform::memory::MessageBoxCall>{{c.prompt, 16, ""}}));
    }
}

// Half the digits, rounded to even, give the pieces; reading stops at the first non-digit,
// and the argument is left without its blanks.
TEST(RegistryHex, StrToBinKeepsHalfTheDigitsRoundedToEvenPieces) {
    struct Case { string hex, raw; } cases[] = {
        {"41 42", "AB"}, {" 41 42 ", "AB"}, {"00", string("\0", 1)}, {"0041", string("\0A", 2)}, {"", ""}, {"   ", ""},
        {"ff", "\xFF"}, {"4", ""}, {"414", "A\x04"}, {"41424", "AB"}, {"4142434", "ABC\x04"},
        {"zz4g", string("\0\x04", 2)},
    };
    for (const auto& c : cases) {
        string in = c.hex;
        EXPECT_EQ(AdvRegistryAccess::StrToBin(in), c.raw) << '"' << c.hex << '"';
        EXPECT_EQ(in.find(' '), string::npos) << '"' << c.hex << '"';
    }
    EXPECT_EQ(AdvRegistryAccess::BinToStr(string("\n\0\xC8", 3)), " 0A 00 C8");
    // Up to 32767 characters go; blanks do not count.
    EXPECT_EQ(AdvRegistryAccess::BinToStr(string(32767, 'A')).size(), 3u * 32767);
    string blanksDoNotCount = string(32766, '4') + "  ";
    EXPECT_EQ(AdvRegistryAccess::StrToBin(blanksDoNotCount).size(), 16383u);
}

const SystemFolders kFolders{"C:\\WINDOWS", "C:\\Program Files"}, kOdd{"C:\\WIN-DOWS", "C:\\Programs,x86"};

// The scanner tests reduce the common forms; these are the remaining cuts.
TEST(GetExeName, WorkedExamples) {
    using namespace std::string_literals;
    struct Case { std::string input, want; SystemFolders folders = kFolders; } cases[] = {
        {"/background", ""}, {"-x", ""}, {"", ""}, {"Userinit", "Userinit"},
        {"%SystemRoot%", "C:\\WINDOWS\\%SystemRoot%"},
        // Cut at the first NUL of a registry buffer.
        {"C:\\a.exe" + std::string(1016, '\0'), "C:\\a.exe"}, {"Shell\0"s, "Shell"}, {"a\0b"s, "a"},
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

TEST(ProgressBarModel, ShadesAndBlends) {
    struct Case { Colour got, want; } cases[] = {
        {ShiftColor(0x000000, 100), 0x646464}, {ShiftColor(0xFFFFFF, 150), 0xFFFFFF},
        {ShiftColor(0x804020, 0), 0x804020},   {ShiftColor(0x804020, 255), 0xFFFFFF},
        {ShiftColor(0x0000FF, 180), 0xB4B4FF},
        {BlendColors(0xFFFFFF, 0x000000, 255), 0xFFFFFF}, {BlendColors(0xFFFFFF, 0x000000, 0), 0x000000},
        {BlendColors(0x0000C8, 0x000000, 200), 0x00009D},  // 200 * 200 / 255 = 156.86 rounds up
        {BlendColors(0x000001, 0x000000, 128), 0x000001},  // 0.502 rounds to 1
    };
    for (const auto& c : cases) EXPECT_EQ(c.got, c.want) << "case " << &c - cases;
}

TEST(ProgressBarModel, ValueIsAPercentageScaledByMinAndMaxTheControlsWay) {
    struct Case { std::int32_t min, max, set, percent, get; } cases[] = {
        {0, 100, 45, 45, 45}, {0, 200, 50, 25, 50}, {10, 100, 30, 40, 4},  // Min added, then divided by
        {0, 100, 130, 130, 130}, {0, 3, 1, 33, 1}, {0, 8, 1, 12, 1},       // 12.5 rounds to even
    };
    for (const auto& c : cases) {
        XP_ProgressBarModel bar{.Max = c.max, .Min = c.min};
        bar.SetValue(c.set);
        EXPECT_EQ(std::pair(bar.percent, bar.Value()), std::pair(c.percent, c.get)) << c.set << '/' << c.max;
    }
    XP_ProgressBarModel over;
    over.SetValue(130);
    EXPECT_EQ(over.DrawnPercent(), 100);
    EXPECT_EQ(over.CaptionText(), "100 %");
    over.Scrolling = 2;
    EXPECT_EQ(over.CaptionText(), "Searching..");
    over.Max = 0;
    EXPECT_EQ(ErrorOf([&] { over.SetValue(1); }), err::kDivisionByZero);
}

TEST(ProgressBarModel, PropertyBagDefaultsAndTheFontThatIsNotReadBack) {
    XP_ProgressBarModel fresh;
    fresh.ReadProperties({});
    EXPECT_EQ(std::tuple(fresh.BrushStyle, fresh.Color, fresh.Max, fresh.ShowText),
              std::tuple(4, 0x8000000Du, 100, false));

    XP_ProgressBarModel set{.Font = 77, .Scrolling = 6, .ShowText = true};
    set.SetValue(60);
    PropertyBag bag;
    set.WriteProperties(bag);
    EXPECT_EQ(bag.at("Font"), 77);
    XP_ProgressBarModel read;
    read.ReadProperties(bag);
    EXPECT_EQ(std::tuple(read.Font, read.Scrolling, read.ShowText, read.percent), std::tuple(0, 6, true, 60));
}

TEST(BackupFolders, MakesOnlyTheMissingLevels) {
    const string full = "C:\\data\\Quillon\\Tessmark\\RegistryBackUps";
    struct Case { string appData, folder, file; bool raises; } cases[] = {
        {"C:\\data", "C:\\data", "", false},         {"C:\\data", "C:\\data\\Quillon", "", false},
        {"C:\\data", "C:\\data\\Quillon\\Tessmark", "", false}, {"C:\\data", full, "", false},
        {"C:\\data", "C:\\data", full, false},       {"Q:\\nowhere", "C:\\data", "", true},
    };
    for (const auto& c : cases) {
        tessmark::platform::memory::MemoryDisk disk;
        tessmark::platform::memory::MemoryRegistry registry;
        tessmark::platform::memory::RecordingUi ui;
        disk.SetEnvironmentVariable("Appdata", c.appData);
        disk.AddFolder(c.folder);
        if (!c.file.empty()) disk.AddFile(c.file, "a file");
        tessmark::registry::AdvRegistryAccess objReg(registry, disk, ui);
        if (c.raises) {
            EXPECT_THROW(tessmark::safety::BackupRegistry(objReg, disk), tessmark::vb::VbError) << c.appData;
        } else {
            EXPECT_NO_THROW(tessmark::safety::BackupRegistry(objReg, disk)) << c.folder << ' ' << c.file;
        }
        // The set, each file holding only the header, as the export ends there.
        const std::vector<string> set = {"BHO.reg", "LogonStartup.reg", "LogonWinlogon.reg", "RegRun.reg",
            "RegRunCU.reg", "RegRunOnce.reg", "RegRunOnceCU.reg", "RegRunServices.reg", "RegRunServicesCU.reg",
            "RegRunServicesOnce.reg", "Services.reg"};
        auto files = tessmark::storage::DirNormalFiles(disk, full + "\\*.*");
        std::sort(files.begin(), files.end());
        EXPECT_EQ(files, !c.raises && c.file.empty() ? set : std::vector<string>{}) << c.folder;
        string text;
        if (!files.empty()) EXPECT_TRUE(disk.ReadWholeFile(full + "\\BHO.reg", &text) && text == "REGEDIT4\r\n\r\n");
    }
}

}  // namespace

// The run-time semantics the logic is written in.
#include <gtest/gtest.h>

#include <functional>

#include "platform/memory/recording_ui.h"
#include "vb/toplevel.h"
#include "vb/vb.h"

using namespace tessmark::vb;
using std::string;

namespace {

int ErrorOf(const std::function<void()>& f) {
    try {
        f();
    } catch (const VbError& e) {
        return e.number();
    }
    return 0;
}

TEST(VbText, SlicesAreOneBasedAndRejectBadArguments) {
    struct Case { string got, want; } cases[] = {
        {Mid("abcdef", 2, 3), "bcd"}, {Mid("abcdef", 5), "ef"}, {Mid("abc", 4), ""},
        {Mid("abc", 2, 99), "bc"},   {Left("abc", 0), ""},     {Left("abc", 9), "abc"},
        {Right("abcdef", 2), "ef"},  {Right("ab", 5), "ab"},
    };
    for (const auto& c : cases) EXPECT_EQ(c.got, c.want);
    EXPECT_EQ(ErrorOf([] { Left("abc", -1); }), err::kInvalidCall);
    EXPECT_EQ(ErrorOf([] { Mid("abc", 0); }), err::kInvalidCall);
    EXPECT_EQ(ErrorOf([] { Mid("abc", 1, -1); }), err::kInvalidCall);
}

TEST(VbText, SearchesFindTheFirstOrLastOccurrence) {
    struct Case { long got, want; } cases[] = {
        {InStr("a-b-c", "-"), 2},
        {InStr(3, "a-b-c", "-"), 4},
        {InStr("abc", "x"), 0},
        {InStr("abc", ""), 1},
        {InStr("", "a"), 0},
        {InStr("ABC", "b"), 0},
        {InStr("ABC", "b", Compare::Text), 2},
        {InStrRev("a\\b\\c", "\\"), 4},
        {InStrRev("abc", "x"), 0},
        {InStrRev("abcabc", "abc", 5), 1},
        {InStr(9, "abc", "a"), 0},
    };
    for (const auto& c : cases) EXPECT_EQ(c.got, c.want);
    EXPECT_EQ(ErrorOf([] { InStr(0, "a", "a"); }), err::kInvalidCall);
}

TEST(VbText, TrimRemovesBlanksOnlyNeverNulsOrTabs) {
    string withNul = string(" a\0 ", 4);
    EXPECT_EQ(Trim(withNul), string("a\0", 2));
    EXPECT_EQ(Trim("\tx "), "\tx");
    EXPECT_EQ(LTrim("  x  "), "x  ");
    EXPECT_EQ(RTrim("  x  "), "  x");
    EXPECT_EQ(Trim("   "), "");
}

TEST(VbText, ReplaceWithCaseRulesAndStart) {
    EXPECT_EQ(Replace("a\"b\"", "\"", ""), "ab");
    EXPECT_EQ(Replace("HKEY_LOCAL_MACHINE\\x", "hkey_local_machine", "HKLM", 1, -1, Compare::Text), "HKLM\\x");
    EXPECT_EQ(Replace("hkey_local_machine", "HKEY_LOCAL_MACHINE", "HKLM"), "hkey_local_machine");
    EXPECT_EQ(Replace("aaa", "a", "b", 2), "bb");  // the text before start is dropped
    EXPECT_EQ(Replace("aaa", "a", "b", 1, 1), "baa");
}

TEST(VbText, CharacterCodes) {
    EXPECT_EQ(Chr(0), string(1, '\0'));
    EXPECT_EQ(Asc(Chr(200)), 200);
    EXPECT_EQ(ErrorOf([] { Chr(256); }), err::kInvalidCall);
    EXPECT_EQ(ErrorOf([] { Asc(""); }), err::kInvalidCall);
    EXPECT_EQ(UCase("ab1"), "AB1");
    EXPECT_TRUE(TextEquals("Shell", "SHELL"));
    EXPECT_FALSE(TextEquals("Shell", "Shel"));
}

TEST(VbNumbers, ValReadsLeadingNumbersAndHexLiterals) {
    struct Case { const char* text; double want; } cases[] = {
        {"&H1F", 31},       {"&h41", 65},     {"&HFFFF", -1},        {"&H10000", 65536},
        {"&HFFFFFFFF", -1}, {"&H0x1F", 0},    {"&H4G", 4},           {"&H", 0},
        {"12abc", 12},      {" 1 2", 12},     {"-3.5", -3.5},        {"abc", 0},
        {"&O17", 15},       {"1e2", 100},
    };
    for (const auto& c : cases) EXPECT_EQ(Val(c.text), c.want) << c.text;
}

TEST(VbNumbers, ConversionsRoundHalfToEvenAndOverflow) {
    struct Case { double in; long want; } cases[] = {
        {0.5, 0}, {1.5, 2}, {2.5, 2}, {3.5, 4}, {-0.5, 0}, {-1.5, -2}, {2.4999, 2}, {2.51, 3},
    };
    for (const auto& c : cases) EXPECT_EQ(CInt(c.in), c.want) << c.in;
    EXPECT_EQ(CLng(7 / 2.0), 4);
    EXPECT_EQ(CLng(5 / 2.0), 2);
    EXPECT_EQ(ErrorOf([] { CInt(32767.5); }), err::kOverflow);
    EXPECT_EQ(ErrorOf([] { CLng(3e9); }), err::kOverflow);
}

TEST(VbNumbers, SixteenBitCountersOverflowWithError6) {
    Integer counter = 32766;
    ++counter;
    EXPECT_EQ(counter, 32767);
    EXPECT_EQ(ErrorOf([&] { ++counter; }), err::kOverflow);
    EXPECT_EQ(counter, 32767);
    Integer low = -32768;
    EXPECT_EQ(ErrorOf([&] { low -= 1; }), err::kOverflow);
}

TEST(VbNumbers, HexAndDigitFormats) {
    EXPECT_EQ(Hex(31), "1F");
    EXPECT_EQ(Hex(-1), "FFFFFFFF");
    EXPECT_EQ(Hex16(-1), "FFFF");
    EXPECT_EQ(FormatDigits(1, 2), "01");
    EXPECT_EQ(FormatDigits(2600, 2), "2600");
    EXPECT_EQ(FormatDigits(3, 4), "0003");
}

TEST(VbArray, UndimensionedArraysRaiseError9) {
    Array<string> a;
    EXPECT_EQ(ErrorOf([&] { a.UBound(); }), err::kSubscript);
    EXPECT_EQ(ErrorOf([&] { a[0]; }), err::kSubscript);
    a.ReDimPreserve(0);
    a[0] = "x";
    a.ReDimPreserve(2);
    EXPECT_EQ(a.UBound(), 2);
    EXPECT_EQ(a[0], "x");
    EXPECT_EQ(ErrorOf([&] { a[3]; }), err::kSubscript);
    a.ReDim(1);
    EXPECT_EQ(a[0], "");
    a.Erase();
    EXPECT_FALSE(a.IsDimensioned());
}

TEST(VbErrors, ResumeSkipsOnlyTheFailingStatement) {
    string s = "abc";
    Resume([&] { s = Left(s, InStr(s, "-") - 1); });  // no hyphen: the cut fails, s stays
    EXPECT_EQ(s, "abc");
    Resume([&] { s = Left(s, 1); });
    EXPECT_EQ(s, "a");
    EXPECT_THROW(Resume([] { throw std::logic_error("not a run-time error"); }), std::logic_error);
}

TEST(VbErrors, TopLevelHandlerShowsTheMessageAndEndsWhateverWasThrown) {
    const struct {
        std::function<void()> fail;
        int number;
        const char* prompt;
    } cases[] = {
        {[] { throw VbError(err::kSubscript); }, 9, "Run-time error '9':\r\n\r\nSubscript out of range"},
        {[] { throw std::bad_alloc(); }, 7, "Run-time error '7':\r\n\r\nOut of memory"},
        {[] { throw std::logic_error("x"); }, 51, "Run-time error '51':\r\n\r\nInternal error"},
    };
    for (const auto& c : cases) {
        tessmark::platform::memory::RecordingUi ui;
        int ended = -1;
        try {
            RunEvent(ui, c.fail);
        } catch (const tessmark::platform::memory::ProcessEnded& end) {
            ended = end.exitCode;
        }
        EXPECT_EQ(ended, c.number);
        ASSERT_EQ(ui.messageBoxes.size(), 1u);
        EXPECT_EQ(ui.messageBoxes[0].prompt, c.prompt);
        EXPECT_EQ(ui.messageBoxes[0].style, 16);
    }
}

}  // namespace

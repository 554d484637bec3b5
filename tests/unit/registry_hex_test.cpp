// Raw characters to hexadecimal pairs and back, as the registry class stores binary values.
#include <gtest/gtest.h>

#include "registry/AdvRegistryAccess.h"

using tessmark::registry::AdvRegistryAccess;
using tessmark::vb::VbError;
using std::string;

namespace {

int OverflowOf(const std::function<void()>& f) {
    try {
        f();
    } catch (const VbError& e) {
        return e.number();
    }
    return 0;
}

TEST(RegistryHex, StrToBinKeepsHalfTheDigitsRoundedToEvenPieces) {
    struct Case { string hex, raw; } cases[] = {
        {"41 42", "AB"},
        {" 41 42 ", "AB"},
        {"00", string("\0", 1)},
        {"0041", string("\0A", 2)},
        {"", ""},
        {"   ", ""},
        {"4", ""},                  // 1 digit: 0.5 rounds to no piece
        {"414", "A\x04"},           // 3 digits: 1.5 rounds to two pieces
        {"41424", "AB"},            // 5 digits: 2.5 rounds to two pieces
        {"4142434", "ABC\x04"},     // 7 digits: 3.5 rounds to four pieces
        {"zz4g", string("\0\x04", 2)},  // reading stops at the first non-digit
        {"ff", "\xFF"},
    };
    for (const auto& c : cases) {
        string in = c.hex;
        EXPECT_EQ(AdvRegistryAccess::StrToBin(in), c.raw) << '"' << c.hex << '"';
        // The argument is left without its blanks.
        EXPECT_EQ(in.find(' '), string::npos) << '"' << c.hex << '"';
    }
    EXPECT_EQ(AdvRegistryAccess::BinToStr(string("\n\0\xC8", 3)), " 0A 00 C8");
}

TEST(RegistryHex, InputOver32767CharactersOverflows) {
    string raw(32768, 'A');
    string hex(32768, '4');
    EXPECT_EQ(OverflowOf([&] { AdvRegistryAccess::BinToStr(raw); }), 6);
    EXPECT_EQ(OverflowOf([&] { AdvRegistryAccess::StrToBin(hex); }), 6);

    raw.pop_back();
    EXPECT_EQ(AdvRegistryAccess::BinToStr(raw).size(), 3u * 32767);
    string blanksDoNotCount = string(32766, '4') + "  ";
    EXPECT_EQ(AdvRegistryAccess::StrToBin(blanksDoNotCount).size(), 16383u);
}

}  // namespace

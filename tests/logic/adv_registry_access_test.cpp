// The path-addressed registry class on the memory registry and on the real one.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>

#include "machine.h"
#include "raw_values.h"
#include "registry/AdvRegistryAccess.h"

using tessmark::platform::RegHandle;
using tessmark::registry::AdvRegistryAccess;
using tessmark::registry::kFalse;
using tessmark::registry::kTrue;
using tessmark::registry::RegValue;
using tessmark::registry::VbBool;
using tessmark::vb::Array;
using std::string;
using namespace std::string_literals;
namespace reg = tessmark::platform::reg;
namespace machines = tessmark::testing;

namespace {

const string kScratch = machines::kScratchKey;
const string kUserPath = "HKEY_CURRENT_USER\\" + kScratch;

using tessmark::testing::RawValue;

class AdvRegistryAccessTest : public ::testing::Test {
protected:
    void TearDown() override {
        machines::DeleteTree(port, reg::kCurrentUser, kScratch);
        machines::DeleteTree(port, reg::kLocalMachine, kScratch);
    }

    // Direct access through the port, to set up and check independently of the class.
    void MakeKey(const string& sub) {
        RegHandle key = 0;
        ASSERT_EQ(port.RegCreateKeyA(reg::kCurrentUser, (kScratch + sub).c_str(), &key), 0);
        port.RegCloseKey(key);
    }
    bool KeyThere(const string& sub) {
        RegHandle key = 0;
        if (port.RegOpenKeyExA(reg::kCurrentUser, (kScratch + sub).c_str(), 0, reg::kRead, &key) != 0)
            return false;
        port.RegCloseKey(key);
        return true;
    }
    void SetRaw(const string& sub, const string& name, std::uint32_t type, const string& data) {
        EXPECT_TRUE(machines::SetRaw(port, reg::kCurrentUser, kScratch + sub, name, type, data));
    }
    std::optional<RawValue> GetRaw(const string& sub, const string& name) {
        return machines::GetRaw(port, reg::kCurrentUser, kScratch + sub, name);
    }

    std::unique_ptr<machines::TestMachine> machine = machines::MakeTestMachine();
    tessmark::platform::RegistryPort& port = machine->Registry();
    AdvRegistryAccess access{port};
};

TEST_F(AdvRegistryAccessTest, RootNameIsTheFirstFourCharactersAfterShortening) {
    MakeKey("\\Alias");
    struct Case { string path; VbBool exists; } cases[] = {
        {"HKEY_CURRENT_USER\\Software\\TessmarkTest\\Alias", kTrue},
        {"hkcu\\software\\tessmarktest\\alias", kTrue},
        {"Hkey_Current_User\\Software\\TessmarkTest\\Alias", kTrue},
        {"HKCUX\\Software\\TessmarkTest\\Alias", kTrue},
        {"HKCU", kTrue},
        {"hkey_current_user", kTrue},
        {"HKEY_LOCAL_MACHINE\\Software\\TessmarkTest\\Alias", kFalse},
        {"HKU\\Software\\TessmarkTest\\Alias", kFalse},
        {"HKU", kFalse},
        {"Software\\TessmarkTest\\Alias", kFalse},
    };
    for (const auto& c : cases) EXPECT_EQ(access.KeyExists(c.path), c.exists) << c.path;
    EXPECT_EQ(access.CreateKey("HKU\\Software\\TessmarkTest"), 0);

    EXPECT_NE(access.CreateKey("hklm\\" + kScratch + "\\Machine"), 0);
    EXPECT_EQ(access.KeyExists("HKEY_LOCAL_MACHINE\\" + kScratch + "\\Machine"), kTrue);
    EXPECT_EQ(access.KeyExists(kUserPath + "\\Machine"), kFalse);
}

TEST_F(AdvRegistryAccessTest, LongRootNamesInsideTheSubkeyAreShortenedToo) {
    EXPECT_NE(access.CreateKey(kUserPath + "\\From HKEY_USERS\\and hkey_local_machine"), 0);
    EXPECT_TRUE(KeyThere("\\From HKUS\\and HKLM"));
    EXPECT_FALSE(KeyThere("\\From HKEY_USERS"));
}

TEST_F(AdvRegistryAccessTest, OnlyWriteStringTakesTheAtSignForTheDefaultValue) {
    EXPECT_NE(access.WriteString(kUserPath, "@", "text"), 0);
    EXPECT_NE(access.WriteDWORD(kUserPath, "@", 5), 0);
    // The writer leaves the NUL out of the size; the platform counts it anyway.
    EXPECT_EQ(GetRaw("", ""), (RawValue{reg::kSz, "text\0"s}));
    EXPECT_EQ(GetRaw("", "@"), (RawValue{reg::kDword, string("\x05\0\0\0", 4)}));

    EXPECT_NE(access.WriteBinary(kUserPath, "@", "0102"), 0);
    EXPECT_EQ(GetRaw("", "@"), (RawValue{reg::kBinary, "\x01\x02"}));
    EXPECT_EQ(access.ReadString(kUserPath, "@", "-"), "\x01\x02");
    EXPECT_NE(access.KillValue(kUserPath, "@"), 0);
    EXPECT_EQ(GetRaw("", "@"), std::nullopt);
    EXPECT_NE(GetRaw("", ""), std::nullopt);
}

TEST_F(AdvRegistryAccessTest, WritersCreateAMissingKeyOnlyWhenAllowed) {
    using Writer = std::int32_t (*)(AdvRegistryAccess&, const string&);
    Writer writers[] = {
        [](AdvRegistryAccess& a, const string& p) { return a.WriteString(p, "v", "x"); },
        [](AdvRegistryAccess& a, const string& p) { return a.WriteDWORD(p, "v", 1); },
        [](AdvRegistryAccess& a, const string& p) { return a.WriteBinary(p, "v", "01"); },
    };
    EXPECT_EQ(access.CreateKeyIfDoesntExists(), kTrue);
    for (Writer write : writers) {
        access.CreateKeyIfDoesntExists(kFalse);
        EXPECT_EQ(write(access, kUserPath + "\\New\\Deeper"), 0);
        EXPECT_FALSE(KeyThere("\\New"));

        access.CreateKeyIfDoesntExists(kTrue);
        EXPECT_NE(write(access, kUserPath + "\\New\\Deeper"), 0);
        EXPECT_NE(GetRaw("\\New\\Deeper", "v"), std::nullopt);
        machines::DeleteTree(port, reg::kCurrentUser, kScratch);
    }
}

TEST_F(AdvRegistryAccessTest, KillKeyLeavesAKeyWithSubkeysButAnswersNonzero) {
    MakeKey("\\Parent\\Child");
    EXPECT_NE(access.KillKey(kUserPath + "\\Parent"), 0);
    EXPECT_TRUE(KeyThere("\\Parent\\Child"));
    EXPECT_NE(access.KillKey(kUserPath + "\\Parent\\Child"), 0);
    EXPECT_NE(access.KillKey(kUserPath + "\\Parent"), 0);
    EXPECT_FALSE(KeyThere("\\Parent"));
    EXPECT_EQ(access.KillKey(kUserPath + "\\Parent"), 0);
}

TEST_F(AdvRegistryAccessTest, KillValueAnswersForTheKeyNotForTheValue) {
    SetRaw("", "v", reg::kSz, "x");
    EXPECT_NE(access.KillValue(kUserPath, "v"), 0);
    EXPECT_EQ(GetRaw("", "v"), std::nullopt);
    EXPECT_NE(access.KillValue(kUserPath, "v"), 0);
    EXPECT_EQ(access.KillValue(kUserPath + "\\Missing", "v"), 0);
}

TEST_F(AdvRegistryAccessTest, ReadStringGivesTheTrimmedBufferUpToTheStoredLength) {
    const string nul(1, '\0');
    struct Case { std::uint32_t type; string stored, read; } cases[] = {
        {reg::kSz, "abc" + nul, "abc" + nul},
        {reg::kSz, "  ab  " + nul, "ab  " + nul},  // leading blanks go with the trim
        {reg::kSz, string(254, 'a') + nul, string(254, 'a') + nul},
        {reg::kSz, string(299, 'a') + nul, "default"},  // over 255 bytes
        {reg::kDword, "ABC" + nul, "ABC" + nul},       // the stored type is not looked at
    };
    for (const auto& c : cases) {
        SetRaw("", "v", c.type, c.stored);
        EXPECT_EQ(access.ReadString(kUserPath, "v", "default"), c.read) << c.stored.size();
    }
    EXPECT_EQ(access.ReadString(kUserPath, "missing", "default"), "default");
    EXPECT_EQ(access.ReadString(kUserPath + "\\Missing", "v", "default"), "default");
}

TEST_F(AdvRegistryAccessTest, ReadDWORDGivesTheDefaultUnlessFourBytesOrFewerAreStored) {
    struct Case { std::uint32_t type; string stored; std::int32_t read; } cases[] = {
        {reg::kDword, string("\x1F\0\0\0", 4), 31},
        {reg::kDword, "\xFF\xFF\xFF\xFF", -1},
        {reg::kBinary, "\x01\x02", 0x0201},
        {reg::kBinary, "\x01\x02\x03\x04\x05", 7},
    };
    for (const auto& c : cases) {
        SetRaw("", "v", c.type, c.stored);
        EXPECT_EQ(access.ReadDWORD(kUserPath, "v", 7), c.read) << c.stored.size();
    }
    EXPECT_EQ(access.ReadDWORD(kUserPath, "missing", 7), 7);
}

TEST_F(AdvRegistryAccessTest, BinaryValuesTravelAsUpperCaseHexPairs) {
    EXPECT_NE(access.WriteBinary(kUserPath, "b", "4a 6f 00"), 0);
    EXPECT_EQ(GetRaw("", "b"), (RawValue{reg::kBinary, string("Jo\0", 3)}));
    EXPECT_EQ(access.ReadBinary(kUserPath, "b", "-"), "4A 6F 00");

    EXPECT_NE(access.WriteBinary(kUserPath, "empty", ""), 0);
    EXPECT_EQ(GetRaw("", "empty"), (RawValue{reg::kBinary, ""}));
    EXPECT_EQ(access.ReadBinary(kUserPath, "empty", "-"), "");

    SetRaw("", "long", reg::kBinary, string(300, '\x11'));
    EXPECT_EQ(access.ReadBinary(kUserPath, "long", "-").size(), 300u * 3 - 1);
    EXPECT_EQ(access.ReadBinary(kUserPath, "missing", "-"), "-");
    EXPECT_EQ(access.ValueExists(kUserPath, "long"), kTrue);
    EXPECT_EQ(access.ValueExists(kUserPath, "missing"), kFalse);
}

TEST_F(AdvRegistryAccessTest, EnumKeysErasesTheListAndCountsSubkeys) {
    Array<string> keys;
    keys.ReDim(2);
    EXPECT_EQ(access.EnumKeys(kUserPath, keys), -1);
    EXPECT_FALSE(keys.IsDimensioned());
    EXPECT_EQ(access.HaveSubkey(kUserPath), kFalse);

    MakeKey("");
    EXPECT_EQ(access.EnumKeys(kUserPath, keys), 0);
    EXPECT_FALSE(keys.IsDimensioned());
    EXPECT_EQ(access.HaveSubkey(kUserPath), kFalse);

    MakeKey("\\Two");
    MakeKey("\\One");
    EXPECT_EQ(access.EnumKeys("hkcu\\" + kScratch, keys), 2);
    std::vector<string> names = keys.items();
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<string>{"One", "Two"}));
    EXPECT_EQ(access.HaveSubkey(kUserPath), kTrue);
}

TEST_F(AdvRegistryAccessTest, EnumValuesTagsEachValueByItsType) {
    const string nul(1, '\0');
    SetRaw("", "text", reg::kSz, "abc" + nul);
    SetRaw("", "expand", reg::kExpandSz, "%x%" + nul);
    SetRaw("", "number", reg::kDword, "\x2A\0\0\0"s);
    SetRaw("", "bytes", reg::kBinary, "\x01\xAB");
    SetRaw("", "nothing", reg::kBinary, "");
    SetRaw("", "multi", reg::kMultiSz, "a" + nul + nul);
    SetRaw("", "padded ", reg::kSz, "lost" + nul);  // read again by the trimmed name

    Array<string> names;
    Array<RegValue> values;
    ASSERT_EQ(access.EnumValues(kUserPath, names, values, -1), 7);
    std::map<string, RegValue> got;
    for (long i = 0; i <= names.UBound(); ++i) got[names[i]] = values[i];
    EXPECT_EQ(got, (std::map<string, RegValue>{
                       {"text", "abc" + nul},
                       {"expand", "%x%" + nul},
                       {"number", 42},
                       {"bytes", "01 AB"},
                       {"nothing", ""},
                       {"multi", std::monostate{}},
                       {"padded", ""},
                   }));

    ASSERT_EQ(access.EnumValues(kUserPath, names, values, reg::kBinary), 2);
    ASSERT_EQ(names.UBound(), 1);
    std::vector<string> binaries = names.items();
    std::sort(binaries.begin(), binaries.end());
    EXPECT_EQ(binaries, (std::vector<string>{"bytes", "nothing"}));

    EXPECT_EQ(access.EnumValues(kUserPath + "\\Missing", names, values, -1), -1);
    EXPECT_EQ(names.UBound(), 1);
}

TEST_F(AdvRegistryAccessTest, EnumValuesKeepsValuesOver255BytesWithoutTheirNames) {
    SetRaw("", "long text", reg::kSz, string(300, 'a') + '\0');
    SetRaw("", "long bytes", reg::kBinary, string(300, '\x11'));
    Array<string> names;
    Array<RegValue> values;
    ASSERT_EQ(access.EnumValues(kUserPath, names, values, -1), 2);
    // The text is read again by the empty name and misses; the bytes are the
    // whole 255-byte buffer, whatever the platform left in it.
    std::vector<std::size_t> sizes;
    for (long i = 0; i <= 1; ++i) {
        EXPECT_EQ(names[i], "");
        sizes.push_back(std::get<string>(values[i]).size());
    }
    std::sort(sizes.begin(), sizes.end());
    EXPECT_EQ(sizes, (std::vector<std::size_t>{0, 255 * 3 - 1}));
}

}  // namespace

// The path-addressed registry class on the memory registry and on the real one.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>

#include "machine.h"
#include "registry/AdvRegistryAccess.h"

using tessmark::platform::RegHandle;
using tessmark::registry::AdvRegistryAccess;
using tessmark::registry::kFalse;
using tessmark::registry::kTrue;
using tessmark::registry::RegValue;
using tessmark::vb::Array;
using std::string;
using namespace std::string_literals;
namespace reg = tessmark::platform::reg;
namespace machines = tessmark::testing;

namespace {

const string kScratch = machines::kScratchKey;
const string kUserPath = "HKEY_CURRENT_USER\\" + kScratch;
using RawValue = std::pair<std::uint32_t, string>;  // type and data

class AdvRegistryAccessTest : public ::testing::Test {
protected:
    void TearDown() override {
        machines::DeleteTree(port, reg::kCurrentUser, kScratch);
        machines::DeleteTree(port, reg::kLocalMachine, kScratch);
    }
    // Direct access through the port, independent of the class.
    void SetRaw(const string& sub, const string& name, std::uint32_t type = reg::kNone, const string& data = "") {
        RegHandle key = 0;
        ASSERT_EQ(port.RegCreateKeyA(reg::kCurrentUser, (kScratch + sub).c_str(), &key), 0);
        if (type != reg::kNone) {
            EXPECT_EQ(port.RegSetValueExA(key, name.c_str(), type, reinterpret_cast<const std::uint8_t*>(data.data()),
                                          static_cast<std::uint32_t>(data.size())), 0);
        }
        port.RegCloseKey(key);
    }
    // The key's presence when name is null, else the value.
    std::optional<RawValue> GetRaw(const string& sub, const char* name) {
        RegHandle key = 0;
        if (port.RegOpenKeyExA(reg::kCurrentUser, (kScratch + sub).c_str(), 0, reg::kRead, &key) != 0) return std::nullopt;
        RawValue value{0, string(1024, '\0')};
        std::uint32_t length = 1024;
        const bool found = !name || port.RegQueryValueExA(key, name, &value.first,
                                                          reinterpret_cast<std::uint8_t*>(value.second.data()), &length) == 0;
        port.RegCloseKey(key);
        value.second.resize(name ? length : 0);
        return found ? std::optional(value) : std::nullopt;
    }
    bool KeyThere(const string& sub) { return GetRaw(sub, nullptr).has_value(); }

    std::unique_ptr<machines::TestMachine> machine = machines::MakeTestMachine();
    tessmark::platform::RegistryPort& port = machine->Registry();
    AdvRegistryAccess access{port};
};

TEST_F(AdvRegistryAccessTest, RootNamesAreTheFirstFourCharactersAfterShorteningAlsoInsideTheSubkey) {
    SetRaw("\\Alias", "");
    const std::pair<string, bool> cases[] = {
        {"HKEY_CURRENT_USER\\Software\\TessmarkTest\\Alias", true}, {"hkcu\\software\\tessmarktest\\alias", true},
        {"Hkey_Current_User\\Software\\TessmarkTest\\Alias", true}, {"HKCUX\\Software\\TessmarkTest\\Alias", true},
        {"HKCU", true}, {"hkey_current_user", true}, {"HKEY_LOCAL_MACHINE\\Software\\TessmarkTest\\Alias", false},
        {"HKU\\Software\\TessmarkTest\\Alias", false}, {"HKU", false}, {"Software\\TessmarkTest\\Alias", false},
    };
    for (const auto& [path, exists] : cases) EXPECT_EQ(access.KeyExists(path), exists ? kTrue : kFalse) << path;
    EXPECT_EQ(access.CreateKey("HKU\\Software\\TessmarkTest"), 0);
    EXPECT_NE(access.CreateKey("hklm\\" + kScratch + "\\Machine"), 0);
    EXPECT_EQ(access.KeyExists("HKEY_LOCAL_MACHINE\\" + kScratch + "\\Machine"), kTrue);
    EXPECT_EQ(access.KeyExists(kUserPath + "\\Machine"), kFalse);

    EXPECT_NE(access.CreateKey(kUserPath + "\\From HKEY_USERS\\and hkey_local_machine"), 0);
    EXPECT_TRUE(KeyThere("\\From HKUS\\and HKLM"));
    EXPECT_FALSE(KeyThere("\\From HKEY_USERS"));
}

TEST_F(AdvRegistryAccessTest, WritersTakeTheAtSignOnlyForTextAndMakeMissingKeysOnlyWhenAllowed) {
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

TEST_F(AdvRegistryAccessTest, KillersAnswerForTheKeyAndLeaveAKeyWithSubkeys) {
    SetRaw("\\Parent\\Child", "");
    EXPECT_NE(access.KillKey(kUserPath + "\\Parent"), 0);
    EXPECT_TRUE(KeyThere("\\Parent\\Child"));
    EXPECT_NE(access.KillKey(kUserPath + "\\Parent\\Child"), 0);
    EXPECT_NE(access.KillKey(kUserPath + "\\Parent"), 0);
    EXPECT_FALSE(KeyThere("\\Parent"));
    EXPECT_EQ(access.KillKey(kUserPath + "\\Parent"), 0);

    SetRaw("", "v", reg::kSz, "x");
    EXPECT_NE(access.KillValue(kUserPath, "v"), 0);
    EXPECT_EQ(GetRaw("", "v"), std::nullopt);
    EXPECT_NE(access.KillValue(kUserPath, "v"), 0);
    EXPECT_EQ(access.KillValue(kUserPath + "\\Missing", "v"), 0);
}

TEST_F(AdvRegistryAccessTest, ReadersGiveTheDefaultForWhatTheirBufferCannotHoldAndBinaryTravelsAsHexPairs) {
    const string nul(1, '\0');
    const struct {
        std::uint32_t type;
        string stored, text, binary;
        std::int32_t number;  // read with the default 7
    } cases[] = {
        {reg::kSz, "abc" + nul, "abc" + nul, "61 62 63 00", 0x636261},
        {reg::kSz, "  ab  " + nul, "ab  " + nul, "20 20 61 62 20 20 00", 7},  // leading blanks go with the trim
        {reg::kSz, string(254, 'a') + nul, string(254, 'a') + nul, "", 7},
        {reg::kSz, string(299, 'a') + nul, "default", "", 7},  // over 255 bytes
        {reg::kDword, "ABC" + nul, "ABC" + nul, "41 42 43 00", 0x434241},  // the stored type is not looked at
        {reg::kDword, string("\x1F\0\0\0", 4), "\x1F" + nul + nul + nul, "1F 00 00 00", 31},
        {reg::kDword, "\xFF\xFF\xFF\xFF", "\xFF\xFF\xFF\xFF", "FF FF FF FF", -1},
        {reg::kBinary, "\x01\x02\x03\x04\x05", "\x01\x02\x03\x04\x05", "01 02 03 04 05", 7},
        {reg::kBinary, "", "", "", 0},
    };
    for (const auto& c : cases) {
        SetRaw("", "v", c.type, c.stored);
        EXPECT_EQ(access.ReadString(kUserPath, "v", "default"), c.text) << c.stored.size();
        if (!c.binary.empty() || c.stored.empty()) {
            EXPECT_EQ(access.ReadBinary(kUserPath, "v", "-"), c.binary);
        }
        EXPECT_EQ(access.ReadDWORD(kUserPath, "v", 7), c.number) << c.stored.size();
    }
    for (const char* name : {"missing", "v"}) {
        const string key = kUserPath + (*name == 'v' ? "\\Missing" : "");
        EXPECT_EQ(access.ReadString(key, name, "default"), "default");
        EXPECT_EQ(access.ReadDWORD(key, name, 7), 7);
        EXPECT_EQ(access.ReadBinary(key, name, "-"), "-");
        EXPECT_EQ(access.ValueExists(key, name), kFalse);
    }
    EXPECT_EQ(access.ValueExists(kUserPath, "v"), kTrue);
    SetRaw("", "long", reg::kBinary, string(300, '\x11'));
    EXPECT_EQ(access.ReadBinary(kUserPath, "long", "-").size(), 300u * 3 - 1);
    EXPECT_NE(access.WriteBinary(kUserPath, "b", "4a 6f 00"), 0);
    EXPECT_EQ(GetRaw("", "b"), (RawValue{reg::kBinary, string("Jo\0", 3)}));
    EXPECT_NE(access.WriteBinary(kUserPath, "empty", ""), 0);
    EXPECT_EQ(GetRaw("", "empty"), (RawValue{reg::kBinary, ""}));
}

TEST_F(AdvRegistryAccessTest, EnumKeysErasesTheListAndCountsSubkeys) {
    Array<string> keys;
    keys.ReDim(2);
    EXPECT_EQ(access.EnumKeys(kUserPath, keys), -1);
    EXPECT_FALSE(keys.IsDimensioned());
    EXPECT_EQ(access.HaveSubkey(kUserPath), kFalse);
    SetRaw("", "");
    EXPECT_EQ(access.EnumKeys(kUserPath, keys), 0);
    EXPECT_FALSE(keys.IsDimensioned());
    EXPECT_EQ(access.HaveSubkey(kUserPath), kFalse);
    SetRaw("\\Two", "");
    SetRaw("\\One", "");
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
    EXPECT_EQ(got, (std::map<string, RegValue>{{"text", "abc" + nul}, {"expand", "%x%" + nul}, {"number", 42},
                                                {"bytes", "01 AB"}, {"nothing", ""}, {"multi", std::monostate{}},
                                                {"padded", ""}}));
    ASSERT_EQ(access.EnumValues(kUserPath, names, values, reg::kBinary), 2);
    std::vector<string> binaries = names.items();
    std::sort(binaries.begin(), binaries.end());
    EXPECT_EQ(binaries, (std::vector<string>{"bytes", "nothing"}));
    EXPECT_EQ(access.EnumValues(kUserPath + "\\Missing", names, values, -1), -1);
    EXPECT_EQ(names.UBound(), 1);

    // Values over 255 bytes lose their names: the text is read again by the
    // empty name and misses; the bytes are the whole 255-byte buffer.
    machines::DeleteTree(port, reg::kCurrentUser, kScratch);
    SetRaw("", "long text", reg::kSz, string(300, 'a') + '\0');
    SetRaw("", "long bytes", reg::kBinary, string(300, '\x11'));
    ASSERT_EQ(access.EnumValues(kUserPath, names, values, -1), 2);
    std::vector<std::size_t> sizes;
    for (long i = 0; i <= 1; ++i) {
        EXPECT_EQ(names[i], "");
        sizes.push_back(std::get<string>(values[i]).size());
    }
    std::sort(sizes.begin(), sizes.end());
    EXPECT_EQ(sizes, (std::vector<std::size_t>{0, 255 * 3 - 1}));
}

}  // namespace

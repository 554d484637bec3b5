// The path-addressed registry class on the memory registry and on the real one:
// what the item operations call (EnumKeys, KillKey, HaveSubkey, WriteDWORD).
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

#include "machine.h"
#include "raw_values.h"
#include "registry/AdvRegistryAccess.h"

using tessmark::platform::RegHandle;
using tessmark::registry::AdvRegistryAccess;
using tessmark::registry::kFalse;
using tessmark::registry::kTrue;
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
    // Direct access through the port, independent of the class.
    void SetRaw(const string& sub, const string& name, std::uint32_t type, const string& data) {
        EXPECT_TRUE(machines::SetRaw(port, reg::kCurrentUser, kScratch + sub, name, type, data));
    }
    void MakeKey(const string& sub) {
        RegHandle key = 0;
        ASSERT_EQ(port.RegCreateKeyA(reg::kCurrentUser, (kScratch + sub).c_str(), &key), 0);
        port.RegCloseKey(key);
    }
    std::optional<RawValue> GetRaw(const string& sub, const string& name) {
        return machines::GetRaw(port, reg::kCurrentUser, kScratch + sub, name);
    }
    bool KeyThere(const string& sub) {
        RegHandle key = 0;
        if (port.RegOpenKeyExA(reg::kCurrentUser, (kScratch + sub).c_str(), 0, reg::kRead, &key) != 0) return false;
        port.RegCloseKey(key);
        return true;
    }

    std::unique_ptr<machines::TestMachine> machine = machines::MakeTestMachine();
    tessmark::platform::RegistryPort& port = machine->Registry();
    AdvRegistryAccess access{port};
};

TEST_F(AdvRegistryAccessTest, RootNamesAreTheFirstFourCharactersAfterShorteningAlsoInsideTheSubkey) {
    MakeKey("\\Alias");
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
    MakeKey("\\Parent\\Child");
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

}  // namespace

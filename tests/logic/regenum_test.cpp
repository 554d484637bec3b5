// The handle-addressed registry routines, on the memory registry and on the real one.
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "machine.h"
#include "scan_fixture.h"
#include "registry/regenum.h"
#include "registry/registry_module.h"

namespace tessmark::registry {
namespace {

using namespace std::string_literals;
using platform::RegHandle;
namespace reg = platform::reg;
using testing::kScratchKey;

constexpr RegHandle kUser = reg::kCurrentUser;

std::string Under(const std::string& sub) { return kScratchKey + ("\\" + sub); }

class LowLevelRegistry : public ::testing::Test {
protected:
    void SetRaw(const std::string& sub, const char* name, std::uint32_t type, const std::string& data) {
        RegHandle h = 0;
        ASSERT_EQ(registry.RegCreateKeyA(kUser, Under(sub).c_str(), &h), reg::kSuccess);
        ASSERT_EQ(registry.RegSetValueExA(h, name, type, reinterpret_cast<const std::uint8_t*>(data.data()),
                                          static_cast<std::uint32_t>(data.size())),
                  reg::kSuccess);
        registry.RegCloseKey(h);
    }
    // The stored bytes and type as the platform reports them; an empty type 0 when missing.
    std::pair<std::uint32_t, std::string> Stored(const std::string& sub, const std::string& name) {
        RegHandle h = OpenRegKey(registry, kUser, Under(sub));
        std::string buffer(64, '#');
        std::uint32_t length = 64, type = 0;
        const bool found = registry.RegQueryValueExA(h, name.c_str(), &type, reinterpret_cast<std::uint8_t*>(buffer.data()),
                                                     &length) == reg::kSuccess;
        registry.RegCloseKey(h);
        return {type, found ? buffer.substr(0, length) : ""};
    }
    bool KeyExists(const std::string& sub) {
        RegHandle h = OpenRegKey(registry, kUser, Under(sub));
        registry.RegCloseKey(h);
        return h != 0;
    }

    std::unique_ptr<testing::TestMachine> machine = testing::MakeTestMachine();
    platform::RegistryPort& registry = machine->Registry();
};

std::string Nuls(std::size_t count) { return std::string(count, '\0'); }

TEST_F(LowLevelRegistry, QueryRegValueGivesTheBufferTrimmedOfBlanks) {
    struct Case {
        const char* name;
        std::uint32_t type;
        std::string data;
        std::string expected;
    };
    const Case cases[] = {
        {"text", reg::kSz, "abc", "abc" + Nuls(1021)},  // first NUL at the fourth place
        {"leading blanks", reg::kSz, "  abc  ", "abc  " + Nuls(1017)},
        {"dword", reg::kDword, "\x2a\x00\x00\x00"s, "\x2a" + Nuls(1023)},
        {"expand", reg::kExpandSz, "%windir%", "%windir%" + Nuls(1016)},
        {"fills 1024", reg::kSz, std::string(1023, 'x'), std::string(1023, 'x') + Nuls(1)},
        {"over 1024", reg::kSz, std::string(1024, 'x'), Nuls(1024)},
        {"binary over 1024", reg::kBinary, std::string(1025, 'x'), Nuls(1024)},
    };
    for (const Case& c : cases) SetRaw("Values", c.name, c.type, c.data);
    const RegHandle key = OpenRegKey(registry, kUser, Under("Values"));
    ASSERT_NE(key, 0u);
    for (const Case& c : cases) EXPECT_EQ(QueryRegValue(registry, key, c.name), c.expected) << c.name;
    EXPECT_EQ(QueryRegValue(registry, key, "missing"), Nuls(1024));
    registry.RegCloseKey(key);
    EXPECT_EQ(QueryRegValue(registry, 0, "text"), Nuls(1024));
}

TEST_F(LowLevelRegistry, EnumRegValueNameKeepsTheNulBehindTheName) {
    struct Case {
        std::string name;
        std::uint32_t type;
        std::string data;
        std::string expected;
    };
    const Case cases[] = {
        {"Item", reg::kSz, "C:\\a.exe", "Item\0"s},
        {"", reg::kSz, "default", "\0"s},
        {"  padded  ", reg::kSz, "x", "padded  \0"s},
        {std::string(260, 'n'), reg::kSz, "x", std::string(260, 'n') + '\0'},
        // Too long for the buffer: cut to fill it, the NUL in the last place.
        {std::string(261, 'n'), reg::kSz, "x", std::string(260, 'n') + '\0'},
        {"Fits", reg::kBinary, std::string(255, 'd'), "Fits\0"s},
        // Data over 255 bytes: the name buffer is left as it was.
        {"Big", reg::kBinary, std::string(256, 'd'), ""},
        {"Big text", reg::kSz, std::string(255, 'd'), ""},
    };
    int n = 0;
    for (const Case& c : cases) {
        const std::string sub = "Case" + std::to_string(n++);
        SetRaw(sub, c.name.c_str(), c.type, c.data);
        const RegHandle key = OpenRegKey(registry, kUser, Under(sub));
        EXPECT_EQ(EnumRegValueName(registry, key, 0), c.expected) << sub;
        EXPECT_EQ(EnumRegValueName(registry, key, 1), "") << sub;
        registry.RegCloseKey(key);
    }
    EXPECT_EQ(EnumRegValueName(registry, 0, 0), "");
}

TEST_F(LowLevelRegistry, CountRegEntriesByModeAndAScannersWalkReadsEveryValue) {
    const std::map<std::string, std::string> written = {{"One", "C:\\one.exe"}, {"Two", "\"C:\\two.exe\" /s"}, {"", "def"}};
    for (const auto& [name, value] : written) SetRegString(registry, kUser, Under("Walk"), name, value);
    CreateRegKey(registry, kUser, Under("Walk\\Sub1"));
    CreateRegKey(registry, kUser, Under("Walk\\Sub2"));
    const RegHandle key = OpenRegKey(registry, kUser, Under("Walk"));
    const std::int32_t count = CountRegEntries(registry, key, 0);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(CountRegEntries(registry, key, 1), 2);
    EXPECT_EQ(CountRegEntries(registry, key, 2), 0);
    EXPECT_EQ(CountRegEntries(registry, key, -1), 0);
    std::map<std::string, std::string> read;
    for (std::int32_t i = 0; i <= count - 1; ++i) {
        const std::string text = testing::Shown(EnumRegValueName(registry, key, i));
        read[text] = testing::Shown(QueryRegValue(registry, key, text));
    }
    registry.RegCloseKey(key);
    EXPECT_EQ(read, written);
    EXPECT_EQ(OpenRegKey(registry, kUser, Under("Missing")), 0u);
    EXPECT_EQ(CountRegEntries(registry, 0, 0), 0);
    EXPECT_EQ(CountRegEntries(registry, 0, 1), 0);
}

TEST_F(LowLevelRegistry, SetRegStringCreatesTheKeyAndWritesText) {
    ASSERT_FALSE(KeyExists("New\\Deep"));
    SetRegString(registry, kUser, Under("New\\Deep"), "Item", "C:\\x.exe");
    EXPECT_EQ(Stored("New\\Deep", "Item"), std::make_pair(reg::kSz, "C:\\x.exe\0"s));
    // An expandable value becomes plain text; an empty text is stored without a NUL.
    SetRaw("New\\Deep", "Path", reg::kExpandSz, "%windir%");
    SetRegString(registry, kUser, Under("New\\Deep"), "Path", "%windir%\\y.exe");
    EXPECT_EQ(Stored("New\\Deep", "Path"), std::make_pair(reg::kSz, "%windir%\\y.exe\0"s));
    SetRegString(registry, kUser, Under("New\\Deep"), "Empty", "");
    EXPECT_EQ(Stored("New\\Deep", "Empty"), std::make_pair(reg::kSz, ""s));
}

TEST_F(LowLevelRegistry, DeletersAreSilentAndLeaveKeysWithSubkeys) {
    SetRegString(registry, kUser, Under("Parent"), "Item", "x");
    DeleteRegValue(registry, kUser, Under("Parent"), "Item");
    EXPECT_EQ(Stored("Parent", "Item").first, reg::kNone);
    DeleteRegValue(registry, kUser, Under("Parent"), "Item");
    DeleteRegValue(registry, kUser, Under("Missing"), "Item");
    EXPECT_FALSE(KeyExists("Missing"));

    CreateRegKey(registry, kUser, Under("Parent\\Child"));
    DeleteRegKey(registry, kUser, Under("Parent"));
    EXPECT_TRUE(KeyExists("Parent"));
    DeleteRegKey(registry, kUser, Under("Parent\\Child"));
    EXPECT_FALSE(KeyExists("Parent\\Child"));
    DeleteRegKey(registry, kUser, Under("Parent"));
    EXPECT_FALSE(KeyExists("Parent"));
}

}  // namespace
}  // namespace tessmark::registry

// The registry routines on the memory registry and on the real one: the
// handle-addressed reads and writes the scanners use, the path-addressed class
// the item operations use, and the export the backup makes with it.
#include <gtest/gtest.h>

#include <optional>

#include "raw_values.h"
#include "registry/AdvRegistryAccess.h"
#include "registry/regenum.h"
#include "registry/registry_module.h"
#include "machine.h"

using namespace tessmark::registry;
using tessmark::platform::RegHandle;
using tessmark::testing::RawValue;
using std::string;
using namespace std::string_literals;
namespace reg = tessmark::platform::reg;
namespace machines = tessmark::testing;

namespace {

const string kScratch = machines::kScratchKey;
constexpr RegHandle kUser = reg::kCurrentUser;
const string kUserPath = "HKEY_CURRENT_USER\\" + kScratch;

class Registry : public ::testing::Test {
protected:
    void TearDown() override {
        machines::DeleteTree(port, reg::kCurrentUser, kScratch);
        machines::DeleteTree(port, reg::kLocalMachine, kScratch);
    }
    // Straight through the port, independent of the code under test; "sub" is
    // "" or starts with a backslash.
    void Set(const string& sub, const string& name, std::uint32_t type, const string& data) {
        ASSERT_TRUE(machines::SetRaw(port, reg::kCurrentUser, kScratch + sub, name, type, data)) << sub;
    }
    std::optional<RawValue> Get(const string& sub, const string& name) {
        return machines::GetRaw(port, reg::kCurrentUser, kScratch + sub, name);
    }
    bool KeyThere(const string& sub) {
        RegHandle key = 0;
        if (port.RegOpenKeyExA(reg::kCurrentUser, (kScratch + sub).c_str(), 0, reg::kRead, &key) != 0) return false;
        port.RegCloseKey(key);
        return true;
    }
    string Read(const string& file) {
        string text;
        EXPECT_TRUE(machine->Files().ReadWholeFile(file, &text)) << file;
        return text;
    }

    std::unique_ptr<machines::TestMachine> machine = machines::MakeTestMachine();
    tessmark::platform::RegistryPort& port = machine->Registry();
    AdvRegistryAccess access{port, machine->Files(), machine->Ui()};
    const string folder = machine->ScratchFolder();
};

std::string Nuls(std::size_t count) { return std::string(count, '\0'); }

TEST_F(Registry, QueryRegValueGivesTheBufferTrimmedOfBlanks) {
    const struct {
        const char* name;
        std::string data, expected;
    } cases[] = {
        {"text", "abc", "abc" + Nuls(1021)},  // first NUL at the fourth place
        {"leading blanks", "  abc  ", "abc  " + Nuls(1017)},
        {"fills 1024", std::string(1023, 'x'), std::string(1023, 'x') + Nuls(1)},
        {"over 1024", std::string(1024, 'x'), Nuls(1024)},
    };
    for (const auto& c : cases) Set("\\Values", c.name, reg::kSz, c.data);
    const RegHandle key = OpenRegKey(port, kUser, kScratch + "\\Values");
    ASSERT_NE(key, 0u);
    for (const auto& c : cases) EXPECT_EQ(QueryRegValue(port, key, c.name), c.expected) << c.name;
    EXPECT_EQ(QueryRegValue(port, key, "missing"), Nuls(1024));
    port.RegCloseKey(key);
    EXPECT_EQ(QueryRegValue(port, 0, "text"), Nuls(1024));
}

TEST_F(Registry, EnumRegValueNameKeepsTheNulBehindTheName) {
    const struct {
        std::string name;
        std::uint32_t type;
        std::string data;
        std::string expected;
    } cases[] = {
        {"", reg::kSz, "default", "\0"s},
        {"  padded  ", reg::kSz, "x", "padded  \0"s},
        // Too long for the buffer: cut to fill it, the NUL in the last place.
        {std::string(261, 'n'), reg::kSz, "x", std::string(260, 'n') + '\0'},
        {"Fits", reg::kBinary, std::string(255, 'd'), "Fits\0"s},
        // Data over 255 bytes, its NUL counted: the name buffer is left as it was.
        {"Big text", reg::kSz, std::string(255, 'd'), ""},
    };
    int n = 0;
    for (const auto& c : cases) {
        const std::string sub = "Case" + std::to_string(n++);
        Set("\\" + sub, c.name.c_str(), c.type, c.data);
        const RegHandle key = OpenRegKey(port, kUser, kScratch + "\\" + sub);
        EXPECT_EQ(EnumRegValueName(port, key, 0), c.expected) << sub;
        EXPECT_EQ(EnumRegValueName(port, key, 1), "") << sub;
        port.RegCloseKey(key);
    }
    EXPECT_EQ(EnumRegValueName(port, 0, 0), "");
}

TEST_F(Registry, SetRegStringCreatesTheKeyAndWritesText) {
    ASSERT_FALSE(KeyThere("\\New\\Deep"));
    SetRegString(port, kUser, kScratch + "\\New\\Deep", "Item", "C:\\x.exe");
    EXPECT_EQ(Get("\\New\\Deep", "Item"), (RawValue{reg::kSz, "C:\\x.exe\0"s}));
    // An expandable value becomes plain text; an empty text is stored without a NUL.
    Set("\\New\\Deep", "Path", reg::kExpandSz, "%windir%");
    SetRegString(port, kUser, kScratch + "\\New\\Deep", "Path", "%windir%\\y.exe");
    EXPECT_EQ(Get("\\New\\Deep", "Path"), (RawValue{reg::kSz, "%windir%\\y.exe\0"s}));
    SetRegString(port, kUser, kScratch + "\\New\\Deep", "Empty", "");
    EXPECT_EQ(Get("\\New\\Deep", "Empty"), (RawValue{reg::kSz, ""s}));
    // Deleting from a missing key makes no key.
    DeleteRegValue(port, kUser, kScratch + "\\Missing", "Item");
    EXPECT_FALSE(KeyThere("\\Missing"));
}

TEST_F(Registry, ExportToRegWritesOnlyTheHeaderAndNeverOverwrites) {
    Set("\\Export", "a", reg::kSz, "x");
    Set("\\Export\\Sub", "b", reg::kDword, "\x1F\0\0\0"s);
    VbBool subkeys = kTrue;
    const string file = folder + "\\backup.reg";
    EXPECT_EQ(access.ExportToReg(kUserPath + "\\Export", file, subkeys), 0);
    EXPECT_EQ(Read(file), "REGEDIT4\r\n\r\n");
    ASSERT_TRUE(machine->Files().WriteWholeFile(file, "old"));
    EXPECT_EQ(access.ExportToReg(kUserPath + "\\Export", file, subkeys), 0);
    EXPECT_EQ(Read(file), "old");
}

}  // namespace

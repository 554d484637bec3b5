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

namespace tessmark::testing {
struct ExportProbe {
    static VbBool Export(AdvRegistryAccess& access, const string& path, const string& file, VbBool subkeys,
                         TextBox& box) {
        return access.ExportKey(path, file, subkeys, &box);
    }
};
}  // namespace tessmark::testing

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

TEST_F(Registry, ExportWithABoxWritesEachKindOfValueOnItsLineKeyBeforeSubkeys) {
    Set("\\Export", "", reg::kSz, "def\0"s);
    Set("\\Export", "a", reg::kSz, "x\0"s);
    Set("\\Export", "b", reg::kBinary, "Jo");
    Set("\\Export", "c", reg::kDword, "\x1F\0\0\0"s);
    Set("\\Export", "d", reg::kDword, "\xFF\xFF\xFF\xFF");
    Set("\\Export", "e", reg::kExpandSz, "%windir%\0"s);
    Set("\\Export", "f", reg::kBinary, "");
    Set("\\Export\\Sub", "g", reg::kSz, "y");
    Set("\\Export\\Sub\\Deeper", "", reg::kBinary, "\0"s);
    const string top = "[" + kUserPath + "\\Export]\r\n@=\"def\0\"\r\n\"a\"=\"x\0\"\r\n\"b\"=hex:4A,6F\r\n\"f\"=hex:\r\n"
                       "\"c\"=dword:0x0000001F\r\n\"d\"=dword:0xFFFFFFFF\r\n\r\n"s;
    // The unnamed binary value keeps its empty name; a text keeps its NUL.
    const string below = "[" + kUserPath + "\\Export\\Sub]\r\n\"g\"=\"y\0\"\r\n\r\n["s + kUserPath +
                         "\\Export\\Sub\\Deeper]\r\n\"\"=hex:00\r\n\r\n";
    for (VbBool subkeys : {kTrue, kFalse}) {
        const string file = folder + (subkeys ? "\\all.reg" : "\\one.reg");
        VbBool include = subkeys;
        EXPECT_EQ(access.ExportToReg("HKCU\\" + kScratch + "\\Export", file, include), 0);
        TextBox box;
        EXPECT_EQ(machines::ExportProbe::Export(access, "hkcu\\" + kScratch + "\\Export", file, subkeys, box), kTrue);
        EXPECT_EQ(Read(file), "REGEDIT4\r\n\r\n" + top + (subkeys ? below : "")) << subkeys;
        EXPECT_EQ(box.Text, kUserPath + (subkeys ? "\\Export\\Sub\\Deeper" : "\\Export"));
    }
    TextBox box;
    EXPECT_EQ(machines::ExportProbe::Export(access, "HKCU\\" + kScratch + "\\Export", folder + "\\no\\such.reg", kTrue, box),
              kFalse);
    // Every short root name becomes its long one; a key that can't be read still gets its block.
    string lines;
    for (const char* root : {"HKCU", "hklm", "HKCR", "HKUS", "HKPD", "HKDD", "HKCC"}) {
        EXPECT_EQ(machines::ExportProbe::Export(access, string(root) + "\\TessmarkNone", folder + "\\roots.reg", kTrue, box), kTrue);
        lines += box.Text + "|";
    }
    EXPECT_EQ(lines, "HKEY_CURRENT_USER\\TessmarkNone|HKEY_LOCAL_MACHINE\\TessmarkNone|HKEY_CLASSES_ROOT\\TessmarkNone|"
                     "HKEY_USERS\\TessmarkNone|HKEY_PERFORMANCE_DATA\\TessmarkNone|HKEY_DYN_DATA\\TessmarkNone|"
                     "HKEY_CURRENT_CONFIG\\TessmarkNone|");
    EXPECT_EQ(Read(folder + "\\roots.reg").substr(0, 37), "[HKEY_CURRENT_USER\\TessmarkNone]\r\n\r\n[");
}

TEST_F(Registry, ImportAppliesEachLineAsTheDialectReadsIt) {
    Set("\\Import", "", reg::kSz, "default\0"s);
    Set("\\Import", "gone", reg::kSz, "x");
    Set("\\Import", "@", reg::kSz, "at");
    Set("\\Doomed", "v", reg::kSz, "x");
    Set("\\Kept\\Child", "v", reg::kSz, "x");
    const string file = folder + "\\in.reg";
    const string text = "regedit4\r\n\r\n[" + kUserPath + "\\Import]\r\n"
                        "\"s\"=\"text\"\r\n  \"q\"=\"a=b\"  \r\n\"h\"=hex:41,42\r\n\"k\"=HEX:4,1\r\n"
                        "\"d\"=dword:0x0000001F\r\n\"n\"=dword:1F\r\n@=\"\"\r\n\"gone\"=-\r\n\"@\"= - \r\n"
                        ";\"c\"=\"comment\"\r\n\"noequals\"\r\n\r\n"
                        "[-" + kUserPath + "\\Doomed]\r\n[-" + kUserPath + "\\Kept]\r\n"
                        "[" + kUserPath + "\\New\\Deepx\r\n\"v\"=\"1\"\n\"w\"=\"2\"\r\n";
    ASSERT_TRUE(machine->Files().WriteWholeFile(file, text));
    access.CreateKeyIfDoesntExists(kFalse);
    EXPECT_EQ(access.ImportFromReg(file), 1);
    EXPECT_EQ(access.CreateKeyIfDoesntExists(), kTrue);
    const struct {
        const char *sub, *name;
        std::optional<RawValue> value;
    } expected[] = {
        {"\\Import", "s", RawValue{reg::kSz, "text\0"s}}, {"\\Import", "q", RawValue{reg::kSz, "a\0"s}},
        {"\\Import", "h", RawValue{reg::kBinary, "AB"}},
        {"\\Import", "k", RawValue{reg::kBinary, "A"}},  // blanks go before the pairs are cut
        {"\\Import", "d", RawValue{reg::kDword, "\0\0\0\0"s}},  // the literal stops at the x
        {"\\Import", "n", RawValue{reg::kDword, "\x1F\0\0\0"s}}, {"\\Import", "", std::nullopt},
        {"\\Import", "gone", std::nullopt}, {"\\Import", "@", std::nullopt},
        {"\\Import", "c", std::nullopt}, {"\\Doomed", "v", std::nullopt},
        {"\\Kept\\Child", "v", RawValue{reg::kSz, "x\0"s}},
        // The closing bracket is taken as missing; a bare LF joins two lines into one.
        {"\\New\\Deep", "v", RawValue{reg::kSz, "1\nw\0"s}},
    };
    for (const auto& e : expected) EXPECT_EQ(Get(e.sub, e.name), e.value) << e.sub << " " << e.name;
    EXPECT_FALSE(KeyThere("\\Doomed"));
    EXPECT_FALSE(KeyThere("\\New\\Deepx"));

    for (const string header : {" REGEDIT4", "Windows Registry Editor Version 5.00", ""}) {
        ASSERT_TRUE(machine->Files().WriteWholeFile(file, header + "\r\n[" + kUserPath + "\\Refused]\r\n\"v\"=\"1\"\r\n"));
        EXPECT_EQ(access.ImportFromReg(file), 0) << header;
    }
    EXPECT_FALSE(KeyThere("\\Refused"));
    EXPECT_EQ(access.ImportFromReg(folder + "\\missing.reg"), 0);
}

// Each public member's help text, as the class documents it; other names have none.
TEST_F(Registry, EveryPublicMemberHasItsHelpText) {
    string texts;
    for (const char* member : {"CreateKeyIfDoesntExists", "CreateKey", "KillKey", "KeyExists", "EnumKeys", "HaveSubkey",
                               "WriteString", "ReadString", "WriteDWORD", "ReadDWORD", "WriteBinary", "ReadBinary",
                               "KillValue", "ValueExists", "EnumValues", "ImportFromReg", "StrToBin", "BinToStr",
                               "isBinValid", "ExportToReg", "createkey"})
        texts += string(member) + ": " + string(AdvRegistryAccess::HelpText(member)) + "\n";
    EXPECT_EQ(machines::DigestOf(*machine, texts), "97207c94d3d93955e3757a049557945b914812460024e9a1a290f4b096a25509") << texts;
}

TEST_F(Registry, PathClassReadsAndWritesThroughEitherRootName) {
    const string path = "HKCU\\" + kScratch + "\\Class";
    EXPECT_NE(access.WriteBinary(path, "b", "41 42 4"), 0);
    EXPECT_NE(access.WriteDWORD("HKEY_CURRENT_USER\\" + kScratch + "\\Class", "n", -2), 0);
    EXPECT_NE(access.WriteString(path + "\\Sub", "@", "d"), 0);
    EXPECT_EQ(Get("\\Class", "b"), (RawValue{reg::kBinary, "AB"}));
    EXPECT_EQ(Get("\\Class", "n"), (RawValue{reg::kDword, "\xFE\xFF\xFF\xFF"}));
    EXPECT_EQ(Get("\\Class\\Sub", ""), (RawValue{reg::kSz, "d\0"s}));
    EXPECT_EQ(access.ReadBinary(path, "b", "?"), "41 42");
    EXPECT_EQ(access.ReadBinary(path, "missing", "?"), "?");
    EXPECT_EQ(std::make_tuple(access.ReadDWORD(path, "n", 7), access.ReadDWORD(path, "missing", 7)), std::make_tuple(-2, 7));
    EXPECT_EQ(access.ReadString(path + "\\Sub", "", "?"), "d\0"s);
    EXPECT_EQ(access.ReadString(path, "missing", "?"), "?");
    EXPECT_EQ(access.ReadString("HKXX\\" + kScratch + "\\Class\\Sub", "", "?"), "?");
    EXPECT_EQ(std::make_tuple(access.ValueExists(path, "n"), access.ValueExists(path, "missing")), std::make_tuple(-1, 0));
    EXPECT_EQ(std::make_tuple(access.HaveSubkey(path), access.HaveSubkey(path + "\\Sub")), std::make_tuple(kTrue, kFalse));
    tessmark::vb::Array<string> keys;
    EXPECT_EQ(access.EnumKeys(path, keys), 1);
    EXPECT_EQ(keys[0], "Sub");
    EXPECT_EQ(access.EnumKeys(path + "\\Missing", keys), -1);
    EXPECT_FALSE(keys.IsDimensioned());
    tessmark::vb::Array<string> names;
    tessmark::vb::Array<RegValue> values;
    EXPECT_EQ(access.EnumValues(path, names, values, -1), 2);
    EXPECT_EQ(std::make_tuple(names[0], names[1], values[0], values[1]),
              std::make_tuple("b"s, "n"s, RegValue{"41 42"s}, RegValue{std::int32_t{-2}}));
    // A key with subkeys stays; without them it goes.
    access.KillKey(path);
    EXPECT_EQ(access.KeyExists(path), kTrue);
    access.KillKey(path + "\\Sub");
    EXPECT_EQ(std::make_tuple(access.KeyExists(path + "\\Sub"), access.KeyExists(path)), std::make_tuple(kFalse, kTrue));
    access.KillValue(path, "n");
    EXPECT_EQ(Get("\\Class", "n"), std::nullopt);
    access.CreateKeyIfDoesntExists(kFalse);
    EXPECT_EQ(access.WriteString(path + "\\Other", "s", "x"), 0);
    EXPECT_FALSE(KeyThere("\\Class\\Other"));
}

}  // namespace

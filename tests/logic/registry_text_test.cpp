// The registry class's text files, on the memory registry and on the real one:
// what the writer puts down, what the reader makes of it, and where they differ.
#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>

#include "export_key_access.h"
#include "machine.h"
#include "raw_values.h"
#include "registry/AdvRegistryAccess.h"

using tessmark::platform::RegHandle;
using tessmark::registry::AdvRegistryAccess;
using tessmark::registry::ExportKeyAccess;
using tessmark::registry::kFalse;
using tessmark::registry::kTrue;
using tessmark::registry::TextBox;
using tessmark::registry::VbBool;
using std::string;
using namespace std::string_literals;
namespace reg = tessmark::platform::reg;
namespace machines = tessmark::testing;

namespace {

const string kScratch = machines::kScratchKey;
const string kLong = "HKEY_CURRENT_USER\\" + kScratch;
using tessmark::testing::RawValue;

class RegistryTextTest : public ::testing::Test {
protected:
    void TearDown() override { machines::DeleteTree(port, reg::kCurrentUser, kScratch); }

    void Set(const string& sub, const string& name, std::uint32_t type, const string& data) {
        ASSERT_TRUE(machines::SetRaw(port, reg::kCurrentUser, kScratch + sub, name, type, data));
    }
    std::optional<RawValue> Get(const string& sub, const string& name) {
        return machines::GetRaw(port, reg::kCurrentUser, kScratch + sub, name);
    }
    string Read(const string& file) {
        string text;
        EXPECT_TRUE(machine->Files().ReadWholeFile(file, &text)) << file;
        return text;
    }
    // One of each kind, named so that creation order and sorted order agree.
    void SeedExportKey() {
        Set("\\Export", "", reg::kSz, "d\0"s);
        Set("\\Export", "a", reg::kSz, "x\"y=z\0"s);
        Set("\\Export", "b", reg::kBinary, "Jo");
        Set("\\Export", "c", reg::kBinary, "");
        Set("\\Export", "d", reg::kDword, "\x1F\0\0\0"s);
        Set("\\Export", "e", reg::kDword, "\xFF\xFF\xFF\xFF");
        Set("\\Export", "f", reg::kExpandSz, "%x%\0"s);
        Set("\\Export\\Sub", "g", reg::kMultiSz, "m\0\0"s);
    }

    std::unique_ptr<machines::TestMachine> machine = machines::MakeTestMachine();
    tessmark::platform::RegistryPort& port = machine->Registry();
    AdvRegistryAccess access{port, machine->Files(), machine->Ui()};
    const string folder = machine->ScratchFolder();
};

const string kExportBlock = "[" + kLong + "\\Export]\r\n" + "@=\"d\0\"\r\n"s + "\"a\"=\"x\"y=z\0\"\r\n"s +
                            "\"b\"=hex:4A,6F\r\n" + "\"c\"=hex:\r\n" + "\"d\"=dword:0x0000001F\r\n" +
                            "\"e\"=dword:0xFFFFFFFF\r\n" + "\r\n";

TEST_F(RegistryTextTest, AnExportWithABoxAndWhatItReadsBackAs) {
    SeedExportKey();
    const string file = folder + "\\round.reg", single = folder + "\\single.reg";
    TextBox box;
    ASSERT_EQ(ExportKeyAccess::Export(access, "hkcu\\" + kScratch + "\\Export", file, kTrue, &box), kTrue);
    ASSERT_EQ(ExportKeyAccess::Export(access, kLong + "\\Export", single, kFalse, &box), kTrue);
    EXPECT_EQ(Read(file), kExportBlock + "[" + kLong + "\\Export\\Sub]\r\n\r\n");
    EXPECT_EQ(Read(single), kExportBlock);
    EXPECT_EQ(box.Text, kLong + "\\Export");
    machines::DeleteTree(port, reg::kCurrentUser, kScratch);

    EXPECT_EQ(access.ImportFromReg(file), 0);  // no header: ExportKey only appends
    ASSERT_TRUE(machine->Files().WriteWholeFile(file, "REGEDIT4\r\n\r\n" + Read(file)));
    EXPECT_EQ(access.ImportFromReg(file), 1);
    struct Case { string name; std::optional<RawValue> value; } cases[] = {
        {"", RawValue{reg::kSz, "d\0"s}},    // the kept NUL comes back
        {"a", RawValue{reg::kSz, "xy\0"s}},   // quotes lost, cut at "="
        {"b", RawValue{reg::kBinary, "Jo"}},
        {"c", RawValue{reg::kBinary, ""}},
        {"d", RawValue{reg::kDword, "\0\0\0\0"s}},  // "0x" stops the reader
        {"e", RawValue{reg::kDword, "\0\0\0\0"s}},
        {"f", std::nullopt},
    };
    for (const auto& c : cases) EXPECT_EQ(Get("\\Export", c.name), c.value) << c.name;
    EXPECT_EQ(access.KeyExists(kLong + "\\Export\\Sub"), kFalse);  // only a value line makes a key
}

TEST_F(RegistryTextTest, ExportToRegLeavesOnlyTheHeaderAndNeverOverwrites) {
    SeedExportKey();
    VbBool subkeys = kTrue;
    const string file = folder + "\\backup.reg";
    EXPECT_EQ(access.ExportToReg(kLong + "\\Export", file, subkeys), 0);
    EXPECT_EQ(Read(file), "REGEDIT4\r\n\r\n");
    ASSERT_TRUE(machine->Files().WriteWholeFile(file, "old"));
    EXPECT_EQ(access.ExportToReg(kLong + "\\Export", file, subkeys), 0);
    EXPECT_EQ(Read(file), "old");
}

TEST_F(RegistryTextTest, ImportRulesLineByLine) {
    Set("\\Imp", "gone", reg::kSz, "x");
    Set("\\Imp", "@", reg::kSz, "literal at");
    Set("\\Imp", "", reg::kSz, "default");
    Set("\\Doomed", "v", reg::kSz, "x");
    Set("\\Parent\\Child", "v", reg::kSz, "x");
    const string file = folder + "\\rules.reg";
    ASSERT_TRUE(machine->Files().WriteWholeFile(
        file, "regedit4\r\n"
              "[" + kLong + "\\Imp]\r\n"
              "  \"s\" = \"v\"  \r\n"
              "; \"c\"=\"comment\"\r\n"
              "no equals sign\r\n"
              "\"n\"=DWORD:1f\r\n"
              "\"big\"=dword:FFFFFFFE\r\n"
              "\"h\"=HEX:41,42\r\n"
              "\"t\"=hex(2):41,00\r\n"
              "\"q\"=\"a=b\"\r\n"
              "\"gone\"=-\r\n"
              "\"@\"= - \r\n"
              "@=\r\n"
              "\"[" + kLong + "\\Cutx\"\r\n"
              "\"v\"=\"1\"\r\n"
              "[-" + kLong + "\\Doomed]\r\n"
              "[-" + kLong + "\\Parent]\r\n"));
    EXPECT_EQ(access.ImportFromReg(file), 1);
    struct Case { string name; std::optional<RawValue> value; } cases[] = {
        {"s ", RawValue{reg::kSz, " v\0"s}},  // both sides keep their inner blanks
        {"c", std::nullopt},
        {"n", RawValue{reg::kDword, "\x1F\0\0\0"s}},
        {"big", RawValue{reg::kDword, "\xFE\xFF\xFF\xFF"}},
        {"h", RawValue{reg::kBinary, "AB"}},
        {"t", RawValue{reg::kSz, "hex(2):41,00\0"s}},
        {"q", RawValue{reg::kSz, "a\0"s}},
        {"gone", std::nullopt},
        {"@", std::nullopt},
        {"", std::nullopt},  // written empty, then removed
    };
    for (const auto& c : cases) EXPECT_EQ(Get("\\Imp", c.name), c.value) << '"' << c.name << '"';
    EXPECT_EQ(Get("\\Cut", "v"), (RawValue{reg::kSz, "1\0"s}));
    EXPECT_EQ(access.KeyExists(kLong + "\\Doomed"), kFalse);
    EXPECT_NE(access.KeyExists(kLong + "\\Parent"), kFalse);  // not recursive
    EXPECT_EQ(access.CreateKeyIfDoesntExists(), kTrue);
}

TEST_F(RegistryTextTest, ImportRefusesForeignOrBrokenFiles) {
    struct Case { string contents; std::int32_t result; } cases[] = {
        {" REGEDIT4\r\n", 0},
        {"Windows Registry Editor Version 5.00\r\n", 0},
        {"REGEDIT4\n[" + kLong + "\\Lf]\n\"v\"=\"1\"\n", 0},
        {"", 0},
        {"REGEDIT4", 1},
        {"REGEDIT4\r\n[\r\n", 0},  // a lone bracket is an invalid call
        {"REGEDIT4\r\n[" + kLong + "\\Partial]\r\n\"v\"=\"1\"\r\n\"b\"=hex:" + string(32768, '4') + "\r\n", 0},
    };
    for (const auto& c : cases) {
        const string file = folder + "\\in.reg";
        ASSERT_TRUE(machine->Files().WriteWholeFile(file, c.contents));
        EXPECT_EQ(access.ImportFromReg(file), c.result) << c.contents.substr(0, 40);
    }
    EXPECT_EQ(Get("\\Lf", "v"), std::nullopt);
    EXPECT_EQ(Get("\\Partial", "v"), (RawValue{reg::kSz, "1\0"s}));  // what was written stays
    EXPECT_EQ(access.ImportFromReg(folder + "\\missing.reg"), 0);
}

TEST(RegistryTextHex, IsBinValidIsNeverTrue) {
    for (const char* text : {"41", "41 42", "", "  ", "zz", "0123456789ABCDEF"})
        EXPECT_EQ(AdvRegistryAccess::isBinValid(text), kFalse) << text;
}

// Against the platform's own regedit, on the real registry only.
class RegeditInteropTest : public RegistryTextTest {
protected:
    void SetUp() override {
        if (!machine->IsReal()) GTEST_SKIP() << "needs the platform's regedit";
        Set("", "", reg::kSz, "def");
        Set("", "s", reg::kSz, "he\"llo");
        Set("", "b", reg::kBinary, "Jo");
        Set("", "n", reg::kDword, "\x1F\0\0\0"s);
        Set("\\Sub", "x", reg::kExpandSz, "%a%");
    }
    static int Regedit(const string& arguments) { return std::system(("regedit " + arguments).c_str()); }
};

TEST_F(RegeditInteropTest, RegeditTakesOnlyBinaryValuesAndNothingOfAFileWithAText) {
    Set("\\Bin", "b", reg::kBinary, "Jo");
    Set("\\Bin", "n", reg::kDword, "\x1F\0\0\0"s);
    for (const string& key : {string(), string("\\Bin")}) {
        const string file = folder + "\\ours" + std::to_string(key.size()) + ".reg";
        ASSERT_TRUE(machine->Files().WriteWholeFile(file, "REGEDIT4\r\n\r\n"));
        TextBox box;
        ASSERT_EQ(ExportKeyAccess::Export(access, kLong + key, file, kFalse, &box), kTrue);
    }
    machines::DeleteTree(port, reg::kCurrentUser, kScratch);

    for (const string& key : {string(), string("\\Bin")})
        ASSERT_EQ(Regedit("/S " + folder + "\\ours" + std::to_string(key.size()) + ".reg"), 0);
    struct Case { string sub, name; std::optional<RawValue> value; } cases[] = {
        {"\\Bin", "b", RawValue{reg::kBinary, "Jo"}},
        {"\\Bin", "n", std::nullopt},  // "0x" in front of the digits is no number to regedit
        {"", "b", std::nullopt},        // the NUL kept behind each text ends regedit's reading
        {"", "", std::nullopt},
    };
    for (const auto& c : cases) EXPECT_EQ(Get(c.sub, c.name), c.value) << c.sub << '\\' << c.name;
}

TEST_F(RegeditInteropTest, WhatSurvivesOfRegeditsOwnExport) {
    const string unicode = folder + "\\theirs.reg";
    ASSERT_EQ(Regedit("/E " + unicode + " " + kLong), 0);
    string text;
    ASSERT_TRUE(machine->Files().ReadWholeFile(unicode, &text));
    machines::DeleteTree(port, reg::kCurrentUser, kScratch);
    // Regedit here writes only the newer header, in UTF-16: refused whole.
    EXPECT_EQ(access.ImportFromReg(unicode), 0);
    EXPECT_EQ(Get("", "b"), std::nullopt);

    // The same lines in the older form: the code page's bytes behind "REGEDIT4".
    string ansi;
    for (std::size_t i = 2; i + 1 < text.size(); i += 2) ansi += text[i];
    ansi = "REGEDIT4" + ansi.substr(ansi.find("\r\n"));
    const string file = folder + "\\theirs4.reg";
    ASSERT_TRUE(machine->Files().WriteWholeFile(file, ansi));
    EXPECT_EQ(access.ImportFromReg(file), 1);
    struct Case { string sub, name; std::optional<RawValue> value; } cases[] = {
        {"", "", RawValue{reg::kSz, "def\0"s}},
        {"", "s", RawValue{reg::kSz, "he\\llo\0"s}},  // the escape's backslash stays, its quote goes
        {"", "b", RawValue{reg::kBinary, "Jo"}},
        {"", "n", RawValue{reg::kDword, "\x1F\0\0\0"s}},  // without "0x" the number survives
        {"\\Sub", "x", RawValue{reg::kSz, "hex(2):25,00,61,00,25,00,00,00\0"s}},
    };
    for (const auto& c : cases) EXPECT_EQ(Get(c.sub, c.name), c.value) << c.sub << '\\' << c.name;
}

}  // namespace

// The console program's command line and its three formats, on a memory machine.
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "console/console.h"
#include "item_places.h"
#include "platform/memory/memory_codec.h"

using namespace tessmark;
using namespace tessmark::testing;

namespace {

struct Console {
    std::unique_ptr<TestMachine> machine = MakeTestMachine();
    platform::memory::MemoryCodec codec;
    console::Output output;
    int Run(std::vector<std::string> args, bool isConsole = false, int width = 80) {
        output = {};
        return console::Run(args, machine->Ports(), codec, {isConsole, width, "1.2.3.4"}, output);
    }
};

TEST(ConsoleOptions, BadLinesGiveCode1AndTheUsageAndGoodOnesReachTheirCommand) {
    const std::string run = "Registry\\All Users\\Run";
    const struct { std::vector<std::string> args; int code; const char* says; } cases[] = {
        {{}, 1, "no command given"}, {{"remove", "x"}, 1, "unknown command \"remove\""},
        {{"list", "--colour"}, 1, "unknown option --colour"}, {{"list", "--format"}, 1, "--format needs a value"},
        {{"list", "--format", "xml"}, 1, "table, csv or json, not \"xml\""},
        {{"list", "--state", "on"}, 1, "enabled or disabled"},
        {{"list", "--section", "Nowhere"}, 1, "no section \"Nowhere\"; the sections are:\n  All Users\\Startup"},
        {{"disable", "--section", run}, 1, "needs the item's name"}, {{"disable", "x"}, 1, "needs --section"},
        {{"disable", "", "--section", run}, 1, "the name is empty"},
        {{"disable", std::string(1025, 'x'), "--section", run}, 1, "longer than 1024"},
        {{"disable", std::string("a\0b", 3), "--section", run}, 1, "control character"},
        {{"enable", "x", "--section", run, "--path", "p", "--location", "l"}, 1, "not both"},
        {{"enable", "x", "--section", run, "--format", "csv"}, 1, "unknown option --format"},
        {{"disable", "x", "y", "--section", run}, 1, "unexpected \"y\""}, {{"--version", "x"}, 1, "takes nothing more"},
        {{"disable", "x", "--section", "registry\\all users\\RUN"}, 2, "no enabled item \"x\" in Registry\\All Users\\Run"},
        {{"enable", "x", "--section", run, "--path", "C:\\x.exe"}, 2, "with path C:\\x.exe"},
    };
    Console c;
    for (const auto& k : cases) {
        EXPECT_EQ(c.Run(k.args), k.code) << k.says;
        EXPECT_NE(c.output.err.find(k.says), std::string::npos) << c.output.err;
        EXPECT_EQ(c.output.err.find("usage:") != std::string::npos, k.code == 1) << k.says;
        EXPECT_EQ(c.output.out, "") << k.says;
    }
    EXPECT_EQ(c.Run({"--version"}), 0);
    EXPECT_EQ(c.output.out, "tessmarkc 1.2.3.4\n");
    EXPECT_EQ(c.Run({"--help"}), 0);
    EXPECT_NE(c.output.out.find("tessmarkc disable NAME --section TEXT"), std::string::npos);
}

TEST(ConsoleOptions, CsvQuotesAndConvertsJsonKeepsTypesFiltersApplyAndTheTableFitsTheWidth) {
    Console c;
    ItemPlaces places(*c.machine);
    places.Set(ItemPlaces::HKLM, std::string(kRunBase) + "Run", "Caf\xe9, \"x\"", "C:\\windows\\notepad.exe");
    places.Set(ItemPlaces::HKCU, std::string(kRunBase) + "Run\\AutorunsDisabled", "Gone", "C:\\nowhere\\gone.exe -q");
    const std::string notepad = "\"Caf\xc3\xa9, \"\"x\"\"\",C:\\windows\\notepad.exe,enabled,Registry\\All Users\\Run,"
                                "\"HKLM\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run [Caf\xc3\xa9, \"\"x\"\"]\","
                                "C:\\windows\\notepad.exe,yes,";
    const std::string gone = "Gone,File Not Found,disabled,Registry\\Current User\\Run,"
                             "HKCU\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run\\AutorunsDisabled [Gone],"
                             "C:\\nowhere\\gone.exe,no,,\r\n";
    // Redirected output defaults to CSV; on a console the table is the default.
    ASSERT_EQ(c.Run({"list", "--hash"}), 0) << c.output.err;
    const std::string csv = c.output.out;
    EXPECT_EQ(csv.substr(0, csv.find('\n') + 1), "name,path,state,section,location,program,exists,description,sha256\r\n");
    EXPECT_NE(csv.find("\r\n" + notepad), std::string::npos) << csv;
    EXPECT_NE(csv.find("\r\n" + gone), std::string::npos) << csv;
    ASSERT_EQ(c.Run({"list", "--format", "json", "--hash", "--section", "Registry\\All Users\\Run"}), 0);
    const auto json = nlohmann::json::parse(c.output.out);
    ASSERT_EQ(json.size(), 1u);
    EXPECT_EQ(json[0]["name"], "Caf\xc3\xa9, \"x\"");
    EXPECT_EQ(json[0]["exists"], true);
    EXPECT_EQ(json[0]["sha256"].get<std::string>().size(), 64u);
    ASSERT_EQ(c.Run({"list", "--state", "disabled"}, true, 40), 0);
    std::istringstream table(c.output.out);
    int lines = 0;
    for (std::string line; std::getline(table, line); ++lines) EXPECT_LE(line.size(), 39u) << line;
    EXPECT_EQ(lines, 2);
    EXPECT_EQ(c.output.out.rfind("Name", 0), 0u);
}

}  // namespace

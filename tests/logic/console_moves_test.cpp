// The console program's disable and enable: round trips that leave the
// registry, Settings.ini and the Startup folders as they were, the window's
// operations on what it moved, and every platform call refused in turn.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "console/console.h"
#include "console/moves.h"
#include "fault_ports.h"
#include "frame/FrmMain2.h"
#include "item_places.h"

using namespace tessmark;
using namespace tessmark::testing;

namespace {

constexpr platform::RegHandle HKLM = ItemPlaces::HKLM, HKCU = ItemPlaces::HKCU;
constexpr int kAllUsers = platform::kCsidlCommonStartup, kCurrentUser = platform::kCsidlStartup;
const std::string kRun = std::string(kRunBase) + "Run", kRunOnce = std::string(kRunBase) + "RunOnce";
const std::string kAllRun = "Registry\\All Users\\Run", kUserinit = "Registry\\All Users\\Logon\\UserInit";
const std::string kUserStartup = "Current User\\Startup";

class ConsoleMoves : public ::testing::Test {
protected:
    std::unique_ptr<TestMachine> machine = MakeTestMachine();
    ItemPlaces places{*machine};

    int Console(std::vector<std::string> args) {
        console::Output output;
        const int code = console::Run(args, machine->Ports(), machine->Codec(), {}, output);
        EXPECT_EQ(code, 0) << args[0] << " " << args[1] << ": " << output.err;
        return code;
    }
    std::vector<console::Record> Records() { return console::ListItems(machine->Ports(), machine->Codec(), false); }
    // A row's name, found by the end of its location: the shell names a shortcut's target its own way.
    std::string NameAt(const std::string& locationEnd) {
        for (const auto& r : Records())
            if (r.location.size() >= locationEnd.size() && r.location.ends_with(locationEnd)) return r.name;
        return locationEnd;
    }
    bool Listed(const std::string& name, const std::string& section, bool enabled) {
        for (const auto& r : Records()) if (r.name == name && r.section == section && r.enabled == enabled) return true;
        return false;
    }
    // Every value of the item keys, every file of the Startup folders and Settings.ini.
    std::map<std::string, std::string> World() {
        std::map<std::string, std::string> world;
        auto& registry = machine->Registry();
        for (auto root : {HKLM, HKCU})
            for (const std::string& key : {kRun, kRun + "\\AutorunsDisabled", kRunOnce, kRunOnce + "\\AutorunsDisabled",
                                          std::string(kWinlogon), std::string(kWinlogon) + "\\AutorunsDisabled"}) {
                platform::RegHandle handle = 0;
                if (registry.RegOpenKeyExA(root, key.c_str(), 0, platform::reg::kRead, &handle) != 0) continue;
                char name[1024];
                for (std::uint32_t i = 0, length = sizeof name;
                     registry.RegEnumValueA(handle, i, name, &length, nullptr, nullptr, nullptr) == 0;
                     ++i, length = sizeof name) {
                    auto value = *places.Raw(root, key, name);
                    world[std::to_string(root) + key + "|" + name] = std::to_string(value.first) + ":" + value.second;
                }
                registry.RegCloseKey(handle);
            }
        for (int csidl : {kAllUsers, kCurrentUser})
            for (const auto& name : places.NewFolderFiles(csidl))
                machine->Files().ReadWholeFile(places.StartupFolder(csidl) + "\\" + name, &world[name]);
        machine->Files().ReadWholeFile(places.SettingsFile(), &world["Settings.ini"]);
        return world;
    }
};

TEST_F(ConsoleMoves, RoundTripsLeaveEverythingAsItWasAndTheWindowListsTheDisabledItem) {
    places.Set(HKLM, kRun, "Quoted", "\"C:\\windows\\notepad.exe\" /min /x");
    places.Set(HKCU, kRun, "Expand", "%SystemRoot%\\notepad.exe", platform::reg::kExpandSz);
    places.Set(HKLM, kRun, "Missing", "C:\\nowhere\\gone.exe -q");
    places.Set(HKLM, kRunOnce, "Once", "C:\\windows\\regedit.exe");
    places.Set(HKLM, kWinlogon, "Userinit", "C:\\windows\\system32\\userinit.exe,C:\\windows\\notepad.exe,");
    places.Set(HKLM, std::string(kWinlogon) + "\\AutorunsDisabled", "Userinit", "old.exe,older.exe");
    ASSERT_TRUE(machine->Shell().SaveShortcut(places.StartupFolder(kCurrentUser) + "\\Edit.lnk",
                                              "C:\\windows\\notepad.exe", "C:\\windows\\regedit.exe,2", 7));
    places.Shortcut(kCurrentUser, "Twin A.lnk", "C:\\windows\\regedit.exe");
    places.Shortcut(kCurrentUser, "Twin B.lnk", "C:\\windows\\regedit.exe");
    const auto before = World();
    const std::string startup = places.StartupFolder(kCurrentUser);
    const struct { std::string name, section, disabledName; std::vector<std::string> pick; } cases[] = {
        {"Quoted", kAllRun, "Quoted", {}}, {"Expand", "Registry\\Current User\\Run", "Expand", {}},
        {"Missing", kAllRun, "Missing", {}}, {"Once", "Registry\\All Users\\RunOnce", "Once", {}},
        {"notepad.exe", kUserinit, "notepad.exe", {}}, {"\\Edit.lnk", kUserStartup, "Edit", {}},
        {"\\Twin B.lnk", kUserStartup, "Twin B", {"--location", startup + "\\Twin B.lnk"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        std::vector<std::string> args = {"disable", NameAt(c.name), "--section", c.section};
        args.insert(args.end(), c.pick.begin(), c.pick.end());
        if (Console(args) != 0) continue;
        EXPECT_TRUE(Listed(c.disabledName, c.section, false));
        if (!c.pick.empty()) {
            EXPECT_EQ(places.Target(kCurrentUser, "Twin A.lnk"), "C:\\windows\\regedit.exe");
        }
        Console({"enable", c.disabledName, "--section", c.section});
        EXPECT_EQ(World(), before);
    }
}

// Refuses the 1st, 2nd, ... call of each move until one runs without a refusal.
TEST_F(ConsoleMoves, ARefusedCallLeavesTheItemWhereItWasOrWhereItWentNeverNowhere) {
    places.Set(HKLM, kRun, "Value", "\"C:\\windows\\notepad.exe\" /x", platform::reg::kExpandSz);
    places.Set(HKLM, kWinlogon, "Userinit", "C:\\windows\\system32\\userinit.exe,C:\\windows\\notepad.exe,");
    places.Set(HKLM, std::string(kWinlogon) + "\\AutorunsDisabled", "Userinit", "old.exe");
    places.Shortcut(kCurrentUser, "Edit.lnk", "C:\\windows\\regedit.exe");
    int calls = 0, failAt = 0, tried = 0;
    FaultyPorts faulty(*machine, [&] { return ++calls == failAt; });
    const struct { std::string name, section, disabledName; } cases[] = {
        {"Value", kAllRun, "Value"}, {"notepad.exe", kUserinit, "notepad.exe"}, {"\\Edit.lnk", kUserStartup, "Edit"}};
    for (const auto& c : cases) {
        auto move = [&](bool disable, int at) {
            for (const auto& r : Records())
                if (r.name == (disable ? NameAt(c.name) : c.disabledName) && r.section == c.section && r.enabled == disable) {
                    calls = 0, failAt = at;
                    return (disable ? console::DisableItem : console::EnableItem)(faulty.Ports(), r).code;
                }
            ADD_FAILURE() << c.name << " not listed";
            return -1;
        };
        const auto enabled = World();
        ASSERT_EQ(move(true, 0), 0) << c.name;
        const auto disabled = World();
        ASSERT_EQ(move(false, 0), 0) << c.name;
        ASSERT_EQ(World(), enabled) << c.name;
        for (bool disable : {true, false}) {
            if (!disable) move(true, 0);
            for (int at = 1;; ++at, ++tried) {
                const int code = move(disable, at);
                const auto& from = disable ? enabled : disabled;
                const auto& to = disable ? disabled : enabled;
                EXPECT_EQ(World(), code == 0 ? to : from) << c.name << " call " << at << " code " << code;
                if (code == 0) move(!disable, 0);
                if (calls < at) break;
            }
        }
        move(false, 0);
    }
    EXPECT_GT(tried, 40);
    std::cout << "refused calls tried: " << tried << "\n";
}

}  // namespace

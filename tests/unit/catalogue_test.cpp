// The sections' names, tags and locations, and the two translators.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

#include "frame/catalogue.h"

using namespace tessmark::frame;
using tessmark::platform::reg::kCurrentUser;
using tessmark::platform::reg::kLocalMachine;
using std::string;

namespace {

constexpr const char* kWindowsRun = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\";

template <class Nodes>
bool Holds(const Nodes& nodes, std::string_view key) {
    return std::any_of(nodes.begin(), nodes.end(), [&](const auto& n) { return n.key == key; });
}

TEST(Catalogue, FindPathGivesTheEnabledKeyOfTheSevenRunSectionsOnly) {
    struct Case { string section, path; } cases[] = {
        {"Registry\\All Users\\Run", "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run"},
        {"Registry\\All Users\\RunOnce", "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunOnce"},
        {"Registry\\All Users\\RunServices",
         "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunServices"},
        {"Registry\\All Users\\RunServicesOnce",
         "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunServiceOnce"},
        {"Registry\\Current User\\Run", "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run"},
        {"Registry\\Current User\\RunOnce", "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce"},
        {"Registry\\Current User\\RunServices",
         "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\RunServices"},
        {"Registry\\Current User\\RunServicesOnce", ""},
        {"All Users\\Startup", ""},
        {"Current User\\Startup", ""},
        {"Registry\\All Users\\Logon\\Shell", ""},
        {"Registry\\All Users\\Services", ""},
        {"registry\\all users\\run", ""},
        {"Registry\\All Users\\Run ", ""},
        {"Registry\\All Users\\Run\\", ""},
        {"", ""},
    };
    for (const auto& c : cases) EXPECT_EQ(FindPath(c.section), c.path) << c.section;
}

TEST(Catalogue, FindKeyNamesNodesWhetherOrNotTheMainTreeHasThem) {
    struct Case { string section, key; } cases[] = {
        {"Registry\\All Users\\Run", "runexall"},
        {"Registry\\All Users\\RunOnce", "runonceall"},
        {"Registry\\All Users\\RunServices", "runserviceall"},
        {"Registry\\All Users\\RunServicesOnce", "runserviceonceall"},
        {"Registry\\Current User\\Run", "runcurr"},
        {"Registry\\Current User\\RunOnce", "runoncecurr"},
        {"Registry\\Current User\\RunServices", "runservicecurr"},
        {"Registry\\All Users\\Logon\\Startup Programs", "startupall"},
        {"Registry\\All Users\\Logon\\UserInit", "userinitall"},
        {"Registry\\All Users\\Logon\\Shell", "shellall"},
        {"Registry\\All Users\\Browser Helper Objects", "bhoall"},
        {"Registry\\All Users\\Services", "serviceall"},
        {"Registry\\All Users\\Drivers", "driverall"},
        {"Registry\\Current User\\RunServicesOnce", ""},
        {"All Users\\Startup", ""},
        {"Registry\\All Users\\Logon\\Userinit", ""},
        {"Registry\\All Users\\Logon\\StartupPrograms", ""},
        {"", ""},
    };
    for (const auto& c : cases) EXPECT_EQ(FindKey(c.section), c.key) << c.section;
}

TEST(Catalogue, MainTreeHasTheTenNodesInTheirOrderWithPicturesAndParents) {
    struct Row { std::string_view key, caption, parent; int image; } want[] = {
        {"main", "All Items", "", 5},
        {"startFolder", "Startup Folder", "main", 1},
        {"allUsers", "All Users", "startFolder", 4},
        {"currUser", "Current User", "startFolder", 2},
        {"registry", "Registry", "main", 3},
        {"regall", "All Users", "registry", 4},
        {"runexall", "Run", "regall", 3},
        {"runonceall", "Run Once", "regall", 3},
        {"runserviceall", "Run Services", "regall", 3},
        {"runserviceonceall", "Run Services Once", "regall", 3},
    };
    ASSERT_EQ(std::size(want), kMainTree.size());
    for (std::size_t i = 0; i < kMainTree.size(); ++i) {
        EXPECT_EQ(kMainTree[i].key, want[i].key) << i;
        EXPECT_EQ(kMainTree[i].caption, want[i].caption) << i;
        EXPECT_EQ(kMainTree[i].parent, want[i].parent) << i;
        EXPECT_EQ(kMainTree[i].image, want[i].image) << i;
    }
}

TEST(Catalogue, MoveTreeAddsTheCurrentUsersRunSectionsButNoRunServicesOnce) {
    struct Row { std::string_view key, caption, parent; } want[] = {
        {"main", "All Items", ""},
        {"registry", "Registry", "main"},
        {"regall", "All Users", "registry"},
        {"runexall", "Run", "regall"},
        {"runonceall", "Run Once", "regall"},
        {"runserviceall", "Run Services", "regall"},
        {"runserviceonceall", "Run Services Once", "regall"},
        {"regcurr", "Current User", "registry"},
        {"runcurr", "Run", "regcurr"},
        {"runoncecurr", "Run Once", "regcurr"},
        {"runservicecurr", "Run Services", "regcurr"},
    };
    ASSERT_EQ(std::size(want), kMoveTree.size());
    for (std::size_t i = 0; i < kMoveTree.size(); ++i) {
        EXPECT_EQ(kMoveTree[i].key, want[i].key) << i;
        EXPECT_EQ(kMoveTree[i].caption, want[i].caption) << i;
        EXPECT_EQ(kMoveTree[i].parent, want[i].parent) << i;
    }
    // The move dialog compares against a plural spelling that no node has.
    EXPECT_FALSE(Holds(kMoveTree, "runservicescurr"));
    EXPECT_FALSE(Holds(kMainTree, "runservicescurr"));
}

TEST(Catalogue, DispatchOnlyKeysAreNeverInTheMainTreeAndCoverEveryOtherFindKeyResult) {
    std::set<std::string_view> dispatchOnly(kDispatchOnlyKeys.begin(), kDispatchOnlyKeys.end());
    EXPECT_EQ(dispatchOnly.size(), 11u);
    for (auto key : kDispatchOnlyKeys) {
        EXPECT_FALSE(Holds(kMainTree, key)) << key;
        bool inMoveDialog = key == "regcurr" || key == "runcurr" || key == "runoncecurr" || key == "runservicecurr";
        EXPECT_EQ(Holds(kMoveTree, key), inMoveDialog) << key;
    }

    for (const auto& s : kItemSections) {
        string key = FindKey(string(s.path));
        if (!key.empty()) {
            EXPECT_TRUE(Holds(kMainTree, key) || dispatchOnly.count(key)) << s.path;
        }
    }
    for (const auto& s : kOperationSections) EXPECT_TRUE(dispatchOnly.count(FindKey(string(s.path)))) << s.path;
}

TEST(Catalogue, SectionPathsDropTheBlanksThatNodeCaptionsHave) {
    for (const auto& s : kItemSections) {
        EXPECT_EQ(s.path.find("Run Once"), std::string_view::npos) << s.path;
        EXPECT_EQ(s.path.find("Run Services"), std::string_view::npos) << s.path;
    }
    EXPECT_TRUE(std::any_of(kMainTree.begin(), kMainTree.end(), [](auto& n) { return n.caption == "Run Once"; }));
}

TEST(Catalogue, OnlyTheCurrentUsersTwoServiceSectionsShareATag) {
    std::set<std::pair<std::string_view, std::string_view>> sharing;
    for (const auto& a : kItemSections)
        for (const auto& b : kItemSections)
            if (&a < &b && a.tag == b.tag) sharing.insert({a.path, b.path});
    std::set<std::pair<std::string_view, std::string_view>> want = {
        {"Registry\\Current User\\RunServices", "Registry\\Current User\\RunServicesOnce"}};
    EXPECT_EQ(sharing, want);
}

TEST(Catalogue, LogonSectionsTagTheirRowsWithADigitAsTextAllOthersWithANumber) {
    struct Case { std::string_view path; SectionTag tag; } cases[] = {
        {"All Users\\Startup", SectionTag::Number(1)},
        {"Current User\\Startup", SectionTag::Number(2)},
        {"Registry\\All Users\\Run", SectionTag::Number(3)},
        {"Registry\\All Users\\RunOnce", SectionTag::Number(4)},
        {"Registry\\All Users\\RunServices", SectionTag::Number(5)},
        {"Registry\\All Users\\RunServicesOnce", SectionTag::Number(6)},
        {"Registry\\All Users\\Logon\\Startup Programs", SectionTag::Text("7")},
        {"Registry\\All Users\\Logon\\Shell", SectionTag::Text("8")},
        {"Registry\\All Users\\Logon\\UserInit", SectionTag::Text("9")},
        {"Registry\\Current User\\Run", SectionTag::Number(21)},
        {"Registry\\Current User\\RunOnce", SectionTag::Number(22)},
        {"Registry\\Current User\\RunServices", SectionTag::Number(23)},
        {"Registry\\Current User\\RunServicesOnce", SectionTag::Number(23)},
    };
    ASSERT_EQ(std::size(cases), kItemSections.size());
    for (std::size_t i = 0; i < kItemSections.size(); ++i) {
        EXPECT_EQ(kItemSections[i].path, cases[i].path) << i;
        EXPECT_EQ(kItemSections[i].tag, cases[i].tag) << cases[i].path;
    }
    EXPECT_NE(SectionTag::Text("7"), SectionTag::Number(7));
    for (const auto& s : kItemSections)
        for (int unassigned : kTagsNoScannerAssigns) EXPECT_NE(s.tag, SectionTag::Number(unassigned)) << s.path;
}

TEST(Catalogue, EachSectionNamesTheScannerCallThatListsIt) {
    struct Case { std::string_view path, scanner; int argument; } cases[] = {
        {"All Users\\Startup", "AddStartupAllUser", 0},
        {"Current User\\Startup", "AddStartupCurrUser", 0},
        {"Registry\\All Users\\Run", "AddRun", 0},
        {"Registry\\All Users\\RunOnce", "AddRunOnce", 0},
        {"Registry\\All Users\\RunServices", "AddRunServices", 0},
        {"Registry\\All Users\\RunServicesOnce", "AddRunServiceOnce", 0},
        {"Registry\\All Users\\Logon\\Startup Programs", "AddLogon", 1},
        {"Registry\\All Users\\Logon\\Shell", "AddLogon", 3},
        {"Registry\\All Users\\Logon\\UserInit", "AddLogon", 2},
        {"Registry\\Current User\\Run", "AddRun", -1},
        {"Registry\\Current User\\RunOnce", "AddRunOnce", -1},
        {"Registry\\Current User\\RunServices", "AddRunServices", -1},
        {"Registry\\Current User\\RunServicesOnce", "AddRunServiceOnce", -1},
    };
    for (std::size_t i = 0; i < kItemSections.size(); ++i) {
        EXPECT_EQ(kItemSections[i].scanner, cases[i].scanner) << cases[i].path;
        EXPECT_EQ(kItemSections[i].scannerArgument, cases[i].argument) << cases[i].path;
    }
}

TEST(Catalogue, RunKeysAreSpelledAsTheScannersSpellThemInBothHives) {
    struct Case { std::string_view path; tessmark::platform::RegHandle root; string enabled, disabled; } cases[] = {
        {"Registry\\All Users\\Run", kLocalMachine, string(kWindowsRun) + "Run\\",
         string(kWindowsRun) + "Run\\AutorunsDisabled"},
        {"Registry\\All Users\\RunOnce", kLocalMachine, string(kWindowsRun) + "RunOnce",
         string(kWindowsRun) + "RunOnce\\AutorunsDisabled"},
        {"Registry\\All Users\\RunServices", kLocalMachine, string(kWindowsRun) + "RunServices",
         string(kWindowsRun) + "RunServices\\AutorunsDisabled"},
        {"Registry\\All Users\\RunServicesOnce", kLocalMachine, string(kWindowsRun) + "RunServiceOnce",
         string(kWindowsRun) + "RunServiceOnce\\AutorunsDisabled"},
        {"Registry\\Current User\\Run", kCurrentUser, string(kWindowsRun) + "Run\\",
         string(kWindowsRun) + "Run\\AutorunsDisabled"},
        {"Registry\\Current User\\RunOnce", kCurrentUser, string(kWindowsRun) + "RunOnce",
         string(kWindowsRun) + "RunOnce\\AutorunsDisabled"},
        {"Registry\\Current User\\RunServices", kCurrentUser, string(kWindowsRun) + "RunServices",
         string(kWindowsRun) + "RunServices\\AutorunsDisabled"},
        {"Registry\\Current User\\RunServicesOnce", kCurrentUser, string(kWindowsRun) + "RunServiceOnce",
         string(kWindowsRun) + "RunServiceOnce\\AutorunsDisabled"},
    };
    for (const auto& c : cases) {
        auto s = std::find_if(kItemSections.begin(), kItemSections.end(), [&](auto& s) { return s.path == c.path; });
        ASSERT_NE(s, kItemSections.end()) << c.path;
        for (const Location* at : {&s->enabled, &s->disabled}) {
            EXPECT_EQ(at->place, Place::KeyValues) << c.path;
            EXPECT_EQ(at->root, c.root) << c.path;
            EXPECT_EQ(at->valueName, "") << c.path;
        }
        EXPECT_EQ(s->enabled.subKey, c.enabled);
        EXPECT_EQ(s->disabled.subKey, c.disabled);
    }
}

TEST(Catalogue, FolderAndLogonSectionsPointAtShellFoldersSettingsAndNamedValues) {
    const string rdpwd = "System\\CurrentControlSet\\Control\\Terminal Server\\Wds\\rdpwd";
    const string winlogon = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon";
    struct Case { std::string_view path; Location enabled, disabled; } cases[] = {
        {"All Users\\Startup", {.place = Place::ShellFolder, .shellFolder = 24},
         {.place = Place::SettingsSection, .settingsSection = "StartupAllUser"}},
        {"Current User\\Startup", {.place = Place::ShellFolder, .shellFolder = 7},
         {.place = Place::SettingsSection, .settingsSection = "StartupCurrUser"}},
    };
    for (const auto& c : cases) {
        auto s = std::find_if(kItemSections.begin(), kItemSections.end(), [&](auto& s) { return s.path == c.path; });
        EXPECT_EQ(s->enabled.place, c.enabled.place);
        EXPECT_EQ(s->enabled.shellFolder, c.enabled.shellFolder);
        EXPECT_EQ(s->disabled.place, c.disabled.place);
        EXPECT_EQ(s->disabled.settingsSection, c.disabled.settingsSection);
    }

    struct Logon { std::string_view path; string key, value; } logons[] = {
        {"Registry\\All Users\\Logon\\Startup Programs", rdpwd, "StartupPrograms"},
        {"Registry\\All Users\\Logon\\Shell", winlogon, "Shell"},
        {"Registry\\All Users\\Logon\\UserInit", winlogon, "Userinit"},
    };
    for (const auto& c : logons) {
        auto s = std::find_if(kItemSections.begin(), kItemSections.end(), [&](auto& s) { return s.path == c.path; });
        for (const Location* at : {&s->enabled, &s->disabled}) {
            EXPECT_EQ(at->place, Place::NamedValue) << c.path;
            EXPECT_EQ(at->root, kLocalMachine) << c.path;
            EXPECT_EQ(at->valueName, c.value) << c.path;
        }
        EXPECT_EQ(s->enabled.subKey, c.key);
        EXPECT_EQ(s->disabled.subKey, c.key + "\\AutorunsDisabled");
    }
}

TEST(Catalogue, FindPathMatchesTheScannersKeysOnlyUpToCaseAndTheTrailingBackslash) {
    for (const auto& s : kItemSections) {
        string path = FindPath(string(s.path));
        if (path.empty()) continue;
        string subKey(s.enabled.subKey);
        if (subKey.back() == '\\') subKey.pop_back();
        string scanners = (s.enabled.root == kLocalMachine ? "HKEY_LOCAL_MACHINE\\" : "HKEY_CURRENT_USER\\") + subKey;
        auto upper = [](string t) {
            std::transform(t.begin(), t.end(), t.begin(), [](unsigned char c) { return std::toupper(c); });
            return t;
        };
        EXPECT_EQ(upper(path), upper(scanners)) << s.path;
        EXPECT_EQ(path == scanners, s.enabled.root == kLocalMachine) << s.path;
    }
}

TEST(Catalogue, OperationOnlySectionsKeepTheirOwnKeySpellings) {
    const string bho = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Browser Helper Objects\\";
    const string services = "SYSTEM\\CurrentControlSet\\Services\\";
    struct Case { std::string_view path; Place place; string enabled, disabled, value, mark; } cases[] = {
        {"Registry\\All Users\\Browser Helper Objects", Place::ItemSubkeys, bho, bho + "AutorunsDisabled\\", "", ""},
        {"Registry\\All Users\\Services", Place::ItemKeyValue, services, services, "Start", "AutorunsDisabled"},
        {"Registry\\All Users\\Drivers", Place::ItemKeyValue, services, services, "Start", "AutorunsDisabled"},
    };
    ASSERT_EQ(std::size(cases), kOperationSections.size());
    for (std::size_t i = 0; i < kOperationSections.size(); ++i) {
        const auto& s = kOperationSections[i];
        EXPECT_EQ(s.path, cases[i].path);
        EXPECT_EQ(s.enabled.place, cases[i].place);
        EXPECT_EQ(s.enabled.root, kLocalMachine);
        EXPECT_EQ(s.enabled.subKey, cases[i].enabled);
        EXPECT_EQ(s.enabled.valueName, cases[i].value);
        EXPECT_EQ(s.disabled.subKey, cases[i].disabled);
        EXPECT_EQ(s.disabled.valueName, cases[i].mark);
        EXPECT_EQ(FindPath(string(s.path)), "");
    }
}

}  // namespace

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
using std::string_view;

namespace {

template <class Nodes>
bool Holds(const Nodes& nodes, string_view key) {
    return std::any_of(nodes.begin(), nodes.end(), [&](const auto& n) { return n.key == key; });
}

const ItemSection& Section(string_view path) {
    auto found = std::find_if(kItemSections.begin(), kItemSections.end(), [&](auto& s) { return s.path == path; });
    if (found == kItemSections.end()) throw std::out_of_range(string(path));
    return *found;
}

bool EndsWith(string_view text, string_view end) {
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
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
        {"Registry\\All Users\\Logon\\Shell", ""},
        {"Registry\\All Users\\Services", ""},
        {"registry\\all users\\run", ""},
        {"Registry\\All Users\\Run ", ""},
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
        {"", ""},
    };
    for (const auto& c : cases) EXPECT_EQ(FindKey(c.section), c.key) << c.section;
}

TEST(Catalogue, TreesAddEachNodeAfterItsParentUnderOneRoot) {
    auto check = [](const auto& tree, const char* name) {
        std::set<string_view> added;
        for (const auto& node : tree) {
            if (node.key == tree.front().key) {
                EXPECT_EQ(node.parent, "") << name;
            } else {
                EXPECT_TRUE(added.count(node.parent)) << name << ": " << node.key << " before " << node.parent;
            }
            EXPECT_TRUE(added.insert(node.key).second) << name << ": " << node.key << " twice";
        }
        EXPECT_EQ(tree.front().key, "main") << name;
    };
    check(kMainTree, "main tree");
    check(kMoveTree, "move dialog");
    EXPECT_EQ(kMainTree.size(), 10u);
    EXPECT_EQ(kMoveTree.size(), 11u);
}

TEST(Catalogue, MoveDialogAddsTheCurrentUsersRegistryNodesOnly) {
    std::set<string_view> extra;
    for (const auto& n : kMoveTree)
        if (!Holds(kMainTree, n.key)) extra.insert(n.key);
    EXPECT_EQ(extra, (std::set<string_view>{"regcurr", "runcurr", "runoncecurr", "runservicecurr"}));
    // The dialog's branch test spells a plural that no node has.
    EXPECT_FALSE(Holds(kMoveTree, "runservicescurr"));
}

TEST(Catalogue, DispatchOnlyKeysAreNeverInTheMainTreeYetFindKeyReturnsThem) {
    std::set<string_view> known(kDispatchOnlyKeys.begin(), kDispatchOnlyKeys.end());
    EXPECT_EQ(known.size(), kDispatchOnlyKeys.size());
    for (auto key : kDispatchOnlyKeys) EXPECT_FALSE(Holds(kMainTree, key)) << key;
    for (const auto& n : kMainTree) known.insert(n.key);
    for (const auto& s : kItemSections) {
        string key = FindKey(string(s.path));
        EXPECT_TRUE(key.empty() || known.count(key)) << s.path;
    }
    for (const auto& s : kOperationSections) EXPECT_TRUE(known.count(FindKey(string(s.path)))) << s.path;
}

TEST(Catalogue, OnlyTheCurrentUsersTwoServiceSectionsShareATag) {
    std::set<std::pair<string_view, string_view>> sharing;
    for (std::size_t a = 0; a < kItemSections.size(); ++a)
        for (std::size_t b = a + 1; b < kItemSections.size(); ++b)
            if (kItemSections[a].tag == kItemSections[b].tag) sharing.insert({kItemSections[a].path, kItemSections[b].path});
    std::set<std::pair<string_view, string_view>> want = {
        {"Registry\\Current User\\RunServices", "Registry\\Current User\\RunServicesOnce"}};
    EXPECT_EQ(sharing, want);
    EXPECT_EQ(Section("Registry\\Current User\\RunServicesOnce").tag, SectionTag::Number(23));
}

TEST(Catalogue, LogonSectionsTagWithADigitAsTextWhichNeverEqualsTheNumber) {
    struct Case { string_view path, digit; } cases[] = {
        {"Registry\\All Users\\Logon\\Startup Programs", "7"},
        {"Registry\\All Users\\Logon\\Shell", "8"},
        {"Registry\\All Users\\Logon\\UserInit", "9"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Section(c.path).tag, SectionTag::Text(c.digit)) << c.path;
        EXPECT_NE(Section(c.path).tag, SectionTag::Number(c.digit[0] - '0')) << c.path;
    }
    int textTags = 0;
    for (const auto& s : kItemSections) {
        textTags += s.tag.IsText();
        for (int unassigned : kTagsNoScannerAssigns) EXPECT_NE(s.tag, SectionTag::Number(unassigned)) << s.path;
    }
    EXPECT_EQ(textTags, 3);
}

TEST(Catalogue, RunKeysKeepTheScannersSpellingInBothHives) {
    struct Case { string_view allUsers, currentUser, enabled; } cases[] = {
        {"Registry\\All Users\\Run", "Registry\\Current User\\Run", "Run\\"},
        {"Registry\\All Users\\RunOnce", "Registry\\Current User\\RunOnce", "RunOnce"},
        {"Registry\\All Users\\RunServices", "Registry\\Current User\\RunServices", "RunServices"},
        {"Registry\\All Users\\RunServicesOnce", "Registry\\Current User\\RunServicesOnce", "RunServiceOnce"},
    };
    const string base = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\";
    for (const auto& c : cases) {
        string enabled = base + string(c.enabled);
        string disabled = (EndsWith(enabled, "\\") ? enabled : enabled + "\\") + "AutorunsDisabled";
        for (auto [path, root] : {std::pair{c.allUsers, kLocalMachine}, std::pair{c.currentUser, kCurrentUser}}) {
            const ItemSection& s = Section(path);
            EXPECT_EQ(s.enabled.place, Place::KeyValues) << path;
            EXPECT_EQ(s.enabled.root, root) << path;
            EXPECT_EQ(s.enabled.subKey, enabled) << path;
            EXPECT_EQ(s.disabled.root, root) << path;
            EXPECT_EQ(s.disabled.subKey, disabled) << path;
        }
    }
}

TEST(Catalogue, FindPathAgreesWithTheScannersKeysOnlyUpToCaseAndTrailingBackslash) {
    auto upper = [](string t) {
        std::transform(t.begin(), t.end(), t.begin(), [](unsigned char c) { return std::toupper(c); });
        return t;
    };
    int compared = 0;
    for (const auto& s : kItemSections) {
        string path = FindPath(string(s.path));
        if (path.empty()) continue;
        ++compared;
        string subKey(s.enabled.subKey);
        if (EndsWith(subKey, "\\")) subKey.pop_back();
        string scanners = (s.enabled.root == kLocalMachine ? "HKEY_LOCAL_MACHINE\\" : "HKEY_CURRENT_USER\\") + subKey;
        EXPECT_EQ(upper(path), upper(scanners)) << s.path;
        EXPECT_EQ(path == scanners, s.enabled.root == kLocalMachine) << s.path;
    }
    EXPECT_EQ(compared, 7);
}

TEST(Catalogue, FolderSectionsKeepDisabledItemsInTheSettingsFile) {
    struct Case { string_view path; int csidl; string_view settings; } cases[] = {
        {"All Users\\Startup", 24, "StartupAllUser"},
        {"Current User\\Startup", 7, "StartupCurrUser"},
    };
    for (const auto& c : cases) {
        const ItemSection& s = Section(c.path);
        EXPECT_EQ(s.enabled.place, Place::ShellFolder) << c.path;
        EXPECT_EQ(s.enabled.shellFolder, c.csidl) << c.path;
        EXPECT_EQ(s.disabled.place, Place::SettingsSection) << c.path;
        EXPECT_EQ(s.disabled.settingsSection, c.settings) << c.path;
    }
}

TEST(Catalogue, LogonValuesMoveToTheSameValueNameInTheKeysDisabledSubkey) {
    struct Case { string_view path, key, value; } cases[] = {
        {"Registry\\All Users\\Logon\\Startup Programs", "System\\CurrentControlSet\\Control\\Terminal Server\\Wds\\rdpwd",
         "StartupPrograms"},
        {"Registry\\All Users\\Logon\\Shell", "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon", "Shell"},
        {"Registry\\All Users\\Logon\\UserInit", "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon", "Userinit"},
    };
    for (const auto& c : cases) {
        const ItemSection& s = Section(c.path);
        EXPECT_EQ(s.enabled.place, Place::NamedValue) << c.path;
        EXPECT_EQ(s.enabled.root, kLocalMachine) << c.path;
        EXPECT_EQ(s.enabled.subKey, c.key) << c.path;
        EXPECT_EQ(s.disabled.subKey, string(c.key) + "\\AutorunsDisabled") << c.path;
        EXPECT_EQ(s.enabled.valueName, c.value) << c.path;
        EXPECT_EQ(s.disabled.valueName, c.value) << c.path;
    }
}

TEST(Catalogue, OperationOnlySectionsHaveNoScannerAndTheirOwnSpellings) {
    const string bho = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Browser Helper Objects\\";
    EXPECT_EQ(kOperationSections[0].path, "Registry\\All Users\\Browser Helper Objects");
    EXPECT_EQ(kOperationSections[0].enabled.subKey, bho);
    EXPECT_EQ(kOperationSections[0].disabled.subKey, bho + "AutorunsDisabled\\");
    for (const auto& s : kOperationSections) {
        EXPECT_THROW(Section(s.path), std::out_of_range) << s.path;
        EXPECT_EQ(FindPath(string(s.path)), "") << s.path;
    }
}

}  // namespace

#include "catalogue/sections.h"

#include <utility>

namespace tessmark::catalogue {
namespace {

using platform::RegHandle;
using platform::reg::kCurrentUser;
using platform::reg::kLocalMachine;

constexpr Location ShellFolder(int csidl) { return {.place = Place::ShellFolder, .shellFolder = csidl}; }
constexpr Location SettingsSection(std::string_view name) {
    return {.place = Place::SettingsSection, .settingsSection = name};
}
constexpr Location KeyValues(RegHandle root, std::string_view subKey) {
    return {.place = Place::KeyValues, .root = root, .subKey = subKey};
}
constexpr Location NamedValue(std::string_view subKey, std::string_view valueName) {
    return {.place = Place::NamedValue, .root = kLocalMachine, .subKey = subKey, .valueName = valueName};
}

constexpr int kCsidlStartup = 7;
constexpr int kCsidlCommonStartup = 24;
constexpr int kFalse = 0;
constexpr int kTrue = -1;

// The scanners spell "SOFTWARE" for both hives, and only the Run key carries a
// trailing backslash.
constexpr std::string_view kRunKey = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run\\";
constexpr std::string_view kRunKeyDisabled = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run\\AutorunsDisabled";
constexpr std::string_view kRunOnceKey = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunOnce";
constexpr std::string_view kRunOnceKeyDisabled =
    "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunOnce\\AutorunsDisabled";
constexpr std::string_view kRunServicesKey = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunServices";
constexpr std::string_view kRunServicesKeyDisabled =
    "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunServices\\AutorunsDisabled";
constexpr std::string_view kRunServiceOnceKey = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunServiceOnce";
constexpr std::string_view kRunServiceOnceKeyDisabled =
    "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunServiceOnce\\AutorunsDisabled";
constexpr std::string_view kRdpwdKey = "System\\CurrentControlSet\\Control\\Terminal Server\\Wds\\rdpwd";
constexpr std::string_view kRdpwdKeyDisabled =
    "System\\CurrentControlSet\\Control\\Terminal Server\\Wds\\rdpwd\\AutorunsDisabled";
constexpr std::string_view kWinlogonKey = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon";
constexpr std::string_view kWinlogonKeyDisabled =
    "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon\\AutorunsDisabled";

// The disable and enable operations spell "Software" in both hives and
// "SYSTEM" for the terminal-server key; the registry ignores the case.
constexpr std::string_view kOpRunKey = "Software\\Microsoft\\Windows\\CurrentVersion\\Run";
constexpr std::string_view kOpRunOnceKey = "Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce";
constexpr std::string_view kOpRunServicesKey = "Software\\Microsoft\\Windows\\CurrentVersion\\RunServices";
constexpr std::string_view kOpRunServiceOnceKey = "Software\\Microsoft\\Windows\\CurrentVersion\\RunServiceOnce";
constexpr std::string_view kOpRdpwdKey = "SYSTEM\\CurrentControlSet\\Control\\Terminal Server\\Wds\\rdpwd";

// A service or driver stays in its own key: "Start" is its live state, and
// disabling leaves a mark in the value "AutorunsDisabled" beside it.
constexpr Location ItemKeyValue(std::string_view valueName) {
    return {.place = Place::ItemKeyValue, .root = kLocalMachine, .subKey = kServicesKey, .valueName = valueName};
}

using Translation = std::pair<std::string_view, std::string_view>;

// StartSearch's two translators. The plural "RunServicesOnce" section maps to
// the singular "RunServiceOnce" key, and HKCU is spelled "Software" here.
constexpr std::array<Translation, 7> kPaths = {{
    {section::kAllRun, "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run"},
    {section::kAllRunOnce, "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunOnce"},
    {section::kAllRunServices, "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunServices"},
    {section::kAllRunServicesOnce,
     "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunServiceOnce"},
    {section::kCurrRun, "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run"},
    {section::kCurrRunOnce, "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce"},
    {section::kCurrRunServices, "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\RunServices"},
}};

constexpr std::array<Translation, 13> kKeys = {{
    {section::kAllRun, key::kRunExAll},
    {section::kAllRunOnce, key::kRunOnceAll},
    {section::kAllRunServices, key::kRunServiceAll},
    {section::kAllRunServicesOnce, key::kRunServiceOnceAll},
    {section::kCurrRun, key::kRunCurr},
    {section::kCurrRunOnce, key::kRunOnceCurr},
    {section::kCurrRunServices, key::kRunServiceCurr},
    {section::kLogonStartupPrograms, key::kStartupAll},
    {section::kLogonUserInit, key::kUserinitAll},
    {section::kLogonShell, key::kShellAll},
    {section::kBrowserHelperObjects, key::kBhoAll},
    {section::kServices, key::kServiceAll},
    {section::kDrivers, key::kDriverAll},
}};

template <std::size_t N>
std::string Translate(const std::array<Translation, N>& table, const std::string& sectionPath) {
    for (const auto& [from, to] : table)
        if (sectionPath == from) return std::string(to);
    return {};
}

}  // namespace

const std::array<TreeNode, 10> kMainTree = {{
    {key::kMain, "All Items", {}, 5},
    {key::kStartFolder, "Startup Folder", key::kMain, 1},
    {key::kAllUsers, "All Users", key::kStartFolder, 4},
    {key::kCurrUser, "Current User", key::kStartFolder, 2},
    {key::kRegistry, "Registry", key::kMain, 3},
    {key::kRegAll, "All Users", key::kRegistry, 4},
    {key::kRunExAll, "Run", key::kRegAll, 3},
    {key::kRunOnceAll, "Run Once", key::kRegAll, 3},
    {key::kRunServiceAll, "Run Services", key::kRegAll, 3},
    {key::kRunServiceOnceAll, "Run Services Once", key::kRegAll, 3},
}};

// The current user has no "Run Services Once" node.
const std::array<MoveNode, 11> kMoveTree = {{
    {key::kMain, "All Items", {}},
    {key::kRegistry, "Registry", key::kMain},
    {key::kRegAll, "All Users", key::kRegistry},
    {key::kRunExAll, "Run", key::kRegAll},
    {key::kRunOnceAll, "Run Once", key::kRegAll},
    {key::kRunServiceAll, "Run Services", key::kRegAll},
    {key::kRunServiceOnceAll, "Run Services Once", key::kRegAll},
    {key::kRegCurr, "Current User", key::kRegistry},
    {key::kRunCurr, "Run", key::kRegCurr},
    {key::kRunOnceCurr, "Run Once", key::kRegCurr},
    {key::kRunServiceCurr, "Run Services", key::kRegCurr},
}};

const std::array<std::string_view, 11> kDispatchOnlyKeys = {
    key::kRegCurr,   key::kRunCurr,    key::kRunOnceCurr, key::kRunServiceCurr,
    key::kLogonAll,  key::kServiceAll, key::kBhoAll,      key::kStartupAll,
    key::kUserinitAll, key::kShellAll, key::kDriverAll,
};

// The current user's Run-family rows use the same subkeys as all users. The
// current user's RunServices and RunServicesOnce share tag 23 on purpose, and
// nothing asks AddRunServiceOnce for the current user.
const std::array<ItemSection, 13> kItemSections = {{
    {section::kAllUsersStartup, SectionTag::Number(1), "AddStartupAllUser", 0,
     ShellFolder(kCsidlCommonStartup), SettingsSection("StartupAllUser")},
    {section::kCurrentUserStartup, SectionTag::Number(2), "AddStartupCurrUser", 0,
     ShellFolder(kCsidlStartup), SettingsSection("StartupCurrUser")},
    {section::kAllRun, SectionTag::Number(3), "AddRun", kFalse,
     KeyValues(kLocalMachine, kRunKey), KeyValues(kLocalMachine, kRunKeyDisabled), kOpRunKey},
    {section::kAllRunOnce, SectionTag::Number(4), "AddRunOnce", kFalse,
     KeyValues(kLocalMachine, kRunOnceKey), KeyValues(kLocalMachine, kRunOnceKeyDisabled), kOpRunOnceKey},
    {section::kAllRunServices, SectionTag::Number(5), "AddRunServices", kFalse,
     KeyValues(kLocalMachine, kRunServicesKey), KeyValues(kLocalMachine, kRunServicesKeyDisabled),
     kOpRunServicesKey},
    {section::kAllRunServicesOnce, SectionTag::Number(6), "AddRunServiceOnce", kFalse,
     KeyValues(kLocalMachine, kRunServiceOnceKey), KeyValues(kLocalMachine, kRunServiceOnceKeyDisabled),
     kOpRunServiceOnceKey},
    {section::kLogonStartupPrograms, SectionTag::Text("7"), "AddLogon", 1,
     NamedValue(kRdpwdKey, "StartupPrograms"), NamedValue(kRdpwdKeyDisabled, "StartupPrograms"),
     kOpRdpwdKey},
    {section::kLogonShell, SectionTag::Text("8"), "AddLogon", 3,
     NamedValue(kWinlogonKey, "Shell"), NamedValue(kWinlogonKeyDisabled, "Shell"), kWinlogonKey},
    {section::kLogonUserInit, SectionTag::Text("9"), "AddLogon", 2,
     NamedValue(kWinlogonKey, "Userinit"), NamedValue(kWinlogonKeyDisabled, "Userinit"), kWinlogonKey},
    {section::kCurrRun, SectionTag::Number(21), "AddRun", kTrue,
     KeyValues(kCurrentUser, kRunKey), KeyValues(kCurrentUser, kRunKeyDisabled), kOpRunKey},
    {section::kCurrRunOnce, SectionTag::Number(22), "AddRunOnce", kTrue,
     KeyValues(kCurrentUser, kRunOnceKey), KeyValues(kCurrentUser, kRunOnceKeyDisabled), kOpRunOnceKey},
    {section::kCurrRunServices, SectionTag::Number(23), "AddRunServices", kTrue,
     KeyValues(kCurrentUser, kRunServicesKey), KeyValues(kCurrentUser, kRunServicesKeyDisabled),
     kOpRunServicesKey},
    {section::kCurrRunServicesOnce, SectionTag::Number(23), "AddRunServiceOnce", kTrue,
     KeyValues(kCurrentUser, kRunServiceOnceKey), KeyValues(kCurrentUser, kRunServiceOnceKeyDisabled),
     kOpRunServiceOnceKey},
}};

const std::array<OperationSection, 3> kOperationSections = {{
    {section::kBrowserHelperObjects,
     {.place = Place::ItemSubkeys, .root = kLocalMachine, .subKey = kBhoKey},
     {.place = Place::ItemSubkeys, .root = kLocalMachine, .subKey = kBhoKeyDisabled}},
    {section::kServices, ItemKeyValue("Start"), ItemKeyValue("AutorunsDisabled")},
    {section::kDrivers, ItemKeyValue("Start"), ItemKeyValue("AutorunsDisabled")},
}};

std::string FindPath(const std::string& sectionPath) { return Translate(kPaths, sectionPath); }

const ItemSection* FindItemSection(std::string_view path) {
    for (const ItemSection& entry : kItemSections)
        if (entry.path == path) return &entry;
    return nullptr;
}

const ItemSection* FindLogonSection(int logonType) {
    for (const ItemSection& entry : kItemSections)
        if (entry.scanner == "AddLogon" && entry.scannerArgument == logonType) return &entry;
    return nullptr;
}

std::string FindKey(const std::string& sectionPath) { return Translate(kKeys, sectionPath); }

}  // namespace tessmark::catalogue

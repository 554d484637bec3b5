#pragma once
// The sections: node keys and captions of the two trees, the section texts of
// the list's "Section" column, the rows' tags, and where each section's items
// live when enabled and when disabled. The names do not line up everywhere;
// every spelling here is the one its users compare against, so none of them
// may be tidied. The scanners, the item operations and the frame all read
// their names and places from here; nothing else spells them.
#include <array>
#include <string>
#include <string_view>

#include "platform/registry_port.h"

namespace tessmark::catalogue {

// ---- node keys ---------------------------------------------------------------

namespace key {
inline constexpr std::string_view kMain = "main";
inline constexpr std::string_view kStartFolder = "startFolder";
inline constexpr std::string_view kAllUsers = "allUsers";
inline constexpr std::string_view kCurrUser = "currUser";
inline constexpr std::string_view kRegistry = "registry";
inline constexpr std::string_view kRegAll = "regall";
inline constexpr std::string_view kRunExAll = "runexall";
inline constexpr std::string_view kRunOnceAll = "runonceall";
inline constexpr std::string_view kRunServiceAll = "runserviceall";
inline constexpr std::string_view kRunServiceOnceAll = "runserviceonceall";
inline constexpr std::string_view kRegCurr = "regcurr";
inline constexpr std::string_view kRunCurr = "runcurr";
inline constexpr std::string_view kRunOnceCurr = "runoncecurr";
inline constexpr std::string_view kRunServiceCurr = "runservicecurr";
inline constexpr std::string_view kLogonAll = "logonall";
inline constexpr std::string_view kServiceAll = "serviceall";
inline constexpr std::string_view kBhoAll = "bhoall";
inline constexpr std::string_view kStartupAll = "startupall";
inline constexpr std::string_view kUserinitAll = "userinitall";
inline constexpr std::string_view kShellAll = "shellall";
inline constexpr std::string_view kDriverAll = "driverall";
}  // namespace key

// ---- section texts (the "Section" column) --------------------------------------

namespace section {
inline constexpr std::string_view kAllUsersStartup = "All Users\\Startup";
inline constexpr std::string_view kCurrentUserStartup = "Current User\\Startup";
inline constexpr std::string_view kAllRun = "Registry\\All Users\\Run";
inline constexpr std::string_view kAllRunOnce = "Registry\\All Users\\RunOnce";
inline constexpr std::string_view kAllRunServices = "Registry\\All Users\\RunServices";
inline constexpr std::string_view kAllRunServicesOnce = "Registry\\All Users\\RunServicesOnce";
inline constexpr std::string_view kLogonStartupPrograms = "Registry\\All Users\\Logon\\Startup Programs";
inline constexpr std::string_view kLogonShell = "Registry\\All Users\\Logon\\Shell";
inline constexpr std::string_view kLogonUserInit = "Registry\\All Users\\Logon\\UserInit";
inline constexpr std::string_view kCurrRun = "Registry\\Current User\\Run";
inline constexpr std::string_view kCurrRunOnce = "Registry\\Current User\\RunOnce";
inline constexpr std::string_view kCurrRunServices = "Registry\\Current User\\RunServices";
inline constexpr std::string_view kCurrRunServicesOnce = "Registry\\Current User\\RunServicesOnce";
inline constexpr std::string_view kBrowserHelperObjects = "Registry\\All Users\\Browser Helper Objects";
inline constexpr std::string_view kServices = "Registry\\All Users\\Services";
inline constexpr std::string_view kDrivers = "Registry\\All Users\\Drivers";
}  // namespace section

// ---- trees ---------------------------------------------------------------------

struct TreeNode {
    std::string_view key;
    std::string_view caption;
    std::string_view parent;  // empty for the root
    int image;                // picture index in the main tree's image list
};

struct MoveNode {
    std::string_view key;
    std::string_view caption;
    std::string_view parent;  // empty for the root
};

// The main tree, in the order the nodes are added; all expanded, `main` selected.
extern const std::array<TreeNode, 10> kMainTree;
// The move dialog's tree, in the order the nodes are added.
extern const std::array<MoveNode, 11> kMoveTree;
// Keys the dispatch and FindKey know but the main tree lacks; the move
// dialog's tree holds the first four of them.
extern const std::array<std::string_view, 11> kDispatchOnlyKeys;

// ---- item sections ---------------------------------------------------------------

// A row's Tag as a scanner sets it: a number, except for the logon sections,
// whose tag is the digit held as text. The two kinds never compare equal.
class SectionTag {
public:
    static constexpr SectionTag Number(int value) { return SectionTag(value, {}); }
    static constexpr SectionTag Text(std::string_view digits) { return SectionTag(0, digits); }

    constexpr bool IsText() const { return !text_.empty(); }
    constexpr int number() const { return number_; }          // 0 for a text tag
    constexpr std::string_view text() const { return text_; }  // empty for a number

    friend constexpr bool operator==(const SectionTag&, const SectionTag&) = default;

private:
    constexpr SectionTag(int number, std::string_view text) : number_(number), text_(text) {}
    int number_;
    std::string_view text_;
};

// Tags that item operations test for but no scanner ever assigns.
inline constexpr std::array<int, 4> kTagsNoScannerAssigns = {19, 20, 24, 25};

enum class Place {
    ShellFolder,      // every shortcut of a shell folder, by CSIDL
    SettingsSection,  // the lines of one section of "Settings.ini"
    KeyValues,        // every value of a registry key
    NamedValue,       // one registry value that holds a list of programs
    ItemSubkeys,      // one subkey per item beneath the key
    ItemKeyValue,     // a value of the same name inside each item's own subkey
};

struct Location {
    Place place;
    int shellFolder = 0;
    std::string_view settingsSection = {};
    platform::RegHandle root = 0;
    std::string_view subKey = {};
    std::string_view valueName = {};
};

struct ItemSection {
    std::string_view path;  // SectionPath
    SectionTag tag;         // SectionTag
    std::string_view scanner;
    // The scanner's argument: currentUser as a 16-bit boolean (0 or -1) for the
    // Run-key scanners, the logon type for AddLogon, 0 for the folder scanners.
    int scannerArgument;
    Location enabled;   // as the scanner reads it
    Location disabled;  // as the scanner reads it
    // The enabled key as the disable and enable operations spell it ("Software"
    // in both hives, "SYSTEM" for rdpwd); their disabled copies lie in this key
    // + "\AutorunsDisabled". Empty for the folder sections.
    std::string_view operationsKey = {};
};

// Sections that scanners produce, in the order of the catalogue.
extern const std::array<ItemSection, 13> kItemSections;

struct OperationSection {
    std::string_view path;
    Location enabled;
    Location disabled;
};

// Sections that item operations and the change monitor recognise but no scanner produces.
extern const std::array<OperationSection, 3> kOperationSections;

// Where services, drivers and browser helpers live (HKLM), as the operations spell them.
inline constexpr std::string_view kServicesKey = "SYSTEM\\CurrentControlSet\\Services\\";
inline constexpr std::string_view kBhoKey =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Browser Helper Objects\\";
inline constexpr std::string_view kBhoKeyDisabled =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Browser Helper Objects\\AutorunsDisabled\\";

// The entry of a section path, by exact, case-sensitive match; null when none.
const ItemSection* FindItemSection(std::string_view path);
// The entry AddLogon fills for a logon type (1, 2 or 3); null for any other.
const ItemSection* FindLogonSection(int logonType);

// ---- translators -------------------------------------------------------------------

// Full registry path, root name included, of a Run-family section's enabled
// key; empty text for any other section.
std::string FindPath(const std::string& sectionPath);
// Node key of a section, whether or not any tree holds it; empty text when unknown.
std::string FindKey(const std::string& sectionPath);

}  // namespace tessmark::catalogue

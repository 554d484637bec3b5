#pragma once
// Where the disable and enable operations find each section's items. These
// spell "Software" in both hives and "SYSTEM" for the terminal-server key,
// unlike the scanners; the registry ignores case, so both reach the same keys.
#include <cstdint>
#include <string>
#include <string_view>

#include "frame/catalogue.h"
#include "platform/registry_port.h"
#include "platform/shell_port.h"

namespace tessmark::operations {

namespace section = frame::section;

struct RunLocation {
    std::string_view section;
    platform::RegHandle root;
    std::string_view key;  // its disabled copies lie in key + "\AutorunsDisabled"
};

// The eight Run-family sections; "RunServicesOnce" keeps its key in the singular.
inline constexpr RunLocation kRunLocations[] = {
    {section::kAllRun, platform::reg::kLocalMachine, "Software\\Microsoft\\Windows\\CurrentVersion\\Run"},
    {section::kAllRunOnce, platform::reg::kLocalMachine,
     "Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce"},
    {section::kAllRunServices, platform::reg::kLocalMachine,
     "Software\\Microsoft\\Windows\\CurrentVersion\\RunServices"},
    {section::kAllRunServicesOnce, platform::reg::kLocalMachine,
     "Software\\Microsoft\\Windows\\CurrentVersion\\RunServiceOnce"},
    {section::kCurrRun, platform::reg::kCurrentUser, "Software\\Microsoft\\Windows\\CurrentVersion\\Run"},
    {section::kCurrRunOnce, platform::reg::kCurrentUser,
     "Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce"},
    {section::kCurrRunServices, platform::reg::kCurrentUser,
     "Software\\Microsoft\\Windows\\CurrentVersion\\RunServices"},
    {section::kCurrRunServicesOnce, platform::reg::kCurrentUser,
     "Software\\Microsoft\\Windows\\CurrentVersion\\RunServiceOnce"},
};

struct FolderLocation {
    std::string_view section;
    std::int32_t folderId;
    std::string_view settingsSection;
};

inline constexpr FolderLocation kFolderLocations[] = {
    {section::kAllUsersStartup, platform::kCsidlCommonStartup, "StartupAllUser"},
    {section::kCurrentUserStartup, platform::kCsidlStartup, "StartupCurrUser"},
};

struct LogonLocation {
    std::string_view section;
    std::string_view PPath;  // under HKLM
    std::string_view LogonFolder;
};

inline constexpr LogonLocation kLogonLocations[] = {
    {section::kLogonStartupPrograms, "SYSTEM\\CurrentControlSet\\Control\\Terminal Server\\Wds\\rdpwd",
     "StartupPrograms"},
    {section::kLogonUserInit, "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon", "Userinit"},
    {section::kLogonShell, "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon", "Shell"},
};

inline constexpr std::string_view kServicesKey = "SYSTEM\\CurrentControlSet\\Services\\";

inline constexpr std::string_view kBhoKey =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Browser Helper Objects\\";
inline constexpr std::string_view kBhoDisabledKey =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Browser Helper Objects\\AutorunsDisabled\\";

// Exact, case-sensitive matches of a section text; null when nothing matches.
template <class Location, std::size_t N>
const Location* FindSection(const Location (&table)[N], const std::string& text) {
    for (const Location& location : table)
        if (location.section == text) return &location;
    return nullptr;
}

inline std::string S(std::string_view text) { return std::string(text); }

}  // namespace tessmark::operations

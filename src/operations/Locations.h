#pragma once
// Where the disable and enable operations find each section's items. These
// spell "Software" in both hives and "SYSTEM" for the terminal-server key,
// unlike the scanners; the registry ignores case, so both reach the same keys.
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/registry_port.h"

namespace tessmark::operations {

struct RunLocation {
    std::string_view section;
    platform::RegHandle root;
    std::string_view key;  // its disabled copies lie in key + "\AutorunsDisabled"
};

// The eight Run-family sections; "RunServicesOnce" keeps its key in the singular.
inline constexpr RunLocation kRunLocations[] = {
    {"Registry\\All Users\\Run", platform::reg::kLocalMachine, "Software\\Microsoft\\Windows\\CurrentVersion\\Run"},
    {"Registry\\All Users\\RunOnce", platform::reg::kLocalMachine,
     "Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce"},
    {"Registry\\All Users\\RunServices", platform::reg::kLocalMachine,
     "Software\\Microsoft\\Windows\\CurrentVersion\\RunServices"},
    {"Registry\\All Users\\RunServicesOnce", platform::reg::kLocalMachine,
     "Software\\Microsoft\\Windows\\CurrentVersion\\RunServiceOnce"},
    {"Registry\\Current User\\Run", platform::reg::kCurrentUser, "Software\\Microsoft\\Windows\\CurrentVersion\\Run"},
    {"Registry\\Current User\\RunOnce", platform::reg::kCurrentUser,
     "Software\\Microsoft\\Windows\\CurrentVersion\\RunOnce"},
    {"Registry\\Current User\\RunServices", platform::reg::kCurrentUser,
     "Software\\Microsoft\\Windows\\CurrentVersion\\RunServices"},
    {"Registry\\Current User\\RunServicesOnce", platform::reg::kCurrentUser,
     "Software\\Microsoft\\Windows\\CurrentVersion\\RunServiceOnce"},
};

struct FolderLocation {
    std::string_view section;
    std::int32_t folderId;
    std::string_view settingsSection;
};

inline constexpr FolderLocation kFolderLocations[] = {
    {"All Users\\Startup", 24, "StartupAllUser"},
    {"Current User\\Startup", 7, "StartupCurrUser"},
};

struct LogonLocation {
    std::string_view section;
    std::string_view PPath;  // under HKLM
    std::string_view LogonFolder;
};

inline constexpr LogonLocation kLogonLocations[] = {
    {"Registry\\All Users\\Logon\\Startup Programs", "SYSTEM\\CurrentControlSet\\Control\\Terminal Server\\Wds\\rdpwd",
     "StartupPrograms"},
    {"Registry\\All Users\\Logon\\UserInit", "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon", "Userinit"},
    {"Registry\\All Users\\Logon\\Shell", "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon", "Shell"},
};

inline constexpr std::string_view kServicesSection = "Registry\\All Users\\Services";
inline constexpr std::string_view kDriversSection = "Registry\\All Users\\Drivers";
inline constexpr std::string_view kServicesKey = "SYSTEM\\CurrentControlSet\\Services\\";

inline constexpr std::string_view kBhoSection = "Registry\\All Users\\Browser Helper Objects";
inline constexpr std::string_view kBhoKey =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Browser Helper Objects\\";
inline constexpr std::string_view kBhoDisabledKey =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Browser Helper Objects\\AutorunsDisabled\\";

// Exact, case-sensitive matches of a section text; null when nothing matches.
template <class Location, std::size_t N>
const Location* FindSection(const Location (&table)[N], const std::string& section) {
    for (const Location& location : table)
        if (location.section == section) return &location;
    return nullptr;
}

inline std::string S(std::string_view text) { return std::string(text); }

}  // namespace tessmark::operations

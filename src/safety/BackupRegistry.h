#pragma once
// The registry backup set: the eleven keys start-up items live on, each
// exported to its own .reg file under the user's application data. Nothing
// calls it, and nothing ever reads the set.
#include <array>
#include <string_view>

#include "platform/files_port.h"
#include "registry/AdvRegistryAccess.h"

namespace tessmark::safety {

struct BackupFile {
    std::string_view fileName;
    std::string_view key;
};

// The folder below "Appdata", and the set in the order it is written.
inline constexpr std::string_view kBackupFolder = "\\Quillon\\Tessmark\\RegistryBackUps";
inline constexpr std::array<BackupFile, 11> kBackupSet{{
    {"RegRun.reg", "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run"},
    {"RegRunOnce.reg", "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunOnce"},
    {"RegRunServices.reg", "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunServices"},
    // The file's plural over the key's singular is how the set has always been named.
    {"RegRunServicesOnce.reg", "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunServiceOnce"},
    {"LogonStartup.reg", "HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Control\\Terminal Server\\Wds\\rdpwd"},
    {"LogonWinlogon.reg", "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon"},
    {"Services.reg", "HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services"},
    {"BHO.reg", "HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Browser Helper Objects"},
    {"RegRunCU.reg", "HKEY_CURRENT_USER\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run"},
    {"RegRunOnceCU.reg", "HKEY_CURRENT_USER\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunOnce"},
    {"RegRunServicesCU.reg", "HKEY_CURRENT_USER\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunServices"},
}};

// Makes the missing folder levels, then exports every key of the set with its
// subkeys. The exports' results are not looked at, and an existing file is
// never overwritten. A folder that can't be made raises the run-time's error.
void BackupRegistry(registry::AdvRegistryAccess& objReg, platform::FilesPort& files);

}  // namespace tessmark::safety

#include "safety/BackupRegistry.h"

#include <array>
#include <string_view>

#include "vb/vb.h"

namespace tessmark::safety {

namespace {

struct BackupFile {
    std::string_view fileName;
    std::string_view key;
};

// The folder below "Appdata", and the set in the order it is written.
constexpr std::string_view kBackupFolder = "\\Quillon\\Tessmark\\RegistryBackUps";
constexpr std::array<BackupFile, 11> kBackupSet{{
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

// Dir(path, vbDirectory): a file of that name counts as well as a folder.
bool DirFinds(platform::FilesPort& files, const std::string& path) {
    return files.GetFileAttributesA(path.c_str()) != platform::kInvalidFileAttributes;
}

void MkDir(platform::FilesPort& files, const std::string& path) {
    if (!files.MkDir(path)) throw vb::VbError(vb::err::kPathFileAccess);
}

}  // namespace

void BackupRegistry(registry::AdvRegistryAccess& objReg, platform::FilesPort& files) {
    // Unset, the paths start at the root of the current drive.
    const std::string appData = files.Environ("Appdata");
    const std::string folder = appData + std::string(kBackupFolder);
    if (!DirFinds(files, folder)) {
        if (!DirFinds(files, appData + "\\Quillon\\Tessmark")) {
            if (!DirFinds(files, appData + "\\Quillon")) MkDir(files, appData + "\\Quillon");
            MkDir(files, appData + "\\Quillon\\Tessmark");
        }
        MkDir(files, folder);
    }
    for (const auto& entry : kBackupSet) {
        registry::VbBool recursive = registry::kTrue;
        objReg.ExportToReg(std::string(entry.key), folder + "\\" + std::string(entry.fileName), recursive);
    }
}

}  // namespace tessmark::safety

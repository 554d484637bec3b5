#include "safety/BackupRegistry.h"

#include "vb/vb.h"

namespace tessmark::safety {

namespace {

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

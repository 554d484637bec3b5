#include "storage/modStartup.h"

#include <cstring>

#include "storage/FindWalk.h"
#include "vb/vb.h"

namespace tessmark::storage {

std::string GetSpecialFolder(platform::ShellPort& shell, std::int32_t folderId) {
    char buffer[260];
    std::memset(buffer, ' ', sizeof buffer);
    if (shell.SpecialFolderPath(folderId, buffer) != 0) return {};
    return std::string(buffer, strnlen(buffer, sizeof buffer));
}

std::string GetShortcutTarget(platform::ShellPort& shell, const std::string& path) {
    std::string target;
    if (!shell.ShortcutTarget(path, &target)) return kShortcutError;
    return target;
}

std::string ParentFolder(const std::string& path) {
    return vb::Left(path, vb::InStrRev(path, "\\") - 1);
}

bool FolderExists(platform::FilesPort& files, const std::string& path) {
    return files.FolderExists(path);
}

std::string MakeFolderPath(platform::FilesPort& files, std::string& path) {
    try {
        std::string parent = ParentFolder(path);
        if (!FolderExists(files, parent)) {
            MakeFolderPath(files, parent);
            if (!files.MkDir(parent)) throw vb::VbError(vb::err::kPathFileAccess);
        }
        return path;
    } catch (const vb::VbError&) {
        return {};
    }
}

std::vector<std::string> DirNormalFiles(platform::FilesPort& files, const std::string& pattern) {
    constexpr std::uint32_t kNotPlain =
        platform::kAttrHidden | platform::kAttrSystem | platform::kAttrDirectory;
    std::vector<std::string> names;
    platform::FindData data;
    FindWalk walk(files, pattern, data);
    if (!walk.Started()) return names;
    do {
        if ((data.attributes & kNotPlain) == 0)
            names.emplace_back(data.fileName, strnlen(data.fileName, sizeof data.fileName));
    } while (walk.Next(data));
    return names;
}

std::vector<std::string> ShellFolderFiles(platform::FilesPort& files, const std::string& folder) {
    if (folder.empty()) return {};
    return DirNormalFiles(files, folder + "\\*.*");
}

}  // namespace tessmark::storage

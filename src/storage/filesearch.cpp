#include "storage/filesearch.h"

#include <cstring>

#include "storage/FindWalk.h"

namespace tessmark::storage {

namespace {

std::string NameOf(const platform::FindData& data) {
    return StripAtNull(std::string(data.fileName, sizeof data.fileName));
}

bool IsDots(const std::string& name) { return name == "." || name == ".."; }


}  // namespace

std::string StripAtNull(const std::string& text) {
    std::size_t nul = text.find('\0');
    return nul == std::string::npos ? text : text.substr(0, nul);
}

std::vector<std::string> FindFiles(platform::FilesPort& files, platform::UiServices& ui,
                                   const std::string& folder, const std::string& fileName,
                                   std::int32_t) {
    std::vector<std::string> results;
    SearchFolder(files, ui, folder, fileName, 0, 0, results);
    return results;
}

double SearchFolder(platform::FilesPort& files, platform::UiServices& ui, std::string folder,
                    const std::string& pattern, vb::Integer fileCount, vb::Integer folderCount,
                    std::vector<std::string>& results) {
    double total = 0;
    if (vb::Right(folder, 1) != "\\") folder += "\\";

    // Subfolders, one free slot kept at the end of the array.
    vb::Array<std::string> subfolders;
    subfolders.ReDim(0);
    long found = 0;
    platform::FindData data;
    if (FindWalk walk(files, folder + "*", data); walk.Started()) {
        do {
            ui.DoEvents();
            std::string name = NameOf(data);
            if (IsDots(name)) continue;
            std::string full = folder + name;
            std::uint32_t attributes = files.GetFileAttributesA(full.c_str());
            if ((attributes & platform::kAttrDirectory) != 0 && vb::InStr(full, "Processed") == 0) {
                subfolders[found] = name;
                ++folderCount;
                ++found;
                subfolders.ReDimPreserve(found);
            }
        } while (walk.Next(data));
    }

    if (FindWalk walk(files, folder + pattern, data); walk.Started()) {
        do {
            ui.DoEvents();
            std::string name = NameOf(data);
            if (IsDots(name)) continue;
            // The high word enters multiplied by -1; nothing reads the total.
            total += static_cast<double>(static_cast<std::int32_t>(data.sizeLow)) -
                     static_cast<double>(static_cast<std::int32_t>(data.sizeHigh));
            ++fileCount;
            std::string full = folder + name;
            if (vb::InStr(full, "SYSTEM FILES") == 0) results.push_back(full);
        } while (walk.Next(data));
    }

    for (long i = 0; i < found; ++i) {
        ui.DoEvents();
        total += SearchFolder(files, ui, folder + subfolders[i] + "\\", pattern, fileCount,
                              folderCount, results);
    }
    return total;
}

}  // namespace tessmark::storage

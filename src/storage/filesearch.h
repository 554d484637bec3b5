#pragma once
// A recursive search for files by name or pattern, yielding to the window at
// each entry so the program stays alive during a long walk.
#include <cstdint>
#include <string>
#include <vector>

#include "platform/files_port.h"
#include "platform/ui_services.h"
#include "vb/vb.h"

namespace tessmark::storage {

// Full paths of the matches: a folder's own files before its subfolders'.
// Folders whose path holds "Processed" are not entered; matches whose path
// holds "SYSTEM FILES" are not recorded. The flag is kept and never read.
std::vector<std::string> FindFiles(platform::FilesPort& files, platform::UiServices& ui,
                                   const std::string& folder, const std::string& fileName,
                                   std::int32_t flag);

// Walks one folder; returns the total of the sizes found. The 16-bit counters
// go down each branch by value and overflow with error 6.
double SearchFolder(platform::FilesPort& files, platform::UiServices& ui, std::string folder,
                    const std::string& pattern, vb::Integer fileCount, vb::Integer folderCount,
                    std::vector<std::string>& results);

std::string StripAtNull(const std::string& text);

}  // namespace tessmark::storage

#pragma once
// Icons and the check-mark pass shared by every scanner.
#include <cstdint>
#include <functional>
#include <string>

#include "discovery/ItemList.h"
#include "platform/shell_port.h"

namespace tessmark::discovery {

// Asks the shell for the file's icon and display name and adds the icon to
// `imageList` through the scratch `picture`. Returns the new image's index, or
// 0 when the shell knows no such file or nothing could be added. `record` is
// the form's one SHFILEINFO: it is never cleared, so on failure `displayName`
// holds what the previous call left there. `displayName` is the record's whole
// 260-character field, the name ending at its first NUL. Each step runs with
// errors ignored, so a missing image list or picture box only skips that step.
long AddItemIcon(platform::ShellPort& shell, platform::ShFileInfo& record, std::string& path,
                 ImageStore* imageList, PictureBox* picture, std::int16_t iconSize,
                 std::string& displayName);

inline constexpr const char* kFileNotFound = "File Not Found";

// Turns raw rows into what the user sees: a row without icon or path is
// marked "File Not Found", check marks follow SubItems(2), row 1 is selected,
// the details handler runs, and the two totals are renewed.
void refreshCheckBox(ItemList& list, std::string& lbltotalitem, std::string& lblactiveitem,
                     const std::function<void()>& ListView1_Click);

}  // namespace tessmark::discovery

#pragma once
// Special folders, shortcut targets, folder creation and the plain-file walk.
#include <cstdint>
#include <string>
#include <vector>

#include "platform/files_port.h"
#include "platform/shell_port.h"
#include "platform/ui_services.h"

namespace tessmark::storage {

// A shell folder's path; empty on failure.
std::string GetSpecialFolder(platform::ShellPort& shell, std::int32_t folderId);

inline constexpr const char* kShortcutError = "Error occured.";

// The shortcut's TargetPath, or "Error occured." on any failure.
std::string GetShortcutTarget(platform::ShellPort& shell, const std::string& path);

// Makes every folder above the path's last backslash (pass a trailing
// backslash to make the folder itself). Returns the path, or the empty text
// on any error, leaving what it already made.
std::string MakeFolderPath(platform::FilesPort& files, std::string& path);
std::string ParentFolder(const std::string& path);  // error 5 without a backslash
bool FolderExists(platform::FilesPort& files, const std::string& path);

// Hands a press on a caption-less form to the window manager as a drag.
inline void DragForm(platform::UiServices& ui, platform::WindowHandle form) { ui.DragForm(form); }

// The names Dir returns for a pattern with the plain attribute: ordinary files
// only (read-only and archive files count; hidden, system and folders do not),
// in the platform's order.
std::vector<std::string> DirNormalFiles(platform::FilesPort& files, const std::string& pattern);

// The plain files of a shell folder. A folder the shell could not name comes
// as the empty path, and "\*.*" alone would walk the current drive's root:
// such a folder has no files.
std::vector<std::string> ShellFolderFiles(platform::FilesPort& files, const std::string& folder);

}  // namespace tessmark::storage

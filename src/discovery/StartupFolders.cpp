#include "discovery/StartupFolders.h"

#include "catalogue/sections.h"
#include "storage/filesearch.h"
#include "storage/modStartup.h"
#include "vb/vb.h"

namespace tessmark::discovery {

using vb::Resume;

namespace {

// Only the all-users walk yields between rows.
void AddStartupFolder(ScanContext& form, std::string_view sectionPath, bool pumpsMessages) {
    const catalogue::ItemSection& entry = *catalogue::FindItemSection(sectionPath);
    const std::string section(entry.path);
    const long tag = entry.tag.number();

    std::string sideFolder, folder;
    std::vector<std::string> names;
    Resume([&] { sideFolder = form.SideFolder(); });
    Resume([&] { folder = storage::GetSpecialFolder(form.ports.shell, entry.enabled.shellFolder); });
    Resume([&] { names = storage::ShellFolderFiles(form.ports.files, folder); });

    for (const std::string& name : names) {
        if (pumpsMessages) Resume([&] { form.ports.ui.DoEvents(); });
        std::string target, displayName;
        Resume([&] { target = storage::GetShortcutTarget(form.ports.shell, folder + "\\" + name); });
        ItemRow& row = form.ListView1.Add();
        Resume([&] { row.SmallIcon = form.RowIcon(target, displayName); });
        // The shell's name for the target, not the shortcut's own name.
        Resume([&] { row.Text = storage::StripAtNull(displayName); });
        Resume([&] { row.SubItems(1) = target; });
        Resume([&] { row.SubItems(2) = "Yes"; });
        Resume([&] { row.SubItems(3) = section; });
        Resume([&] { row.Tag = tag; });
        row.Place = {ItemPlace::Kind::Shortcut, 0, folder, name, {}};
    }

    vb::Array<std::string> lines;
    Resume([&] { form.objinifile.IniFilePath(sideFolder + "\\Settings.ini"); });
    Resume([&] { form.objinifile.IniSection(std::string(entry.disabled.settingsSection)); });
    Resume([&] { lines = form.objinifile.IniReadSection(); });
    long last = -1;
    Resume([&] { last = lines.UBound() - 1; });  // the element at the upper bound is never visited
    for (vb::Integer i = 0; i <= last;) {
        // Without "=" the cut fails and the whole line serves as the name.
        Resume([&] { lines[i] = vb::Left(lines[i], vb::InStr(lines[i], "=") - 1); });
        ItemRow& row = form.ListView1.Add();
        Resume([&] { row.Text = lines[i]; });
        Resume([&] { row.SubItems(1) = form.objinifile.IniReadValue(lines[i]); });
        Resume([&] { row.SubItems(2) = "No"; });
        Resume([&] { row.SubItems(3) = section; });
        Resume([&] { row.Tag = tag; });
        Resume([&] { row.SmallIcon = form.RowIcon(row.SubItems(1)); });
        row.Place = {ItemPlace::Kind::SettingsLine, 0, std::string(entry.disabled.settingsSection), lines[i], {}};
        bool stepped = false;
        Resume([&] { ++i, stepped = true; });  // past 32767 the loop ends with its error ignored
        if (!stepped) break;
    }
}

}  // namespace

void AddStartupAllUser(ScanContext& form) { AddStartupFolder(form, catalogue::section::kAllUsersStartup, true); }
void AddStartupCurrUser(ScanContext& form) {
    AddStartupFolder(form, catalogue::section::kCurrentUserStartup, false);
}

}  // namespace tessmark::discovery

#include "discovery/ItemList.h"
#include "storage/filesearch.h"
#include "operations/ItemOperations.h"
#include "operations/Locations.h"
#include "registry/registry_module.h"
#include "storage/modStartup.h"
#include "vb/vb.h"

namespace tessmark::operations {

using platform::reg::kLocalMachine;

void ItemOperations::MarkDisable(const std::string& SectionName, const std::string& ItemName,
                                 const std::string& ItemPath, std::int32_t ItemValue) {
    const std::string sideFolder = form_.SideFolder();
    auto& registry = form_.ports.registry;

    if (const catalogue::ItemSection* run = FindSection(catalogue::Place::KeyValues, SectionName)) {
        // The copy is always text, whatever type the value had.
        registry::SetRegString(registry, run->enabled.root, S(run->operationsKey) + "\\AutorunsDisabled", ItemName, ItemPath);
        registry::DeleteRegValue(registry, run->enabled.root, S(run->operationsKey), ItemName);
    } else if (const catalogue::ItemSection* folder = FindSection(catalogue::Place::ShellFolder, SectionName)) {
        form_.objinifile.IniFilePath(sideFolder + "\\Settings.ini");
        form_.objinifile.IniSection(S(folder->disabled.settingsSection));
        form_.objinifile.IniWriteValue(ItemName, ItemPath);
        // Every shortcut to the target goes, whatever it is called; its
        // arguments, working folder and icon are not kept anywhere.
        KillShortcutsTo(storage::GetSpecialFolder(form_.ports.shell, folder->enabled.shellFolder), ItemPath);
    } else if (const catalogue::ItemSection* logon = FindSection(catalogue::Place::NamedValue, SectionName)) {
        DisableLogon(S(logon->operationsKey), ItemName, S(logon->enabled.valueName));
    } else if (SectionName == section::kServices || SectionName == section::kDrivers) {
        // Only a driver keeps its old start type; a service gets a plain mark.
        const std::string path = "HKEY_LOCAL_MACHINE\\" + S(kServicesKey) + ItemName;
        objReg().WriteDWORD(path, "Start", 4);
        objReg().WriteDWORD(path, "AutorunsDisabled", SectionName == section::kServices ? 1 : ItemValue);
    } else if (SectionName == section::kBrowserHelperObjects) {
        if (!objReg().HaveSubkey("HKEY_LOCAL_MACHINE\\" + S(kBhoKey) + ItemPath)) {
            registry::CreateRegKey(registry, kLocalMachine, S(kBhoDisabledKey) + ItemPath);
            registry.RegDeleteKeyA(kLocalMachine, (S(kBhoKey) + ItemPath).c_str());
        } else {
            DisableBHO(ItemPath);
        }
    }
    form_.ports.ui.ActivityLog("Tessmark - Section-" + storage::StripAtNull(SectionName) + " ItemName-" +
                               storage::StripAtNull(ItemName) + " ItemPath-" + storage::StripAtNull(ItemPath));
}

void ItemOperations::KillShortcutsTo(const std::string& folder, const std::string& target) {
    for (const std::string& file : storage::ShellFolderFiles(form_.ports.files, folder)) {
        if (storage::GetShortcutTarget(form_.ports.shell, folder + "\\" + file) != target) continue;
        if (!form_.ports.files.Kill(folder + "\\" + file)) throw vb::VbError(vb::err::kPathFileAccess);
    }
}

std::int32_t StartTypeWord(const std::string& key) {
    const std::string word = vb::Left(key, vb::InStr(key, ",") - 1);
    if (word == "Zero") return 0;
    if (word == "One") return 1;
    if (word == "Two") return 2;
    if (word == "Three") return 3;
    return 0;
}

}  // namespace tessmark::operations

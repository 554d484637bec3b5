#include "discovery/RowServices.h"
#include "operations/ItemOperations.h"
#include "operations/Locations.h"
#include "registry/registry_module.h"
#include "storage/modStartup.h"
#include "vb/vb.h"

namespace tessmark::operations {

using platform::reg::kLocalMachine;

namespace {

// What the shell object raises when it cannot save a shortcut (E_FAIL).
constexpr int kAutomationError = -2147467259;

// Whether the text ends in a dot and a three-letter extension, by a slice that
// is five characters long for any real path and so never equals "."; a text
// shorter than five characters makes the slice raise an error.
bool EndsInDot(const std::string& text) {
    const long length = vb::Len(text);
    return vb::Mid(text, length - 4, length - 3) == ".";
}

}  // namespace

void ItemOperations::MarkEnable(const std::string& SectionName, const std::string& ItemName,
                                const std::string& ItemPath, std::int32_t ItemValue) {
    const std::string sideFolder = form_.SideFolder();
    auto& registry = form_.ports.registry;

    if (const catalogue::ItemSection* run = FindSection(catalogue::Place::KeyValues, SectionName)) {
        // The AutorunsDisabled subkey stays, even when empty.
        registry::SetRegString(registry, run->enabled.root, S(run->operationsKey), ItemName, ItemPath);
        registry::DeleteRegValue(registry, run->enabled.root, S(run->operationsKey) + "\\AutorunsDisabled", ItemName);
    } else if (const catalogue::ItemSection* folder = FindSection(catalogue::Place::ShellFolder, SectionName)) {
        const std::string path = storage::GetSpecialFolder(form_.ports.shell, folder->enabled.shellFolder);
        CreateShortcut(path + "\\" + ItemName, ItemPath, ItemName);
        form_.objinifile.IniFilePath(sideFolder + "\\Settings.ini");
        form_.objinifile.IniSection(S(folder->disabled.settingsSection));
        // A line that no longer names the path stays, and the item shows twice.
        if (form_.objinifile.IniReadValue(ItemName) == ItemPath) form_.objinifile.IniDeleteKey(ItemName);
    } else if (const catalogue::ItemSection* logon = FindSection(catalogue::Place::NamedValue, SectionName)) {
        EnableLogon(S(logon->operationsKey), ItemName, S(logon->enabled.valueName));
    } else if (SectionName == section::kServices || SectionName == section::kDrivers) {
        // A service comes back automatic whatever it was; a driver gets the
        // number the caller hands in. The disabled mark is never read.
        objReg().WriteDWORD("HKEY_LOCAL_MACHINE\\" + S(kServicesKey) + ItemName, "Start",
                            SectionName == section::kServices ? 2 : ItemValue);
        registry::DeleteRegValue(registry, kLocalMachine, S(kServicesKey) + ItemName, "AutorunsDisabled");
    } else if (SectionName == section::kBrowserHelperObjects) {
        if (!objReg().HaveSubkey("HKEY_LOCAL_MACHINE\\" + S(kBhoDisabledKey) + ItemPath)) {
            registry::CreateRegKey(registry, kLocalMachine, S(kBhoKey) + ItemPath);
            registry.RegDeleteKeyA(kLocalMachine, (S(kBhoDisabledKey) + ItemPath).c_str());
        } else {
            EnableBHO(ItemPath);
        }
    }
}

void ItemOperations::CreateShortcut(std::string ShortcutPath, const std::string& TargetPath, std::string Item_Name) {
    if (EndsInDot(ShortcutPath))
        ShortcutPath = vb::Left(ShortcutPath, vb::Len(ShortcutPath) - 4) + ".lnk";
    else
        ShortcutPath += ".lnk";

    // The icon file is the item's name with a second extension: "notepad.exe.exe".
    if (vb::Len(Item_Name) < 5)
        Item_Name += ".exe";
    else if (EndsInDot(Item_Name))
        Item_Name = vb::Left(Item_Name, vb::Len(Item_Name) - 4) + ".exe";
    else
        Item_Name += ".exe";
    std::string target = TargetPath, displayName;
    // With no image list to add to, the index is always 0.
    const long index = discovery::AddItemIcon(form_.ports.shell, form_.shellRecord, target, nullptr, nullptr, 0,
                                              displayName);

    // No arguments, working folder or description: what disabling threw away stays lost.
    if (!form_.ports.shell.SaveShortcut(ShortcutPath, TargetPath, Item_Name + "," + vb::CStr(index), 1))
        throw vb::VbError(kAutomationError);
}

}  // namespace tessmark::operations

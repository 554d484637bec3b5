#include "operations/LogonList.h"

#include "discovery/GetExeName.h"
#include "discovery/Logon.h"
#include "operations/ItemOperations.h"
#include "registry/registry_module.h"
#include "registry/regenum.h"
#include "vb/vb.h"

namespace tessmark::operations {

using platform::RegHandle;
using platform::reg::kLocalMachine;

std::string WithSeparator(std::string list, const std::string& LogonFolder) {
    if (LogonFolder == "Shell") return list + " ";
    if (vb::Right(vb::Trim(list), 1) != ",") list += ",";
    return list;
}

std::string WithoutMember(const std::string& list, const std::string& ItemName, const std::string& LogonFolder,
                          LastMemberCut cut, bool dropLeadingComma) {
    const long p = vb::InStr(list, ItemName);
    std::string before = p > 2 ? vb::Left(list, p - 2) : std::string();
    if (!before.empty()) before = WithSeparator(before, LogonFolder);
    std::string after = vb::Mid(list, vb::Len(ItemName) + vb::Len(before) + 2);
    if (after.empty() && !before.empty())
        before = cut == LastMemberCut::KeepFirstCharacter ? vb::Left(before, 1) : vb::Left(before, vb::Len(before) - 1);
    const std::string t = vb::Trim(after);
    if (dropLeadingComma && vb::Left(t, 1) == ",") after = vb::Mid(t, 2);
    return before + after;
}

namespace {

// Whether the value at this index is the list value, by its name reduced as a
// command line and compared without regard to case; gives that reduced name.
bool IsListValue(discovery::ScanContext& form, RegHandle key, long index, const std::string& LogonFolder,
                 std::string& reducedName) {
    std::string name = registry::EnumRegValueName(form.ports.registry, key, index);
    reducedName = discovery::GetExeName(name, form.folders);
    return vb::TextEquals(reducedName, LogonFolder);
}

void AddMember(discovery::ScanContext& form, const std::string& subKey, const std::string& ItemName,
               const std::string& LogonFolder) {
    auto& registry = form.ports.registry;
    RegHandle key = registry::OpenRegKey(registry, kLocalMachine, subKey);
    const long n = registry::CountRegEntries(registry, key, 0);
    std::string list, name;
    for (long i = 0; i <= n - 1; ++i)
        if (IsListValue(form, key, i, LogonFolder, name)) list = registry::QueryRegValue(registry, key, name);
    list = discovery::CleanValueText(list);
    if (!list.empty()) list = WithSeparator(list, LogonFolder);
    registry::SetRegString(registry, kLocalMachine, subKey, LogonFolder, list + ItemName);
    registry.RegCloseKey(key);
}

enum class WhenEmptied { DeleteValue, DeleteKey, WriteEmpty };

void RemoveMember(discovery::ScanContext& form, const std::string& subKey, const std::string& ItemName,
                  const std::string& LogonFolder, LastMemberCut cut, WhenEmptied emptied) {
    const bool deleting = emptied == WhenEmptied::WriteEmpty;
    auto& registry = form.ports.registry;
    RegHandle key = registry::OpenRegKey(registry, kLocalMachine, subKey);
    const long n = registry::CountRegEntries(registry, key, 0);
    std::string list, name;
    for (long i = 0; i <= n - 1; ++i) {
        if (!IsListValue(form, key, i, LogonFolder, name)) continue;
        list = discovery::CleanValueText(registry::QueryRegValue(registry, key, name));
        list = WithoutMember(list, ItemName, LogonFolder, cut, !deleting);
    }
    if (!list.empty() || deleting)
        registry::SetRegString(registry, kLocalMachine, subKey, LogonFolder, list);
    else if (emptied == WhenEmptied::DeleteValue)
        registry::DeleteRegValue(registry, kLocalMachine, subKey, LogonFolder);
    else  // "Shell" and "Userinit" share this key: the other list goes with it
        registry::DeleteRegKey(registry, kLocalMachine, subKey);
    registry.RegCloseKey(key);
}

}  // namespace

void ItemOperations::DisableLogon(const std::string& PPath, const std::string& ItemName,
                                  const std::string& LogonFolder) {
    AddMember(form_, PPath + "\\AutorunsDisabled", ItemName, LogonFolder);
    RemoveMember(form_, PPath, ItemName, LogonFolder, LastMemberCut::DropLastCharacter, WhenEmptied::DeleteValue);
}

void ItemOperations::EnableLogon(const std::string& PPath, const std::string& ItemName,
                                 const std::string& LogonFolder) {
    AddMember(form_, PPath, ItemName, LogonFolder);
    RemoveMember(form_, PPath + "\\AutorunsDisabled", ItemName, LogonFolder, LastMemberCut::KeepFirstCharacter,
                 WhenEmptied::DeleteKey);
}

void ItemOperations::DeleteLogon(const std::string& PPath, const std::string& ItemName,
                                 const std::string& LogonFolder) {
    RemoveMember(form_, PPath, ItemName, LogonFolder, LastMemberCut::DropLastCharacter, WhenEmptied::WriteEmpty);
}

}  // namespace tessmark::operations

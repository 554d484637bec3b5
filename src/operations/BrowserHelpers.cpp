// Browser helper objects: a key per object, named by its class identifier,
// whose first-level subkeys are carried between the live and the disabled
// subtree. Values of the class key itself, and subkeys of subkeys, are not.
#include "operations/ItemOperations.h"
#include "operations/Locations.h"
#include "registry/registry_module.h"
#include "registry/regenum.h"

namespace tessmark::operations {

using platform::RegHandle;
using platform::reg::kLocalMachine;

namespace {

void MoveHelperSubkeys(discovery::ScanContext& form, registry::AdvRegistryAccess& objReg, const std::string& from,
                       const std::string& to, const std::string& PPath) {
    auto& registry = form.ports.registry;
    registry::CreateRegKey(registry, kLocalMachine, to + PPath);
    vb::Array<std::string> names;
    const long n = objReg.EnumKeys("HKEY_LOCAL_MACHINE\\" + from + PPath, names);
    for (long i = 0; i <= n - 1; ++i) {
        const std::string sub = PPath + "\\" + names[i];
        RegHandle key = registry::OpenRegKey(registry, kLocalMachine, from + sub);
        const long values = registry::CountRegEntries(registry, key, 0);
        registry::CreateRegKey(registry, kLocalMachine, to + sub);
        // Whatever their type, the copies are text.
        for (long j = 0; j <= values - 1; ++j) {
            const std::string name = registry::EnumRegValueName(registry, key, j);
            registry::SetRegString(registry, kLocalMachine, to + sub, name,
                                   registry::QueryRegValue(registry, key, name));
        }
        registry.RegCloseKey(key);
        registry::DeleteRegKey(registry, kLocalMachine, from + sub);
    }
    objReg.KillKey("HKEY_LOCAL_MACHINE\\" + from + PPath);
}

}  // namespace

registry::AdvRegistryAccess& ItemOperations::objReg() {
    if (!objReg_) objReg_ = std::make_unique<registry::AdvRegistryAccess>(form_.ports.registry, form_.ports.files,
                                                                                 form_.ports.ui);
    return *objReg_;
}

void ItemOperations::DisableBHO(const std::string& PPath) {
    MoveHelperSubkeys(form_, objReg(), S(kBhoKey), S(kBhoDisabledKey), PPath);
}

void ItemOperations::EnableBHO(const std::string& PPath) {
    MoveHelperSubkeys(form_, objReg(), S(kBhoDisabledKey), S(kBhoKey), PPath);
}

}  // namespace tessmark::operations

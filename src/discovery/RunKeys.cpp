#include "discovery/RunKeys.h"

#include "catalogue/sections.h"
#include "registry/regenum.h"
#include "storage/filesearch.h"
#include "vb/vb.h"

namespace tessmark::discovery {

using platform::RegHandle;
using vb::Resume;

namespace {

struct RunVariant {
    std::string_view allUsersSection;
    std::string_view currentUserSection;
    bool reducesEnabledPath;  // only the Run key shows the reduced path
};

constexpr RunVariant kRun{catalogue::section::kAllRun, catalogue::section::kCurrRun, true};
constexpr RunVariant kRunOnce{catalogue::section::kAllRunOnce, catalogue::section::kCurrRunOnce, false};
constexpr RunVariant kRunServices{catalogue::section::kAllRunServices, catalogue::section::kCurrRunServices, false};
constexpr RunVariant kRunServiceOnce{catalogue::section::kAllRunServicesOnce, catalogue::section::kCurrRunServicesOnce, false};

// The all-users key is opened first, also for the current user, and closed at once.
RegHandle OpenForHive(ScanContext& form, const char* subKey, bool currentUser) {
    auto& registry = form.ports.registry;
    RegHandle key = 0;
    Resume([&] { key = registry::OpenRegKey(registry, platform::reg::kLocalMachine, subKey); });
    if (currentUser) {
        Resume([&] { registry.RegCloseKey(key); });
        Resume([&] { key = registry::OpenRegKey(registry, platform::reg::kCurrentUser, subKey); });
    }
    return key;
}

void ScanKey(ScanContext& form, const RunVariant& variant, bool currentUser, bool enabled) {
    auto& registry = form.ports.registry;
    const std::string section(currentUser ? variant.currentUserSection : variant.allUsersSection);
    // Keys and tags as the catalogue files them: the Run subkey alone ends with a
    // backslash, RunServiceOnce is singular while its sections say
    // RunServicesOnce, and the current user's two service keys share tag 23.
    const catalogue::ItemSection& entry = *catalogue::FindItemSection(section);
    const std::string subKey((enabled ? entry.enabled : entry.disabled).subKey);
    RegHandle key = OpenForHive(form, subKey.c_str(), currentUser);
    long count = 0;
    Resume([&] { count = registry::CountRegEntries(registry, key, 0); });
    for (long i = 0; i <= count - 1; ++i) {
        std::string name, data, reduced;
        ItemRow& row = form.ListView1.Add();
        Resume([&] { row.Text = registry::EnumRegValueName(registry, key, i); });
        Resume([&] { name = registry::EnumRegValueName(registry, key, i); });
        Resume([&] { data = registry::QueryRegValue(registry, key, name); });
        // The path column takes the raw data before the reduction rewrites it,
        // except for the enabled rows of the Run key.
        bool showReduced = enabled && variant.reducesEnabledPath;
        if (!showReduced) Resume([&] { row.SubItems(1) = storage::StripAtNull(data); });
        Resume([&] { reduced = GetExeName(data, form.folders); });
        if (showReduced) Resume([&] { row.SubItems(1) = reduced; });
        Resume([&] { row.SubItems(2) = enabled ? "Yes" : "No"; });
        Resume([&] { row.SubItems(3) = section; });
        Resume([&] { row.SmallIcon = form.RowIcon(reduced); });
        Resume([&] { row.Tag = static_cast<long>(entry.tag.number()); });
        row.Place = {ItemPlace::Kind::Value, currentUser ? platform::reg::kCurrentUser : platform::reg::kLocalMachine,
                     subKey, storage::StripAtNull(name), {}};
    }
    Resume([&] { registry.RegCloseKey(key); });
}

void AddRunKey(ScanContext& form, const RunVariant& variant, bool currentUser) {
    ScanKey(form, variant, currentUser, true);
    ScanKey(form, variant, currentUser, false);
}

}  // namespace

void AddRun(ScanContext& form, bool currentUser) { AddRunKey(form, kRun, currentUser); }
void AddRunOnce(ScanContext& form, bool currentUser) { AddRunKey(form, kRunOnce, currentUser); }
void AddRunServices(ScanContext& form, bool currentUser) { AddRunKey(form, kRunServices, currentUser); }
void AddRunServiceOnce(ScanContext& form, bool currentUser) { AddRunKey(form, kRunServiceOnce, currentUser); }

}  // namespace tessmark::discovery

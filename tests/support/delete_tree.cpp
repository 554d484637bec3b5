#include <vector>

#include "machine.h"

namespace tessmark::testing {

void DeleteTree(platform::RegistryPort& registry, platform::RegHandle parent, const std::string& subKey) {
    platform::RegHandle key = 0;
    if (registry.RegOpenKeyExA(parent, subKey.c_str(), 0, platform::reg::kAllAccess, &key) != 0) return;
    std::vector<std::string> children;
    char name[257];  // the longest key name and its NUL
    for (std::uint32_t length = sizeof name; registry.RegEnumKeyExA(key, children.size(), name, &length) == 0;
         length = sizeof name)
        children.emplace_back(name, length);
    // Relative to the open key, so that deep paths stay short.
    for (const auto& child : children) DeleteTree(registry, key, child);
    registry.RegCloseKey(key);
    registry.RegDeleteKeyA(parent, subKey.c_str());
}

}  // namespace tessmark::testing

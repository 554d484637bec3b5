#include <vector>

#include "machine.h"

namespace tessmark::testing {

void DeleteTree(platform::RegistryPort& registry, platform::RegHandle root, const std::string& subKey) {
    platform::RegHandle key = 0;
    if (registry.RegOpenKeyExA(root, subKey.c_str(), 0, platform::reg::kAllAccess, &key) != 0) return;
    std::vector<std::string> children;
    for (std::uint32_t i = 0;; ++i) {
        char name[256];
        std::uint32_t length = sizeof name;
        if (registry.RegEnumKeyExA(key, i, name, &length) != 0) break;
        children.emplace_back(name, length);
    }
    registry.RegCloseKey(key);
    for (const auto& child : children) DeleteTree(registry, root, subKey + "\\" + child);
    registry.RegDeleteKeyA(root, subKey.c_str());
}

}  // namespace tessmark::testing

#include "registry/registry_module.h"

#include "vb/vb.h"

namespace tessmark::registry {
namespace reg = platform::reg;
using platform::RegHandle;

void CreateRegKey(platform::RegistryPort& registry, RegHandle root, const std::string& subKey) {
    RegHandle handle = 0;
    registry.RegCreateKeyA(root, subKey.c_str(), &handle);
    registry.RegCloseKey(handle);
}

void DeleteRegKey(platform::RegistryPort& registry, RegHandle root, const std::string& subKey) {
    registry.RegDeleteKeyA(root, subKey.c_str());
}

void DeleteRegValue(platform::RegistryPort& registry, RegHandle root, const std::string& subKey,
                    const std::string& valueName) {
    RegHandle handle = 0;
    registry.RegOpenKeyA(root, subKey.c_str(), &handle);
    registry.RegDeleteValueA(handle, valueName.c_str());
    registry.RegCloseKey(handle);
}

void SetRegString(platform::RegistryPort& registry, RegHandle root, const std::string& subKey,
                  const std::string& valueName, const std::string& value) {
    RegHandle handle = 0;
    registry.RegCreateKeyA(root, subKey.c_str(), &handle);
    // The size leaves out the terminating NUL; the platform counts the NUL that follows.
    registry.RegSetValueExA(handle, valueName.c_str(), reg::kSz, reinterpret_cast<const std::uint8_t*>(value.c_str()),
                            static_cast<std::uint32_t>(vb::Len(value)));
    registry.RegCloseKey(handle);
}

}  // namespace tessmark::registry

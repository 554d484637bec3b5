#pragma once
// Values set and read straight through the registry port, so that a suite can
// seed and check independently of the code under test.
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "platform/registry_port.h"

namespace tessmark::testing {

// The stored type and every stored byte.
using RawValue = std::pair<std::uint32_t, std::string>;

// Creates the key as needed; false when the key or the value can't be made.
inline bool SetRaw(platform::RegistryPort& registry, platform::RegHandle root, const std::string& key,
                   const std::string& name, std::uint32_t type, const std::string& data) {
    platform::RegHandle handle = 0;
    if (registry.RegCreateKeyA(root, key.c_str(), &handle) != 0) return false;
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(data.data());
    const bool set = registry.RegSetValueExA(handle, name.c_str(), type, bytes, std::uint32_t(data.size())) == 0;
    registry.RegCloseKey(handle);
    return set;
}

inline std::optional<RawValue> GetRaw(platform::RegistryPort& registry, platform::RegHandle root,
                                      const std::string& key, const std::string& name) {
    platform::RegHandle handle = 0;
    if (registry.RegOpenKeyExA(root, key.c_str(), 0, platform::reg::kRead, &handle) != 0) return std::nullopt;
    RawValue value{0, std::string(1024, '\0')};
    std::uint32_t length = 1024;
    const auto code = registry.RegQueryValueExA(handle, name.c_str(), &value.first,
                                                reinterpret_cast<std::uint8_t*>(value.second.data()), &length);
    registry.RegCloseKey(handle);
    if (code != 0) return std::nullopt;
    value.second.resize(length);
    return value;
}

}  // namespace tessmark::testing

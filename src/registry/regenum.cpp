#include "registry/regenum.h"

#include <algorithm>

#include "vb/vb.h"

namespace tessmark::registry {
namespace reg = platform::reg;
using platform::RegHandle;

namespace {

// RegValueData and the byte laid out in front of it. Value data from EnumRegValueName
// lands here, starting at that byte, and nothing ever reads it.
std::uint8_t regValueBlock[1 + 256];
std::uint8_t* const RegValueData = regValueBlock + 1;

}  // namespace

RegHandle OpenRegKey(platform::RegistryPort& registry, RegHandle root, const std::string& subKey) {
    RegHandle handle = 0;
    registry.RegOpenKeyExA(root, subKey.c_str(), 0, reg::kQueryValue, &handle);
    return handle;
}

std::int32_t CountRegEntries(platform::RegistryPort& registry, RegHandle key, std::int32_t mode) {
    std::uint32_t subKeys = 0, values = 0;
    if (registry.RegQueryInfoKeyA(key, &subKeys, &values) != reg::kSuccess) return 0;
    switch (mode) {
        case 0: return static_cast<std::int32_t>(values);
        case 1: return static_cast<std::int32_t>(subKeys);
        default: return 0;
    }
}

std::string EnumRegValueName(platform::RegistryPort& registry, RegHandle key, std::int32_t index) {
    std::fill_n(RegValueData, 256, 0);
    std::uint32_t subKeys = 0, values = 0;
    registry.RegQueryInfoKeyA(key, &subKeys, &values);
    std::string name = vb::Space(261);
    std::uint32_t nameLength = 261, type = 0, size = 255;
    registry.RegEnumValueA(key, static_cast<std::uint32_t>(index), name.data(), &nameLength, &type,
                           RegValueData - 1, &size);
    return vb::Trim(name);
}

std::string QueryRegValue(platform::RegistryPort& registry, RegHandle key, const std::string& valueName) {
    std::string buffer = vb::String(1024, '\0');
    std::uint32_t length = 1024, type = 0;
    registry.RegQueryValueExA(key, valueName.c_str(), &type, reinterpret_cast<std::uint8_t*>(buffer.data()), &length);
    return vb::Trim(buffer);
}

}  // namespace tessmark::registry

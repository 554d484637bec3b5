#pragma once
// Reading the values of one key by index: the caller opens the key with
// OpenRegKey, walks it and closes it with RegCloseKey. Nothing here reports a
// failure; a key that cannot be opened reads as an empty key.
#include <cstdint>
#include <string>

#include "platform/registry_port.h"

namespace tessmark::registry {

// The key opened for querying values only, so it works without write rights; 0 on failure.
platform::RegHandle OpenRegKey(platform::RegistryPort& registry, platform::RegHandle root, const std::string& subKey);

// Mode 0: the number of values; mode 1: the number of subkeys; any other mode, or a failure: 0.
std::int32_t CountRegEntries(platform::RegistryPort& registry, platform::RegHandle key, std::int32_t mode);

// The name of the value at the index, trimmed of blanks but not cut at its length: it
// normally ends in the NUL the platform wrote behind it. Empty when the call wrote nothing.
std::string EnumRegValueName(platform::RegistryPort& registry, platform::RegHandle key, std::int32_t index);

// The value's data, whatever its type, as 1024 characters trimmed of blanks: the value
// followed by NULs. Values over 1024 bytes and failed reads give 1024 NULs.
std::string QueryRegValue(platform::RegistryPort& registry, platform::RegHandle key, const std::string& valueName);

}  // namespace tessmark::registry

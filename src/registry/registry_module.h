#pragma once
// Writing keys and values addressed by a root handle and a subkey. Every routine
// is silent: the platform's result codes are dropped, so a caller cannot learn
// that a write failed.
#include <string>

#include "platform/registry_port.h"

namespace tessmark::registry {

void CreateRegKey(platform::RegistryPort& registry, platform::RegHandle root, const std::string& subKey);

// Only a key without subkeys goes.
void DeleteRegKey(platform::RegistryPort& registry, platform::RegHandle root, const std::string& subKey);

void DeleteRegValue(platform::RegistryPort& registry, platform::RegHandle root, const std::string& subKey,
                    const std::string& valueName);

// Creates the key when it is missing and writes the value as REG_SZ, whatever type it had.
void SetRegString(platform::RegistryPort& registry, platform::RegHandle root, const std::string& subKey,
                  const std::string& valueName, const std::string& value);

}  // namespace tessmark::registry

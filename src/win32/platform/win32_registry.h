#pragma once
// The real registry through advapi32, one ANSI call per method. The handles it
// returns belong to the caller, who closes them with RegCloseKey as the program
// does; nothing here owns a key.
#include "platform/registry_port.h"

namespace tessmark::platform::win32 {

class Win32Registry final : public RegistryPort {
public:
    std::int32_t RegOpenKeyA(RegHandle key, const char* subKey, RegHandle* result) override;
    std::int32_t RegOpenKeyExA(RegHandle key, const char* subKey, std::uint32_t options,
                               std::uint32_t samDesired, RegHandle* result) override;
    std::int32_t RegCreateKeyA(RegHandle key, const char* subKey, RegHandle* result) override;
    std::int32_t RegCloseKey(RegHandle key) override;
    std::int32_t RegDeleteKeyA(RegHandle key, const char* subKey) override;
    std::int32_t RegDeleteValueA(RegHandle key, const char* valueName) override;
    std::int32_t RegEnumKeyExA(RegHandle key, std::uint32_t index, char* name,
                               std::uint32_t* nameLength) override;
    std::int32_t RegEnumValueA(RegHandle key, std::uint32_t index, char* name, std::uint32_t* nameLength,
                               std::uint32_t* type, std::uint8_t* data, std::uint32_t* dataLength) override;
    std::int32_t RegQueryValueExA(RegHandle key, const char* valueName, std::uint32_t* type,
                                  std::uint8_t* data, std::uint32_t* dataLength) override;
    std::int32_t RegQueryInfoKeyA(RegHandle key, std::uint32_t* subKeys, std::uint32_t* values) override;
    std::int32_t RegSetValueExA(RegHandle key, const char* valueName, std::uint32_t type,
                                const std::uint8_t* data, std::uint32_t size) override;
};

}  // namespace tessmark::platform::win32

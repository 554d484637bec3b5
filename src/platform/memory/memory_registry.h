#pragma once
// A registry held in memory, agreeing with the real one on every result the
// program relies on (the registry conformance suite pins those).
#include "platform/registry_port.h"

namespace tessmark::platform::memory {

class MemoryRegistry final : public RegistryPort {
public:
    std::int32_t RegOpenKeyA(RegHandle, const char*, RegHandle*) override { return reg::kFileNotFound; }
    std::int32_t RegOpenKeyExA(RegHandle, const char*, std::uint32_t, std::uint32_t, RegHandle*) override { return reg::kFileNotFound; }
    std::int32_t RegCreateKeyA(RegHandle, const char*, RegHandle*) override { return reg::kAccessDenied; }
    std::int32_t RegCloseKey(RegHandle) override { return reg::kInvalidHandle; }
    std::int32_t RegDeleteKeyA(RegHandle, const char*) override { return reg::kFileNotFound; }
    std::int32_t RegDeleteValueA(RegHandle, const char*) override { return reg::kFileNotFound; }
    std::int32_t RegEnumKeyExA(RegHandle, std::uint32_t, char*, std::uint32_t*) override { return reg::kNoMoreItems; }
    std::int32_t RegEnumValueA(RegHandle, std::uint32_t, char*, std::uint32_t*, std::uint32_t*, std::uint8_t*, std::uint32_t*) override { return reg::kNoMoreItems; }
    std::int32_t RegQueryValueExA(RegHandle, const char*, std::uint32_t*, std::uint8_t*, std::uint32_t*) override { return reg::kFileNotFound; }
    std::int32_t RegQueryInfoKeyA(RegHandle, std::uint32_t*, std::uint32_t*) override { return reg::kInvalidHandle; }
    std::int32_t RegSetValueExA(RegHandle, const char*, std::uint32_t, const std::uint8_t*, std::uint32_t) override { return reg::kAccessDenied; }
};

}  // namespace tessmark::platform::memory

#pragma once
// The registry as the program sees it: the ANSI advapi32 calls, one method each,
// with the platform's result codes. Key handles are 32-bit numbers, as in the
// classic 32-bit process; the predefined roots keep their documented values.
#include <cstdint>

namespace tessmark::platform {

using RegHandle = std::uint32_t;

namespace reg {
inline constexpr RegHandle kClassesRoot = 0x80000000u;
inline constexpr RegHandle kCurrentUser = 0x80000001u;
inline constexpr RegHandle kLocalMachine = 0x80000002u;
inline constexpr RegHandle kUsers = 0x80000003u;
inline constexpr RegHandle kPerformanceData = 0x80000004u;
inline constexpr RegHandle kCurrentConfig = 0x80000005u;
inline constexpr RegHandle kDynData = 0x80000006u;

inline constexpr std::int32_t kSuccess = 0;
inline constexpr std::int32_t kFileNotFound = 2;
inline constexpr std::int32_t kAccessDenied = 5;
inline constexpr std::int32_t kInvalidHandle = 6;
inline constexpr std::int32_t kInvalidParameter = 87;
inline constexpr std::int32_t kMoreData = 234;
inline constexpr std::int32_t kNoMoreItems = 259;

inline constexpr std::uint32_t kNone = 0;
inline constexpr std::uint32_t kSz = 1;
inline constexpr std::uint32_t kExpandSz = 2;
inline constexpr std::uint32_t kBinary = 3;
inline constexpr std::uint32_t kDword = 4;
inline constexpr std::uint32_t kMultiSz = 7;

inline constexpr std::uint32_t kQueryValue = 0x0001;
inline constexpr std::uint32_t kRead = 0x20019;
inline constexpr std::uint32_t kWrite = 0x20006;
inline constexpr std::uint32_t kAllAccess = 0xF003F;
}  // namespace reg

class RegistryPort {
public:
    virtual ~RegistryPort() = default;

    virtual std::int32_t RegOpenKeyA(RegHandle key, const char* subKey, RegHandle* result) = 0;
    virtual std::int32_t RegOpenKeyExA(RegHandle key, const char* subKey, std::uint32_t options,
                                       std::uint32_t samDesired, RegHandle* result) = 0;
    virtual std::int32_t RegCreateKeyA(RegHandle key, const char* subKey, RegHandle* result) = 0;
    virtual std::int32_t RegCloseKey(RegHandle key) = 0;
    virtual std::int32_t RegDeleteKeyA(RegHandle key, const char* subKey) = 0;
    virtual std::int32_t RegDeleteValueA(RegHandle key, const char* valueName) = 0;
    // Reserved, class and last-write-time arguments are always null in this program.
    virtual std::int32_t RegEnumKeyExA(RegHandle key, std::uint32_t index, char* name,
                                       std::uint32_t* nameLength) = 0;
    virtual std::int32_t RegEnumValueA(RegHandle key, std::uint32_t index, char* name,
                                       std::uint32_t* nameLength, std::uint32_t* type,
                                       std::uint8_t* data, std::uint32_t* dataLength) = 0;
    virtual std::int32_t RegQueryValueExA(RegHandle key, const char* valueName, std::uint32_t* type,
                                          std::uint8_t* data, std::uint32_t* dataLength) = 0;
    // Only the two counters the program reads; every other out-argument is null.
    virtual std::int32_t RegQueryInfoKeyA(RegHandle key, std::uint32_t* subKeys,
                                          std::uint32_t* values) = 0;
    virtual std::int32_t RegSetValueExA(RegHandle key, const char* valueName, std::uint32_t type,
                                        const std::uint8_t* data, std::uint32_t size) = 0;
};

}  // namespace tessmark::platform

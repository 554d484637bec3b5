#pragma once
// The system as the restore-point form sees it: the version call, the clock
// as text, and WMI objects reached through monikers and called late-bound.
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace tessmark::platform {

// OSVERSIONINFOA, 148 bytes.
struct OsVersionInfoA {
    std::uint32_t dwOSVersionInfoSize = 0;
    std::uint32_t dwMajorVersion = 0;
    std::uint32_t dwMinorVersion = 0;
    std::uint32_t dwBuildNumber = 0;
    std::uint32_t dwPlatformId = 0;
    char szCSDVersion[128] = {};
};
static_assert(sizeof(OsVersionInfoA) == 148);

// An argument of a late-bound call: text or a 16-bit integer.
using LateBoundArg = std::variant<std::string, std::int16_t>;

class SystemPort {
public:
    virtual ~SystemPort() = default;
    // Nonzero on success; fails when the size field isn't the structure's.
    virtual std::int32_t GetVersionExA(OsVersionInfoA* info) = 0;
    // Now as text, in the system's short date and time format.
    virtual std::string Now() = 0;
    // GetObject(moniker), then method called late-bound with args; the result
    // is released unseen. 0, or the platform's code of the step that failed.
    virtual std::int32_t CallByMoniker(const std::string& moniker, const std::string& method,
                               const std::vector<LateBoundArg>& args) = 0;
};

}  // namespace tessmark::platform

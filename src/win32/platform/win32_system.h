#pragma once
// The version call, the clock in the user's short formats, and WMI through
// monikers with late-bound calls (ole32, oleaut32).
#include "platform/system_port.h"

namespace tessmark::platform::win32 {

class Win32System final : public SystemPort {
public:
    std::int32_t GetVersionExA(OsVersionInfoA* info) override;
    std::string Now() override;
    std::int32_t CallByMoniker(const std::string& moniker, const std::string& method,
                       const std::vector<LateBoundArg>& args) override;
};

}  // namespace tessmark::platform::win32

#pragma once
// A system of a chosen version with a fixed clock, recording the WMI calls it
// is asked for and failing them with a chosen code.
#include <string>
#include <vector>

#include "platform/system_port.h"

namespace tessmark::platform::memory {

class MemorySystem final : public SystemPort {
public:
    struct Call {
        std::string moniker;
        std::string method;
        std::vector<LateBoundArg> args;
    };

    std::uint32_t major = 5;
    std::uint32_t minor = 1;
    std::string now = "11/24/2026 3:35:49 PM";
    int failWith = 0;  // the code every call fails with; 0 for none
    std::vector<Call> calls;
    std::vector<std::uint32_t> sizesSeen;

    std::int32_t GetVersionExA(OsVersionInfoA* info) override;
    std::string Now() override { return now; }
    std::int32_t CallByMoniker(const std::string& moniker, const std::string& method,
                               const std::vector<LateBoundArg>& args) override;
};

}  // namespace tessmark::platform::memory

#include "platform/memory/memory_system.h"

namespace tessmark::platform::memory {

std::int32_t MemorySystem::GetVersionExA(OsVersionInfoA* info) {
    sizesSeen.push_back(info->dwOSVersionInfoSize);
    if (info->dwOSVersionInfoSize != sizeof(OsVersionInfoA)) return 0;
    info->dwMajorVersion = major;
    info->dwMinorVersion = minor;
    info->dwPlatformId = 2;
    return 1;
}

std::int32_t MemorySystem::CallByMoniker(const std::string& moniker, const std::string& method,
                                         const std::vector<LateBoundArg>& args) {
    calls.push_back({moniker, method, args});
    return failWith;
}

}  // namespace tessmark::platform::memory

#pragma once
// Named kernel objects: the single-instance mutex.
#include <cstdint>

namespace tessmark::platform {

using KernelHandle = std::uintptr_t;
inline constexpr std::uint32_t kWaitObject0 = 0;
inline constexpr std::uint32_t kWaitAbandoned = 0x80;
inline constexpr std::uint32_t kWaitTimeout = 0x102;

class ProcessPort {
public:
    virtual ~ProcessPort() = default;
    virtual KernelHandle CreateMutexA(bool initialOwner, const char* name) = 0;
    virtual std::uint32_t WaitForSingleObject(KernelHandle handle, std::uint32_t milliseconds) = 0;
    virtual bool ReleaseMutex(KernelHandle handle) = 0;
    virtual bool CloseHandle(KernelHandle handle) = 0;
};

}  // namespace tessmark::platform

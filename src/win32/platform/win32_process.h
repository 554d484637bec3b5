#pragma once
// Named kernel objects through kernel32.
#include "platform/process_port.h"

namespace tessmark::platform::win32 {

class Win32Process final : public ProcessPort {
public:
    KernelHandle CreateMutexA(bool initialOwner, const char* name) override;
    std::uint32_t WaitForSingleObject(KernelHandle handle, std::uint32_t milliseconds) override;
    bool ReleaseMutex(KernelHandle handle) override;
    bool CloseHandle(KernelHandle handle) override;
};

}  // namespace tessmark::platform::win32

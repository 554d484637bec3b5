#include "win32/platform/win32_process.h"

#include <windows.h>

namespace tessmark::platform::win32 {

KernelHandle Win32Process::CreateMutexA(bool initialOwner, const char* name) {
    return reinterpret_cast<KernelHandle>(::CreateMutexA(nullptr, initialOwner ? TRUE : FALSE, name));
}

std::uint32_t Win32Process::WaitForSingleObject(KernelHandle handle, std::uint32_t milliseconds) {
    return ::WaitForSingleObject(reinterpret_cast<HANDLE>(handle), milliseconds);
}

bool Win32Process::ReleaseMutex(KernelHandle handle) {
    return ::ReleaseMutex(reinterpret_cast<HANDLE>(handle)) != FALSE;
}

bool Win32Process::CloseHandle(KernelHandle handle) {
    return ::CloseHandle(reinterpret_cast<HANDLE>(handle)) != FALSE;
}

}  // namespace tessmark::platform::win32

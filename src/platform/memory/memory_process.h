#pragma once
// Named mutexes in memory. Two MemoryProcess objects that share one
// KernelNamespace behave like two processes on one machine.
#include <map>
#include <memory>
#include <string>

#include "platform/process_port.h"

namespace tessmark::platform::memory {

struct KernelNamespace {
    struct Mutex {
        int references = 0;
        const void* owner = nullptr;  // the MemoryProcess that holds it
        bool abandoned = false;
    };
    std::map<std::string, Mutex> mutexes;
    bool refuseCreation = false;  // CreateMutexA fails, as when the name is taken by another kind of object
};

class MemoryProcess final : public ProcessPort {
public:
    explicit MemoryProcess(std::shared_ptr<KernelNamespace> space = std::make_shared<KernelNamespace>());
    ~MemoryProcess() override;

    KernelHandle CreateMutexA(bool initialOwner, const char* name) override;
    std::uint32_t WaitForSingleObject(KernelHandle handle, std::uint32_t milliseconds) override;
    bool ReleaseMutex(KernelHandle handle) override;
    bool CloseHandle(KernelHandle handle) override;

    // The process dies: its handles close, and a mutex it owned is abandoned.
    void Die();

private:
    std::shared_ptr<KernelNamespace> space_;
    std::map<KernelHandle, std::string> handles_;
    KernelHandle next_ = 0x40;
};

}  // namespace tessmark::platform::memory

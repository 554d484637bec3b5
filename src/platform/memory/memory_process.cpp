#include "platform/memory/memory_process.h"

namespace tessmark::platform::memory {

MemoryProcess::MemoryProcess(std::shared_ptr<KernelNamespace> space) : space_(std::move(space)) {}

MemoryProcess::~MemoryProcess() { Die(); }

KernelHandle MemoryProcess::CreateMutexA(bool initialOwner, const char* name) {
    if (space_->refuseCreation) return 0;
    KernelHandle handle = next_;
    next_ += 4;
    // Every unnamed mutex is an object of its own.
    std::string key = name ? name : "\x01unnamed " + std::to_string(handle) + " of " +
                                        std::to_string(reinterpret_cast<std::uintptr_t>(this));
    auto& mutex = space_->mutexes[key];
    ++mutex.references;
    if (initialOwner && mutex.owner == nullptr) mutex.owner = this;
    handles_[handle] = key;
    return handle;
}

std::uint32_t MemoryProcess::WaitForSingleObject(KernelHandle handle, std::uint32_t) {
    auto it = handles_.find(handle);
    if (it == handles_.end()) return 0xFFFFFFFFu;  // WAIT_FAILED
    auto& mutex = space_->mutexes[it->second];
    if (mutex.owner != nullptr && mutex.owner != this) return kWaitTimeout;
    mutex.owner = this;
    if (mutex.abandoned) {
        mutex.abandoned = false;
        return kWaitAbandoned;
    }
    return kWaitObject0;
}

bool MemoryProcess::ReleaseMutex(KernelHandle handle) {
    auto it = handles_.find(handle);
    if (it == handles_.end()) return false;
    auto& mutex = space_->mutexes[it->second];
    if (mutex.owner != this) return false;
    mutex.owner = nullptr;
    return true;
}

bool MemoryProcess::CloseHandle(KernelHandle handle) {
    auto it = handles_.find(handle);
    if (it == handles_.end()) return false;
    auto found = space_->mutexes.find(it->second);
    if (found != space_->mutexes.end() && --found->second.references == 0 &&
        found->second.owner == nullptr)
        space_->mutexes.erase(found);
    handles_.erase(it);
    return true;
}

void MemoryProcess::Die() {
    for (auto& [name, mutex] : space_->mutexes)
        if (mutex.owner == this) {
            mutex.owner = nullptr;
            mutex.abandoned = true;
        }
    while (!handles_.empty()) CloseHandle(handles_.begin()->first);
}

}  // namespace tessmark::platform::memory

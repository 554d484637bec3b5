#pragma once
// Program entry under the one-instance rule: a named mutex, taken with a zero
// wait, decides whether this process may show its main form.
#include <functional>

#include "platform/process_port.h"
#include "platform/ui_services.h"

namespace tessmark::frame {

inline constexpr const char* kInstanceMutexName = "StringForAvoidingMultipleInstance";
// What a second instance looks for; the main form's caption is the shorter "Tessmark".
inline constexpr const char* kFirstInstanceTitle = "Quillon Tessmark";

class modMultipleInstance {
public:
    modMultipleInstance(platform::ProcessPort& process, platform::UiServices& ui)
        : process_(process), ui_(ui) {}

    // Shows the main form when this instance may run; otherwise tries to bring
    // the first instance forward and returns, leaving no form open.
    void Main(const std::function<void()>& showMainForm);
    bool IsSingleInstance();
    // The handle stays open until the process ends.
    void ReleaseSingleInstance();

    // Zero when creation failed. Kept for the process's lifetime.
    platform::KernelHandle InstanceMutex = 0;

private:
    platform::ProcessPort& process_;
    platform::UiServices& ui_;
};

}  // namespace tessmark::frame

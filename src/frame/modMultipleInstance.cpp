#include "frame/modMultipleInstance.h"

namespace tessmark::frame {

namespace {
constexpr int kSwShow = 5;
}

void modMultipleInstance::Main(const std::function<void()>& showMainForm) {
    if (IsSingleInstance()) {
        showMainForm();
        return;
    }
    platform::WindowHandle first = ui_.FindWindowA(nullptr, kFirstInstanceTitle);
    if (first != 0) {
        ui_.ShowWindow(first, kSwShow);
        ui_.SetForegroundWindow(first);
    }
}

bool modMultipleInstance::IsSingleInstance() {
    InstanceMutex = process_.CreateMutexA(false, kInstanceMutexName);
    if (InstanceMutex == 0) {
        // Run on unprotected rather than not at all.
        ui_.MsgBox("The mechanism to ensure only one instance of this app has failed for unknown reasons.",
                   platform::kMbCritical, "Error");
        return true;
    }
    // An abandoned mutex answers WAIT_ABANDONED, which counts as another instance.
    if (process_.WaitForSingleObject(InstanceMutex, 0) == platform::kWaitObject0) return true;
    ui_.MsgBox("This application is already running", platform::kMbInformation, "App Running");
    process_.CloseHandle(InstanceMutex);
    return false;
}

void modMultipleInstance::ReleaseSingleInstance() { process_.ReleaseMutex(InstanceMutex); }

}  // namespace tessmark::frame

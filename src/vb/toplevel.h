#pragma once
// The top-level handler of every event: a run-time error that nothing trapped
// shows the run-time's message and ends the process.
#include <utility>

#include "platform/ui_services.h"
#include "vb/vb.h"

namespace tessmark::vb {

template <class Handler>
void RunEvent(platform::UiServices& ui, Handler&& handler) {
    try {
        std::forward<Handler>(handler)();
    } catch (const VbError& error) {
        ui.MsgBox(RuntimeErrorMessage(error.number()), platform::kMbCritical, "");
        ui.EndProcess(error.number());
    }
}

}  // namespace tessmark::vb

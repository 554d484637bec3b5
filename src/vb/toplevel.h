#pragma once
// The top-level handler of every event: a run-time error that nothing trapped
// shows the run-time's message and ends the process. Failures of the C++
// library end it the same way: an allocation as "Out of memory", anything
// else as "Internal error".
#include <exception>
#include <new>
#include <utility>

#include "platform/ui_services.h"
#include "vb/vb.h"

namespace tessmark::vb {

inline void EndWithError(platform::UiServices& ui, int number) {
    ui.MsgBox(RuntimeErrorMessage(number), platform::kMbCritical, "");
    ui.EndProcess(number);
}

template <class Handler>
void RunEvent(platform::UiServices& ui, Handler&& handler) {
    try {
        std::forward<Handler>(handler)();
    } catch (const VbError& error) {
        EndWithError(ui, error.number());
    } catch (const std::bad_alloc&) {
        EndWithError(ui, err::kOutOfMemory);
    } catch (const std::exception&) {
        EndWithError(ui, err::kInternal);
    }
}

}  // namespace tessmark::vb

#pragma once
// FrmNotify on the screen: one skinned, modeless window per shown form, centred,
// all at the same place, with no owner, so that each stands on its own beside
// the main window. Events go to the form's handlers through the top-level
// error handler; afterwards the window shows what the form holds, or goes
// when the form was unloaded.
#include <windows.h>

#include <memory>
#include <vector>

#include "monitor/FrmNotify.h"
#include "platform/ui_services.h"

namespace tessmark::app {

namespace id::notify {
inline constexpr const char* kWindowClass = "TessmarkNotify";
// The controls in the order of the form's design table, from this number on.
inline constexpr int kFirstControl = 300;
inline constexpr int CmdClose = 320;
}  // namespace id::notify

class NotifyWindow;

// Makes a window when a form is shown and drops it when the form is unloaded.
class NotifyWindows {
public:
    NotifyWindows(monitor::NotifyForms& forms, platform::UiServices& ui);
    ~NotifyWindows();
    NotifyWindows(const NotifyWindows&) = delete;
    NotifyWindows& operator=(const NotifyWindows&) = delete;

    // The keys a notification's buttons answer, taken before the message is
    // dispatched; false when the message is not one of them.
    bool Key(const MSG& msg);

private:
    monitor::NotifyForms& forms_;
    platform::UiServices& ui_;
    std::vector<std::unique_ptr<NotifyWindow>> windows_;
};

}  // namespace tessmark::app

#pragma once
// Stands in for the main form until its view exists: a plain top-level window
// with the form's caption and size. Closing it runs the form's
// Form_QueryUnload and ends the message loop.
#include <windows.h>

#include "frame/modMultipleInstance.h"
#include "platform/ui_services.h"

namespace tessmark::app {

class PlaceholderForm {
public:
    PlaceholderForm(HINSTANCE instance, frame::modMultipleInstance& entry, platform::UiServices& ui)
        : instance_(instance), entry_(entry), ui_(ui) {}
    PlaceholderForm(const PlaceholderForm&) = delete;
    PlaceholderForm& operator=(const PlaceholderForm&) = delete;
    ~PlaceholderForm();

    void Show();
    bool IsOpen() const { return window_ != nullptr; }

private:
    static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void Form_QueryUnload();

    HINSTANCE instance_;
    frame::modMultipleInstance& entry_;
    platform::UiServices& ui_;
    HWND window_ = nullptr;
};

}  // namespace tessmark::app

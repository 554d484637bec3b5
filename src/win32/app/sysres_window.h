#pragma once
// SysRes on the screen: a small fixed window with the waiting texts over its
// background, whose timer hands each tick to the form. The window goes when
// the form unloads. Nothing in the program opens one.
#include <windows.h>

#include "platform/ui_services.h"
#include "safety/SysRes.h"
#include "win32/app/handles.h"

namespace tessmark::app {

class SysResWindow {
public:
    SysResWindow(HINSTANCE instance, safety::SysRes& form, platform::UiServices& ui);
    ~SysResWindow();
    SysResWindow(const SysResWindow&) = delete;
    SysResWindow& operator=(const SysResWindow&) = delete;

    // Loads the form (its timer starts) and shows it.
    void Show();
    HWND hWnd() const { return window_; }

private:
    static LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void Sync();

    HINSTANCE instance_;
    safety::SysRes& form_;
    platform::UiServices& ui_;
    HWND window_ = nullptr;
    OwnedFont titleFont_;
    OwnedFont textFont_;
    bool timerRunning_ = false;
};

}  // namespace tessmark::app

#pragma once
// The window procedure of a view class: the view comes with WM_NCCREATE as the
// creation parameter and answers every message once it is ready; until then
// the window is only being made.
#include <windows.h>

namespace tessmark::app {

template <class View>
LRESULT CALLBACK ViewProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        auto* view = static_cast<View*>(reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams);
        view->window_ = window;
        SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(view));
    }
    auto* view = reinterpret_cast<View*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (view == nullptr || !view->ready_) return DefWindowProcA(window, message, wParam, lParam);
    return view->Handle(message, wParam, lParam);
}

}  // namespace tessmark::app

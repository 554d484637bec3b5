#include "win32/app/controls.h"

#include <vector>

namespace tessmark::app {

void Place(HWND window, const RECT& bounds) {
    SetWindowPos(window, nullptr, bounds.left, bounds.top, bounds.right - bounds.left, bounds.bottom - bounds.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

HWND Control(HWND parent, const char* className, int id, DWORD style, HFONT font, const RECT& bounds,
             const char* text) {
    HWND control = CreateWindowExA(0, className, text, WS_CHILD | WS_VISIBLE | style, bounds.left, bounds.top,
                                   bounds.right - bounds.left, bounds.bottom - bounds.top, parent,
                                   reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleA(nullptr),
                                   nullptr);
    SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    return control;
}

void SetText(HWND window, const std::string& text) {
    // A window's text ends at its first NUL; the NUL a value name carries would
    // cut a sentence after the name, so NULs are left out of what is shown.
    std::string wanted = text;
    std::erase(wanted, '\0');
    std::vector<char> shown(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1);
    GetWindowTextA(window, shown.data(), static_cast<int>(shown.size()));
    if (wanted != shown.data()) SetWindowTextA(window, wanted.c_str());
}

void ShowIf(HWND window, bool visible) {
    if ((IsWindowVisible(window) != FALSE) != visible) ShowWindow(window, visible ? SW_SHOWNA : SW_HIDE);
}

}  // namespace tessmark::app

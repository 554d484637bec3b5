#include "win32/app/placeholder_form.h"

#include "vb/toplevel.h"

namespace tessmark::app {

namespace {
constexpr const char* kClassName = "TessmarkMain";
constexpr int kWidth = 735;
constexpr int kHeight = 551;
constexpr WORD kIconResource = 101;
}  // namespace

PlaceholderForm::~PlaceholderForm() {
    if (window_ != nullptr) DestroyWindow(window_);
}

void PlaceholderForm::Show() {
    if (window_ == nullptr) {
        WNDCLASSA cls = {};
        cls.lpfnWndProc = WindowProc;
        cls.hInstance = instance_;
        cls.hIcon = LoadIconA(instance_, MAKEINTRESOURCEA(kIconResource));
        cls.hCursor = LoadCursor(nullptr, IDC_ARROW);
        cls.hbrBackground = reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1);
        cls.lpszClassName = kClassName;
        RegisterClassA(&cls);
        CreateWindowA(kClassName, "Tessmark", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT, CW_USEDEFAULT, kWidth, kHeight,
                      nullptr, nullptr, instance_, this);
    }
    ShowWindow(window_, SW_SHOWNORMAL);
    UpdateWindow(window_);
}

void PlaceholderForm::Form_QueryUnload() { entry_.ReleaseSingleInstance(); }

LRESULT CALLBACK PlaceholderForm::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        auto* form = static_cast<PlaceholderForm*>(reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams);
        form->window_ = window;
        SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(form));
    }
    auto* form = reinterpret_cast<PlaceholderForm*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (form == nullptr) return DefWindowProcA(window, message, wParam, lParam);
    switch (message) {
    case WM_CLOSE:
        // Unloading cannot be cancelled: the form goes whatever the handler does.
        vb::RunEvent(form->ui_, [form] { form->Form_QueryUnload(); });
        DestroyWindow(window);
        return 0;
    case WM_DESTROY:
        form->window_ = nullptr;
        PostQuitMessage(0);
        return 0;
    default:
        return DefWindowProcA(window, message, wParam, lParam);
    }
}

}  // namespace tessmark::app

#include "win32/app/box.h"

namespace tessmark::app {

namespace {
constexpr const char* kClassName = "TessmarkBox";

void RegisterOnce(HINSTANCE instance, WNDPROC proc) {
    WNDCLASSA existing = {};
    if (GetClassInfoA(instance, kClassName, &existing)) return;
    WNDCLASSA cls = {};
    cls.lpfnWndProc = proc;
    cls.hInstance = instance;
    cls.lpszClassName = kClassName;
    RegisterClassA(&cls);
}
}  // namespace

int MouseButton(UINT message) {
    switch (message) {
    case WM_LBUTTONDOWN: case WM_LBUTTONUP: return 1;
    case WM_RBUTTONDOWN: case WM_RBUTTONUP: return 2;
    case WM_MBUTTONDOWN: case WM_MBUTTONUP: return 4;
    default: return 0;
    }
}

Box::Box(HWND parent, int id, HBRUSH background, HCURSOR cursor, DWORD exStyle)
    : background_(background), cursor_(cursor ? cursor : LoadCursor(nullptr, IDC_ARROW)) {
    HINSTANCE instance = GetModuleHandleA(nullptr);
    RegisterOnce(instance, Proc);
    CreateWindowExA(exStyle, kClassName, "", WS_CHILD | WS_VISIBLE | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, 0, 0, 0, 0, parent,
                    reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), instance, this);
}

Box::~Box() {
    if (window_ == nullptr) return;
    SetWindowLongPtrA(window_, GWLP_USERDATA, 0);
    DestroyWindow(window_);
}

LRESULT CALLBACK Box::Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        auto* box = static_cast<Box*>(reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams);
        box->window_ = window;
        SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(box));
    }
    auto* box = reinterpret_cast<Box*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (box == nullptr) return DefWindowProcA(window, message, wParam, lParam);
    if (message == WM_NCDESTROY) {
        box->window_ = nullptr;
        return DefWindowProcA(window, message, wParam, lParam);
    }
    return box->Handle(message, wParam, lParam);
}

LRESULT Box::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_ERASEBKGND: {
        RECT client;
        GetClientRect(window_, &client);
        FillRect(reinterpret_cast<HDC>(wParam), &client, background_);
        return 1;
    }
    case WM_PAINT: {
        PAINTSTRUCT paint;
        HDC dc = BeginPaint(window_, &paint);
        RECT client;
        GetClientRect(window_, &client);
        if (onPaint) onPaint(dc, client);
        EndPaint(window_, &paint);
        return 0;
    }
    case WM_SIZE:
        if (onResize) onResize();
        return 0;
    case WM_SETCURSOR:
        // The parent has the first word, as it has for the system's controls.
        if (SendMessageA(GetParent(window_), WM_SETCURSOR, wParam, lParam)) return TRUE;
        if (LOWORD(lParam) != HTCLIENT) break;
        SetCursor(cursor_);
        return TRUE;
    case WM_CTLCOLORSTATIC:
        SetBkMode(reinterpret_cast<HDC>(wParam), TRANSPARENT);
        return reinterpret_cast<LRESULT>(background_);
    case WM_NOTIFY:
    case WM_COMMAND:
        return SendMessageA(GetParent(window_), message, wParam, lParam);
    case WM_MOUSEMOVE:
    case WM_LBUTTONDOWN: case WM_LBUTTONUP:
    case WM_RBUTTONDOWN: case WM_RBUTTONUP:
    case WM_MBUTTONDOWN: case WM_MBUTTONUP:
        if (onMouse) {
            onMouse(message, POINT{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))});
            return 0;
        }
        break;
    default:
        break;
    }
    return DefWindowProcA(window_, message, wParam, lParam);
}

}  // namespace tessmark::app

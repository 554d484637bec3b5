#include "win32/app/sysres_window.h"

#include "vb/toplevel.h"

namespace tessmark::app {

namespace {

constexpr const char* kClassName = "TessmarkSysRes";
constexpr UINT_PTR kTimer1 = 1;
constexpr COLORREF kBackground = RGB(236, 240, 248);
constexpr COLORREF kBand = RGB(49, 106, 197);

HFONT Tahoma(int height, int weight) {
    return CreateFontA(-height, 0, 0, 0, weight, 0, 0, 0, ANSI_CHARSET, 0, 0, 0, 0, "Tahoma");
}

HWND Label(HWND parent, HINSTANCE instance, const forms::LabelState& label, int y, int height, HFONT font) {
    HWND control = CreateWindowExA(0, "STATIC", label.Caption.c_str(), WS_CHILD | (label.Visible ? WS_VISIBLE : 0),
                                   20, y, 360, height, parent, nullptr, instance, nullptr);
    SendMessageA(control, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    return control;
}

}  // namespace

SysResWindow::SysResWindow(HINSTANCE instance, safety::SysRes& form, platform::UiServices& ui)
    : instance_(instance), form_(form), ui_(ui), titleFont_(Tahoma(16, FW_BOLD)), textFont_(Tahoma(11, FW_NORMAL)) {
    WNDCLASSA wc{};
    wc.lpfnWndProc = Proc;
    wc.hInstance = instance;
    wc.hCursor = LoadCursor(nullptr, IDC_ARROW);
    wc.lpszClassName = kClassName;
    RegisterClassA(&wc);
    form_.onUnload = [this] {
        if (window_) DestroyWindow(window_);
    };
}

SysResWindow::~SysResWindow() {
    form_.onUnload = [] {};
    if (window_) DestroyWindow(window_);
}

void SysResWindow::Show() {
    RECT frame{0, 0, form_.PictureWidth, form_.PictureHeight};
    const DWORD style = WS_CAPTION | WS_SYSMENU;
    AdjustWindowRect(&frame, style, FALSE);
    window_ = CreateWindowExA(0, kClassName, form_.Caption.c_str(), style, CW_USEDEFAULT, CW_USEDEFAULT,
                              frame.right - frame.left, frame.bottom - frame.top, nullptr, nullptr, instance_, this);
    Label(window_, instance_, form_.Label2, 12, 24, titleFont_.get());
    Label(window_, instance_, form_.Label1[0], 62, 16, textFont_.get());
    Label(window_, instance_, form_.Label1[1], 84, 16, textFont_.get());
    vb::RunEvent(ui_, [&] { form_.Form_Load(); });
    Sync();
    ShowWindow(window_, SW_SHOW);
    UpdateWindow(window_);
    form_.Visible = true;
}

void SysResWindow::Sync() {
    if (!window_) return;
    if (form_.Timer1Enabled && !timerRunning_) SetTimer(window_, kTimer1, static_cast<UINT>(form_.Timer1Interval), nullptr);
    if (!form_.Timer1Enabled && timerRunning_) KillTimer(window_, kTimer1);
    timerRunning_ = form_.Timer1Enabled;
}

LRESULT CALLBACK SysResWindow::Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        auto* self = static_cast<SysResWindow*>(reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams);
        SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(self));
        self->window_ = window;
    }
    auto* self = reinterpret_cast<SysResWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    return self ? self->Handle(window, message, wParam, lParam) : DefWindowProcA(window, message, wParam, lParam);
}

LRESULT SysResWindow::Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_TIMER:
        // The tick's first act stops the timer; no second tick may come while it waits.
        KillTimer(window, kTimer1);
        timerRunning_ = false;
        vb::RunEvent(ui_, [&] { form_.Timer1_Timer(); });
        Sync();
        return 0;
    case WM_SETCURSOR:
        if (form_.MousePointer == platform::kMousePointerHourglass) {
            SetCursor(LoadCursor(nullptr, IDC_WAIT));
            return TRUE;
        }
        break;
    case WM_ERASEBKGND: {
        // The background picture: a light field under a band for the title.
        HDC dc = reinterpret_cast<HDC>(wParam);
        RECT all{0, 0, form_.PictureWidth, form_.PictureHeight};
        OwnedBrush field(CreateSolidBrush(kBackground));
        FillRect(dc, &all, field.get());
        RECT band{0, 44, form_.PictureWidth, 46};
        OwnedBrush line(CreateSolidBrush(kBand));
        FillRect(dc, &band, line.get());
        return 1;
    }
    case WM_CTLCOLORSTATIC: {
        HDC dc = reinterpret_cast<HDC>(wParam);
        SetBkMode(dc, TRANSPARENT);
        return reinterpret_cast<LRESULT>(GetStockObject(NULL_BRUSH));
    }
    case WM_CLOSE:
        return 0;  // the form closes itself
    case WM_DESTROY:
        window_ = nullptr;
        return 0;
    default:
        break;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

}  // namespace tessmark::app

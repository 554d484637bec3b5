#include "win32/app/notify_window.h"

#include <algorithm>
#include <functional>
#include <string>

#include "vb/toplevel.h"
#include "win32/app/box.h"
#include "win32/app/controls.h"
#include "win32/app/handles.h"
#include "win32/app/skin.h"

namespace tessmark::app {

namespace {

using monitor::FrmNotify;
using monitor::kNotifyControls;
using monitor::NotifyFont;

constexpr int kWidth = ToPixels(monitor::kNotifyWidth);
constexpr int kHeight = ToPixels(monitor::kNotifyHeight);
// Posted to a window whose form was unloaded: it goes once that event is over.
constexpr UINT kRetire = WM_APP + 1;
constexpr RECT kCmdClose{kWidth - 6 - monitor::kNotifyCloseWidth, 4, kWidth - 6, 4 + monitor::kNotifyCloseHeight};
// Image2, the panel behind the texts, inside the background picture.
constexpr int kPanelLeft = (monitor::kNotifyBackgroundWidth - monitor::kNotifyPanelWidth) / 2;
constexpr int kPanelTop = kCaptionStrip + 4;

constexpr COLORREF kPanelColour = RGB(0xFF, 0xFF, 0xFF);
constexpr COLORREF kPanelEdge = RGB(0xC8, 0xD3, 0xE2);

}  // namespace

class NotifyWindow {
public:
    NotifyWindow(FrmNotify& form, platform::UiServices& ui);
    ~NotifyWindow();
    NotifyWindow(const NotifyWindow&) = delete;
    NotifyWindow& operator=(const NotifyWindow&) = delete;

    void Show();
    void Refresh();
    // The form was unloaded: hide now, go once the message that did it is over.
    void Unloaded();
    FrmNotify* form() const { return alive ? &form_ : nullptr; }
    std::function<void()> retire;

private:
    static LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    void Paint(HDC dc);
    template <class Handler>
    void Fire(Handler&& handler) {
        vb::RunEvent(ui_, std::forward<Handler>(handler));
        // An unloading handler has taken the window with it.
        if (alive) Refresh();
    }

    FrmNotify& form_;
    platform::UiServices& ui_;
    HWND window_ = nullptr;
    OwnedFont sans_, arial_, tahoma_;
    OwnedBrush body_;
    // The background picture, drawn once; the labels show their part of it.
    OwnedBitmap background_;
    OwnedBrush backgroundBrush_;
    HWND controls_[kNotifyControls.size()] = {};
    std::unique_ptr<Box> CmdClose_;
    std::string closeName_;
    OwnedBitmap closeBitmap_;

public:
    bool alive = true;
};

NotifyWindow::NotifyWindow(FrmNotify& form, platform::UiServices& ui)
    : form_(form),
      ui_(ui),
      sans_(Font("MS Sans Serif", 11, FW_NORMAL)),
      arial_(Font("Arial", 12, FW_BOLD)),
      tahoma_(Font("Tahoma", 11, FW_NORMAL)),
      body_(CreateSolidBrush(kBodyColour)) {
    HINSTANCE instance = GetModuleHandleA(nullptr);
    WNDCLASSA existing = {};
    if (!GetClassInfoA(instance, id::notify::kWindowClass, &existing)) {
        WNDCLASSA cls = {};
        cls.lpfnWndProc = Proc;
        cls.hInstance = instance;
        cls.hIcon = LoadIconA(instance, MAKEINTRESOURCEA(101));
        cls.hCursor = LoadCursor(nullptr, IDC_ARROW);
        cls.lpszClassName = id::notify::kWindowClass;
        RegisterClassA(&cls);
    }
    const int left = std::max(0, (GetSystemMetrics(SM_CXSCREEN) - kWidth) / 2);
    const int top = std::max(0, (GetSystemMetrics(SM_CYSCREEN) - kHeight) / 2);
    CreateWindowExA(WS_EX_APPWINDOW, id::notify::kWindowClass, "Tessmark", WS_POPUP | WS_CLIPCHILDREN | WS_SYSMENU,
                    left, top, kWidth, kHeight, nullptr, nullptr, instance, this);
    form_.hWnd = reinterpret_cast<platform::WindowHandle>(window_);
    {
        HDC screen = GetDC(window_);
        background_.reset(CreateCompatibleBitmap(screen, kWidth, kHeight));
        OwnedDc canvas(CreateCompatibleDC(screen));
        ReleaseDC(window_, screen);
        HGDIOBJ old = SelectObject(canvas.get(), background_.get());
        Paint(canvas.get());
        SelectObject(canvas.get(), old);
        backgroundBrush_.reset(CreatePatternBrush(background_.get()));
    }

    for (std::size_t i = 0; i < kNotifyControls.size(); ++i) {
        const auto& c = kNotifyControls[i];
        const HFONT font = c.font == NotifyFont::Arial ? arial_.get() : c.font == NotifyFont::Tahoma ? tahoma_.get()
                                                                                                    : sans_.get();
        const int id = id::notify::kFirstControl + static_cast<int>(i);
        const RECT bounds = Twips{c.left, c.top, c.width, c.height}.Pixels();
        // The last three labels lie below the bottom edge: there, but never seen.
        controls_[i] = c.button ? Control(window_, "BUTTON", id, WS_TABSTOP | BS_PUSHBUTTON, font, bounds,
                                          form_.Button(c.name).Caption.c_str())
                                : Control(window_, "STATIC", id, SS_LEFT | SS_NOPREFIX, font, bounds);
    }

    CmdClose_ = std::make_unique<Box>(window_, id::notify::CmdClose, body_.get());
    Place(CmdClose_->hwnd(), kCmdClose);
    CmdClose_->onPaint = [this](HDC dc, const RECT& client) {
        OwnedDc source(CreateCompatibleDC(dc));
        HGDIOBJ old = SelectObject(source.get(), closeBitmap_.get());
        BitBlt(dc, 0, 0, client.right, client.bottom, source.get(), 0, 0, SRCCOPY);
        SelectObject(source.get(), old);
    };
    // A pressed picture box keeps the mouse until the button goes up, wherever that happens.
    CmdClose_->onMouse = [this](UINT message, POINT) {
        if (message == WM_MOUSEMOVE) return Fire([&] { form_.CmdClose_MouseMove(); });
        const int pressed = MouseButton(message);
        if (pressed == 0) return;
        if (message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN) {
            SetCapture(CmdClose_->hwnd());
            Fire([&] { form_.CmdClose_MouseDown(pressed); });
        } else {
            ReleaseCapture();
            Fire([&] { form_.CmdClose_MouseUp(pressed); });
        }
    };
}

NotifyWindow::~NotifyWindow() {
    alive = false;
    CmdClose_.reset();
    if (window_ == nullptr) return;
    SetWindowLongPtrA(window_, GWLP_USERDATA, 0);
    DestroyWindow(window_);
}

void NotifyWindow::Show() {
    Refresh();
    ShowWindow(window_, SW_SHOW);
    UpdateWindow(window_);
}

void NotifyWindow::Unloaded() {
    alive = false;
    ShowWindow(window_, SW_HIDE);
    PostMessageA(window_, kRetire, 0, 0);
}

void NotifyWindow::Refresh() {
    for (std::size_t i = 0; i < kNotifyControls.size(); ++i) {
        const auto& c = kNotifyControls[i];
        if (c.button) {
            const monitor::NotifyButton& button = form_.Button(c.name);
            SetText(controls_[i], button.Caption);
            EnableWindow(controls_[i], button.Enabled);
        } else {
            SetText(controls_[i], form_.Label(c.name));
        }
    }
    if (closeName_ != form_.CmdClosePicture || !closeBitmap_) {
        closeBitmap_.reset(LoadBitmapA(GetModuleHandleA(nullptr), form_.CmdClosePicture.c_str()));
        closeName_ = form_.CmdClosePicture;
        InvalidateRect(CmdClose_->hwnd(), nullptr, FALSE);
    }
}

void NotifyWindow::Paint(HDC dc) {
    const RECT client{0, 0, kWidth, kHeight};
    PaintBody(dc, client);
    // Image2: the white panel the texts stand on.
    const RECT panel{kPanelLeft, kPanelTop, kPanelLeft + monitor::kNotifyPanelWidth,
                     kPanelTop + monitor::kNotifyPanelHeight};
    FillSolid(dc, panel, kPanelEdge);
    FillSolid(dc, {panel.left + 1, panel.top + 1, panel.right - 1, panel.bottom - 1}, kPanelColour);
    DrawIconEx(dc, kPanelLeft + 14, kPanelTop + 6, LoadIconA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(101)), 48,
               48, 0, nullptr, DI_NORMAL);
    HGDIOBJ oldFont = SelectObject(dc, arial_.get());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, RGB(0xFF, 0xFF, 0xFF));
    RECT text{10, 0, client.right, kCaptionStrip};
    DrawTextA(dc, "Tessmark", -1, &text, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    SelectObject(dc, oldFont);
    PaintFrame(dc, client);
}

LRESULT CALLBACK NotifyWindow::Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NCCREATE) {
        auto* view = static_cast<NotifyWindow*>(reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams);
        view->window_ = window;
        SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(view));
    }
    auto* view = reinterpret_cast<NotifyWindow*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (view == nullptr || view->CmdClose_ == nullptr) return DefWindowProcA(window, message, wParam, lParam);
    return view->Handle(message, wParam, lParam);
}

LRESULT NotifyWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_ERASEBKGND:
        return 1;
    case WM_PAINT: {
        PAINTSTRUCT paint;
        HDC dc = BeginPaint(window_, &paint);
        FillRect(dc, &paint.rcPaint, backgroundBrush_.get());
        EndPaint(window_, &paint);
        return 0;
    }
    case WM_CTLCOLORSTATIC: {
        // A label shows the background behind it.
        HDC dc = reinterpret_cast<HDC>(wParam);
        RECT bounds;
        GetWindowRect(reinterpret_cast<HWND>(lParam), &bounds);
        MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&bounds), 2);
        SetBkMode(dc, TRANSPARENT);
        SetBrushOrgEx(dc, -bounds.left, -bounds.top, nullptr);
        return reinterpret_cast<LRESULT>(backgroundBrush_.get());
    }
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN: {
        const int y = static_cast<short>(HIWORD(lParam));
        Fire([&] { form_.Form_MouseDown(MouseButton(message), y * static_cast<int>(kTwipsPerPixel)); });
        return 0;
    }
    case WM_COMMAND:
        if (HIWORD(wParam) == BN_CLICKED) {
            const int index = LOWORD(wParam) - id::notify::kFirstControl;
            if (index >= 0 && index < static_cast<int>(kNotifyControls.size())) {
                const std::string_view name = kNotifyControls[static_cast<std::size_t>(index)].name;
                if (name == "CmdDisable") Fire([&] { form_.CmdDisable_Click(); });
                if (name == "CmdAllow") Fire([&] { form_.CmdAllow_Click(); });
                if (name == "CmdDiscard") Fire([&] { form_.CmdDiscard_Click(); });
            }
        }
        return 0;
    case kRetire: {
        // Deletes this window and its object: nothing may be touched after.
        auto done = std::move(retire);
        done();
        return 0;
    }
    case WM_CLOSE:
        // Closed from outside (the task bar, Alt+F4): the form goes like under its Close button.
        Fire([&] { form_.CmdClose_MouseUp(1); });
        return 0;
    default:
        break;
    }
    return DefWindowProcA(window_, message, wParam, lParam);
}

NotifyWindows::NotifyWindows(monitor::NotifyForms& forms, platform::UiServices& ui) : forms_(forms), ui_(ui) {
    forms_.shown = [this](FrmNotify& form) {
        for (auto& window : windows_)
            if (window->form() == &form) return window->Show();
        windows_.push_back(std::make_unique<NotifyWindow>(form, ui_));
        NotifyWindow* made = windows_.back().get();
        made->retire = [this, made] {
            std::erase_if(windows_, [made](const std::unique_ptr<NotifyWindow>& w) { return w.get() == made; });
        };
        made->Show();
    };
    forms_.unloaded = [this](FrmNotify& form) {
        for (auto& window : windows_)
            if (window->form() == &form) return window->Unloaded();
    };
}

NotifyWindows::~NotifyWindows() {
    forms_.shown = [](FrmNotify&) {};
    forms_.unloaded = [](FrmNotify&) {};
}

}  // namespace tessmark::app

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
    // Tab, Shift+Tab and Enter among the form's buttons (Space is the button's
    // own); false for any other message.
    bool Key(const MSG& msg);
    // The form was unloaded: hide now, go once the message that did it is over.
    void Unloaded();
    FrmNotify* form() const { return alive ? &form_ : nullptr; }
    std::function<void()> retire;

private:
    static LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    void Paint(HDC dc);
    void Focus(std::string_view button);
    template <class Handler>
    void Fire(Handler&& handler) {
        // Once unloaded, the form may be gone before the window: what still
        // comes for the window goes nowhere.
        if (!alive) return;
        vb::RunEvent(ui_, std::forward<Handler>(handler));
        if (alive) Refresh();  // an unloading handler has taken the window with it
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
    std::unique_ptr<CaptionButton> CmdClose_;
    HWND lastFocus_ = nullptr;  // the button that had the focus when the window was last left

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

    auto fire = [this](auto handler) {
        return [this, handler](auto... button) { Fire([&] { (form_.*handler)(button...); }); };
    };
    CmdClose_ = std::make_unique<CaptionButton>(
        window_, id::notify::CmdClose, body_.get(),
        CaptionButton::Handlers{fire(&FrmNotify::CmdClose_MouseDown), fire(&FrmNotify::CmdClose_MouseMove),
                                fire(&FrmNotify::CmdClose_MouseUp)});
    Place(CmdClose_->hwnd(), kCmdClose);
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
    CmdClose_->Sync(form_.CmdClosePicture);
}

void NotifyWindow::Focus(std::string_view button) {
    for (std::size_t i = 0; i < kNotifyControls.size(); ++i)
        if (kNotifyControls[i].button && kNotifyControls[i].name == button) SetFocus(controls_[i]);
}

bool NotifyWindow::Key(const MSG& msg) {
    if (msg.message != WM_KEYDOWN || (msg.wParam != VK_TAB && msg.wParam != VK_RETURN)) return false;
    if (!alive || GetAncestor(msg.hwnd, GA_ROOT) != window_) return false;
    HWND focused = GetFocus();
    std::string_view name;
    for (std::size_t i = 0; i < kNotifyControls.size(); ++i)
        if (controls_[i] == focused && kNotifyControls[i].button) name = kNotifyControls[i].name;
    if (msg.wParam == VK_TAB)
        Focus(form_.NextButton(name, GetKeyState(VK_SHIFT) < 0));
    else if (!name.empty())
        SendMessageA(window_, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(focused), BN_CLICKED),
                     reinterpret_cast<LPARAM>(focused));
    return true;
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
    if (FormMouse(
            window_, message, lParam, [this](int button, int y) { Fire([&] { form_.Form_MouseDown(button, y); }); },
            [this] { Fire([&] { form_.Form_MouseMove(); }); }))
        return 0;
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
    case WM_ACTIVATE:
        if (LOWORD(wParam) == WA_INACTIVE && IsChild(window_, GetFocus())) lastFocus_ = GetFocus();
        break;
    case WM_SETFOCUS:
        // The window passes the focus on to a button, as a form does to its first control.
        if (lastFocus_ != nullptr && IsWindowEnabled(lastFocus_)) SetFocus(lastFocus_);
        else Focus(form_.NextButton({}, false));
        return 0;
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

bool NotifyWindows::Key(const MSG& msg) {
    for (auto& window : windows_)
        if (window->Key(msg)) return true;
    return false;
}

NotifyWindows::~NotifyWindows() {
    forms_.shown = [](FrmNotify&) {};
    forms_.unloaded = [](FrmNotify&) {};
}

}  // namespace tessmark::app

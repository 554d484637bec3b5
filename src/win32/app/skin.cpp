#include "win32/app/skin.h"

#include "win32/app/controls.h"

namespace tessmark::app {

namespace {

constexpr COLORREF kFrameColour = RGB(0x30, 0x48, 0x6A);
constexpr COLORREF kCaptionTop = RGB(0x5B, 0x7F, 0xAE);
constexpr COLORREF kCaptionBottom = RGB(0x30, 0x48, 0x6A);

int Blend(int from, int to, int step, int steps) { return from + (to - from) * step / steps; }

}  // namespace

OwnedFont Font(const char* face, int height, int weight) {
    return OwnedFont(CreateFontA(-height, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                                 CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_SWISS, face));
}

void FillSolid(HDC dc, const RECT& area, COLORREF colour) {
    SetBkColor(dc, colour);
    ExtTextOutA(dc, 0, 0, ETO_OPAQUE, &area, nullptr, 0, nullptr);
}

void PaintBody(HDC dc, const RECT& client) {
    FillSolid(dc, {0, kCaptionStrip, client.right, client.bottom}, kBodyColour);
    for (int y = 0; y < kCaptionStrip; ++y) {
        const COLORREF shade =
            RGB(Blend(GetRValue(kCaptionTop), GetRValue(kCaptionBottom), y, kCaptionStrip),
                Blend(GetGValue(kCaptionTop), GetGValue(kCaptionBottom), y, kCaptionStrip),
                Blend(GetBValue(kCaptionTop), GetBValue(kCaptionBottom), y, kCaptionStrip));
        FillSolid(dc, {0, y, client.right, y + 1}, shade);
    }
}

void PaintFrame(HDC dc, const RECT& client) {
    OwnedBrush frame(CreateSolidBrush(kFrameColour));
    FrameRect(dc, &client, frame.get());
}

void PaintSkin(HWND window, HDC dc, HICON icon, HFONT captionFont, const std::string& caption) {
    RECT client;
    GetClientRect(window, &client);
    PaintBody(dc, client);
    DrawIconEx(dc, 6, (kCaptionStrip - 16) / 2, icon, 16, 16, 0, nullptr, DI_NORMAL);
    HGDIOBJ oldFont = SelectObject(dc, captionFont);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, RGB(0xFF, 0xFF, 0xFF));
    RECT text{28, 0, client.right, kCaptionStrip};
    DrawTextA(dc, caption.c_str(), -1, &text, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    SelectObject(dc, oldFont);
    PaintFrame(dc, client);
}

bool FormMouse(HWND window, UINT message, LPARAM lParam, const std::function<void(int button, int y)>& down,
               const std::function<void()>& move) {
    switch (message) {
    case WM_MOUSEMOVE:
        move();
        return true;
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
        SetCapture(window);
        down(MouseButton(message), static_cast<short>(HIWORD(lParam)) * static_cast<int>(kTwipsPerPixel));
        return true;
    case WM_LBUTTONUP:
    case WM_RBUTTONUP:
    case WM_MBUTTONUP:
        if (GetCapture() == window) ReleaseCapture();
        return true;
    default:
        return false;
    }
}

CaptionButton::CaptionButton(HWND parent, int id, HBRUSH background, Handlers handlers)
    : box_(std::make_unique<Box>(parent, id, background)) {
    box_->onPaint = [this](HDC dc, const RECT& client) {
        OwnedDc source(CreateCompatibleDC(dc));
        HGDIOBJ old = SelectObject(source.get(), bitmap_.get());
        BitBlt(dc, 0, 0, client.right, client.bottom, source.get(), 0, 0, SRCCOPY);
        SelectObject(source.get(), old);
    };
    box_->onMouse = [this, handlers](UINT message, POINT) {
        if (message == WM_MOUSEMOVE) return handlers.move();
        const int pressed = MouseButton(message);
        if (pressed == 0) return;
        if (message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN) {
            SetCapture(box_->hwnd());
            handlers.down(pressed);
        } else {
            ReleaseCapture();
            handlers.up(pressed);
        }
    };
}

void CaptionButton::Sync(const std::string& name) {
    if (name_ == name && bitmap_) return;
    bitmap_.reset(LoadBitmapA(GetModuleHandleA(nullptr), name.c_str()));
    name_ = name;
    InvalidateRect(box_->hwnd(), nullptr, FALSE);
}

}  // namespace tessmark::app

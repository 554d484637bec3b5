#include "win32/app/XP_ProgressBar.h"

#include <algorithm>
#include <string>

#include "vb/vb.h"

namespace tessmark::app {

using ui::BlendColors;
using ui::Colour;
using ui::ShiftColor;

namespace {

constexpr Colour kWhite = 0xFFFFFF;
constexpr Colour kBlack = 0x000000;
constexpr Colour kSilver = 0xC0C0C0;
constexpr Colour kFrameOuter = 0xBEBEBE;
constexpr Colour kFrameInner = 0xEFEFEF;
constexpr int kGap = 2;

// A colour with the top bit set names a system colour.
Colour Translate(Colour colour) { return (colour & 0x80000000u) ? GetSysColor(colour & 0x7FFFFFFF) : colour; }

long Part(long percent, double divisor, long width) { return static_cast<long>(percent / divisor * width); }

void RegisterClassOnce(HINSTANCE instance) {
    WNDCLASSA existing{};
    if (GetClassInfoA(instance, XP_ProgressBar::kClassName, &existing)) return;
    WNDCLASSA wc{};
    wc.style = CS_OWNDC;  // the control keeps one context of its own
    wc.lpfnWndProc = DefWindowProcA;
    wc.hInstance = instance;
    wc.hCursor = LoadCursor(nullptr, IDC_ARROW);
    wc.lpszClassName = XP_ProgressBar::kClassName;
    RegisterClassA(&wc);
}

}  // namespace

XP_ProgressBar::XP_ProgressBar(HINSTANCE instance, HWND parent, int x, int y, int width, int height) {
    RegisterClassOnce(instance);
    hWnd = CreateWindowExA(0, kClassName, "", WS_CHILD | WS_VISIBLE, x, y, width, height, parent, nullptr,
                           instance, nullptr);
    SetWindowLongPtrA(hWnd, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrA(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&WindowProc));
    UserControl_Initialize();
}

XP_ProgressBar::~XP_ProgressBar() {
    UserControl_Terminate();
    // Without a window the context was the screen's, which must go back; the
    // window's own (class) context is not affected by a release.
    if (hdc_) ReleaseDC(hWnd, hdc_);
    if (hWnd) {
        SetWindowLongPtrA(hWnd, GWLP_USERDATA, 0);
        DestroyWindow(hWnd);
    }
}

LRESULT CALLBACK XP_ProgressBar::WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* self = reinterpret_cast<XP_ProgressBar*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (self) {
        switch (message) {
        case WM_PAINT: {
            PAINTSTRUCT ps;
            BeginPaint(window, &ps);
            self->DrawProgressBar();
            EndPaint(window, &ps);
            return 0;
        }
        case WM_ERASEBKGND:
            return 1;
        case WM_SIZE:
            self->UserControl_Resize();
            return 0;
        default:
            break;
        }
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

void XP_ProgressBar::UserControl_Initialize() {
    font_.reset(CreateFontA(-11, 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET, 0, 0, 0, 0, "Tahoma"));
    model_.Font = reinterpret_cast<std::intptr_t>(font_.get());
    hdc(GetDC(hWnd));  // the background is white and the scale pixels: what the client area is anyway
    model_.Max = 100;
    model_.Min = 0;
    model_.percent = 0;
    model_.Orientation = 0;
    model_.Scrolling = 0;
    model_.Color = Translate(0x8000000D);
    DrawProgressBar();
}

void XP_ProgressBar::UserControl_Resize() { hdc(GetDC(hWnd)); }

void XP_ProgressBar::UserControl_Terminate() {
    if (!bufferDc_) return;
    SelectObject(bufferDc_, previousBitmap_);
    DeleteObject(bufferBitmap_);
    DeleteDC(bufferDc_);
    bufferDc_ = nullptr;
}

void XP_ProgressBar::Color(Colour lColor) {
    model_.Color = Translate(lColor);
    DrawProgressBar();
}

void XP_ProgressBar::Image(HBITMAP handle) {
    model_.Image = reinterpret_cast<std::intptr_t>(handle);
    DrawProgressBar();
}

void XP_ProgressBar::Orientation(std::int32_t cOrientation) {
    model_.Orientation = cOrientation;
    DrawProgressBar();
}

void XP_ProgressBar::Scrolling(std::int32_t lScrolling) {
    model_.Scrolling = lScrolling;
    DrawProgressBar();
}

void XP_ProgressBar::ShowText(bool bShowText) {
    model_.ShowText = bShowText;
    DrawProgressBar();
}

void XP_ProgressBar::Value(std::int32_t cValue) {
    model_.SetValue(cValue);
    DrawProgressBar();
}

void XP_ProgressBar::hdc(HDC handle) {
    GetClientRect(hWnd, &client_);
    EnsureBackBuffer(client_.right - client_.left, client_.bottom - client_.top);
    hdc_ = handle;
}

void XP_ProgressBar::EnsureBackBuffer(int width, int height) {
    const bool make = bufferDc_ ? (width > bufferWidth_ || height > bufferHeight_) : (width > 0 && height > 0);
    if (!make) return;
    UserControl_Terminate();
    // It grows and never shrinks.
    bufferWidth_ = std::max(width, bufferWidth_);
    bufferHeight_ = std::max(height, bufferHeight_);
    HDC display = CreateDCA("DISPLAY", nullptr, nullptr, nullptr);
    bufferDc_ = CreateCompatibleDC(display);
    bufferBitmap_ = CreateCompatibleBitmap(display, bufferWidth_, bufferHeight_);
    previousBitmap_ = SelectObject(bufferDc_, bufferBitmap_);
    DeleteDC(display);
}

void XP_ProgressBar::pDraw(HDC hdc, int xSrc, int ySrc, int WidthSrc, int HeightSrc, int xDst, int yDst) {
    if (!bufferDc_) return;
    BitBlt(hdc, xDst, yDst, WidthSrc > 0 ? WidthSrc : bufferWidth_, HeightSrc > 0 ? HeightSrc : bufferHeight_,
           bufferDc_, xSrc, ySrc, SRCCOPY);
}

void XP_ProgressBar::DrawLine(int X, int Y, int Width, int Height, HDC cHdc, Colour Color) {
    HPEN pen = CreatePen(PS_SOLID, 1, Color);
    HGDIOBJ previous = SelectObject(cHdc, pen);
    MoveToEx(cHdc, X, Y, nullptr);
    LineTo(cHdc, Width, Height);
    SelectObject(cHdc, previous);
    DeleteObject(pen);
}

void XP_ProgressBar::DrawGradient(Colour lEndColor, Colour lStartcolor, int X, int Y, int X2, int Y2, HDC hdc,
                                  bool bH) {
    const int extent = bH ? X2 : Y2;
    double step[3] = {0, 0, 0};
    const int shifts[3] = {0, 8, 16};
    // A zero extent fails the division; the error is ignored, the steps stay 0.
    if (extent != 0)
        for (int c = 0; c < 3; ++c)
            step[c] = (static_cast<double>((lStartcolor >> shifts[c]) & 0xFF) - ((lEndColor >> shifts[c]) & 0xFF)) /
                      extent;
    for (int i = 0; i <= extent; ++i) {
        Colour colour = 0;
        for (int c = 0; c < 3; ++c) {
            const double value = ((lEndColor >> shifts[c]) & 0xFF) + i * step[c];
            colour |= static_cast<Colour>(std::clamp(vb::RoundHalfEven(value), 0.0, 255.0)) << shifts[c];
        }
        if (bH)
            DrawLine(X + i, Y, X + i, Y2, hdc, colour);
        else
            DrawLine(X, Y + i, X2, Y + i, hdc, colour);
    }
}

void XP_ProgressBar::FillSolid(HDC dc, RECT rect, Colour colour) {
    OwnedBrush brush(CreateSolidBrush(colour));
    FillRect(dc, &rect, brush.get());
}

void XP_ProgressBar::FrameSolid(HDC dc, RECT rect, Colour colour) {
    OwnedBrush brush(CreateSolidBrush(colour));
    FrameRect(dc, &rect, brush.get());
}

void XP_ProgressBar::DrawProgressBar() {
    if (!hWnd) return;
    const long percent = model_.DrawnPercent();
    GetClientRect(hWnd, &client_);
    HDC dc = Target();
    const Colour c = DrawnColor();
    const int w = client_.right;
    const int h = client_.bottom;
    FillSolid(dc, client_, model_.Scrolling == 6 ? kBlack : kWhite);

    switch (model_.Scrolling) {
    case 3:
        FrameSolid(dc, client_, ShiftColor(c, 100));
        FillSolid(dc, {1, 1, static_cast<LONG>(Part(percent, 100, w)), h - 1}, ShiftColor(c, 180));
        break;
    case 4: {
        RECT edge = client_;
        DrawEdge(dc, &edge, 6, BF_RECT);
        DrawGradient(ShiftColor(c, 140), ShiftColor(c, 200), 2, 2, Part(percent, 100, w - 4), h - 3, dc, true);
        break;
    }
    case 5: {
        FrameSolid(dc, client_, ShiftColor(c, 10));
        DrawGradient(c, ShiftColor(c, 100), 2, 2, w - 2, h - 5, dc, false);
        const int fill = Part(percent, 101, w);
        DrawGradient(ShiftColor(c, 250), c, 3, 3, fill, h - 7, dc, false);
        DrawLine(fill, 3, fill, h - 3, dc, ShiftColor(c, 25));
        break;
    }
    case 6: {
        const Colour dark = BlendColors(c, kBlack, 200);
        FrameSolid(dc, client_, dark);
        const int fill = 2 + Part(percent, 100, w - 4);
        const int half = (h - 4) / 2;
        DrawGradient(ShiftColor(dark, 60), dark, 2, 2, fill, half, dc, false);
        DrawGradient(dark, BlendColors(c, kBlack, 100), 2, 2 + half, fill, h - 5 - half, dc, false);
        break;
    }
    case 7: {
        RECT edge = client_;
        DrawEdge(dc, &edge, 9, BF_RECT);
        SetBkMode(dc, OPAQUE);
        SetBkColor(dc, ShiftColor(c, 140));
        OwnedBrush hatch(CreateHatchBrush(model_.BrushStyle, c));
        RECT fill{2, 2, static_cast<LONG>(2 + Part(percent, 101, w - 4)), h - 2};
        FillRect(dc, &fill, hatch.get());
        break;
    }
    case 8: {
        RECT edge = client_;
        DrawEdge(dc, &edge, 2, BF_RECT);
        if (model_.Image) {
            OwnedBrush pattern(CreatePatternBrush(reinterpret_cast<HBITMAP>(model_.Image)));
            HGDIOBJ previous = SelectObject(dc, pattern.get());
            PatBlt(dc, 2, 2, Part(percent, 101, w - 4), h - 4, PATCOPY);
            SelectObject(dc, previous);
        }
        break;
    }
    case 9: {
        FrameSolid(dc, client_, kSilver);
        DrawGradient(kWhite, kSilver, 2, 2, w - 2, h - 5, dc, false);
        const int fill = 2 + Part(percent, 101, w - 4);
        const int half = (h - 4) / 2;
        DrawGradient(ShiftColor(c, 180), c, 2, 2, fill, half, dc, false);
        DrawGradient(c, BlendColors(c, kBlack, 180), 2, 2 + half, fill, h - 5 - half, dc, false);
        break;
    }
    default:
        DrawStandardBar(dc, percent);
        break;
    }
    DrawCaption(dc, percent);
    if (bufferDc_) pDraw(hdc_, 0, 0, 0, 0, 0, 0);
}

void XP_ProgressBar::DrawStandardBar(HDC dc, long percent) {
    const Colour c = DrawnColor();
    const Colour light = ShiftColor(c, 150);
    const int w = client_.right;
    const int h = client_.bottom;
    const int blockWidth = model_.Scrolling == 0 ? 6 : 0;
    const int step = blockWidth + kGap;
    const RECT bar{client_.left + 3, client_.top + 3, client_.right - 3, client_.bottom - 3};

    if (model_.Orientation == 0) {
        int end = ui::StandardBarEnd(bar.left, bar.right, percent, blockWidth, kGap);
        if (model_.Scrolling == 2) {
            // Three moving blocks stand in for the fill.
            for (int i = 0; i <= 2; ++i) {
                const int x = end + i * (10 + kGap) - static_cast<int>((100 - percent) / 100.0 * 45);
                DrawGradient(ShiftColor(c, 220 - 40 * i), ShiftColor(c, 200 - 40 * i), x, 8, x + 10, h - 16, dc,
                             false);
            }
        } else {
            if (end < 15) end = 12;
            if (end + 4 > client_.right) end -= 4;
            DrawGradient(light, c, 4, 3, end, 6, dc, false);
            FillSolid(dc, {4, client_.top + 8, end, client_.bottom - 8}, c);
            DrawGradient(c, light, 4, client_.bottom - 10, end, 6, dc, false);
            if (model_.Scrolling == 0)
                for (int x = bar.left + blockWidth; x < end; x += step) FillSolid(dc, {x, bar.top, x + kGap, bar.bottom}, kWhite);
        }
    } else {
        // Turned: the fill rises from the bottom.
        const int length = ui::StandardBarEnd(0, bar.bottom - bar.top, percent, blockWidth, kGap);
        const int start = std::min<int>(bar.bottom - length, bar.bottom);
        DrawGradient(light, c, 3, start, 6, bar.bottom, dc, true);
        FillSolid(dc, {8, start, w - 8, bar.bottom}, c);
        DrawGradient(c, light, w - 10, start, 6, bar.bottom, dc, true);
        if (model_.Scrolling == 0)
            for (int y = bar.bottom - blockWidth - kGap; y >= start; y -= step) FillSolid(dc, {bar.left, y, bar.right, y + kGap}, kWhite);
    }

    // The rounded frame.
    DrawLine(2, 0, w - 2, 0, dc, kFrameOuter);
    DrawLine(0, 2, 0, h - 2, dc, kFrameOuter);
    DrawLine(2, h - 1, w - 2, h - 1, dc, kFrameInner);
    DrawLine(w - 1, 2, w - 1, h - 2, dc, kFrameInner);
    DrawLine(2, 1, w - 2, 1, dc, kFrameInner);
    DrawLine(1, 2, 1, h - 2, dc, kFrameInner);
    for (const POINT corner : {POINT{1, 1}, POINT{w - 2, 1}, POINT{1, h - 2}, POINT{w - 2, h - 2}})
        SetPixelV(dc, corner.x, corner.y, kFrameOuter);
}

void XP_ProgressBar::DrawCaption(HDC dc, long percent) {
    const std::string text = model_.CaptionText();
    if (!model_.ShowText) return;
    HGDIOBJ previous = SelectObject(dc, reinterpret_cast<HFONT>(model_.Font));
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, model_.Scrolling == 6 ? kSilver : kBlack);
    RECT size{0, 0, 0, 0};
    DrawTextA(dc, text.c_str(), -1, &size, DT_CALCRECT);
    RECT place;
    place.left = (client_.right - size.right) / 2;
    place.top = (client_.bottom - size.bottom) / 2;
    place.right = place.left + size.right;
    place.bottom = place.top + size.bottom;
    if (model_.Scrolling == 6 || model_.Scrolling == 9) {
        const long filled = percent * client_.right / 100;
        if (filled > place.right) {
            DrawTextA(dc, text.c_str(), -1, &place, 0);
        } else {
            // Over the bar in white, the rest in the plain colour, each clipped to its part.
            RECT over = place;
            over.right = std::min<LONG>(place.right, filled);
            RECT rest = place;
            rest.left = std::max<LONG>(place.left, filled);
            if (rest.right > rest.left) DrawTextA(dc, text.c_str(), -1, &place, DT_SINGLELINE);
            SetTextColor(dc, kWhite);
            if (over.right > over.left) DrawTextA(dc, text.c_str(), -1, &over, DT_SINGLELINE);
        }
    } else {
        DrawTextA(dc, text.c_str(), -1, &place, DT_SINGLELINE);
    }
    SelectObject(dc, previous);
}

}  // namespace tessmark::app

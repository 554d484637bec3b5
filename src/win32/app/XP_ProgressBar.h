#pragma once
// The self-drawing progress bar control: ten styles, a gradient routine and an
// off-screen buffer, drawn with plain GDI calls. No form hosts one; it stands
// as a finished component of its own.
#include <windows.h>

#include <cstdint>

#include "ui/XP_ProgressBar.h"
#include "win32/app/handles.h"

namespace tessmark::app {

class XP_ProgressBar {
public:
    static constexpr const char* kClassName = "XP_ProgressBar";

    // A child window of parent; UserControl_Initialize runs at once.
    XP_ProgressBar(HINSTANCE instance, HWND parent, int x, int y, int width, int height);
    ~XP_ProgressBar();  // UserControl_Terminate, then the window goes
    XP_ProgressBar(const XP_ProgressBar&) = delete;
    XP_ProgressBar& operator=(const XP_ProgressBar&) = delete;

    // ---- properties; each setter as the control's (stores, redraws or not)
    const ui::XP_ProgressBarModel& Model() const { return model_; }
    void BrushStyle(std::int32_t style) { model_.BrushStyle = style; }
    void Color(ui::Colour lColor);
    void Font(HFONT fnt) { model_.Font = reinterpret_cast<std::intptr_t>(fnt); }
    void Image(HBITMAP handle);
    void Max(std::int32_t cMax) { model_.Max = cMax; }
    void Min(std::int32_t cMin) { model_.Min = cMin; }
    void Orientation(std::int32_t cOrientation);
    void Scrolling(std::int32_t lScrolling);
    void ShowText(bool bShowText);
    void Value(std::int32_t cValue);
    HWND hWnd = nullptr;
    // Sets the context drawn to; the buffer grows to the control's size.
    void hdc(HDC handle);

    // ---- public operations
    void DrawProgressBar();
    void DrawLine(int X, int Y, int Width, int Height, HDC cHdc, ui::Colour Color);
    // From the first colour at (X, Y) to the second: columns X..X+X2 when bH
    // is true, rows Y..Y+Y2 otherwise; X2 and Y2 are counts and ends at once.
    void DrawGradient(ui::Colour lEndColor, ui::Colour lStartcolor, int X, int Y, int X2, int Y2, HDC hdc, bool bH);
    // The buffer to hdc; a size of 0 or less means the buffer's own.
    void pDraw(HDC hdc, int xSrc, int ySrc, int WidthSrc, int HeightSrc, int xDst, int yDst);

private:
    static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void UserControl_Initialize();
    void UserControl_Resize();
    void UserControl_Terminate();
    void EnsureBackBuffer(int width, int height);
    HDC Target() const { return bufferDc_ ? bufferDc_ : hdc_; }
    ui::Colour DrawnColor() const { return model_.Color; }
    void FillSolid(HDC dc, RECT rect, ui::Colour colour);
    void FrameSolid(HDC dc, RECT rect, ui::Colour colour);
    void DrawStandardBar(HDC dc, long percent);
    void DrawCaption(HDC dc, long percent);

    ui::XP_ProgressBarModel model_;
    OwnedFont font_;
    HDC hdc_ = nullptr;  // the control's own context
    RECT client_{};
    // The off-screen buffer.
    HDC bufferDc_ = nullptr;
    HBITMAP bufferBitmap_ = nullptr;
    HGDIOBJ previousBitmap_ = nullptr;
    int bufferWidth_ = 0;
    int bufferHeight_ = 0;
};

}  // namespace tessmark::app

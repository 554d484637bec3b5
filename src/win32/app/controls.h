#pragma once
// Small helpers for the plain controls of the views, and the design geometry:
// the forms were laid out in twips, 15 to the pixel at 96 dots per inch.
#include <windows.h>

#include <string>

namespace tessmark::app {

inline constexpr long kTwipsPerPixel = 15;

constexpr long ToPixels(long twips) { return (twips + kTwipsPerPixel / 2) / kTwipsPerPixel; }

struct Twips {
    long left, top, width, height;
    RECT Pixels() const {
        const long x = ToPixels(left), y = ToPixels(top);
        return RECT{x, y, x + ToPixels(width), y + ToPixels(height)};
    }
};

void Place(HWND window, const RECT& bounds);
// A child control of a system class with the font and the identifier.
HWND Control(HWND parent, const char* className, int id, DWORD style, HFONT font, const RECT& bounds = {},
             const char* text = "");
// Changes the text (shown without NULs) or the visibility only when it differs, so nothing flickers.
void SetText(HWND window, const std::string& text);
void ShowIf(HWND window, bool visible);

}  // namespace tessmark::app

// The progress bar control drawn for real: a handful of pixels per style that
// its shading, gradient and fill-width rules fix, read from its buffer.
#include <gtest/gtest.h>
#include <windows.h>

#include <set>

#include "win32/app/XP_ProgressBar.h"

using tessmark::app::XP_ProgressBar;
using tessmark::ui::BlendColors;
using tessmark::ui::Colour;
using tessmark::ui::ShiftColor;

namespace {

constexpr Colour kColor = 0x00C08040;
constexpr Colour kMagenta = 0x00FF00FF;

// The control's drawing, copied by pDraw onto a 200 x 30 sheet that starts magenta.
class Rendered {
public:
    Rendered(int scrolling, int value, bool showText, int width = 150) {
        const HINSTANCE instance = GetModuleHandleA(nullptr);
        const HWND parent = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 300, 100, nullptr, nullptr, instance, nullptr);
        const HDC screen = GetDC(nullptr), sheet = CreateCompatibleDC(screen);
        const HBITMAP bitmap = CreateCompatibleBitmap(screen, 200, 30);
        ReleaseDC(nullptr, screen);
        const HGDIOBJ previous = SelectObject(sheet, bitmap);
        const RECT all{0, 0, 200, 30};
        SetDCBrushColor(sheet, kMagenta);
        FillRect(sheet, &all, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
        {
            XP_ProgressBar bar(instance, parent, 0, 0, width, 22);
            bar.Color(kColor);
            bar.Scrolling(scrolling);
            bar.ShowText(showText);
            bar.Value(value);
            bar.pDraw(sheet, 0, 0, 0, 0, 0, 0);
        }
        for (int y = 0; y < 30; ++y)
            for (int x = 0; x < 200; ++x) pixels_[y][x] = GetPixel(sheet, x, y);
        SelectObject(sheet, previous);
        DeleteObject(bitmap);
        DeleteDC(sheet);
        DestroyWindow(parent);
    }
    Colour At(int x, int y) const { return pixels_[y][x]; }
    std::set<Colour> ColoursIn(RECT area) const {
        std::set<Colour> colours;
        for (int y = area.top; y < area.bottom; ++y)
            for (int x = area.left; x < area.right; ++x) colours.insert(At(x, y));
        return colours;
    }

private:
    Colour pixels_[30][200];
};

TEST(ProgressBarPixels, EachStyleDrawsWhereItsRulesSay) {
    const Colour c = kColor;
    struct Case { int scrolling, value; int x, y; Colour expected; const char* what; } cases[] = {
        {0, 49, 12, 10, c, "a block's middle"},                   {0, 49, 9, 10, 0xFFFFFF, "the first gap"},
        {0, 49, 12, 3, ShiftColor(c, 150), "the light band"},     {0, 49, 80, 10, 0xFFFFFF, "past the end"},
        {0, 0, 6, 10, c, "an end under 15 becomes 12"},           {0, 0, 12, 10, 0xFFFFFF, "and ends there"},
        {1, 49, 9, 10, c, "continuous: no gaps"},                 {3, 50, 0, 0, ShiftColor(c, 100), "frame"},
        {3, 50, 74, 10, ShiftColor(c, 180), "fill to half"},      {3, 50, 75, 10, 0xFFFFFF, "and not further"},
        {3, 130, 148, 10, ShiftColor(c, 180), "over 100 as 100"}, {4, 100, 2, 10, ShiftColor(c, 140), "gradient start"},
        {4, 100, 148, 10, ShiftColor(c, 200), "gradient's end"},  {5, 50, 0, 0, ShiftColor(c, 10), "frame"},
        {5, 50, 5, 3, ShiftColor(c, 250), "fill's first row"},    {6, 20, 100, 10, 0x000000, "black behind the bar"},
        {6, 20, 0, 0, BlendColors(c, 0, 200), "frame"},           {8, 100, 50, 10, 0xFFFFFF, "no image: only the edge"},
        {9, 50, 0, 0, 0xC0C0C0, "frame"},
    };
    for (const auto& k : cases) {
        Rendered bar(k.scrolling, k.value, false);
        EXPECT_EQ(bar.At(k.x, k.y), k.expected)
            << "style " << k.scrolling << " at " << k.value << ": " << k.what << std::hex << " got " << bar.At(k.x, k.y);
    }
    EXPECT_EQ(Rendered(7, 100, false).ColoursIn({10, 5, 140, 17}), (std::set<Colour>{c, ShiftColor(c, 140)}));
}

TEST(ProgressBarPixels, CaptionOnlyWithShowTextAndNothingWithoutASize) {
    const RECT centre{55, 4, 95, 18};
    for (int style : {1, 3, 6}) {
        const Colour ink = style == 6 ? 0xC0C0C0 : 0x000000;
        EXPECT_TRUE(Rendered(style, 0, true).ColoursIn(centre).count(ink)) << style;
        EXPECT_FALSE(Rendered(style, 0, false).ColoursIn(centre).count(ink)) << style;
    }
    EXPECT_EQ(Rendered(1, 50, true, 0).At(0, 0), kMagenta);  // no buffer, nothing to copy
}

}  // namespace

// The progress bar control drawn for real: a handful of pixels per style that
// its shading, gradient and fill-width rules fix, read from its buffer.
#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <set>

#include "win32/app/XP_ProgressBar.h"

using tessmark::app::XP_ProgressBar;
using tessmark::ui::BlendColors;
using tessmark::ui::Colour;
using tessmark::ui::ShiftColor;

namespace {

constexpr Colour kColor = 0x00C08040;
constexpr Colour kMagenta = 0x00FF00FF;

// The control's drawing, copied by pDraw onto a sheet that starts magenta.
class Rendered {
public:
    Rendered(int scrolling, int value, bool showText, int width = 150, int height = 22) {
        HINSTANCE instance = GetModuleHandleA(nullptr);
        parent_ = CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 300, 100, nullptr, nullptr, instance, nullptr);
        HDC screen = GetDC(nullptr);
        sheet_ = CreateCompatibleDC(screen);
        bitmap_ = CreateCompatibleBitmap(screen, 200, 100);
        ReleaseDC(nullptr, screen);
        previous_ = SelectObject(sheet_, bitmap_);
        HBRUSH magenta = CreateSolidBrush(kMagenta);
        RECT all{0, 0, 200, 100};
        FillRect(sheet_, &all, magenta);
        DeleteObject(magenta);
        XP_ProgressBar bar(instance, parent_, 0, 0, width, height);
        bar.Color(kColor);
        bar.Scrolling(scrolling);
        bar.ShowText(showText);
        bar.Value(value);
        bar.pDraw(sheet_, 0, 0, 0, 0, 0, 0);
    }
    ~Rendered() {
        SelectObject(sheet_, previous_);
        DeleteObject(bitmap_);
        DeleteDC(sheet_);
        DestroyWindow(parent_);
    }
    Colour At(int x, int y) const { return GetPixel(sheet_, x, y); }
    std::set<Colour> ColoursIn(RECT area) const {
        std::set<Colour> colours;
        for (int y = area.top; y < area.bottom; ++y)
            for (int x = area.left; x < area.right; ++x) colours.insert(At(x, y));
        return colours;
    }

private:
    HWND parent_;
    HDC sheet_;
    HBITMAP bitmap_;
    HGDIOBJ previous_;
};

TEST(ProgressBarPixels, EachStyleDrawsWhereItsRulesSay) {
    const Colour c = kColor;
    struct Case { int scrolling, value; int x, y; Colour expected; const char* what; } cases[] = {
        {0, 49, 12, 10, c, "a block's middle in plain colour"},
        {0, 49, 9, 10, 0xFFFFFF, "the gap after the first block"},
        {0, 49, 12, 3, ShiftColor(c, 150), "the light band's first row"},
        {0, 49, 80, 10, 0xFFFFFF, "past the end, whole blocks of 8 from 3"},
        {0, 0, 6, 10, c, "an end under 15 becomes 12"},
        {0, 0, 12, 10, 0xFFFFFF, "and ends there"},
        {1, 49, 9, 10, c, "continuous: no gaps"},
        {3, 50, 0, 0, ShiftColor(c, 100), "frame"},
        {3, 50, 74, 10, ShiftColor(c, 180), "fill to half the width"},
        {3, 50, 75, 10, 0xFFFFFF, "and not further"},
        {3, 130, 148, 10, ShiftColor(c, 180), "over 100 draws as 100"},
        {4, 100, 2, 10, ShiftColor(c, 140), "gradient's first column"},
        {4, 100, 148, 10, ShiftColor(c, 200), "gradient's last column, 146 on"},
        {5, 50, 0, 0, ShiftColor(c, 10), "frame"},
        {5, 50, 5, 3, ShiftColor(c, 250), "fill's first row"},
        {6, 20, 100, 10, 0x000000, "black behind the bar"},
        {6, 20, 0, 0, BlendColors(c, 0, 200), "frame"},
        {8, 100, 50, 10, 0xFFFFFF, "no image: only the edge"},
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
    EXPECT_EQ(Rendered(1, 50, true, 0, 22).At(0, 0), kMagenta);  // no buffer, nothing to copy
}

}  // namespace

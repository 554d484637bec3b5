// The progress bar control's arithmetic: shades, blends, the value held as a
// percentage in the control's own scaling, its caption and its property bag.
#include <gtest/gtest.h>

#include <tuple>

#include "ui/XP_ProgressBar.h"
#include "vb/vb.h"

using namespace tessmark::ui;

namespace {

TEST(ProgressBarModel, ShadesAndBlends) {
    struct Case { Colour got, want; } cases[] = {
        {ShiftColor(0x000000, 100), 0x646464}, {ShiftColor(0xFFFFFF, 150), 0xFFFFFF},
        {ShiftColor(0x804020, 0), 0x804020},   {ShiftColor(0x804020, 255), 0xFFFFFF},
        {ShiftColor(0x0000FF, 180), 0xB4B4FF},
        {BlendColors(0xFFFFFF, 0x000000, 255), 0xFFFFFF}, {BlendColors(0xFFFFFF, 0x000000, 0), 0x000000},
        {BlendColors(0x0000C8, 0x000000, 200), 0x00009D},  // 200 * 200 / 255 = 156.86 rounds up
        {BlendColors(0x000001, 0x000000, 128), 0x000001},  // 0.502 rounds to 1
    };
    for (const auto& c : cases) EXPECT_EQ(c.got, c.want) << "case " << &c - cases;
}

TEST(ProgressBarModel, ValueIsAPercentageScaledByMinAndMaxTheControlsWay) {
    struct Case { std::int32_t min, max, set, percent, get; } cases[] = {
        {0, 100, 45, 45, 45}, {0, 200, 50, 25, 50}, {10, 100, 30, 40, 4},  // Min added, then divided by
        {0, 100, 130, 130, 130}, {0, 3, 1, 33, 1}, {0, 8, 1, 12, 1},       // 12.5 rounds to even
    };
    for (const auto& c : cases) {
        XP_ProgressBarModel bar{.Max = c.max, .Min = c.min};
        bar.SetValue(c.set);
        EXPECT_EQ(std::pair(bar.percent, bar.Value()), std::pair(c.percent, c.get)) << c.set << '/' << c.max;
    }
    XP_ProgressBarModel over;
    over.SetValue(130);
    EXPECT_EQ(over.DrawnPercent(), 100);
    EXPECT_EQ(over.CaptionText(), "100 %");
    over.Scrolling = 2;
    EXPECT_EQ(over.CaptionText(), "Searching..");
    over.Max = 0;
    EXPECT_THROW(over.SetValue(1), tessmark::vb::VbError);
}

TEST(ProgressBarModel, PropertyBagDefaultsAndTheFontThatIsNotReadBack) {
    XP_ProgressBarModel fresh;
    fresh.ReadProperties({});
    EXPECT_EQ(std::tuple(fresh.BrushStyle, fresh.Color, fresh.Max), std::tuple(4, 0x8000000Du, 100));

    XP_ProgressBarModel set{.Font = 77, .Scrolling = 6, .ShowText = true};
    set.SetValue(60);
    PropertyBag bag;
    set.WriteProperties(bag);
    EXPECT_EQ(bag.at("Font"), 77);
    XP_ProgressBarModel read;
    read.ReadProperties(bag);
    EXPECT_EQ(std::tuple(read.Font, read.Scrolling, read.ShowText, read.percent), std::tuple(0, 6, true, 60));
}

}  // namespace

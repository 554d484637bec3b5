#pragma once
// The progress bar control's state and arithmetic: its properties with their
// property-bag names and defaults, the value held as a percentage (scaled in
// the control's own way by Min and Max), and the colour shading its ten
// styles are drawn in. The drawing itself is the Win32 control's.
#include <cstdint>
#include <map>
#include <string>

namespace tessmark::ui {

using Colour = std::uint32_t;  // 0x00BBGGRR; the top bit marks a system colour

// A lighter shade: each component c becomes c * (255 - amount) / 255 + amount, capped at 255.
Colour ShiftColor(Colour colour, long amount);
// Each component second * (255 - amount) / 255 + first * amount / 255, rounded.
Colour BlendColors(Colour first, Colour second, long amount);

// What a control saves at design time, by name.
using PropertyBag = std::map<std::string, std::int64_t>;

struct XP_ProgressBarModel {
    std::int32_t BrushStyle = 4;
    Colour Color = 0x8000000D;  // as set; the control draws its translation
    std::int64_t Font = 0;      // handles of the font and picture objects, 0 for none
    std::int64_t Image = 0;
    std::int32_t Max = 100;
    std::int32_t Min = 0;
    std::int32_t Orientation = 0;
    std::int32_t Scrolling = 0;
    bool ShowText = false;
    std::int32_t percent = 0;  // Value as held inside

    // cValue * 100 / Max + Min, made whole (a Max of 0 is a division by zero).
    void SetValue(std::int32_t cValue);
    // percent / 100 * Max / Min (by 1 for a Min under 1), made whole.
    std::int32_t Value() const;
    // Over 100 draws as 100.
    std::int32_t DrawnPercent() const { return percent > 100 ? 100 : percent; }
    // "Searching.." for the searching style, else the percentage and " %".
    std::string CaptionText() const;

    // The bag's names and defaults. Font is written but never read back.
    void WriteProperties(PropertyBag& bag) const;
    void ReadProperties(const PropertyBag& bag);
};

// The standard bar's filled end, horizontally (from left towards right): the
// fraction percent / 98 of the width, moved back to whole blocks of
// blockWidth + gap from the left edge.
long StandardBarEnd(long left, long right, long percent, long blockWidth, long gap);

}  // namespace tessmark::ui

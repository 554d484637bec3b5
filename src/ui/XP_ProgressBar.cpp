#include "ui/XP_ProgressBar.h"

#include <algorithm>
#include <cmath>

#include "vb/vb.h"

namespace tessmark::ui {

namespace {

long Component(Colour colour, int shift) { return static_cast<long>((colour >> shift) & 0xFF); }
Colour Rgb(long r, long g, long b) {
    return static_cast<Colour>(r) | static_cast<Colour>(g) << 8 | static_cast<Colour>(b) << 16;
}

}  // namespace

Colour ShiftColor(Colour colour, long amount) {
    auto shade = [&](int shift) { return std::min(255L, Component(colour, shift) * (255 - amount) / 255 + amount); };
    return Rgb(shade(0), shade(8), shade(16));
}

Colour BlendColors(Colour first, Colour second, long amount) {
    auto mix = [&](int shift) {
        return static_cast<long>(vb::RoundHalfEven(Component(second, shift) * (255.0 - amount) / 255.0 +
                                                   Component(first, shift) * amount / 255.0));
    };
    return Rgb(mix(0), mix(8), mix(16));
}

void XP_ProgressBarModel::SetValue(std::int32_t cValue) {
    if (Max == 0) throw vb::VbError(vb::err::kDivisionByZero);
    percent = vb::CLng(static_cast<double>(cValue) * 100 / Max + Min);
}

std::int32_t XP_ProgressBarModel::Value() const {
    return vb::CLng(percent / 100.0 * Max / (Min >= 1 ? Min : 1));
}

std::string XP_ProgressBarModel::CaptionText() const {
    if (Scrolling == 2) return "Searching..";
    return vb::CStr(static_cast<long>(vb::RoundHalfEven(DrawnPercent()))) + " %";
}

void XP_ProgressBarModel::WriteProperties(PropertyBag& bag) const {
    bag["BrushStyle"] = BrushStyle;
    bag["Color"] = Color;
    bag["Font"] = Font;
    bag["Image"] = Image;
    bag["Max"] = Max;
    bag["Min"] = Min;
    bag["Orientation"] = Orientation;
    bag["Scrolling"] = Scrolling;
    bag["ShowText"] = ShowText ? -1 : 0;
    bag["Value"] = Value();
}

void XP_ProgressBarModel::ReadProperties(const PropertyBag& bag) {
    auto read = [&bag](const char* name, std::int64_t fallback) {
        auto it = bag.find(name);
        return it == bag.end() ? fallback : it->second;
    };
    BrushStyle = static_cast<std::int32_t>(read("BrushStyle", 4));
    Color = static_cast<Colour>(read("Color", 0x8000000D));
    Image = read("Image", 0);
    Max = static_cast<std::int32_t>(read("Max", 100));
    Min = static_cast<std::int32_t>(read("Min", 0));
    Orientation = static_cast<std::int32_t>(read("Orientation", 0));
    Scrolling = static_cast<std::int32_t>(read("Scrolling", 0));
    ShowText = read("ShowText", 0) != 0;
    SetValue(static_cast<std::int32_t>(read("Value", 0)));
}

long StandardBarEnd(long left, long right, long percent, long blockWidth, long gap) {
    const double fraction = std::max(0.0, percent / 98.0);
    long end = left + static_cast<long>(fraction * (right - left));
    const long step = blockWidth + gap;
    end = left + (end - left) / step * step;
    return std::max(end, left);
}

}  // namespace tessmark::ui

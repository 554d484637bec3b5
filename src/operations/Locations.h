#pragma once
// Where the disable and enable operations find each section's items: the
// catalogue's places, with the key spellings of the operations.
#include <string>
#include <string_view>

#include "catalogue/sections.h"

namespace tessmark::operations {

namespace section = catalogue::section;
using catalogue::kBhoKey;
using catalogue::kServicesKey;
inline constexpr std::string_view kBhoDisabledKey = catalogue::kBhoKeyDisabled;

// The catalogue entry of a section whose items are found by place (Run family,
// Startup folders, logon values), when its enabled items live in `place`;
// exact, case-sensitive matches of the section text, null otherwise.
inline const catalogue::ItemSection* FindSection(catalogue::Place place, const std::string& text) {
    const catalogue::ItemSection* entry = catalogue::FindItemSection(text);
    return entry && entry->enabled.place == place ? entry : nullptr;
}

inline std::string S(std::string_view text) { return std::string(text); }

}  // namespace tessmark::operations

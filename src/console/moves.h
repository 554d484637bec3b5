#pragma once
// Disabling and enabling one item exactly: its own data moves between the
// places the window's operations use, and nothing else is touched.
#include "console/places.h"
#include "console/records.h"

namespace tessmark::console {

// `record` is a row of ListItems in the state the move leaves.
Outcome DisableItem(platform::Ports ports, const Record& record);
Outcome EnableItem(platform::Ports ports, const Record& record);

}  // namespace tessmark::console

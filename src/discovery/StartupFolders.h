#pragma once
// The two shell Startup folders: shortcuts as enabled rows, the lines of the
// settings file as disabled rows.
#include "discovery/ScanContext.h"

namespace tessmark::discovery {

void AddStartupAllUser(ScanContext& form);
void AddStartupCurrUser(ScanContext& form);

}  // namespace tessmark::discovery

#pragma once
// The Run family of registry keys, for all users or the current user: values
// of the key as enabled rows, values of its AutorunsDisabled subkey as
// disabled rows. These scanners never run the message pump.
#include "discovery/ScanContext.h"

namespace tessmark::discovery {

void AddRun(ScanContext& form, bool currentUser);
void AddRunOnce(ScanContext& form, bool currentUser);
void AddRunServices(ScanContext& form, bool currentUser);
// No caller asks for the current user; that branch exists all the same.
void AddRunServiceOnce(ScanContext& form, bool currentUser);

}  // namespace tessmark::discovery

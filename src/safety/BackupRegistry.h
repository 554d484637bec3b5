#pragma once
// The registry backup set: the eleven keys start-up items live on, each
// exported to its own .reg file under the user's application data. Nothing
// calls it, and nothing ever reads the set.
#include "platform/files_port.h"
#include "registry/AdvRegistryAccess.h"

namespace tessmark::safety {

// Makes the missing folder levels, then exports every key of the set with its
// subkeys. The exports' results are not looked at, and an existing file is
// never overwritten. A folder that can't be made raises the run-time's error.
void BackupRegistry(registry::AdvRegistryAccess& objReg, platform::FilesPort& files);

}  // namespace tessmark::safety

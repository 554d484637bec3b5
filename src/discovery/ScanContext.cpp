#include "discovery/ScanContext.h"

#include "discovery/RowServices.h"

namespace tessmark::discovery {

long ScanContext::RowIcon(std::string path, std::string& displayName) {
    return AddItemIcon(ports.shell, shellRecord, path, &imgListIcons, &Picture1, 16, displayName);
}

}  // namespace tessmark::discovery

#pragma once
// The registry class's private export, reached by the suites with a box of
// their own: the class itself only ever hands it one that nothing has set.
#include <string>

#include "registry/AdvRegistryAccess.h"

namespace tessmark::registry {

struct ExportKeyAccess {
    static VbBool Export(AdvRegistryAccess& access, const std::string& path, const std::string& file,
                         VbBool subkeys, TextBox* box) {
        return access.ExportKey(path, file, subkeys, box);
    }
};

}  // namespace tessmark::registry

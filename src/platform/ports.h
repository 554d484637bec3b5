#pragma once
// The set of ports a piece of logic is handed.
#include "platform/files_port.h"
#include "platform/process_port.h"
#include "platform/registry_port.h"
#include "platform/shell_port.h"
#include "platform/ui_services.h"

namespace tessmark::platform {

struct Ports {
    RegistryPort& registry;
    FilesPort& files;
    ShellPort& shell;
    UiServices& ui;
    ProcessPort& process;
};

}  // namespace tessmark::platform

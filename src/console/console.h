#pragma once
// The console program without its platform: a command line in, text for
// stdout and stderr and an exit code out.
//   0 done, 1 bad usage, 2 no such item, 3 more than one item matches,
//   4 the platform refused (everything was put back).
#include <string>
#include <vector>

#include "platform/codec_port.h"
#include "platform/ports.h"

namespace tessmark::console {

struct Terminal {
    bool isConsole = false;  // stdout is a console, not a file or a pipe
    int width = 80;
    std::string version;
};

struct Output {
    std::string out, err;
};

int Run(const std::vector<std::string>& args, platform::Ports ports, platform::CodecPort& codec,
        const Terminal& terminal, Output& output);

}  // namespace tessmark::console

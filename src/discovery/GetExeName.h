#pragma once
#include <string>

namespace tessmark::discovery {

// The environment folders the reduction expands to, read once at start,
// without a trailing backslash.
struct SystemFolders {
    std::string windowsFolder;       // "windir"
    std::string programFilesFolder;  // "ProgramFiles"
};

// Turns a start-up entry (a command line with quotes, switches, environment
// tokens or the NUL tail of a fixed buffer) into what the program treats as a
// file path. A chain of literal cuts, not a parser. `commandLine` receives the
// de-quoted, NUL-free form before the token expansion.
std::string GetExeName(std::string& commandLine, const SystemFolders& folders);

}  // namespace tessmark::discovery

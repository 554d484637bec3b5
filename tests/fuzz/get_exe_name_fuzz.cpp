// The command-line reduction on any text, NULs and all.
#include "discovery/GetExeName.h"
#include "fuzz_input.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tessmark::fuzz::Input input{data, size};
    const tessmark::discovery::SystemFolders folders{input.Text(), input.Text()};
    std::string commandLine = input.Rest();
    tessmark::discovery::GetExeName(commandLine, folders);
    return 0;
}

#include "discovery/GetExeName.h"

#include "vb/vb.h"

namespace tessmark::discovery {

using namespace tessmark::vb;

namespace {

// The token is not replaced where it stands: whatever precedes the first
// backslash is thrown away and the folder put in its place.
void ExpandToken(std::string& s, const char* token, const std::string& folder) {
    Resume([&] {
        if (InStr(UCase(s), UCase(token)) > 0) s = folder + "\\" + Mid(s, InStr(s, "\\") + 1);
    });
}

}  // namespace

std::string GetExeName(std::string& commandLine, const SystemFolders& folders) {
    const std::string nul(1, '\0');
    std::string s;
    Resume([&] { s = Replace(commandLine, "\"", ""); });
    Resume([&] {
        if (InStr(s, nul) > 0) s = Left(s, InStr(s, nul) - 1);
    });
    Resume([&] { s = Replace(s, nul, ""); });
    Resume([&] {
        if (InStr(s, "/") > 0) s = Left(s, InStr(s, "/") - 1);
    });
    Resume([&] { s = RTrim(s); });
    Resume([&] { commandLine = s; });
    ExpandToken(s, "%SystemRoot%", folders.windowsFolder);
    ExpandToken(s, "%ProgramFiles%", folders.programFilesFolder);
    ExpandToken(s, "%windir%", folders.windowsFolder);
    // Without a hyphen or comma the cut asks for a negative length and fails;
    // the failure is ignored and the text stays whole.
    Resume([&] { s = Left(s, InStr(s, "-") - 1); });
    Resume([&] { s = Left(s, InStr(s, ",") - 1); });
    return Trim(s);
}

}  // namespace tessmark::discovery

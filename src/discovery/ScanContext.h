#pragma once
// What the scanners share with the main form: the ports, the environment
// folders read at start, the list and its image store, the scratch picture,
// the form's one shell record and its settings-file object.
#include "discovery/GetExeName.h"
#include "discovery/ItemList.h"
#include "platform/ports.h"
#include "storage/IniFile.h"

namespace tessmark::discovery {

struct ScanContext {
    platform::Ports ports;
    SystemFolders& folders;
    ItemList& ListView1;
    ImageStore& imgListIcons;
    PictureBox& Picture1;
    platform::ShFileInfo& shellRecord;
    storage::IniFile& objinifile;
    const bool& timer1Enabled;  // Timer1.Enabled: the test before the hourglass

    // "Appdata" followed by "\Corvane Pulse": the folder of "Settings.ini".
    std::string SideFolder() const { return ports.files.Environ("Appdata") + "\\Corvane Pulse"; }
    // The row icon of a scanner: small, into the list's image store.
    long RowIcon(std::string path, std::string& displayName);
    long RowIcon(std::string path) {
        std::string ignored;
        return RowIcon(std::move(path), ignored);
    }
    void HourglassUnlessTimer() {
        if (!timer1Enabled) ports.ui.SetMousePointer(platform::kMousePointerHourglass);
    }
};

}  // namespace tessmark::discovery

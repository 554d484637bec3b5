// The backup set's folder steps: only the missing levels are made (making one
// that exists would raise), a file in a folder's place counts as the folder,
// and a root that can't be made raises.
#include <gtest/gtest.h>

#include "platform/memory/memory_disk.h"
#include "platform/memory/memory_registry.h"
#include "platform/memory/recording_ui.h"
#include "safety/BackupRegistry.h"
#include "storage/modStartup.h"

#include <algorithm>

using std::string;

namespace {

TEST(BackupFolders, MakesOnlyTheMissingLevels) {
    const string full = "C:\\data\\Quillon\\Tessmark\\RegistryBackUps";
    struct Case { string appData, folder, file; bool raises; } cases[] = {
        {"C:\\data", "C:\\data", "", false},         {"C:\\data", "C:\\data\\Quillon", "", false},
        {"C:\\data", "C:\\data\\Quillon\\Tessmark", "", false}, {"C:\\data", full, "", false},
        {"C:\\data", "C:\\data", full, false},       {"Q:\\nowhere", "C:\\data", "", true},
    };
    for (const auto& c : cases) {
        tessmark::platform::memory::MemoryDisk disk;
        tessmark::platform::memory::MemoryRegistry registry;
        tessmark::platform::memory::RecordingUi ui;
        disk.SetEnvironmentVariable("Appdata", c.appData);
        disk.AddFolder(c.folder);
        if (!c.file.empty()) disk.AddFile(c.file, "a file");
        tessmark::registry::AdvRegistryAccess objReg(registry, disk, ui);
        if (c.raises) {
            EXPECT_THROW(tessmark::safety::BackupRegistry(objReg, disk), tessmark::vb::VbError) << c.appData;
        } else {
            EXPECT_NO_THROW(tessmark::safety::BackupRegistry(objReg, disk)) << c.folder << ' ' << c.file;
        }
        // The set, each file holding only the header, as the export ends there.
        const std::vector<string> set = {"BHO.reg", "LogonStartup.reg", "LogonWinlogon.reg", "RegRun.reg",
            "RegRunCU.reg", "RegRunOnce.reg", "RegRunOnceCU.reg", "RegRunServices.reg", "RegRunServicesCU.reg",
            "RegRunServicesOnce.reg", "Services.reg"};
        auto files = tessmark::storage::DirNormalFiles(disk, full + "\\*.*");
        std::sort(files.begin(), files.end());
        EXPECT_EQ(files, !c.raises && c.file.empty() ? set : std::vector<string>{}) << c.folder;
        string text;
        if (!files.empty()) EXPECT_TRUE(disk.ReadWholeFile(full + "\\BHO.reg", &text) && text == "REGEDIT4\r\n\r\n");
    }
}

}  // namespace

// The backup set's folder steps: only the missing levels are made, and a file
// in the folder's place counts as the folder.
#include <gtest/gtest.h>

#include "platform/memory/memory_disk.h"
#include "platform/memory/memory_registry.h"
#include "platform/memory/recording_ui.h"
#include "safety/BackupRegistry.h"

using std::string;

namespace {

TEST(BackupFolders, MakesOnlyTheMissingLevels) {
    const string appData = "C:\\data";
    const string full = appData + "\\Quillon\\Tessmark\\RegistryBackUps";
    // MkDir on a folder that is there fails, so making an existing level would raise.
    for (const string& present : {string(), appData + "\\Quillon", appData + "\\Quillon\\Tessmark", full}) {
        tessmark::platform::memory::MemoryDisk disk;
        tessmark::platform::memory::MemoryRegistry registry;
        tessmark::platform::memory::RecordingUi ui;
        disk.SetEnvironmentVariable("Appdata", appData);
        disk.AddFolder(present.empty() ? appData : present);
        tessmark::registry::AdvRegistryAccess objReg(registry, disk, ui);
        EXPECT_NO_THROW(tessmark::safety::BackupRegistry(objReg, disk)) << present;
        EXPECT_TRUE(disk.FileExists(full + "\\RegRunServicesOnce.reg")) << present;
    }
}

TEST(BackupFolders, AFileInTheFolderPlaceCountsAndAMissingRootRaises) {
    tessmark::platform::memory::MemoryDisk disk;
    tessmark::platform::memory::MemoryRegistry registry;
    tessmark::platform::memory::RecordingUi ui;
    tessmark::registry::AdvRegistryAccess objReg(registry, disk, ui);
    disk.SetEnvironmentVariable("Appdata", "C:\\data");
    disk.AddFile("C:\\data\\Quillon\\Tessmark\\RegistryBackUps", "a file");
    EXPECT_NO_THROW(tessmark::safety::BackupRegistry(objReg, disk));
    disk.SetEnvironmentVariable("Appdata", "Q:\\nowhere");
    EXPECT_THROW(tessmark::safety::BackupRegistry(objReg, disk), tessmark::vb::VbError);
}

}  // namespace

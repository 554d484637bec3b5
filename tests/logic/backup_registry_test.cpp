// The registry backup set on the memory machine and on the real one: eleven
// files that only ever hold the header, never overwritten.
#include <gtest/gtest.h>

#include "machine.h"
#include "safety/BackupRegistry.h"

using tessmark::safety::kBackupFolder;
using tessmark::safety::kBackupSet;
using std::string;
namespace machines = tessmark::testing;

namespace {

TEST(BackupRegistry, WritesElevenHeaderOnlyFilesAndKeepsExistingOnes) {
    auto machine = machines::MakeTestMachine();
    auto& files = machine->Files();
    tessmark::registry::AdvRegistryAccess objReg(machine->Registry(), files, machine->Ui());
    const string folder = files.Environ("Appdata") + string(kBackupFolder) + "\\";
    for (const auto& entry : kBackupSet) files.Kill(folder + string(entry.fileName));

    tessmark::safety::BackupRegistry(objReg, files);
    for (const auto& entry : kBackupSet) {
        string text;
        EXPECT_TRUE(files.ReadWholeFile(folder + string(entry.fileName), &text)) << entry.fileName;
        EXPECT_EQ(text, "REGEDIT4\r\n\r\n") << entry.fileName;
    }

    ASSERT_TRUE(files.WriteWholeFile(folder + "Services.reg", "kept"));
    ASSERT_TRUE(files.Kill(folder + "BHO.reg"));
    tessmark::safety::BackupRegistry(objReg, files);
    string services, helpers;
    files.ReadWholeFile(folder + "Services.reg", &services);
    files.ReadWholeFile(folder + "BHO.reg", &helpers);
    EXPECT_EQ(services, "kept");
    EXPECT_EQ(helpers, "REGEDIT4\r\n\r\n");
}

}  // namespace

// Scanners, operations and the catalogue agree: every item section's scanner
// lists an item where the catalogue puts it, the operations move it to where
// the scanner finds disabled items and back, and the translators name the
// places the scanners read.
#include <gtest/gtest.h>

#include "catalogue/sections.h"
#include "discovery/Logon.h"
#include "discovery/RunKeys.h"
#include "discovery/StartupFolders.h"
#include "item_places.h"
#include "operations/ItemOperations.h"
#include "scan_fixture.h"
#include "vb/vb.h"

using namespace tessmark;
using catalogue::ItemSection;
using catalogue::Place;

namespace {

class CatalogueAgreement : public tessmark::testing::ScanFixture {
protected:
    operations::ItemOperations ops{form};

    void Scan(const ItemSection& entry) {
        list.Clear();
        const bool currentUser = entry.scannerArgument != 0;
        const std::string_view name = entry.scanner;
        if (name == "AddRun") discovery::AddRun(form, currentUser);
        else if (name == "AddRunOnce") discovery::AddRunOnce(form, currentUser);
        else if (name == "AddRunServices") discovery::AddRunServices(form, currentUser);
        else if (name == "AddRunServiceOnce") discovery::AddRunServiceOnce(form, currentUser);
        else if (name == "AddStartupAllUser") discovery::AddStartupAllUser(form);
        else if (name == "AddStartupCurrUser") discovery::AddStartupCurrUser(form);
        else if (name == "AddLogon") discovery::AddLogon(form, discovery::LogonKey(entry.scannerArgument), entry.scannerArgument);
        else FAIL() << "unknown scanner " << name;
    }
};

std::string Tag(const catalogue::SectionTag& tag) {
    return tag.IsText() ? "\"" + std::string(tag.text()) + "\"" : std::to_string(tag.number());
}

TEST_F(CatalogueAgreement, EachScannerListsItsSectionAndTheOperationsMoveItemsWhereItLooks) {
    const std::string tool = folders.windowsFolder + "\\tool.exe";
    Touch(tool);
    for (const ItemSection& entry : catalogue::kItemSections) {
        SCOPED_TRACE(std::string(entry.path));
        tessmark::testing::ItemPlaces places(*machine);  // every place empty again for each section
        const catalogue::Location& live = entry.enabled;
        if (live.place == Place::KeyValues) places.Set(live.root, std::string(live.subKey), "Tool", tool);
        else if (live.place == Place::NamedValue) places.Set(live.root, std::string(live.subKey), std::string(live.valueName), "tool");
        else places.Shortcut(live.shellFolder, "Tool.lnk", tool);

        for (const char* flag : {"Yes", "No"}) {
            Scan(entry);
            ASSERT_EQ(list.Count(), 1) << flag;
            const auto row = Rows().front();
            EXPECT_EQ(row.flag, flag);
            EXPECT_EQ(row.section, entry.path);
            EXPECT_EQ(row.tag, Tag(entry.tag));
            const auto& item = list(1);
            if (row.flag == "Yes") ops.MarkDisable(row.section, item.Text, item.SubItems(1), 0);
            else ops.MarkEnable(row.section, item.Text, item.SubItems(1), 0);
        }
    }
}

TEST_F(CatalogueAgreement, TranslatorsNameTheKeysTheRunScannersRead) {
    int paths = 0;
    for (const ItemSection& entry : catalogue::kItemSections) {
        const std::string path = catalogue::FindPath(std::string(entry.path));
        const std::string key = catalogue::FindKey(std::string(entry.path));
        EXPECT_EQ(key.empty(), path.empty() && entry.enabled.place != Place::NamedValue) << entry.path;
        if (path.empty()) continue;
        ++paths;
        std::string scanned = std::string(entry.enabled.root == platform::reg::kLocalMachine ? "HKEY_LOCAL_MACHINE\\"
                                                                                             : "HKEY_CURRENT_USER\\") +
                              std::string(entry.enabled.subKey);
        if (scanned.back() == '\\') scanned.pop_back();
        EXPECT_EQ(vb::UCase(path), vb::UCase(scanned)) << entry.path;
    }
    EXPECT_EQ(paths, 7) << "the current user's RunServicesOnce has no path";
}

}  // namespace

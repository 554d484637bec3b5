// The pass that turns raw rows into what the user sees.
#include <gtest/gtest.h>

#include "discovery/RowServices.h"
#include "vb/vb.h"

using namespace tessmark;

namespace {

struct Refresh : ::testing::Test {
    discovery::ItemList list;
    std::string total = "unset", active = "unset";
    int clicks = 0;
    bool selectedWhenClicked = false;

    void Run(bool clickFails = false) {
        discovery::refreshCheckBox(list, total, active, [&] {
            ++clicks;
            selectedWhenClicked = list.HasSelection();
            if (clickFails) throw vb::VbError(vb::err::kObjectNotSet);
        });
    }
};

TEST_F(Refresh, RowsWithoutIconOrPathAreMarkedMissingAndOnlyYesIsChecked) {
    struct Case {
        long icon;
        const char* path;
        const char* flag;
        long iconAfter;
        const char* pathAfter;
        bool checked;
    };
    const Case cases[] = {
        {0, "C:\\a.exe", "Yes", 1, "File Not Found", true},
        {3, "", "No", 1, "File Not Found", false},
        {0, "", "NO", 1, "File Not Found", false},
        {3, "C:\\a.exe", "Yes", 3, "C:\\a.exe", true},
        {2, "C:\\b.exe", "NO", 2, "C:\\b.exe", false},
        {4, "C:\\c.exe", "yes", 4, "C:\\c.exe", false},
    };
    for (const auto& c : cases) {
        auto& row = list.Add();
        row.SmallIcon = c.icon;
        row.SubItems(1) = c.path;
        row.SubItems(2) = c.flag;
        row.Checked = !c.checked;
    }
    // A second pass changes nothing.
    for (int pass = 1; pass <= 2; ++pass) {
        Run();
        for (long i = 1; i <= list.Count(); ++i) {
            const Case& c = cases[i - 1];
            EXPECT_EQ(list(i).SmallIcon, c.iconAfter) << "row " << i << " pass " << pass;
            EXPECT_EQ(list(i).SubItems(1), c.pathAfter) << "row " << i << " pass " << pass;
            EXPECT_EQ(list(i).Checked, c.checked) << "row " << i << " pass " << pass;
        }
        EXPECT_EQ(total, "Total  Item(s) :      6");
        EXPECT_EQ(active, "Active Item(s):      2");
        EXPECT_TRUE(list(1).Selected);
        EXPECT_TRUE(selectedWhenClicked);
        EXPECT_EQ(clicks, pass);
    }
}

TEST_F(Refresh, AnEmptyListStillRunsTheDetailsHandlerAndAFailingHandlerStopsNothing) {
    Run(true);
    EXPECT_EQ(clicks, 1);
    EXPECT_FALSE(selectedWhenClicked);
    EXPECT_EQ(total, "Total  Item(s) :      0");
    EXPECT_EQ(active, "Active Item(s):      0");
}

}  // namespace

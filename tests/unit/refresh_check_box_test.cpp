// The pass that turns raw rows into what the user sees; the scanner tests
// cover missing files, counts and selection.
#include <gtest/gtest.h>

#include "discovery/RowServices.h"
#include "vb/vb.h"

using namespace tessmark;

namespace {

// An empty list still runs the details handler, and a failing handler stops nothing. Of filled
// rows only "Yes" is checked, an empty path is missing, and a second pass changes nothing.
TEST(Refresh, OnlyYesIsCheckedAnEmptyPathIsMissingAndASecondPassChangesNothing) {
    discovery::ItemList list;
    std::string total, active;
    bool selected = true;
    discovery::refreshCheckBox(list, total, active, [&] {
        selected = list.HasSelection();
        throw vb::VbError(vb::err::kObjectNotSet);
    });
    EXPECT_FALSE(selected);
    EXPECT_EQ(total + "|" + active, "Total  Item(s) :      0|Active Item(s):      0");

    struct Case { long icon; const char *path, *flag, *pathAfter; bool checked; } cases[] = {
        {3, "", "No", "File Not Found", false},    {2, "C:\\b.exe", "NO", "C:\\b.exe", false},
        {4, "C:\\c.exe", "yes", "C:\\c.exe", false}, {3, "C:\\a.exe", "Yes", "C:\\a.exe", true},
    };
    for (const auto& c : cases) {
        auto& row = list.Add();
        row.SmallIcon = c.icon;
        row.SubItems(1) = c.path;
        row.SubItems(2) = c.flag;
        row.Checked = !c.checked;
    }
    int clicks = 0;
    for (int pass = 1; pass <= 2; ++pass) {
        discovery::refreshCheckBox(list, total, active, [&] { ++clicks; });
        for (long i = 1; i <= list.Count(); ++i) {
            const auto& c = cases[i - 1];
            EXPECT_EQ(std::make_tuple(list(i).SmallIcon, list(i).SubItems(1), list(i).Checked),
                      std::make_tuple(c.path[0] ? c.icon : 1, std::string(c.pathAfter), c.checked))
                << "row " << i << " pass " << pass;
        }
        EXPECT_EQ(active, "Active Item(s):      1");
        EXPECT_EQ(clicks, pass);
    }
}

}  // namespace

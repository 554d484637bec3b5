// Row icons from the shell: one new image per call, drawn where the caller
// asks, and the name field of the form's one shell record.
#include <gtest/gtest.h>

#include "discovery/RowServices.h"
#include "scan_fixture.h"

using namespace tessmark;

namespace {

using RowServices = tessmark::testing::ScanFixture;

TEST_F(RowServices, AddItemIconAddsOneImagePerCallWhereThereIsAStoreAndDrawsWhereThereIsAPicture) {
    const std::string file = folders.windowsFolder + "\\tool.exe";
    Touch(file);
    const struct {
        const char* caller;
        std::int16_t iconSize;
        bool store, picture;
        long result;
        bool large;
        long side;  // the picture's width and height after the call
    } cases[] = {
        {"scanner", 16, true, true, 2, false, 320},
        {"other size", 32, true, true, 2, true, 640},
        {"details panel", 0, false, true, 0, true, 77},
        {"shortcut", 0, false, false, 0, false, 77},
    };
    for (const auto& c : cases) {
        images.Clear();
        images.Add({});  // the program's own icon comes first
        picture = {false, {}, 77, 77};
        std::string path = file, name;
        long result = discovery::AddItemIcon(machine->Shell(), record, path, c.store ? &images : nullptr,
                                             c.picture ? &picture : nullptr, c.iconSize, name);
        EXPECT_EQ(std::make_tuple(result, images.Count(), picture.hasPicture, picture.Width, picture.Height),
                  std::make_tuple(c.result, c.store ? 2 : 1, c.picture, c.side, c.side)) << c.caller;
        EXPECT_EQ(!c.picture || picture.picture.large == c.large, true) << c.caller;
        EXPECT_EQ(!c.store || images[2] == picture.picture, true) << c.caller;
        EXPECT_EQ(tessmark::testing::Shown(name), "tool.exe") << c.caller;
        EXPECT_EQ(name.size(), 260u) << c.caller;
    }
}

TEST_F(RowServices, AnUnknownFileAddsNoImageAndLeavesTheNameOfThePreviousCall) {
    const std::string known = folders.windowsFolder + "\\earlier_program.exe";
    Touch(known);
    std::string name;
    EXPECT_EQ(form.RowIcon(known, name), 1);
    picture = {false, {}, 77, 77};
    EXPECT_EQ(form.RowIcon(folders.windowsFolder + "\\missing.exe", name), 0);
    EXPECT_EQ(tessmark::testing::Shown(name), "earlier_program.exe");
    EXPECT_EQ(images.Count(), 1);
    EXPECT_FALSE(picture.hasPicture);
    EXPECT_EQ(picture.Width, 77);
    // The same file again is a new image: nothing is shared.
    EXPECT_EQ(form.RowIcon(known, name), 2);
}

}  // namespace

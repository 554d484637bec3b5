// The GUI tests' entry: the one argument left after the test options is the program under test.
#include <gtest/gtest.h>

#include "gui_driver.h"

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    // None is left while the tests are listed.
    if (argc >= 2) tessmark::gui::programPath = tessmark::gui::WindowsPath(argv[1]);
    return RUN_ALL_TESTS();
}

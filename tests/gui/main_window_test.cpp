// The main window shows the form's model: the start message, the section
// tree, the rows of a population, the details of the selected row, and the
// caption's minimise button.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "gui_driver.h"
#include "machine.h"
#include "win32/app/control_ids.h"
#include "win32/platform/win32_registry.h"

namespace {

using namespace tessmark::gui;
namespace id = tessmark::app::id;
namespace reg = tessmark::platform::reg;

constexpr const char* kRunFamily = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\";
constexpr const char* kAllRun = "Registry\\All Users\\Run";
constexpr const char* kCurrRun = "Registry\\Current User\\Run";

// A copy of the program as an entry's file: its version resource is known, and
// unlike the build's path its path has no hyphen, at which an entry is cut.
constexpr const char* kVersioned = "C:\\tessmarkgui\\versioned.exe";

// A program started on a registry that holds four known Run entries and no other Run-family values.
class MainWindow : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        CreateDirectoryA("C:\\tessmarkgui", nullptr);
        CopyFileA(programPath.c_str(), kVersioned, FALSE);
    }
    void SetUp() override {
        ClearRunFamily();
        Set(reg::kLocalMachine, "Run", "Alpha", kVersioned);
        Set(reg::kLocalMachine, "Run", "Beta", "C:\\windows\\regedit.exe");
        Set(reg::kLocalMachine, "Run\\AutorunsDisabled", "Gamma", "C:\\windows\\notepad.exe");
        Set(reg::kCurrentUser, "Run", "Delta", "C:\\nowhere\\missing.exe");
        program = std::make_unique<Program>();
        ASSERT_TRUE(program->Started());
        window = program->WaitForMainWindow();
        ASSERT_NE(window, nullptr);
    }
    void TearDown() override {
        program.reset();
        ClearRunFamily();
    }

    void ClearRunFamily() {
        for (auto root : {reg::kLocalMachine, reg::kCurrentUser})
            for (const char* key : {"Run", "RunOnce", "RunServices", "RunServiceOnce"})
                tessmark::testing::DeleteTree(registry, root, std::string(kRunFamily) + key);
    }
    void Set(tessmark::platform::RegHandle root, const std::string& key, const std::string& name,
             const std::string& value) {
        ASSERT_TRUE(tessmark::testing::SeedString(registry, root, kRunFamily + key, name, value)) << key;
    }

    HWND Control(int controlId) const { return Descendant(window, controlId); }
    // The rows of the registry sections; the Startup folders hold whatever the prefix has.
    std::vector<ListRow> RegistryRows() const {
        std::vector<ListRow> rows = ListRows(*program, Control(id::ListView1));
        std::erase_if(rows, [](const ListRow& row) { return row.section.rfind("Registry\\", 0) != 0; });
        return rows;
    }

    tessmark::platform::win32::Win32Registry registry;
    std::unique_ptr<Program> program;
    HWND window = nullptr;
};

TEST_F(MainWindow, EveryStartShowsTheHintInAMessageBoxOverTheFilledList) {
    HWND box = program->WaitForWindow("#32770", "Tessmark");
    ASSERT_NE(box, nullptr) << "no start message";
    EXPECT_EQ(StaticTexts(box),
              std::vector<std::string>{
                  "Uncheck the items you don't use every day then restart your PC to feel the Corvane Pulse!"});
    EXPECT_EQ(RegistryRows().size(), 4u) << "the list fills before the message";
    PressOk(box);
    EXPECT_TRUE(WaitUntil([&] { return !IsWindow(box); }));
    EXPECT_TRUE(program->Running());
    EXPECT_TRUE(IsWindowEnabled(window));
}

TEST_F(MainWindow, TreeHoldsTheTenSectionsOpenedWithAllItemsSelected) {
    ASSERT_TRUE(program->DismissStartMessage());
    struct Expected {
        const char* caption;
        bool opened;  // only nodes with children can be
    } expected[] = {{"All Items", true}, {"Startup Folder", true}, {"All Users", false},   {"Current User", false},
                    {"Registry", true},  {"All Users", true},      {"Run", false},         {"Run Once", false},
                    {"Run Services", false}, {"Run Services Once", false}};
    std::vector<TreeNode> nodes = TreeNodes(*program, Control(id::treeAuto));
    ASSERT_EQ(nodes.size(), std::size(expected));
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        EXPECT_EQ(nodes[i].caption, expected[i].caption) << i;
        EXPECT_EQ(nodes[i].expanded, expected[i].opened) << expected[i].caption;
        EXPECT_EQ(nodes[i].selected, i == 0) << expected[i].caption;
    }
}

TEST_F(MainWindow, AllItemsListsTheRunEntriesAndTheFirstRowFillsTheDetails) {
    ASSERT_TRUE(program->DismissStartMessage());
    const std::vector<ListRow> expected = {
        {"Alpha", kVersioned, "Yes", kAllRun, true},
        {"Beta", "C:\\windows\\regedit.exe", "Yes", kAllRun, true},
        {"Gamma", "C:\\windows\\notepad.exe", "No", kAllRun, false},
        {"Delta", "File Not Found", "Yes", kCurrRun, true},
    };
    EXPECT_EQ(RegistryRows(), expected);

    HWND list = Control(id::ListView1);
    EXPECT_EQ(SendMessageA(list, LVM_GETNEXTITEM, -1, LVNI_SELECTED), 0) << "row 1 is selected";
    const auto count = SendMessageA(list, LVM_GETITEMCOUNT, 0, 0);
    EXPECT_EQ(TextOf(Control(id::lbltotalitem)), "Total  Item(s) :      " + std::to_string(count));

    EXPECT_EQ(TextOf(Control(id::lblNameVer)), "Tessmark 1.0.0.0");
    EXPECT_EQ(TextOf(Control(id::lblCompanyName)), "Company: Quillon");
    EXPECT_EQ(TextOf(Control(id::LblSection)), std::string("Section: ") + kAllRun);
    EXPECT_EQ(TextOf(Control(id::LblDescription)), "Description: Tessmark start-up manager");
    EXPECT_TRUE(IsWindowVisible(Control(id::imgCheck)));
    EXPECT_FALSE(IsWindowVisible(Control(id::imgNoCheck)));
}

TEST_F(MainWindow, ClickingTheRunNodeListsOnlyTheAllUsersRunKey) {
    ASSERT_TRUE(program->DismissStartMessage());
    HWND tree = Control(id::treeAuto);
    std::vector<TreeNode> nodes = TreeNodes(*program, tree);
    auto run = std::find_if(nodes.begin(), nodes.end(), [](const TreeNode& n) { return n.caption == "Run"; });
    ASSERT_NE(run, nodes.end());

    ClickNode(*program, tree, run->item);
    std::vector<ListRow> rows;
    EXPECT_TRUE(WaitUntil([&] { return (rows = ListRows(*program, Control(id::ListView1))).size() == 3; }));
    std::vector<std::string> names;
    for (const auto& row : rows) names.push_back(row.name + " " + row.section);
    EXPECT_EQ(names, (std::vector<std::string>{std::string("Alpha ") + kAllRun, std::string("Beta ") + kAllRun,
                                                std::string("Gamma ") + kAllRun}));
    EXPECT_EQ(TextOf(Control(id::lblactiveitem)), "Active Item(s):      2");
}

TEST_F(MainWindow, ClearingARowsCheckBoxDisablesTheEntryAndFlipsTheRow) {
    ASSERT_TRUE(program->DismissStartMessage());
    HWND list = Control(id::ListView1);
    std::vector<ListRow> rows = ListRows(*program, list);
    auto beta = std::find_if(rows.begin(), rows.end(), [](const ListRow& r) { return r.name == "Beta"; });
    ASSERT_NE(beta, rows.end());
    const int index = static_cast<int>(beta - rows.begin());
    const std::string activeBefore = TextOf(Control(id::lblactiveitem));

    ClickCheckBox(*program, list, index);
    EXPECT_TRUE(WaitUntil([&] { return !ListRows(*program, list)[index].checked; }));
    EXPECT_EQ(ListRows(*program, list)[index],
              (ListRow{"Beta", "C:\\windows\\regedit.exe", "No", kAllRun, false}));

    // The value moved into the disabled copies.
    tessmark::platform::RegHandle handle = 0;
    ASSERT_EQ(registry.RegOpenKeyA(reg::kLocalMachine, (std::string(kRunFamily) + "Run").c_str(), &handle), 0);
    EXPECT_NE(registry.RegQueryValueExA(handle, "Beta", nullptr, nullptr, nullptr), 0);
    registry.RegCloseKey(handle);
    ASSERT_EQ(registry.RegOpenKeyA(reg::kLocalMachine, (std::string(kRunFamily) + "Run\\AutorunsDisabled").c_str(),
                                   &handle), 0);
    EXPECT_EQ(registry.RegQueryValueExA(handle, "Beta", nullptr, nullptr, nullptr), 0);
    registry.RegCloseKey(handle);

    // Totals count one active item fewer; the panel shows the row, now disabled.
    EXPECT_NE(TextOf(Control(id::lblactiveitem)), activeBefore);
    EXPECT_EQ(SendMessageA(list, LVM_GETNEXTITEM, -1, LVNI_SELECTED), index);
    EXPECT_EQ(TextOf(Control(id::LblSection)), std::string("Section: ") + kAllRun);
    EXPECT_FALSE(IsWindowVisible(Control(id::imgCheck)));
    EXPECT_TRUE(IsWindowVisible(Control(id::imgNoCheck)));

    // And back: checking it again restores the live value.
    ClickCheckBox(*program, list, index);
    EXPECT_TRUE(WaitUntil([&] { return ListRows(*program, list)[index].checked; }));
    ASSERT_EQ(registry.RegOpenKeyA(reg::kLocalMachine, (std::string(kRunFamily) + "Run").c_str(), &handle), 0);
    EXPECT_EQ(registry.RegQueryValueExA(handle, "Beta", nullptr, nullptr, nullptr), 0);
    registry.RegCloseKey(handle);
}

TEST_F(MainWindow, CaptionMinimiseButtonSendsTheWindowToTheTaskBar) {
    ASSERT_TRUE(program->DismissStartMessage());
    HWND button = Control(id::CmdMinimise);
    PostMessageA(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    PostMessageA(button, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    EXPECT_TRUE(WaitUntil([&] { return IsIconic(window) != FALSE; }));
    EXPECT_TRUE(program->Running());
}

}  // namespace

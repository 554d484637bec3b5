// The main window shows the form's model and forwards the user's clicks.
#include <windows.h>
#include <shlobj.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "gui_driver.h"
#include "machine.h"
#include "win32/app/control_ids.h"
#include "win32/platform/win32_disk.h"
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
    // The stored bytes of an all-users Run-family value; empty when there is none.
    std::string Stored(const std::string& key, const char* name) {
        tessmark::platform::RegHandle handle = 0;
        if (registry.RegOpenKeyA(reg::kLocalMachine, (kRunFamily + key).c_str(), &handle) != 0) return "";
        char data[2048];
        std::uint32_t size = sizeof data;
        const bool found = registry.RegQueryValueExA(handle, name, nullptr, reinterpret_cast<std::uint8_t*>(data), &size) == 0;
        registry.RegCloseKey(handle);
        return found ? std::string(data, size) : "";
    }
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

TEST_F(MainWindow, EveryStartShowsTheHintOverTheFilledListTheOpenedTreeAndTheFirstRowsDetails) {
    HWND box = program->WaitForWindow("#32770", "Tessmark");
    ASSERT_NE(box, nullptr) << "no start message";
    EXPECT_EQ(StaticTexts(box),
              std::vector<std::string>{
                  "Uncheck the items you don't use every day then restart your PC to feel the Corvane Pulse!"});
    // The list fills before the message.
    EXPECT_EQ(RegistryRows(), (std::vector<ListRow>{{"Alpha", kVersioned, "Yes", kAllRun, true},
                                                    {"Beta", "C:\\windows\\regedit.exe", "Yes", kAllRun, true},
                                                    {"Gamma", "C:\\windows\\notepad.exe", "No", kAllRun, false},
                                                    {"Delta", "File Not Found", "Yes", kCurrRun, true}}));
    PressOk(box);
    EXPECT_TRUE(WaitUntil([&] { return !IsWindow(box); }));
    EXPECT_TRUE(program->Running());
    EXPECT_TRUE(IsWindowEnabled(window));

    // Only nodes with children can be opened; All Items is selected.
    const std::pair<const char*, bool> expected[] = {
        {"All Items", true},  {"Startup Folder", true}, {"All Users", false}, {"Current User", false},
        {"Registry", true},   {"All Users", true},      {"Run", false},       {"Run Once", false},
        {"Run Services", false}, {"Run Services Once", false}};
    std::vector<TreeNode> nodes = TreeNodes(*program, Control(id::treeAuto));
    ASSERT_EQ(nodes.size(), std::size(expected));
    for (std::size_t i = 0; i < nodes.size(); ++i)
        EXPECT_EQ(std::make_tuple(nodes[i].caption, nodes[i].expanded, nodes[i].selected),
                  std::make_tuple(std::string(expected[i].first), expected[i].second, i == 0));

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

TEST_F(MainWindow, ClearingARowsCheckBoxDisablesTheEntryAndSettingItPutsItBackByteForByte) {
    ASSERT_TRUE(program->DismissStartMessage());
    HWND list = Control(id::ListView1);
    std::vector<ListRow> rows = ListRows(*program, list);
    auto indexOf = [&](const char* name) {
        return static_cast<int>(std::find_if(rows.begin(), rows.end(), [&](const ListRow& r) { return r.name == name; }) - rows.begin());
    };
    const int beta = indexOf("Beta"), gamma = indexOf("Gamma");
    ASSERT_LT(gamma, static_cast<int>(rows.size()));
    const std::string activeBefore = TextOf(Control(id::lblactiveitem));

    ClickCheckBox(*program, list, beta);
    EXPECT_TRUE(WaitUntil([&] { return !ListRows(*program, list)[beta].checked; }));
    EXPECT_EQ(ListRows(*program, list)[beta], (ListRow{"Beta", "C:\\windows\\regedit.exe", "No", kAllRun, false}));
    // The value moved into the disabled copies.
    EXPECT_EQ(Stored("Run", "Beta"), "");
    EXPECT_EQ(Stored("Run\\AutorunsDisabled", "Beta"), std::string("C:\\windows\\regedit.exe\0", 23));

    // Totals count one active item fewer; the panel shows the row, now disabled.
    EXPECT_NE(TextOf(Control(id::lblactiveitem)), activeBefore);
    EXPECT_EQ(SendMessageA(list, LVM_GETNEXTITEM, -1, LVNI_SELECTED), beta);
    EXPECT_EQ(TextOf(Control(id::LblSection)), std::string("Section: ") + kAllRun);
    EXPECT_FALSE(IsWindowVisible(Control(id::imgCheck)));
    EXPECT_TRUE(IsWindowVisible(Control(id::imgNoCheck)));

    // And back, and the same for an entry that was disabled at start: each value
    // is where it was, as it was.
    ClickCheckBox(*program, list, beta);
    EXPECT_TRUE(WaitUntil([&] { return ListRows(*program, list)[beta].checked; }));
    ClickCheckBox(*program, list, gamma);
    EXPECT_TRUE(WaitUntil([&] { return ListRows(*program, list)[gamma].checked; }));
    ClickCheckBox(*program, list, gamma);
    EXPECT_TRUE(WaitUntil([&] { return !ListRows(*program, list)[gamma].checked; }));
    EXPECT_EQ(Stored("Run", "Beta"), std::string("C:\\windows\\regedit.exe\0", 23));
    EXPECT_EQ(Stored("Run\\AutorunsDisabled", "Gamma"), std::string("C:\\windows\\notepad.exe\0", 23));
    EXPECT_EQ(Stored("Run", "Gamma"), "");
}

// One start: a Startup shortcut cleared and set again, an entry moved with the
// item menu, and the caption's minimise button.
TEST_F(MainWindow, AShortcutComesBackNamedAfterItsRowMoveCopiesTheEntryAndMinimiseGoesToTheTaskBar) {
    ASSERT_TRUE(program->DismissStartMessage());
    char folder[MAX_PATH] = {};
    ASSERT_EQ(SHGetFolderPathA(nullptr, CSIDL_COMMON_STARTUP, nullptr, 0, folder), S_OK);
    const std::string dir = folder;
    tessmark::platform::win32::Win32Disk disk;
    ASSERT_TRUE(disk.SaveShortcut(dir + "\\Editor.lnk", "C:\\windows\\notepad.exe", "notepad.exe,0", 1));

    HWND tree = Control(id::treeAuto), list = Control(id::ListView1);
    ClickNode(*program, tree, TreeNodes(*program, tree)[2].item);  // Startup Folder / All Users
    std::vector<ListRow> rows;
    ASSERT_TRUE(WaitUntil([&] { return (rows = ListRows(*program, list)).size() == 1; }));
    const std::string name = rows[0].name;
    ClickCheckBox(*program, list, 0);
    EXPECT_TRUE(WaitUntil([&] { return !ListRows(*program, list)[0].checked; }));
    EXPECT_EQ(GetFileAttributesA((dir + "\\Editor.lnk").c_str()), INVALID_FILE_ATTRIBUTES);
    ClickCheckBox(*program, list, 0);
    EXPECT_TRUE(WaitUntil([&] { return ListRows(*program, list)[0].checked; }));
    std::string target;
    EXPECT_TRUE(disk.ShortcutTarget(dir + "\\" + name + ".lnk", &target)) << name;
    EXPECT_EQ(target, "C:\\windows\\notepad.exe");
    DeleteFileA((dir + "\\" + name + ".lnk").c_str());

    // Registry / All Users / Run, whose first row (Alpha) is selected after the population.
    ClickNode(*program, tree, TreeNodes(*program, tree)[6].item);
    ASSERT_TRUE(WaitUntil([&] { return ListRows(*program, list).size() == 3; }));
    PostMessageA(list, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(5, 5));
    HWND menu = program->WaitForWindow("#32768", nullptr);
    ASSERT_NE(menu, nullptr) << "no popup";
    // Backup, Restore, Refresh, Add Program, Disable, Delete, Move.
    for (int i = 0; i < 7; ++i) PostMessageA(menu, WM_KEYDOWN, VK_DOWN, 0);
    PostMessageA(menu, WM_KEYDOWN, VK_RETURN, 0);
    HWND dialog = program->WaitForWindow(id::kDialogClass, "Move");
    ASSERT_NE(dialog, nullptr) << "no Move dialog";
    HWND moveTree = Descendant(dialog, id::moveTree);
    const auto targets = TreeNodes(*program, moveTree);
    ASSERT_EQ(targets.size(), 11u);
    EXPECT_TRUE(targets[0].selected);
    ClickNode(*program, moveTree, targets[9].item);  // Current User / Run Once
    ASSERT_TRUE(WaitUntil([&] { return TreeNodes(*program, moveTree)[9].selected; }));
    PostMessageA(Descendant(dialog, id::cmdCommon0), BM_CLICK, 0, 0);
    ASSERT_TRUE(WaitUntil([&] { return !IsWindowVisible(dialog); }));
    char value[64] = {};
    DWORD size = sizeof value;
    EXPECT_EQ(RegGetValueA(HKEY_CURRENT_USER, (std::string(kRunFamily) + "RunOnce").c_str(), "Alpha", RRF_RT_REG_SZ,
                           nullptr, value, &size),
              ERROR_SUCCESS);
    EXPECT_STREQ(value, kVersioned);
    EXPECT_EQ(ListRows(*program, list).size(), 3u) << "the source row stays";

    HWND button = Control(id::CmdMinimise);
    PostMessageA(button, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
    PostMessageA(button, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
    EXPECT_TRUE(WaitUntil([&] { return IsIconic(window) != FALSE; }));
    EXPECT_TRUE(program->Running());
}

}  // namespace

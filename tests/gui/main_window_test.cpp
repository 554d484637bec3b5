// The main window shows the form's model and forwards the user's clicks.
#include <windows.h>

#include <gtest/gtest.h>

#include "gui_driver.h"
#include "machine.h"
#include "win32/app/control_ids.h"
#include "win32/platform/win32_registry.h"

namespace {

using namespace tessmark::gui;
using tessmark::platform::RegHandle;
using tessmark::testing::RawValue;
namespace id = tessmark::app::id;
namespace reg = tessmark::platform::reg;

const std::string kRunFamily = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\";
constexpr const char* kAllRun = "Registry\\All Users\\Run";
constexpr const char* kRegedit = "C:\\windows\\regedit.exe";
constexpr const char* kNotepad = "C:\\windows\\notepad.exe";
// A copy of the program as an entry's file: its version resource is known, and
// unlike the build's path its path has no hyphen, at which an entry is cut.
constexpr const char* kVersioned = "C:\\tessmarkgui\\versioned.exe";

// A REG_SZ value as a setup program stores it, with its NUL.
RawValue Sz(const std::string& text) { return {reg::kSz, text + '\0'}; }

// A program started on a registry that holds four known Run entries and no other Run-family values.
class MainWindow : public ::testing::Test {
protected:
    void SetUp() override {
        CreateDirectoryA("C:\\tessmarkgui", nullptr);
        CopyFileA(programPath.c_str(), kVersioned, FALSE);
        ClearRunFamily();
        const std::tuple<RegHandle, const char*, const char*, const char*> entries[] = {
            {reg::kLocalMachine, "Run", "Alpha", kVersioned}, {reg::kLocalMachine, "Run", "Beta", kRegedit},
            {reg::kLocalMachine, "Run\\AutorunsDisabled", "Gamma", kNotepad},
            {reg::kCurrentUser, "Run", "Delta", "C:\\nowhere\\missing.exe"}};
        for (const auto& [root, key, name, value] : entries)
            ASSERT_TRUE(tessmark::testing::SeedString(registry, root, kRunFamily + key, name, value)) << name;
        program = std::make_unique<Program>();
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
                tessmark::testing::DeleteTree(registry, root, kRunFamily + key);
    }

    HWND Control(int controlId) const { return Descendant(window, controlId); }
    std::optional<RawValue> Stored(const std::string& key, const char* name, RegHandle root = reg::kLocalMachine) {
        return tessmark::testing::GetRaw(registry, root, kRunFamily + key, name);
    }
    // Clicks the row's check box and waits for the list to show the row so.
    void ClickCheckBoxTo(HWND list, int row, bool checked) {
        ClickCheckBox(*program, list, row);
        EXPECT_TRUE(WaitUntil([&] { return ListRows(*program, list)[row].checked == checked; })) << row;
    }

    tessmark::platform::win32::Win32Registry registry;
    std::unique_ptr<Program> program;
    HWND window = nullptr;
};

// One start: the hint over the filled list, a row's check box, an entry moved with the item menu, Edit Properties,
// and the caption's minimise button.
TEST_F(MainWindow, TheHintACheckBoxAndTheDialogsActOnTheMachineAndMinimiseGoesToTheTaskBar) {
    HWND box = program->WaitForWindow("#32770", "Tessmark"), list = Control(id::ListView1), tree = Control(id::treeAuto);
    ASSERT_NE(box, nullptr) << "no start message";
    EXPECT_EQ(MessageText(box),
              "Uncheck the items you don't use every day then restart your PC to feel the Corvane Pulse!");
    // The list fills before the message; the prefix's Startup folders are empty.
    EXPECT_EQ(ListRows(*program, list), (std::vector<ListRow>{{"Alpha", kVersioned, "Yes", kAllRun, true},
        {"Beta", kRegedit, "Yes", kAllRun, true}, {"Gamma", kNotepad, "No", kAllRun, false},
        {"Delta", "File Not Found", "Yes", "Registry\\Current User\\Run", true}}));
    PressOk(box);
    ASSERT_TRUE(WaitUntil([&] { return !IsWindow(box); }));
    EXPECT_EQ(TextOf(Control(id::lblCompanyName)), "Company: Quillon");
    const int beta = 1;  // after Alpha, as at every start
    const std::string activeBefore = TextOf(Control(id::lblactiveitem));

    ClickCheckBoxTo(list, beta, false);
    EXPECT_EQ(ListRows(*program, list)[beta], (ListRow{"Beta", kRegedit, "No", kAllRun, false}));
    EXPECT_EQ(Stored("Run", "Beta"), std::nullopt);  // moved into the disabled copies
    EXPECT_EQ(Stored("Run\\AutorunsDisabled", "Beta"), Sz(kRegedit));
    // Totals count one active item fewer; the panel shows the row, now disabled.
    EXPECT_NE(TextOf(Control(id::lblactiveitem)), activeBefore);
    EXPECT_EQ(SendMessageA(list, LVM_GETNEXTITEM, -1, LVNI_SELECTED), beta);
    EXPECT_EQ(TextOf(Control(id::LblSection)), std::string("Section: ") + kAllRun);
    EXPECT_FALSE(IsWindowVisible(Control(id::imgCheck)));
    EXPECT_TRUE(IsWindowVisible(Control(id::imgNoCheck)));
    ClickCheckBoxTo(list, beta, true);
    EXPECT_EQ(Stored("Run", "Beta"), Sz(kRegedit));

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
    RECT outer, inner;  // the skin is all there is: no frame of the system's around it
    GetWindowRect(dialog, &outer);
    GetClientRect(dialog, &inner);
    EXPECT_EQ(std::make_pair(outer.right - outer.left, outer.bottom - outer.top),
              std::make_pair(inner.right, inner.bottom));
    EXPECT_FALSE(IsWindowEnabled(window));
    HWND moveTree = Descendant(dialog, id::moveTree);
    const auto targets = TreeNodes(*program, moveTree);
    ASSERT_EQ(targets.size(), 11u);
    EXPECT_TRUE(targets[0].selected);
    ClickNode(*program, moveTree, targets[9].item);  // Current User / Run Once
    ASSERT_TRUE(WaitUntil([&] { return TreeNodes(*program, moveTree)[9].selected; }));
    PostMessageA(Descendant(dialog, id::cmdCommon0), BM_CLICK, 0, 0);
    ASSERT_TRUE(WaitUntil([&] { return !IsWindowVisible(dialog); }));
    EXPECT_TRUE(IsWindowEnabled(window));
    EXPECT_EQ(Stored("RunOnce", "Alpha", reg::kCurrentUser), Sz(kVersioned));
    EXPECT_EQ(ListRows(*program, list).size(), 3u) << "the source row stays";

    // Edit Properties shows the row as the list does; OK, unchanged or renamed, changes nothing.
    for (const char* name : {"Alpha", "Renamed"}) {
        PostMessageA(list, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(5, 5));
        menu = program->WaitForWindow("#32768", nullptr);
        ASSERT_NE(menu, nullptr) << "no popup";
        for (int i = 0; i < 8; ++i) PostMessageA(menu, WM_KEYDOWN, VK_DOWN, 0);
        PostMessageA(menu, WM_KEYDOWN, VK_RETURN, 0);
        HWND edit = program->WaitForWindow(id::kDialogClass, "Edit Properties");
        ASSERT_NE(edit, nullptr) << "no Edit Properties dialog";
        EXPECT_EQ(std::make_pair(TextOf(Descendant(edit, id::txtName)), TextOf(Descendant(edit, id::txtPath))),
                  std::make_pair(std::string("Alpha"), std::string(kVersioned)));
        SendMessageA(Descendant(edit, id::txtName), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name));
        PostMessageA(Descendant(edit, id::editCommand0), BM_CLICK, 0, 0);
        ASSERT_TRUE(WaitUntil([&] { return !IsWindowVisible(edit); })) << name;
        EXPECT_EQ(Stored("Run", "Alpha"), Sz(kVersioned)) << name;
        EXPECT_EQ(ListRows(*program, list)[0].name, "Alpha") << name;
    }

    Click(Control(id::CmdMinimise));
    EXPECT_TRUE(WaitUntil([&] { return IsIconic(window) != FALSE; }));
    EXPECT_TRUE(program->Running());
}

}  // namespace

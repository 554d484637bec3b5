// The activity log as a debug-output viewer reads it: whole lines, with the
// names, paths and sections the list shows.
#include <gtest/gtest.h>

#include "gui_driver.h"
#include "item_places.h"
#include "win32/app/control_ids.h"

namespace {

using namespace tessmark::gui;
namespace id = tessmark::app::id;

// The buffer and the two events through which the debug output of every
// process reaches a viewer. A writer waits for each line to be read.
class DebugOutput {
public:
    ~DebugOutput() {
        UnmapViewOfFile(view_);
        for (HANDLE handle : {buffer_, ready_, data_}) CloseHandle(handle);
    }
    // The lines of the process read so far.
    const std::vector<std::string>& Lines() {
        while (WaitForSingleObject(data_, 0) == WAIT_OBJECT_0) {
            if (*reinterpret_cast<const DWORD*>(view_) == process) lines_.emplace_back(view_ + sizeof(DWORD));
            SetEvent(ready_);
        }
        return lines_;
    }
    DWORD process = 0;

private:
    HANDLE buffer_ = CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 4096, "DBWIN_BUFFER");
    HANDLE ready_ = CreateEventA(nullptr, FALSE, TRUE, "DBWIN_BUFFER_READY");
    HANDLE data_ = CreateEventA(nullptr, FALSE, FALSE, "DBWIN_DATA_READY");
    const char* view_ = static_cast<const char*>(MapViewOfFile(buffer_, FILE_MAP_READ, 0, 0, 4096));
    std::vector<std::string> lines_;
};

std::string PassLine(const ListRow& r) {
    return "Tessmark - " + r.name + " Path-> " + r.path + " Section-> " + r.section + "\n";
}
std::string DisableLine(const ListRow& r) {
    return "Tessmark - Section-" + r.section + " ItemName-" + r.name + " ItemPath-" + r.path + "\n";
}

TEST(ActivityLog, StartAndDisableLinesAreWholeAndNameTheListsTexts) {
    using tessmark::testing::ItemPlaces;
    const auto machine = tessmark::testing::MakeTestMachine();
    ItemPlaces places(*machine);
    places.Set(ItemPlaces::HKLM, std::string(tessmark::testing::kRunBase) + "Run", "Pad", "C:\\windows\\notepad.exe");
    places.Set(ItemPlaces::HKLM, tessmark::testing::kRdpwd, "StartupPrograms", "notepad");
    places.Shortcut(tessmark::platform::kCsidlCommonStartup, "Editor.lnk", "C:\\windows\\regedit.exe");

    DebugOutput log;
    Program program;
    log.process = GetProcessId(program.Process());
    HWND window = program.WaitForMainWindow();
    ASSERT_NE(window, nullptr);
    // The rows of the first pass, then the start message, then the end of the start.
    ASSERT_TRUE(WaitUntil([&] { return log.Lines().size() == 2; }));
    ASSERT_TRUE(program.DismissStartMessage());
    ASSERT_TRUE(WaitUntil([&] { return log.Lines().size() == 3; }));
    HWND list = Descendant(window, id::ListView1), tree = Descendant(window, id::treeAuto);
    const auto rows = ListRows(program, list);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].name + "|" + rows[1].section, "Pad|All Users\\Startup");
    EXPECT_EQ(log.Lines(), (std::vector<std::string>{PassLine(rows[0]), PassLine(rows[1]), "Tessmark - Form_Load\n"}));

    // Registry / All Users lists the Run row, then the logon member.
    ClickNode(program, tree, TreeNodes(program, tree)[5].item);
    ASSERT_TRUE(WaitUntil([&] { return ListRows(program, list).size() == 2; }));
    for (int row : {0, 1}) {
        ClickCheckBox(program, list, row);
        ASSERT_TRUE(WaitUntil([&] { return log.Lines().size() == 4u + row; }));
        EXPECT_EQ(log.Lines().back(), DisableLine(ListRows(program, list)[row]));
    }
    EXPECT_EQ(ListRows(program, list)[1].section, "Registry\\All Users\\Logon\\Startup Programs");
}

}  // namespace

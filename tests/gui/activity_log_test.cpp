// The activity log as a debug-output viewer reads it: whole lines, with the
// names, paths and sections the list shows.
#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <thread>

#include "gui_driver.h"
#include "item_places.h"
#include "win32/app/control_ids.h"

namespace {

using namespace tessmark::gui;
namespace id = tessmark::app::id;

// The buffer and the two events through which every process's debug output
// reaches a viewer, read by a thread of its own.
class DebugOutput {
public:
    explicit DebugOutput(DWORD process) : process_(process), reader_([this] { Read(); }) {}
    ~DebugOutput() {
        stop_ = true;
        reader_.join();
    }
    std::vector<std::string> Lines() {
        std::lock_guard lock(mutex_);
        return lines_;
    }

private:
    void Read() {
        HANDLE buffer = CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, 4096, "DBWIN_BUFFER");
        HANDLE ready = CreateEventA(nullptr, FALSE, TRUE, "DBWIN_BUFFER_READY");
        HANDLE data = CreateEventA(nullptr, FALSE, FALSE, "DBWIN_DATA_READY");
        const auto* view = static_cast<const char*>(MapViewOfFile(buffer, FILE_MAP_READ, 0, 0, 4096));
        while (!stop_) {
            if (WaitForSingleObject(data, 50) != WAIT_OBJECT_0) continue;
            if (*reinterpret_cast<const DWORD*>(view) == process_) {
                std::lock_guard lock(mutex_);
                lines_.emplace_back(view + sizeof(DWORD));
            }
            SetEvent(ready);
        }
        UnmapViewOfFile(view);
        for (HANDLE handle : {buffer, ready, data}) CloseHandle(handle);
    }

    DWORD process_;
    std::atomic<bool> stop_ = false;
    std::mutex mutex_;
    std::vector<std::string> lines_;
    std::thread reader_;  // last: it starts once the rest is made
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

    Program program;
    DebugOutput log(GetProcessId(program.Process()));
    HWND window = program.WaitForMainWindow();
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(program.DismissStartMessage());
    ASSERT_TRUE(WaitUntil([&] { return !log.Lines().empty() && log.Lines().back() == "Tessmark - Form_Load\n"; }));
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

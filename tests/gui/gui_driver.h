#pragma once
// Drives the real program from outside: starts it, finds its windows, reads
// its controls across the process boundary and sends it input as messages.
#include <windows.h>
#include <commctrl.h>

#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace tessmark::gui {

extern std::string programPath;  // the program under test, as a Windows path

// A path as Windows sees it: a Unix path (as ctest hands over the build's) lies on Wine's drive Z:.
std::string WindowsPath(std::string path);

inline constexpr DWORD kPatience = 20000;  // ms for a window to come, a list to fill or a process to end

// Polls the condition until it holds or the patience runs out.
template <class Condition>
bool WaitUntil(Condition condition) {
    for (DWORD waited = 0;; waited += 50) {
        if (condition()) return true;
        if (waited >= kPatience) return false;
        Sleep(50);
    }
}

// A started copy of the program; killed at the end if it is still running.
class Program {
public:
    Program();
    ~Program();
    Program(const Program&) = delete;

    HANDLE Process() const { return info_.hProcess; }
    bool Running() const { return WaitForSingleObject(info_.hProcess, 0) == WAIT_TIMEOUT; }
    // The exit code, when the process ended in time.
    std::optional<DWORD> WaitForExit() const;
    // A visible top-level window of this process with the class (null: any) and title.
    HWND VisibleWindow(const char* className, const char* title) const;
    HWND WaitForWindow(const char* className, const char* title) const;
    HWND WaitForMainWindow() const;
    // The message box shown at every start, dismissed with OK; false when none came.
    bool DismissStartMessage() const;

private:
    PROCESS_INFORMATION info_ = {};
};

std::string TextOf(HWND window);
inline std::string MessageText(HWND box) { return TextOf(GetDlgItem(box, 0xFFFF)); }  // the static's identifier
void PressOk(HWND dialog);
// A left click as the mouse would send it, at a point of the window's client area.
void Click(HWND window, int x = 5, int y = 5);
// A control anywhere inside the window, by its identifier.
HWND Descendant(HWND window, int id);

struct ListRow {
    std::string name, path, values, section;
    bool checked = false;
    bool operator==(const ListRow&) const = default;
};
inline void PrintTo(const ListRow& r, std::ostream* out) {
    *out << "{" << r.name << " | " << r.path << " | " << r.values << " | " << r.section << " | " << r.checked << "}";
}
std::vector<ListRow> ListRows(const Program& program, HWND list);
void ClickCheckBox(const Program& program, HWND list, int row);

struct TreeNode {
    std::string caption;
    bool expanded = false, selected = false;
    HTREEITEM item = nullptr;
};
// The tree's nodes, each before its children.
std::vector<TreeNode> TreeNodes(const Program& program, HWND tree);
void ClickNode(const Program& program, HWND tree, HTREEITEM item);

}  // namespace tessmark::gui

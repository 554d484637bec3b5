#include "gui_driver.h"

#include <algorithm>
#include <cstring>
#include <functional>

#include "win32/app/control_ids.h"

namespace tessmark::gui {

std::string programPath;

std::string WindowsPath(std::string path) {
    if (path.empty() || path[0] != '/') return path;
    std::replace(path.begin(), path.end(), '/', '\\');
    return "Z:" + path;
}

Program::Program() {
    STARTUPINFOA startup = {sizeof startup};
    std::string commandLine = "\"" + programPath + "\"";
    CreateProcessA(programPath.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &info_);
}

// Without a process, or with one that has ended, each call is refused.
Program::~Program() {
    TerminateProcess(info_.hProcess, 1);
    WaitForSingleObject(info_.hProcess, kPatience);
    CloseHandle(info_.hThread);
    CloseHandle(info_.hProcess);
}

std::optional<DWORD> Program::WaitForExit() const {
    DWORD code = 0;
    if (WaitForSingleObject(info_.hProcess, kPatience) != WAIT_OBJECT_0) return std::nullopt;
    GetExitCodeProcess(info_.hProcess, &code);
    return code;
}

HWND Program::VisibleWindow(const char* className, const char* title) const {
    for (HWND w = nullptr; (w = FindWindowExA(nullptr, w, className, title)) != nullptr;) {
        DWORD owner = 0;
        GetWindowThreadProcessId(w, &owner);
        if (owner == info_.dwProcessId && IsWindowVisible(w)) return w;
    }
    return nullptr;
}

HWND Program::WaitForWindow(const char* className, const char* title) const {
    HWND found = nullptr;
    WaitUntil([&] { return (found = VisibleWindow(className, title)) != nullptr; });
    return found;
}

HWND Program::WaitForMainWindow() const { return WaitForWindow(tessmark::app::id::kMainWindowClass, "Tessmark"); }

bool Program::DismissStartMessage() const {
    HWND box = WaitForWindow("#32770", "Tessmark");
    if (box == nullptr) return false;
    PressOk(box);
    return WaitUntil([&] { return !IsWindow(box); });
}

std::string TextOf(HWND window) {
    char text[512] = {};
    SendMessageA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
    return text;
}

void PressOk(HWND dialog) {
    PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), reinterpret_cast<LPARAM>(GetDlgItem(dialog, IDOK)));
}

void Click(HWND window, int x, int y) {
    PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(x, y));
    PostMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(x, y));
}

// Window enumeration calls back with the platform's calling convention, which a lambda lacks on x86.
static BOOL CALLBACK FindById(HWND child, LPARAM search) {
    auto& [id, found] = *reinterpret_cast<std::pair<int, HWND>*>(search);
    if (GetDlgCtrlID(child) == id) found = child;
    return found == nullptr;
}

HWND Descendant(HWND window, int id) {
    std::pair<int, HWND> search{id, nullptr};
    EnumChildWindows(window, FindById, reinterpret_cast<LPARAM>(&search));
    return search.second;
}

namespace {

// A block of memory inside the program, for messages that pass pointers: the
// structure at its start, a text buffer behind it.
constexpr int kTextSize = 1024;

struct Remote {
    HANDLE process;
    char* address = static_cast<char*>(VirtualAllocEx(process, nullptr, 2 * kTextSize, MEM_COMMIT, PAGE_READWRITE));
    char* text = address + kTextSize;
    ~Remote() { VirtualFreeEx(process, address, 0, MEM_RELEASE); }
    // Sends the message with a copy of the structure, then reads the copy back into it.
    template <class T>
    void Send(HWND window, UINT message, WPARAM wParam, T& structure) const {
        WriteProcessMemory(process, address, &structure, sizeof structure, nullptr);
        SendMessageA(window, message, wParam, reinterpret_cast<LPARAM>(address));
        ReadProcessMemory(process, address, &structure, sizeof structure, nullptr);
    }
    std::string Text() const {
        char copy[kTextSize] = {};
        ReadProcessMemory(process, text, copy, sizeof copy - 1, nullptr);
        return copy;
    }
};

}  // namespace

std::vector<ListRow> ListRows(const Program& program, HWND list) {
    Remote remote{program.Process()};
    auto cell = [&](int row, int column) {
        LVITEMA item = {.iSubItem = column, .pszText = remote.text, .cchTextMax = kTextSize};
        remote.Send(list, LVM_GETITEMTEXTA, row, item);
        return remote.Text();
    };
    std::vector<ListRow> rows;
    for (int i = 0, count = ListView_GetItemCount(list); i < count; ++i)
        rows.push_back({cell(i, 0), cell(i, 1), cell(i, 2), cell(i, 3), ListView_GetCheckState(list, i) == 1});
    return rows;
}

void ClickCheckBox(const Program& program, HWND list, int row) {
    RECT icon = {LVIR_ICON};
    Remote{program.Process()}.Send(list, LVM_GETITEMRECT, row, icon);
    Click(list, icon.left - 8, (icon.top + icon.bottom) / 2);  // the check box stands just left of the small icon
}

std::vector<TreeNode> TreeNodes(const Program& program, HWND tree) {
    Remote remote{program.Process()};
    const HTREEITEM selected = TreeView_GetSelection(tree);
    std::vector<TreeNode> nodes;
    std::function<void(HTREEITEM)> walk = [&](HTREEITEM item) {
        for (; item != nullptr; item = TreeView_GetNextSibling(tree, item)) {
            TVITEMA query = {.mask = TVIF_TEXT | TVIF_STATE, .hItem = item, .stateMask = TVIS_EXPANDED,
                             .pszText = remote.text, .cchTextMax = kTextSize};
            remote.Send(tree, TVM_GETITEMA, 0, query);
            nodes.push_back({remote.Text(), (query.state & TVIS_EXPANDED) != 0, item == selected, item});
            walk(TreeView_GetChild(tree, item));
        }
    };
    walk(TreeView_GetRoot(tree));
    return nodes;
}

void ClickNode(const Program& program, HWND tree, HTREEITEM item) {
    RECT caption = {};
    std::memcpy(&caption, &item, sizeof item);  // the item goes in where the rectangle comes out
    Remote{program.Process()}.Send(tree, TVM_GETITEMRECT, TRUE, caption);
    Click(tree, (caption.left + caption.right) / 2, (caption.top + caption.bottom) / 2);
}

}  // namespace tessmark::gui

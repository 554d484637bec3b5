#include "gui_driver.h"

#include <commctrl.h>

#include <functional>

#include "win32/app/control_ids.h"

namespace tessmark::gui {

std::string programPath;

std::string WindowsPath(std::string path) {
    if (path.empty() || path[0] != '/') return path;
    for (char& c : path)
        if (c == '/') c = '\\';
    return "Z:" + path;
}

Program::Program() {
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    std::string commandLine = "\"" + programPath + "\"";
    started_ = CreateProcessA(programPath.c_str(), commandLine.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                              &startup, &info_) != FALSE;
}

Program::~Program() {
    if (!started_) return;
    if (Running()) {
        TerminateProcess(info_.hProcess, 1);
        WaitForSingleObject(info_.hProcess, kPatience);
    }
    CloseHandle(info_.hThread);
    CloseHandle(info_.hProcess);
}

bool Program::WaitForExit(DWORD* code) const {
    if (WaitForSingleObject(info_.hProcess, kPatience) != WAIT_OBJECT_0) return false;
    GetExitCodeProcess(info_.hProcess, code);
    return true;
}

HWND Program::VisibleWindow(const char* className, const char* title) const {
    for (HWND w = nullptr; (w = FindWindowExA(nullptr, w, className, title)) != nullptr;) {
        DWORD owner = 0;
        GetWindowThreadProcessId(w, &owner);
        if (owner == Id() && IsWindowVisible(w)) return w;
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

namespace {
// A block of memory inside the program, for messages that pass pointers: the
// structure at its start, a text buffer at kTextAt.
constexpr std::size_t kTextAt = 1024;
constexpr int kTextSize = 1024;

struct Remote {
    HANDLE process;
    char* address = static_cast<char*>(VirtualAllocEx(process, nullptr, kTextAt + kTextSize, MEM_COMMIT, PAGE_READWRITE));
    ~Remote() { VirtualFreeEx(process, address, 0, MEM_RELEASE); }
    LPARAM Param() const { return reinterpret_cast<LPARAM>(address); }
    void Write(const void* data, std::size_t size) const { WriteProcessMemory(process, address, data, size, nullptr); }
    void Read(void* data, std::size_t size) const { ReadProcessMemory(process, address, data, size, nullptr); }
    std::string Text() const {
        char text[kTextSize] = {};
        ReadProcessMemory(process, address + kTextAt, text, sizeof text - 1, nullptr);
        return text;
    }
};

}  // namespace

// Window enumeration calls back with the platform's calling convention, which a lambda lacks on x86.
static BOOL CALLBACK CollectStaticText(HWND child, LPARAM texts) {
    char cls[64] = {};
    GetClassNameA(child, cls, sizeof cls);
    if (lstrcmpiA(cls, "Static") == 0 && !TextOf(child).empty())
        reinterpret_cast<std::vector<std::string>*>(texts)->push_back(TextOf(child));
    return TRUE;
}

std::vector<std::string> StaticTexts(HWND dialog) {
    std::vector<std::string> texts;
    EnumChildWindows(dialog, CollectStaticText, reinterpret_cast<LPARAM>(&texts));
    return texts;
}

void PressOk(HWND dialog) {
    PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(IDOK, BN_CLICKED), reinterpret_cast<LPARAM>(GetDlgItem(dialog, IDOK)));
}

static BOOL CALLBACK FindById(HWND child, LPARAM search) {
    auto* s = reinterpret_cast<std::pair<int, HWND>*>(search);
    if (GetDlgCtrlID(child) == s->first) s->second = child;
    return s->second == nullptr;
}

HWND Descendant(HWND window, int id) {
    std::pair<int, HWND> search{id, nullptr};
    EnumChildWindows(window, FindById, reinterpret_cast<LPARAM>(&search));
    return search.second;
}

void PrintTo(const ListRow& row, std::ostream* out) {
    *out << "{" << row.name << " | " << row.path << " | " << row.values << " | " << row.section << " | "
         << (row.checked ? "checked" : "unchecked") << "}";
}

std::vector<ListRow> ListRows(const Program& program, HWND list) {
    Remote remote{program.Process()};
    auto cell = [&](int row, int column) {
        LVITEMA item = {};
        item.iSubItem = column;
        item.pszText = remote.address + kTextAt;
        item.cchTextMax = kTextSize;
        remote.Write(&item, sizeof item);
        SendMessageA(list, LVM_GETITEMTEXTA, row, remote.Param());
        return remote.Text();
    };
    std::vector<ListRow> rows;
    const int count = static_cast<int>(SendMessageA(list, LVM_GETITEMCOUNT, 0, 0));
    for (int i = 0; i < count; ++i) {
        const auto state = static_cast<UINT>(SendMessageA(list, LVM_GETITEMSTATE, i, LVIS_STATEIMAGEMASK));
        rows.push_back({cell(i, 0), cell(i, 1), cell(i, 2), cell(i, 3), state == INDEXTOSTATEIMAGEMASK(2)});
    }
    return rows;
}

std::vector<TreeNode> TreeNodes(const Program& program, HWND tree) {
    Remote remote{program.Process()};
    const auto selected = reinterpret_cast<HTREEITEM>(SendMessageA(tree, TVM_GETNEXTITEM, TVGN_CARET, 0));
    std::vector<TreeNode> nodes;
    std::function<void(HTREEITEM)> walk = [&](HTREEITEM item) {
        for (; item != nullptr;
             item = reinterpret_cast<HTREEITEM>(SendMessageA(tree, TVM_GETNEXTITEM, TVGN_NEXT, reinterpret_cast<LPARAM>(item)))) {
            TVITEMA query = {};
            query.mask = TVIF_TEXT | TVIF_STATE;
            query.hItem = item;
            query.stateMask = TVIS_EXPANDED;
            query.pszText = remote.address + kTextAt;
            query.cchTextMax = kTextSize;
            remote.Write(&query, sizeof query);
            SendMessageA(tree, TVM_GETITEMA, 0, remote.Param());
            remote.Read(&query, sizeof query);
            nodes.push_back({remote.Text(), (query.state & TVIS_EXPANDED) != 0, item == selected, item});
            walk(reinterpret_cast<HTREEITEM>(SendMessageA(tree, TVM_GETNEXTITEM, TVGN_CHILD, reinterpret_cast<LPARAM>(item))));
        }
    };
    walk(reinterpret_cast<HTREEITEM>(SendMessageA(tree, TVM_GETNEXTITEM, TVGN_ROOT, 0)));
    return nodes;
}

void ClickNode(const Program& program, HWND tree, HTREEITEM item) {
    Remote remote{program.Process()};
    remote.Write(&item, sizeof item);  // the item goes in where the rectangle comes out
    SendMessageA(tree, TVM_GETITEMRECT, TRUE, remote.Param());
    RECT caption = {};
    remote.Read(&caption, sizeof caption);
    const LPARAM at = MAKELPARAM((caption.left + caption.right) / 2, (caption.top + caption.bottom) / 2);
    PostMessageA(tree, WM_LBUTTONDOWN, MK_LBUTTON, at);
    PostMessageA(tree, WM_LBUTTONUP, 0, at);
}

void ClickCheckBox(const Program& program, HWND list, int row) {
    Remote remote{program.Process()};
    RECT icon = {LVIR_ICON};
    remote.Write(&icon, sizeof icon);
    SendMessageA(list, LVM_GETITEMRECT, row, remote.Param());
    remote.Read(&icon, sizeof icon);
    // The check box stands just left of the row's small icon.
    const LPARAM at = MAKELPARAM(icon.left - 8, (icon.top + icon.bottom) / 2);
    PostMessageA(list, WM_LBUTTONDOWN, MK_LBUTTON, at);
    PostMessageA(list, WM_LBUTTONUP, 0, at);
}

}  // namespace tessmark::gui

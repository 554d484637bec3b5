// The least a program can do to show the all-users Run key: a window with a
// report list that asks for its rows (as the program's does), filled with each
// value's name and data and the shell's small icon of the data, by the bare
// platform calls. The start timing measures it beside the real program as the
// floor of a start to a filled list.
//
// With TESSMARK_FLOOR=same-calls in its environment it makes the platform calls
// the program's own population makes instead: every Run-family key and its
// AutorunsDisabled subkey opened and counted as the program walks them, and for
// each value the key's info and the name read twice, the data read by name, and
// the shell asked with the program's flags. What is left between this floor and
// the program is the program's own work.
#include <windows.h>
#include <commctrl.h>
#include <shellapi.h>

#include "win32/app/control_ids.h"
#include "win32/tools/floor_calls.h"

namespace {

using tessmark::tools::Row;
using tessmark::tools::WalkAsTheProgram;
std::vector<Row> rows;

LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_NOTIFY && reinterpret_cast<NMHDR*>(lParam)->code == LVN_GETDISPINFOA) {
        LVITEMA& item = reinterpret_cast<NMLVDISPINFOA*>(lParam)->item;
        const Row& row = rows[static_cast<std::size_t>(item.iItem)];
        if (item.mask & LVIF_TEXT) lstrcpynA(item.pszText, (item.iSubItem == 0 ? row.name : row.data).c_str(), item.cchTextMax);
        if (item.mask & LVIF_IMAGE) item.iImage = row.icon;
        return 0;
    }
    if (message == WM_DESTROY) {
        PostQuitMessage(0);
        return 0;
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

void Fill(HWND list) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run", 0, KEY_READ, &key) != 0)
        return;
    for (DWORD index = 0;; ++index) {
        char name[261], data[1024];
        DWORD nameLength = sizeof name, dataLength = sizeof data - 1, type = 0;
        if (RegEnumValueA(key, index, name, &nameLength, nullptr, &type, reinterpret_cast<BYTE*>(data), &dataLength) != 0)
            break;
        data[dataLength] = '\0';
        SHFILEINFOA info{};
        const auto images = SHGetFileInfoA(data, 0, &info, sizeof info, SHGFI_SYSICONINDEX | SHGFI_SMALLICON);
        if (index == 0) ListView_SetImageList(list, reinterpret_cast<HIMAGELIST>(images), LVSIL_SMALL);
        rows.push_back({name, data, info.iIcon, images});
    }
    SendMessageA(list, LVM_SETITEMCOUNT, rows.size(), 0);
    RegCloseKey(key);
}

void FillAsTheProgram(HWND list) {
    const std::string family = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\";
    const struct {
        HKEY root;
        const char* key;
    } groups[] = {{HKEY_LOCAL_MACHINE, "Run"},         {HKEY_LOCAL_MACHINE, "RunOnce"},
                  {HKEY_LOCAL_MACHINE, "RunServices"}, {HKEY_LOCAL_MACHINE, "RunServiceOnce"},
                  {HKEY_CURRENT_USER, "Run"},          {HKEY_CURRENT_USER, "RunOnce"},
                  {HKEY_CURRENT_USER, "RunServices"}};
    for (const auto& group : groups) {
        WalkAsTheProgram(rows, group.root, family + group.key);
        WalkAsTheProgram(rows, group.root, family + group.key + "\\AutorunsDisabled");
    }
    if (!rows.empty()) ListView_SetImageList(list, reinterpret_cast<HIMAGELIST>(rows[0].images), LVSIL_SMALL);
    SendMessageA(list, LVM_SETITEMCOUNT, rows.size(), 0);
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int show) {
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&controls);
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = WindowProc;
    windowClass.hInstance = instance;
    windowClass.lpszClassName = tessmark::app::id::kMainWindowClass;
    RegisterClassA(&windowClass);
    HWND window = CreateWindowA(tessmark::app::id::kMainWindowClass, "Tessmark", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                                CW_USEDEFAULT, 735, 551, nullptr, nullptr, instance, nullptr);
    HWND list = CreateWindowA(WC_LISTVIEWA, "", WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_OWNERDATA | LVS_SHAREIMAGELISTS, 0, 0, 700,
                              500, window, reinterpret_cast<HMENU>(tessmark::app::id::ListView1), instance, nullptr);
    LVCOLUMNA column{};
    column.mask = LVCF_TEXT | LVCF_WIDTH;
    column.cx = 200;
    column.pszText = const_cast<char*>("Name");
    SendMessageA(list, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
    column.pszText = const_cast<char*>("Path");
    SendMessageA(list, LVM_INSERTCOLUMNA, 1, reinterpret_cast<LPARAM>(&column));
    ShowWindow(window, show);
    char mode[16] = {};
    GetEnvironmentVariableA("TESSMARK_FLOOR", mode, sizeof mode);
    if (lstrcmpA(mode, "same-calls") == 0)
        FillAsTheProgram(list);
    else
        Fill(list);
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return 0;
}

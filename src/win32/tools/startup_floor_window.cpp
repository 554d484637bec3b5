// The floor of the same window: a bare program that builds the program's main
// window with the same controls and resources (the painted caption with its
// bitmap buttons, the tree of ten nodes with their pictures, the list of four
// columns with check boxes and icons, the details panel, the totals and the two
// buttons), shows it, and then makes the platform calls the program makes up
// to its filled list, in its order: the start's environment and folder, the
// Run keys of all users as the scanners walk them, the icons of their rows.
// The list is filled there, as the program's is at the pump after those keys;
// the current user's keys, the Startup folders and the details panel's version
// read follow. What is left between this floor and the program is the
// program's own work.
#include <windows.h>
#include <commctrl.h>
#include <shlobj.h>

#include <map>
#include <string>
#include <vector>

#include "win32/app/control_ids.h"
#include "win32/tools/floor_calls.h"

namespace {

namespace id = tessmark::app::id;
using tessmark::tools::Row;

constexpr int kWidth = 735, kHeight = 551, kStrip = 25;
constexpr COLORREF kBody = RGB(0xE9, 0xEE, 0xF5);
const std::string kFamily = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\";

std::vector<Row> rows;
std::vector<int> slots;  // each row's picture in the list's own image list
HBRUSH body;
HFONT font, bold, captionFont;
HICON smallIcon;

HFONT Tahoma(int height, int weight) {
    return CreateFontA(-height, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                       CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH | FF_SWISS, "Tahoma");
}

HWND Child(HWND parent, const char* cls, int childId, DWORD style, RECT at, const char* text = "", DWORD ex = 0) {
    HWND child = CreateWindowExA(ex, cls, text, WS_CHILD | WS_VISIBLE | style, at.left, at.top, at.right - at.left,
                                 at.bottom - at.top, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(childId)),
                                 GetModuleHandleA(nullptr), nullptr);
    SendMessageA(child, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    return child;
}

HANDLE Resource(const char* name, UINT type, int size) {
    return LoadImageA(GetModuleHandleA(nullptr), name, type, size, size, LR_DEFAULTCOLOR);
}

void Paint(HWND window, HDC dc) {
    RECT client;
    GetClientRect(window, &client);
    SetBkColor(dc, kBody);
    RECT rest{0, kStrip, client.right, client.bottom};
    ExtTextOutA(dc, 0, 0, ETO_OPAQUE, &rest, nullptr, 0, nullptr);
    for (int y = 0; y < kStrip; ++y) {
        SetBkColor(dc, RGB(0x5B - 0x2B * y / kStrip, 0x7F - 0x37 * y / kStrip, 0xAE - 0x44 * y / kStrip));
        RECT line{0, y, client.right, y + 1};
        ExtTextOutA(dc, 0, 0, ETO_OPAQUE, &line, nullptr, 0, nullptr);
    }
    DrawIconEx(dc, 6, (kStrip - 16) / 2, smallIcon, 16, 16, 0, nullptr, DI_NORMAL);
    SelectObject(dc, captionFont);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, RGB(0xFF, 0xFF, 0xFF));
    RECT caption{28, 0, client.right, kStrip};
    DrawTextA(dc, "Tessmark", -1, &caption, DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
    HBRUSH frame = CreateSolidBrush(RGB(0x30, 0x48, 0x6A));
    FrameRect(dc, &client, frame);
    DeleteObject(frame);
}

LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_ERASEBKGND:
        return 1;
    case WM_PAINT: {
        PAINTSTRUCT paint;
        Paint(window, BeginPaint(window, &paint));
        EndPaint(window, &paint);
        return 0;
    }
    case WM_CTLCOLORSTATIC:
        SetBkMode(reinterpret_cast<HDC>(wParam), TRANSPARENT);
        return reinterpret_cast<LRESULT>(body);
    case WM_NOTIFY:
        if (reinterpret_cast<NMHDR*>(lParam)->code == LVN_GETDISPINFOA) {
            LVITEMA& item = reinterpret_cast<NMLVDISPINFOA*>(lParam)->item;
            const Row& row = rows[static_cast<std::size_t>(item.iItem)];
            const std::string texts[] = {row.name, row.data, "Yes", "Registry\\All Users\\Run"};
            if (item.mask & LVIF_TEXT) lstrcpynA(item.pszText, texts[item.iSubItem].c_str(), item.cchTextMax);
            if (item.mask & LVIF_IMAGE) item.iImage = slots[static_cast<std::size_t>(item.iItem)];
            if (item.mask & LVIF_STATE) {
                item.state = (item.state & ~LVIS_STATEIMAGEMASK) | INDEXTOSTATEIMAGEMASK(2);
                item.stateMask |= LVIS_STATEIMAGEMASK;
            }
        }
        return 0;
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    default:
        return DefWindowProcA(window, message, wParam, lParam);
    }
}

HWND MakeTree(HWND window) {
    HWND tree = Child(window, WC_TREEVIEWA, id::treeAuto,
                      WS_TABSTOP | WS_CLIPSIBLINGS | TVS_HASLINES | TVS_HASBUTTONS | TVS_LINESATROOT |
                          TVS_SHOWSELALWAYS,
                      {8, 32, 208, 514}, "", WS_EX_CLIENTEDGE);
    HIMAGELIST pictures = ImageList_Create(16, 16, ILC_COLOR32 | ILC_MASK, 5, 0);
    for (int i = 0; i < 5; ++i) {
        HICON icon = static_cast<HICON>(Resource(MAKEINTRESOURCEA(201 + i), IMAGE_ICON, 16));
        ImageList_AddIcon(pictures, icon);
        DestroyIcon(icon);
    }
    TreeView_SetImageList(tree, pictures, TVSIL_NORMAL);
    return tree;
}

// The ten sections, each under its parent, with their pictures; the nodes with children open.
void FillTree(HWND tree) {
    const struct { const char* caption; int parent, image; } nodes[] = {
        {"All Items", -1, 5}, {"Startup Folder", 0, 1}, {"All Users", 1, 4}, {"Current User", 1, 2},
        {"Registry", 0, 3},   {"All Users", 4, 4},      {"Run", 5, 3},       {"Run Once", 5, 3},
        {"Run Services", 5, 3}, {"Run Services Once", 5, 3}};
    HTREEITEM items[10];
    for (int i = 0; i < 10; ++i) {
        TVINSERTSTRUCTA insert{};
        insert.hParent = nodes[i].parent < 0 ? TVI_ROOT : items[nodes[i].parent];
        insert.hInsertAfter = TVI_LAST;
        insert.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
        insert.item.pszText = const_cast<char*>(nodes[i].caption);
        insert.item.iImage = insert.item.iSelectedImage = nodes[i].image - 1;
        items[i] =
            reinterpret_cast<HTREEITEM>(SendMessageA(tree, TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&insert)));
    }
    for (int open : {0, 1, 4, 5}) TreeView_Expand(tree, items[open], TVE_EXPAND);
    TreeView_SelectItem(tree, items[0]);
}

HWND MakeList(HWND window) {
    HWND list = Child(window, WC_LISTVIEWA, id::ListView1,
                      WS_TABSTOP | WS_CLIPSIBLINGS | LVS_REPORT | LVS_OWNERDATA | LVS_SINGLESEL | LVS_SHOWSELALWAYS |
                          LVS_SHAREIMAGELISTS,
                      {213, 32, 727, 392}, "", WS_EX_CLIENTEDGE);
    ListView_SetExtendedListViewStyle(list, LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT);
    ListView_SetCallbackMask(list, LVIS_STATEIMAGEMASK);
    ListView_SetImageList(list, ImageList_Create(16, 16, ILC_COLOR32 | ILC_MASK, 16, 64), LVSIL_SMALL);
    const std::pair<const char*, int> columns[] = {{"Name", 200}, {"Path", 333}, {"Values", 0}, {"Section", 167}};
    for (int i = 0; i < 4; ++i) {
        LVCOLUMNA column{};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
        column.pszText = const_cast<char*>(columns[i].first);
        column.cx = columns[i].second;
        column.iSubItem = i;
        SendMessageA(list, LVM_INSERTCOLUMNA, i, reinterpret_cast<LPARAM>(&column));
    }
    return list;
}

// The panel's texts as the program fills them from the first row's version resource.
void ReadDetails(HWND panel, const std::string& file) {
    char full[MAX_PATH] = {};
    GetFullPathNameA(file.c_str(), MAX_PATH, full, nullptr);
    DWORD unused = 0;
    std::vector<char> block(GetFileVersionInfoSizeA(full, &unused) + 1);
    GetFileVersionInfoA(full, 0, static_cast<DWORD>(block.size()), block.data());
    void* value = nullptr;
    UINT length = 0;
    VerQueryValueA(block.data(), "\\VarFileInfo\\Translation", &value, &length);
    std::string texts[4];
    const char* names[] = {"ProductName", "CompanyName", "FileDescription", "ProductVersion"};
    for (int i = 0; i < 4; ++i)
        if (VerQueryValueA(block.data(), (std::string("\\StringFileInfo\\040904B0\\") + names[i]).c_str(), &value,
                           &length))
            texts[i] = static_cast<const char*>(value);
    SHFILEINFOA info{};
    SHGetFileInfoA(full, 0, &info, sizeof info, SHGFI_ICON | SHGFI_LARGEICON);
    SendDlgItemMessageA(panel, id::picIcon, STM_SETICON, reinterpret_cast<WPARAM>(info.hIcon), 0);
    SetDlgItemTextA(panel, id::lblNameVer, (texts[0] + " " + texts[3]).c_str());
    SetDlgItemTextA(panel, id::lblCompanyName, ("Company: " + texts[1]).c_str());
    SetDlgItemTextA(panel, id::LblSection, "Section: Registry\\All Users\\Run");
    SetDlgItemTextA(panel, id::LblDescription, ("Description: " + texts[2]).c_str());
    ShowWindow(GetDlgItem(panel, id::imgCheck), SW_SHOW);
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int show) {
    INITCOMMONCONTROLSEX controls{sizeof controls, ICC_TREEVIEW_CLASSES | ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&controls);
    font = Tahoma(11, FW_NORMAL);
    bold = Tahoma(11, FW_BOLD);
    captionFont = Tahoma(12, FW_BOLD);
    body = CreateSolidBrush(kBody);
    smallIcon = static_cast<HICON>(Resource(MAKEINTRESOURCEA(101), IMAGE_ICON, 16));
    WNDCLASSEXA cls{};
    cls.cbSize = sizeof cls;
    cls.lpfnWndProc = WindowProc;
    cls.hInstance = instance;
    cls.hIcon = LoadIconA(instance, MAKEINTRESOURCEA(101));
    cls.hIconSm = smallIcon;
    cls.hCursor = LoadCursor(nullptr, IDC_ARROW);
    cls.lpszClassName = id::kMainWindowClass;
    RegisterClassExA(&cls);
    HWND window = CreateWindowExA(WS_EX_APPWINDOW, id::kMainWindowClass, "Tessmark",
                                  WS_POPUP | WS_CLIPCHILDREN | WS_SYSMENU | WS_MINIMIZEBOX,
                                  (GetSystemMetrics(SM_CXSCREEN) - kWidth) / 2,
                                  (GetSystemMetrics(SM_CYSCREEN) - kHeight) / 2, kWidth, kHeight, nullptr, nullptr,
                                  instance, nullptr);
    HWND tree = MakeTree(window);
    Child(window, "STATIC", id::Splitter1, 0, {208, 32, 213, 514});
    Child(window, "STATIC", id::Splitter2, 0, {213, 392, 727, 397});
    HWND list = MakeList(window);
    HWND wait = Child(window, "STATIC", id::lblwait, SS_CENTER | SS_CENTERIMAGE, {213, 32, 727, 392},
                      "Please wait while list is being populated...");
    ShowWindow(wait, SW_HIDE);
    HWND panel = Child(window, "STATIC", id::picDetails, 0, {213, 397, 727, 514}, "", WS_EX_STATICEDGE);
    Child(panel, "STATIC", id::picIcon, SS_ICON, {8, 8, 72, 64});
    for (int mark : {id::imgCheck, id::imgNoCheck}) {
        HWND image = Child(panel, "STATIC", mark, SS_ICON, {450, 10, 498, 58});
        const int resource = mark == id::imgCheck ? 301 : 302;
        SendMessageA(image, STM_SETICON, reinterpret_cast<WPARAM>(Resource(MAKEINTRESOURCEA(resource), IMAGE_ICON, 48)),
                     0);
        ShowWindow(image, SW_HIDE);
    }
    const std::pair<int, RECT> labels[] = {{id::lblNameVer, {85, 2, 344, 15}},
                                           {id::lblCompanyName, {85, 23, 344, 36}},
                                           {id::LblSection, {85, 43, 344, 56}},
                                           {id::LblDescription, {85, 64, 344, 105}}};
    for (const auto& [labelId, at] : labels) Child(panel, "STATIC", labelId, SS_LEFT, at);
    SendDlgItemMessageA(panel, id::lblNameVer, WM_SETFONT, reinterpret_cast<WPARAM>(bold), FALSE);
    Child(window, "STATIC", id::lbltotalitem, SS_LEFTNOWORDWRAP, {8, 527, 168, 541}, "Total  Item(s) :");
    Child(window, "STATIC", id::lblactiveitem, SS_LEFTNOWORDWRAP, {178, 527, 338, 541}, "Active Item(s):");
    Child(window, "BUTTON", id::Command1, WS_TABSTOP | BS_PUSHBUTTON, {561, 522, 643, 547}, "About");
    Child(window, "BUTTON", id::BtnClose, WS_TABSTOP | BS_PUSHBUTTON, {648, 522, 727, 547}, "Close");
    for (auto [buttonId, at, bitmap] : {std::tuple{id::CmdMinimise, RECT{658, 4, 684, 21}, "minimize_normal"},
                                        std::tuple{id::CmdClose, RECT{686, 4, 729, 21}, "close_normal"}})
        SendMessageA(Child(window, "STATIC", buttonId, SS_BITMAP, at), STM_SETIMAGE, IMAGE_BITMAP,
                     reinterpret_cast<LPARAM>(Resource(bitmap, IMAGE_BITMAP, 0)));
    ShowWindow(window, show);
    UpdateWindow(window);

    // The start: the environment, the side folder, the tree; the list waits.
    char text[MAX_PATH];
    for (const char* name : {"windir", "ProgramFiles", "appdata"}) GetEnvironmentVariableA(name, text, MAX_PATH);
    const std::string side = std::string(text) + "\\Corvane Pulse";
    if (GetFileAttributesA(side.c_str()) == INVALID_FILE_ATTRIBUTES) CreateDirectoryA(side.c_str(), nullptr);
    FillTree(tree);
    ShowWindow(list, SW_HIDE);
    ShowWindow(wait, SW_SHOW);
    for (const char* key : {"Run", "RunOnce", "RunServices", "RunServiceOnce"}) {
        tessmark::tools::WalkAsTheProgram(rows, HKEY_LOCAL_MACHINE, kFamily + key);
        tessmark::tools::WalkAsTheProgram(rows, HKEY_LOCAL_MACHINE, kFamily + key + "\\AutorunsDisabled");
    }
    // Each picture once in the list's own image list, drawn from the shell's.
    std::map<std::pair<DWORD_PTR, int>, int> pictures;
    for (const Row& row : rows) {
        auto [known, added] = pictures.try_emplace({row.images, row.icon}, -1);
        if (added) {
            HICON icon = ImageList_GetIcon(reinterpret_cast<HIMAGELIST>(row.images), row.icon, ILD_TRANSPARENT);
            known->second = ImageList_AddIcon(ListView_GetImageList(list, LVSIL_SMALL), icon);
            DestroyIcon(icon);
        }
        slots.push_back(known->second);
    }
    ListView_SetItemCountEx(list, rows.size(), 0);

    // After the filled list: the current user's keys, the Startup folders, the details.
    std::vector<Row> more;
    for (const char* key : {"Run", "RunOnce", "RunServices"}) {
        tessmark::tools::WalkAsTheProgram(more, HKEY_CURRENT_USER, kFamily + key);
        tessmark::tools::WalkAsTheProgram(more, HKEY_CURRENT_USER, kFamily + key + "\\AutorunsDisabled");
    }
    for (int folder : {CSIDL_COMMON_STARTUP, CSIDL_STARTUP}) {
        LPITEMIDLIST location = nullptr;
        char path[MAX_PATH] = {};
        SHGetSpecialFolderLocation(nullptr, folder, &location);
        SHGetPathFromIDListA(location, path);
        WIN32_FIND_DATAA found;
        HANDLE search = FindFirstFileA((std::string(path) + "\\*.*").c_str(), &found);
        while (search != INVALID_HANDLE_VALUE && FindNextFileA(search, &found)) {
        }
        if (search != INVALID_HANDLE_VALUE) FindClose(search);
    }
    ShowWindow(wait, SW_HIDE);
    ShowWindow(list, SW_SHOW);
    if (!rows.empty()) ReadDetails(panel, rows[0].data);

    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    return 0;
}

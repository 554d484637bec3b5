#include "win32/app/item_list_view.h"

#include "win32/app/controls.h"
#include "win32/app/icons.h"

namespace tessmark::app {

namespace {

constexpr int kIconSize = 16;

struct Column {
    const char* caption;
    int width;  // pixels: the stored hundredths of a millimetre at 96 dots per inch
};
// The enabled flag's column stays zero wide: the user sees the check box instead.
constexpr Column kColumns[] = {{"Name", 200}, {"Path", 333}, {"Values", 0}, {"Section", 167}};

constexpr COLORREF kUnfocusedSelection = RGB(0xC8, 0xD3, 0xE2);

constexpr UINT StateImage(bool checked) { return INDEXTOSTATEIMAGEMASK(checked ? 2 : 1); }

}  // namespace

ItemListView::ItemListView(HWND parent, int id, HFONT font)
    : list_(CreateWindowExA(WS_EX_CLIENTEDGE, WC_LISTVIEWA, "",
                            WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPSIBLINGS | LVS_REPORT | LVS_OWNERDATA |
                                LVS_SINGLESEL | LVS_SHOWSELALWAYS | LVS_SHAREIMAGELISTS,
                            0, 0, 0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                            GetModuleHandleA(nullptr), nullptr)),
      pictures_(ImageList_Create(kIconSize, kIconSize, ILC_COLOR32 | ILC_MASK, 16, 64)) {
    SendMessageA(list_, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    ListView_SetExtendedListViewStyle(list_, LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT);
    // Check marks are asked for row by row, like the texts.
    ListView_SetCallbackMask(list_, LVIS_STATEIMAGEMASK);
    ListView_SetImageList(list_, pictures_.get(), LVSIL_SMALL);
    for (int i = 0; i < static_cast<int>(std::size(kColumns)); ++i) {
        LVCOLUMNA column = {};
        column.mask = LVCF_TEXT | LVCF_WIDTH | LVCF_SUBITEM;
        column.pszText = const_cast<char*>(kColumns[i].caption);
        column.cx = kColumns[i].width;
        column.iSubItem = i;
        SendMessageA(list_, LVM_INSERTCOLUMNA, i, reinterpret_cast<LPARAM>(&column));
    }
    SetWindowSubclass(list_, Pressed, 1, reinterpret_cast<DWORD_PTR>(this));
}

ItemListView::~ItemListView() {
    if (IsWindow(list_)) RemoveWindowSubclass(list_, Pressed, 1);
}

LRESULT CALLBACK ItemListView::Pressed(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                       DWORD_PTR self) {
    auto* view = reinterpret_cast<ItemListView*>(self);
    if (message == WM_RBUTTONDOWN && view->onRightDown) {
        SetFocus(window);
        view->onRightDown(POINT{static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam))});
        return 0;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

void ItemListView::SyncImages(const discovery::ImageStore& images) {
    const long count = images.Count();
    bool stillValid = static_cast<long>(shown_.size()) <= count;
    for (long i = 0; stillValid && i < static_cast<long>(shown_.size()); ++i)
        stillValid = shown_[static_cast<std::size_t>(i)] == images[i + 1];
    if (!stillValid) {
        shown_.clear();
        slots_.clear();
    }
    for (long i = static_cast<long>(shown_.size()) + 1; i <= count; ++i) {
        const discovery::IconImage& image = images[i];
        auto [known, added] = pictureOf_.try_emplace({image.imageList, image.index}, I_IMAGENONE);
        if (added) {
            OwnedIcon icon = IconOf(image, kIconSize);
            if (icon) known->second = ImageList_AddIcon(pictures_.get(), icon.get());
        }
        slots_.push_back(known->second);
        shown_.push_back(image);
    }
}

void ItemListView::Sync(discovery::ItemList& rows, const discovery::ImageStore& images) {
    syncing_ = true;
    SyncImages(images);
    const int count = static_cast<int>(rows.Count());
    if (ListView_GetItemCount(list_) != count) ListView_SetItemCountEx(list_, count, 0);
    InvalidateRect(list_, nullptr, FALSE);

    const int selected = rows.HasSelection() ? static_cast<int>(rows.IndexOf(rows.SelectedItem())) - 1 : -1;
    if (ListView_GetNextItem(list_, -1, LVNI_SELECTED) != selected) {
        ListView_SetItemState(list_, -1, 0, LVIS_SELECTED | LVIS_FOCUSED);
        if (selected >= 0) {
            ListView_SetItemState(list_, selected, LVIS_SELECTED | LVIS_FOCUSED, LVIS_SELECTED | LVIS_FOCUSED);
            ListView_EnsureVisible(list_, selected, FALSE);
        }
    }
    ShowIf(list_, rows.Visible);
    syncing_ = false;
}

void ItemListView::FillDisplayInfo(NMLVDISPINFOA& info, discovery::ItemList& rows) const {
    LVITEMA& item = info.item;
    // While a population runs, the list may still count rows the model has dropped.
    if (item.iItem < 0 || item.iItem >= rows.Count()) {
        if (item.mask & LVIF_TEXT && item.cchTextMax > 0) item.pszText[0] = '\0';
        return;
    }
    const discovery::ItemRow& row = rows(item.iItem + 1);
    if (item.mask & LVIF_TEXT) {
        const std::string& text = item.iSubItem == 0 ? row.Text : row.SubItems(item.iSubItem);
        lstrcpynA(item.pszText, text.c_str(), item.cchTextMax);
    }
    if (item.mask & LVIF_IMAGE) {
        const long image = row.SmallIcon;
        item.iImage = image >= 1 && image <= static_cast<long>(slots_.size()) ? slots_[static_cast<std::size_t>(image - 1)]
                                                                            : I_IMAGENONE;
    }
    if (item.mask & LVIF_STATE) {
        item.state = (item.state & ~LVIS_STATEIMAGEMASK) | StateImage(row.Checked);
        item.stateMask |= LVIS_STATEIMAGEMASK;
    }
}

long ItemListView::SelectedByUser(const NMLISTVIEW& change, const discovery::ItemList& rows) const {
    if (syncing_ || change.iItem < 0 || change.iItem >= rows.Count()) return 0;
    const bool gained = (change.uNewState & LVIS_SELECTED) && !(change.uOldState & LVIS_SELECTED);
    return gained ? change.iItem + 1 : 0;
}

long ItemListView::CheckBoxAt(const NMITEMACTIVATE& click) const {
    LVHITTESTINFO hit{};
    hit.pt = click.ptAction;
    if (ListView_SubItemHitTest(list_, &hit) < 0 || hit.iSubItem != 0) return 0;
    return (hit.flags & LVHT_ONITEMSTATEICON) != 0 ? hit.iItem + 1 : 0;
}

LRESULT ItemListView::CustomDraw(NMLVCUSTOMDRAW& draw) const {
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
    if (draw.nmcd.dwDrawStage == CDDS_ITEMPREPAINT && GetFocus() != list_ &&
        ListView_GetItemState(list_, static_cast<int>(draw.nmcd.dwItemSpec), LVIS_SELECTED)) {
        // The list paints selected rows in its own colours unless they are drawn as unselected.
        draw.nmcd.uItemState &= ~CDIS_SELECTED;
        draw.clrText = GetSysColor(COLOR_WINDOWTEXT);
        draw.clrTextBk = kUnfocusedSelection;
    }
    return CDRF_DODEFAULT;
}

}  // namespace tessmark::app

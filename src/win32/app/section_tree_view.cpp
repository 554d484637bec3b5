#include "win32/app/section_tree_view.h"

#include "win32/app/icons.h"

namespace tessmark::app {

namespace {
// The tree's pictures are icon resources 201 onwards, in the order of their indexes.
constexpr int kFirstPicture = 201;
constexpr int kPictures = 5;
constexpr COLORREF kUnfocusedSelection = RGB(0xC8, 0xD3, 0xE2);
}  // namespace

SectionTreeView::SectionTreeView(HWND parent, int id, HFONT font)
    : tree_(CreateWindowExA(WS_EX_CLIENTEDGE, WC_TREEVIEWA, "",
                            WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_CLIPSIBLINGS | TVS_HASLINES | TVS_HASBUTTONS |
                                TVS_LINESATROOT | TVS_SHOWSELALWAYS,
                            0, 0, 0, 0, parent, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                            GetModuleHandleA(nullptr), nullptr)),
      pictures_(ImageList_Create(16, 16, ILC_COLOR32 | ILC_MASK, kPictures, 0)) {
    SendMessageA(tree_, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    for (int i = 0; i < kPictures; ++i) {
        OwnedIcon icon = IconOf({0, kFirstPicture + i, false}, 16);
        ImageList_AddIcon(pictures_.get(), icon.get());
    }
    TreeView_SetImageList(tree_, pictures_.get(), TVSIL_NORMAL);
    SetWindowSubclass(tree_, Typed, 1, reinterpret_cast<DWORD_PTR>(this));
}

SectionTreeView::~SectionTreeView() {
    if (IsWindow(tree_)) {
        RemoveWindowSubclass(tree_, Typed, 1);
        TreeView_SetImageList(tree_, nullptr, TVSIL_NORMAL);
    }
}

LRESULT CALLBACK SectionTreeView::Typed(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                         DWORD_PTR self) {
    auto* view = reinterpret_cast<SectionTreeView*>(self);
    if (message == WM_CHAR && view->onKeyPress) view->onKeyPress(static_cast<int>(wParam));
    return DefSubclassProc(window, message, wParam, lParam);
}

void SectionTreeView::Rebuild(const forms::TreeState& model) {
    TreeView_DeleteAllItems(tree_);
    keys_.clear();
    items_.clear();
    for (std::size_t i = 0; i < model.Nodes.size(); ++i) {
        const forms::TreeNodeState& node = model.Nodes[i];
        HTREEITEM parent = TVI_ROOT;
        for (std::size_t p = 0; p < keys_.size(); ++p)
            if (!node.ParentKey.empty() && keys_[p] == node.ParentKey) parent = items_[p];
        TVINSERTSTRUCTA insert = {};
        insert.hParent = parent;
        insert.hInsertAfter = TVI_LAST;
        insert.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_PARAM;
        insert.item.pszText = const_cast<char*>(node.Text.c_str());
        insert.item.iImage = insert.item.iSelectedImage = node.Image - 1;
        insert.item.lParam = static_cast<LPARAM>(i);
        keys_.push_back(node.Key);
        items_.push_back(reinterpret_cast<HTREEITEM>(SendMessageA(tree_, TVM_INSERTITEMA, 0,
                                                                  reinterpret_cast<LPARAM>(&insert))));
    }
    // A node opens only once it has children.
    for (std::size_t i = 0; i < model.Nodes.size(); ++i)
        if (model.Nodes[i].Expanded) TreeView_Expand(tree_, items_[i], TVE_EXPAND);
}

void SectionTreeView::Sync(const forms::TreeState& model) {
    syncing_ = true;
    bool same = keys_.size() == model.Nodes.size();
    for (std::size_t i = 0; same && i < keys_.size(); ++i) same = keys_[i] == model.Nodes[i].Key;
    if (!same) Rebuild(model);
    HTREEITEM wanted = model.selected >= 0 && model.selected < static_cast<long>(items_.size())
                           ? items_[static_cast<std::size_t>(model.selected)]
                           : nullptr;
    if (wanted != nullptr && TreeView_GetSelection(tree_) != wanted) TreeView_SelectItem(tree_, wanted);
    if ((IsWindowEnabled(tree_) != FALSE) != model.Enabled) EnableWindow(tree_, model.Enabled);
    syncing_ = false;
}

long SectionTreeView::SelectedByUser(const NMTREEVIEWA& change) const {
    if (syncing_ || change.itemNew.hItem == nullptr) return -1;
    const auto node = static_cast<long>(change.itemNew.lParam);
    return node >= 0 && node < static_cast<long>(items_.size()) ? node : -1;
}

LRESULT SectionTreeView::CustomDraw(NMTVCUSTOMDRAW& draw) const {
    if (draw.nmcd.dwDrawStage == CDDS_PREPAINT) return CDRF_NOTIFYITEMDRAW;
    if (draw.nmcd.dwDrawStage == CDDS_ITEMPREPAINT && (draw.nmcd.uItemState & CDIS_SELECTED) && GetFocus() != tree_) {
        draw.clrText = GetSysColor(COLOR_WINDOWTEXT);
        draw.clrTextBk = kUnfocusedSelection;
    }
    return CDRF_DODEFAULT;
}

}  // namespace tessmark::app

#pragma once
// ListView1 on the screen: a report-style owner-data list view. Rows, check
// marks and icons are read from the model's item list while they are painted,
// so the rows exist only once. Icons come from a picture list kept in step
// with the model's image store; images of the same shell icon share one picture.
#include <windows.h>
#include <commctrl.h>

#include <cstdint>
#include <functional>
#include <map>
#include <utility>
#include <vector>

#include "discovery/ItemList.h"
#include "win32/app/handles.h"

namespace tessmark::app {

class ItemListView {
public:
    ItemListView(HWND parent, int id, HFONT font);
    ItemListView(const ItemListView&) = delete;
    ItemListView& operator=(const ItemListView&) = delete;
    ~ItemListView();

    HWND hwnd() const { return list_; }

    // Shows what the model holds now: rows, icons, selection, visibility.
    void Sync(discovery::ItemList& rows, const discovery::ImageStore& images);
    // Answers the list's question for one cell of a row.
    void FillDisplayInfo(NMLVDISPINFOA& info, discovery::ItemList& rows) const;
    // The row (1-based) that the user's change selected; 0 for every other change.
    long SelectedByUser(const NMLISTVIEW& change, const discovery::ItemList& rows) const;
    // The row (1-based) whose check box the click hit; 0 elsewhere.
    long CheckBoxAt(const NMITEMACTIVATE& click) const;
    // Keeps the selected row marked while the focus is elsewhere.
    LRESULT CustomDraw(NMLVCUSTOMDRAW& draw) const;

    // A right button going down, in the list's client coordinates. The list
    // itself never sees it, so the selection stays where it was.
    std::function<void(POINT)> onRightDown;

private:
    static LRESULT CALLBACK Pressed(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                    DWORD_PTR self);
    void SyncImages(const discovery::ImageStore& images);

    HWND list_;
    OwnedImageList pictures_;
    std::map<std::pair<std::uintptr_t, std::int32_t>, int> pictureOf_;  // by image list and index
    std::vector<discovery::IconImage> shown_;  // the store's images that slots_ covers
    std::vector<int> slots_;                   // per store image: its picture, or I_IMAGENONE
    bool syncing_ = false;
};

}  // namespace tessmark::app

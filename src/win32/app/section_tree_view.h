#pragma once
// treeAuto on the screen: a tree view showing the model's section nodes with
// the tree's pictures. It mirrors the model: nodes, selection and whether the
// tree takes input.
#include <windows.h>
#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

#include "forms/Controls.h"
#include "win32/app/handles.h"

namespace tessmark::app {

class SectionTreeView {
public:
    SectionTreeView(HWND parent, int id, HFONT font);
    SectionTreeView(const SectionTreeView&) = delete;
    SectionTreeView& operator=(const SectionTreeView&) = delete;
    ~SectionTreeView();

    HWND hwnd() const { return tree_; }

    void Sync(const forms::TreeState& model);
    // The node (index into the model's nodes) that a selection change of the
    // user's made current; -1 for changes made by the program.
    long SelectedByUser(const NMTREEVIEWA& change) const;
    // Keeps the selected node marked while the list has the focus.
    LRESULT CustomDraw(NMTVCUSTOMDRAW& draw) const;

    // A character typed into the tree, before the tree itself acts on it.
    std::function<void(int keyAscii)> onKeyPress;

private:
    static LRESULT CALLBACK Typed(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                  DWORD_PTR self);
    void Rebuild(const forms::TreeState& model);

    HWND tree_;
    OwnedImageList pictures_;
    std::vector<std::string> keys_;  // the model's node keys the tree was built from
    std::vector<HTREEITEM> items_;   // the tree's item of each of them
    bool syncing_ = false;
};

}  // namespace tessmark::app

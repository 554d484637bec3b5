#pragma once
// FrmMain2 on the screen: a caption-less window with a painted frame, the
// section tree, the item list over Picture3, the details panel, two movable
// dividers, the totals, the buttons and the caption buttons. Every event goes
// to the form's handler through the top-level error handler; afterwards the
// window shows what the model holds.
#include <windows.h>

#include <memory>
#include <string>

#include "frame/FrmMain2.h"
#include "platform/ui_services.h"
#include "vb/toplevel.h"
#include "win32/app/box.h"
#include "win32/app/details_panel.h"
#include "win32/app/handles.h"
#include "win32/app/item_list_view.h"
#include "win32/app/section_tree_view.h"
#include "win32/app/skin.h"
#include "win32/app/splitter.h"

namespace tessmark::app {

class MainWindow final : public frame::MainView {
public:
    MainWindow(HINSTANCE instance, frame::FrmMain2& form, platform::UiServices& ui);
    MainWindow(const MainWindow&) = delete;
    MainWindow& operator=(const MainWindow&) = delete;
    ~MainWindow() override;

    void Show() override;
    // Shows the whole model: called after every event and whenever the message pump runs.
    void Refresh() override;
    forms::MenuEntry* PopupMenu(const forms::Menu& menu) override;
    void ShowModal(forms::FrmMove& dialog) override;
    void ShowModal(forms::FrmEdit& dialog) override;

private:
    // The form's handlers behind one caption button.
    struct CaptionHandlers {
        void (frame::FrmMain2::*down)(int);
        void (frame::FrmMain2::*move)();
        void (frame::FrmMain2::*up)(int);
    };

    template <class View>
    friend LRESULT CALLBACK ViewProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Notify(NMHDR& header);
    void CreateControls();
    std::unique_ptr<CaptionButton> MakeCaptionButton(int id, CaptionHandlers handlers);
    void SyncChrome();
    void Arrange();
    void Picture3_Resize();
    void Paint(HDC dc);

    void CheckRow(long row);
    template <class Handler>
    void Fire(Handler&& handler) {
        vb::RunEvent(ui_, std::forward<Handler>(handler));
        Refresh();
    }
    // Events that touch only the window chrome, such as mouse moves.
    template <class Handler>
    void FireChrome(Handler&& handler) {
        vb::RunEvent(ui_, std::forward<Handler>(handler));
        SyncChrome();
    }

    frame::FrmMain2& form_;
    platform::UiServices& ui_;
    HWND window_ = nullptr;
    bool ready_ = false;  // the controls exist
    OwnedFont font_, bold_, captionFont_;
    OwnedBrush body_, white_, bar_;
    OwnedIcon smallIcon_;

    std::unique_ptr<SectionTreeView> treeAuto_;
    std::unique_ptr<Splitter> Splitter1_, Splitter2_;
    std::unique_ptr<Box> Picture3_;
    std::unique_ptr<ItemListView> ListView1_;
    HWND lblwait_ = nullptr;
    std::unique_ptr<DetailsPanel> picDetails_;
    HWND lbltotalitem_ = nullptr, lblactiveitem_ = nullptr;
    std::unique_ptr<CaptionButton> CmdClose_, CmdMinimise_;

    int treeWidth_;    // where Splitter1 stands
    int detailsTop_;   // where Splitter2 stands
};

}  // namespace tessmark::app

#pragma once
// The Move and Edit Properties dialogs on the screen: caption-less windows in
// the main window's skin, shown modally until their model unloads. Each event
// goes to the dialog's handler through the top-level error handler; afterwards
// the window shows what the model holds.
#include <windows.h>
#include <commctrl.h>

#include <memory>
#include <string>

#include "forms/FrmEdit.h"
#include "forms/FrmMove.h"
#include "platform/ui_services.h"
#include "vb/toplevel.h"
#include "win32/app/section_tree_view.h"
#include "win32/app/skin.h"

namespace tessmark::app {

class DialogWindow {
public:
    DialogWindow(HWND owner, forms::SkinnedDialog& model, platform::UiServices& ui, const std::string& caption,
                 SIZE size);
    DialogWindow(const DialogWindow&) = delete;
    DialogWindow& operator=(const DialogWindow&) = delete;
    virtual ~DialogWindow();

    // Shows the dialog with its owner disabled and runs the messages until the model unloads.
    void RunModal();

protected:
    virtual void Sync() = 0;
    virtual void Command(int id, int code) = 0;
    virtual void Notify(NMHDR&) {}

    template <class Handler>
    void Fire(Handler&& handler) {
        vb::RunEvent(ui_, std::forward<Handler>(handler));
        SyncAll();
    }
    HWND Label(int id, const char* text, const RECT& bounds, bool bold = false);
    HWND Button(int id, const char* text, const RECT& bounds);

    HWND window_ = nullptr;
    OwnedFont font_, bold_, captionFont_;
    OwnedBrush body_;

private:
    template <class View>
    friend LRESULT CALLBACK ViewProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam);
    void SyncAll();

    forms::SkinnedDialog& model_;
    platform::UiServices& ui_;
    std::string caption_;
    OwnedIcon icon_;
    std::unique_ptr<CaptionButton> CmdClose_;
    bool ready_ = false;
};

class MoveDialog final : public DialogWindow {
public:
    MoveDialog(HWND owner, forms::FrmMove& form, platform::UiServices& ui);

private:
    void Sync() override;
    void Command(int id, int code) override;
    void Notify(NMHDR& header) override;

    forms::FrmMove& form_;
    std::unique_ptr<SectionTreeView> treeAuto_;
    HWND lblEntry_;
};

class EditDialog final : public DialogWindow {
public:
    EditDialog(HWND owner, forms::FrmEdit& form, platform::UiServices& ui);

private:
    void Sync() override;
    void Command(int id, int code) override;

    forms::FrmEdit& form_;
    HWND txtName_, txtPath_, lblSection_, cmdChange_;
};

}  // namespace tessmark::app

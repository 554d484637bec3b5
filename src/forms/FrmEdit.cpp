#include "forms/FrmEdit.h"

#include <algorithm>

#include "discovery/ItemList.h"
#include "frame/catalogue.h"
#include "storage/filesearch.h"
#include "vb/vb.h"

namespace tessmark::forms {

namespace key = catalogue::key;

// The common dialog's error when its CancelError is set and the user cancels.
constexpr int kCancelError = 32755;

FrmEdit::FrmEdit(frame::FrmMain2& main) : SkinnedDialog(main.Ports().ui), main_(main) {}

// Errors end the handler silently; a cancelled file dialog is one.
void FrmEdit::cmdChange_Click() {
    try {
        std::string current = txtPath.Text;
        std::string fileName = discovery::GetExeName(current, main_.folders);
        if (!ui_.ShowOpen(kFilter, fileName, hWnd)) throw vb::VbError(kCancelError);
        txtPath.Text = fileName;
        const std::string node = main_.treeAuto.SelectedItem().Key;
        if (node == key::kCurrUser || node == key::kAllUsers)
            txtName.Text = vb::Mid(txtPath.Text, vb::InStrRev(txtPath.Text, "\\") + 1);
    } catch (const vb::VbError&) {
    }
}

void FrmEdit::Command1_Click(int Index) {
    frame::PublicVar& shared = main_.publicVar;
    try {
        if (Index == 1) {
            Unload();
            return;
        }
        if (main_.ListView1.Count() == 0) {
            shared.EditedItemName = txtName.Text;
            shared.EditedItemPath = txtPath.Text;
            Unload();
            return;
        }
        const discovery::ItemRow& row = main_.ListView1.SelectedItem();
        // The boxes hold the row's texts as shown, without the NUL a value name keeps.
        if (txtName.Text == storage::StripAtNull(row.Text) && txtPath.Text == storage::StripAtNull(row.SubItems(1))) {
            shared.EditedItemName.clear();
            shared.EditedItemPath.clear();
        } else {
            shared.EditedItemName = txtName.Text;
            shared.EditedItemPath = txtPath.Text;
        }
        Unload();
    } catch (const vb::VbError&) {
    }
}

}  // namespace tessmark::forms

namespace tessmark::frame {

// Traps nothing: with rows but none selected, reading the selection ends the program.
void FrmMain2::mnuProp_Click() {
    platform::UiServices& ui = ports_.ui;
    if (ListView1.Count() == 0) {
        ui.MsgBox("Select an item to Edit properties", platform::kMbCritical, "");
        return;
    }
    static constexpr std::array<std::string_view, 7> kEditable = {
        key::kRunServiceCurr, key::kRunOnceCurr,  key::kRunCurr,  key::kRunServiceOnceAll,
        key::kRunServiceAll,  key::kRunOnceAll,   key::kRunExAll};
    const std::string node = treeAuto.SelectedItem().Key;
    const bool editable = std::find(kEditable.begin(), kEditable.end(), node) != kEditable.end();

    forms::FrmEdit dialog(*this);
    dialog.Form_Load();
    const discovery::ItemRow& row = ListView1.SelectedItem();
    dialog.lblSection.Caption = vb::UCase(row.SubItems(3));
    // An edit box holds text up to its first NUL.
    dialog.txtName.Text = storage::StripAtNull(row.Text);
    dialog.txtPath.Text = storage::StripAtNull(row.SubItems(1));
    if (!editable) {
        dialog.txtName.Enabled = false;
        dialog.txtPath.Enabled = false;
        dialog.cmdChangeEnabled = false;
    }
    // Startup-folder rows, and two tags that no row carries.
    const long tag = discovery::TagNumber(row.Tag);
    if (tag == 1 || tag == 25 || tag == 24 || tag == 2) {
        ui.MsgBox("Selected Item can not be edited!", platform::kMbCritical, "");
        dialog.txtName.Locked = true;
        dialog.txtPath.Locked = true;
    }
    ShowModal(dialog);
    if (editable && (!publicVar.EditedItemName.empty() || !publicVar.EditedItemPath.empty())) Tag = "DELETESELECTED";
    ui.Beep();
    publicVar.EditedItemName.clear();
    publicVar.EditedItemPath.clear();
}

}  // namespace tessmark::frame

// The Edit Properties command: the dialog shows the selected row, and an edit
// that changes a text only marks the form.
#include <algorithm>
#include <array>

#include "forms/FrmEdit.h"
#include "frame/FrmMain2.h"
#include "frame/catalogue.h"
#include "storage/filesearch.h"
#include "vb/vb.h"

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

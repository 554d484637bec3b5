#include "forms/FrmEdit.h"

#include "catalogue/sections.h"
#include "discovery/ItemList.h"
#include "storage/filesearch.h"
#include "vb/vb.h"

namespace tessmark::forms {

namespace key = catalogue::key;

// The common dialog's error when its CancelError is set and the user cancels.
constexpr int kCancelError = 32755;

FrmEdit::FrmEdit(MainForm& main) : SkinnedDialog(main.Ports().ui), main_(main) {}

// Errors end the handler silently; a cancelled file dialog is one.
void FrmEdit::cmdChange_Click() {
    try {
        std::string current = txtPath.Text;
        std::string fileName = discovery::GetExeName(current, main_.Folders());
        if (!ui_.ShowOpen(kFilter, fileName, hWnd)) throw vb::VbError(kCancelError);
        txtPath.Text = fileName;
        const std::string node = main_.Tree().SelectedItem().Key;
        if (node == key::kCurrUser || node == key::kAllUsers)
            txtName.Text = vb::Mid(txtPath.Text, vb::InStrRev(txtPath.Text, "\\") + 1);
    } catch (const vb::VbError&) {
    }
}

void FrmEdit::Command1_Click(int Index) {
    PublicVar& shared = main_.Shared();
    try {
        if (Index == 1) {
            Unload();
            return;
        }
        if (main_.List().Count() == 0) {
            shared.EditedItemName = txtName.Text;
            shared.EditedItemPath = txtPath.Text;
            Unload();
            return;
        }
        const discovery::ItemRow& row = main_.List().SelectedItem();
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

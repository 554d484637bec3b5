#include "forms/FrmMenu.h"

#include "forms/MainForm.h"

namespace tessmark::forms {

void FrmMenu::mnuRefresh_Click() { main_.treeAuto_Click(); }

void FrmMenu::mnuDisable_Click() { main_.mnuDisable_Click(); }

void FrmMenu::mnuProp_Click() { main_.mnuProp_Click(); }

// The tray entries stand as placeholders.
void FrmMenu::mnutrayhelp_Click() { main_.Ports().ui.MsgBox("HelpClick", 0, ""); }

void FrmMenu::mnutrayabout_Click() { main_.Ports().ui.MsgBox("AboutClick", 0, ""); }

// Despite its caption, no path hides the form.
void FrmMenu::mnutrayshowhide_Click() {
    mnutrayshowhide.Checked = !mnutrayshowhide.Checked;
    if (!mnutrayshowhide.Checked) return;
    main_.SetTag("Stop");
    main_.Ports().ui.RemoveTrayIcon();
    main_.Show();
    main_.treeAuto_Click();
}

// Ends without unloading the main form, so the instance mutex is not released here.
void FrmMenu::mnutrayexit_Click() {
    main_.Ports().ui.RemoveTrayIcon();
    main_.Ports().ui.EndProcess(0);
}

}  // namespace tessmark::forms

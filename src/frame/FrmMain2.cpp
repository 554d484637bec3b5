#include "frame/FrmMain2.h"

#include "discovery/Logon.h"
#include "discovery/RowServices.h"
#include "discovery/RunKeys.h"
#include "discovery/StartupFolders.h"
#include "forms/FrmEdit.h"
#include "forms/FrmMove.h"
#include "forms/SkinnedDialog.h"
#include "frame/catalogue.h"
#include "safety/BackupRegistry.h"
#include "storage/modStartup.h"
#include "ui/CFileVersionInfo.h"
#include "vb/vb.h"

namespace tessmark::frame {

using namespace discovery;
using vb::Resume;

FrmMain2::FrmMain2(platform::Ports ports)
    : ports_(ports),
      objinifile_(ports.files),
      context_{ports, folders, ListView1, imgListIcons, Picture1, shellRecord_, objinifile_, Timer1Enabled} {}

void FrmMain2::Hourglass() {
    if (!Timer1Enabled) ports_.ui.SetMousePointer(platform::kMousePointerHourglass);
}

void FrmMain2::WaitOn() {
    ListView1.Visible = false;
    lblwait.Visible = true;
}

void FrmMain2::WaitOff() {
    ListView1.Visible = true;
    lblwait.Visible = false;
}

void FrmMain2::Pump() { ports_.ui.DoEvents(); }

void FrmMain2::Show() {
    Visible = true;
    if (view) view->Show();
}

void FrmMain2::Form_Load() {
    Resume([&] { Show(); });
    Resume([&] { Hourglass(); });
    Resume([&] { folders.windowsFolder = ports_.files.Environ("windir"); });
    Resume([&] { folders.programFilesFolder = ports_.files.Environ("ProgramFiles"); });
    Resume([&] {
        OleBusyTexts = {Caption, Caption, "The component for the Long Transaction has not responded. ",
                        "Your request is still executing. "};
    });
    Resume([&] {
        std::string side = ports_.files.Environ("appdata") + "\\Corvane Pulse" + "\\";
        storage::MakeFolderPath(ports_.files, side);
    });
    Resume([&] {
        treeAuto.Nodes.clear();
        for (const auto& node : kMainTree)
            treeAuto.Nodes.push_back({std::string(node.key), std::string(node.caption), std::string(node.parent),
                                      node.image, true});
        treeAuto.Select(std::string(key::kMain));  // selecting in code runs no population
    });
    Resume([&] { StartSearch(); });
    Resume([&] { ports_.ui.SetMousePointer(platform::kMousePointerDefault); });
    Resume([&] { Show(); });
    Resume([&] {
        ports_.ui.MsgBox("Uncheck the items you don't use every day then restart your PC to feel the Corvane Pulse!",
                         platform::kMbInformation, "");
    });
    Resume([&] { ports_.ui.ActivityLog("Tessmark - Form_Load"); });
}

void FrmMain2::AddAllKeys() {
    WaitOn();
    Hourglass();
    imgListIcons.Clear();
    imgListIcons.Add(kProgramIcon);
    Pump();
    AddRun(context_, false);
    AddRunOnce(context_, false);
    AddRunServices(context_, false);
    AddRunServiceOnce(context_, false);
    Pump();
    AddRun(context_, true);
    AddRunOnce(context_, true);
    AddRunServices(context_, true);
    AddStartupAllUser(context_);
    AddStartupCurrUser(context_);
    Pump();
    ports_.ui.SetMousePointer(platform::kMousePointerDefault);
    WaitOff();
    ResetCaptionButtons();
}

void FrmMain2::treeAuto_Click() {
    Hourglass();
    ListView1.Clear();
    treeAuto.Enabled = false;
    const std::string key = treeAuto.SelectedItem().Key;
    auto logonAll = [&] {
        AddLogon(context_, LogonKey(1), 1);
        AddLogon(context_, LogonKey(2), 2);
        AddLogon(context_, LogonKey(3), 3);
    };
    if (key == key::kMain) {
        AddAllKeys();
    } else if (key == key::kStartFolder) {
        AddStartupAllUser(context_);
        AddStartupCurrUser(context_);
    } else if (key == key::kAllUsers) {
        AddStartupAllUser(context_);
    } else if (key == key::kCurrUser) {
        AddStartupCurrUser(context_);
    } else if (key == key::kRunExAll) {
        AddRun(context_, false);
    } else if (key == key::kRunOnceAll) {
        AddRunOnce(context_, false);
    } else if (key == key::kRunServiceAll) {
        AddRunServices(context_, false);
    } else if (key == key::kRunServiceOnceAll) {
        AddRunServiceOnce(context_, false);
    } else if (key == key::kRegAll || key == key::kRegistry) {
        WaitOn();
        AddRun(context_, false);
        AddRunOnce(context_, false);
        AddRunServices(context_, false);
        AddRunServiceOnce(context_, false);
        logonAll();
        if (key == key::kRegistry) {
            AddRun(context_, true);
            AddRunOnce(context_, true);
            AddRunServices(context_, true);
        }
        WaitOff();
    } else if (key == key::kRunCurr) {
        AddRun(context_, true);
    } else if (key == key::kRunOnceCurr) {
        AddRunOnce(context_, true);
    } else if (key == key::kRunServiceCurr) {
        AddRunServices(context_, true);
    } else if (key == key::kRegCurr) {
        AddRun(context_, true);
        AddRunOnce(context_, true);
        AddRunServices(context_, true);
    } else if (key == key::kLogonAll) {
        logonAll();
    } else if (key == key::kStartupAll) {
        AddLogon(context_, LogonKey(1), 1);
    } else if (key == key::kUserinitAll) {
        AddLogon(context_, LogonKey(2), 2);
    } else if (key == key::kShellAll) {
        AddLogon(context_, LogonKey(3), 3);
    } else if (key == key::kServiceAll || key == key::kDriverAll) {
        WaitOn();  // nothing is scanned
        WaitOff();
    }
    refreshCheckBox();
    treeAuto.Enabled = true;
    ports_.ui.SetMousePointer(platform::kMousePointerDefault);
    listHasFocus = true;
}

void FrmMain2::treeAuto_KeyPress(int) {
    Resume([&] { treeAuto_Click(); });
}

void FrmMain2::refreshCheckBox() {
    discovery::refreshCheckBox(ListView1, lbltotalitem.Caption, lblactiveitem.Caption, [this] { ListView1_Click(); });
}

void FrmMain2::ListView1_Click() {
    if (ListView1.Count() == 0) {
        picIcon.hasPicture = false;
        lblNameVer.Caption.clear();
        lblCompanyName.Caption.clear();
        LblDescription.Caption.clear();
        LblSection.Caption.clear();
        imgCheckVisible = false;
        imgNoCheckVisible = false;
        return;
    }
    ItemRow& row = ListView1.SelectedItem();
    FrmMenu.mnuDisable.Checked = !row.Checked;
    ui::CFileVersionInfo info(ports_.files, ports_.shell);
    std::string path = row.SubItems(1);
    std::string once = GetExeName(path, folders);
    info.FullPathName(GetExeName(once, folders));
    picIcon.hasPicture = false;
    lblNameVer.Caption = info.ProductName().empty() ? "N/A" : info.ProductName() + " " + info.ProductVersion();
    lblCompanyName.Caption = "Company: " + (info.CompanyName().empty() ? std::string("N/A") : info.CompanyName());
    LblDescription.Caption =
        "Description: " + (info.FileDescription().empty() ? std::string("N/A") : info.FileDescription());
    LblSection.Caption = "Section: " + row.SubItems(3);
    std::string full = info.FullPathName(), displayName;
    AddItemIcon(ports_.shell, shellRecord_, full, nullptr, &picIcon, 0, displayName);
    picIcon.Width = 960;
    picIcon.Height = 960;
    imgCheckVisible = row.Checked;
    imgNoCheckVisible = !row.Checked;
}

void FrmMain2::ResetCaptionButtons() {
    CmdClosePicture = "close_normal";
    CmdMinimisePicture = "minimize_normal";
}

void FrmMain2::Form_QueryUnload() { ReleaseSingleInstance(); }

void FrmMain2::Form_Unload() { ports_.ui.RemoveTrayIcon(); }

void FrmMain2::Unload() {
    Form_QueryUnload();
    Form_Unload();
    Visible = false;
}

constexpr int kLeftButton = 1;

void FrmMain2::CmdClose_MouseDown(int button) {
    if (button == kLeftButton) CmdClosePicture = "CLOSE_DOWN";
}

void FrmMain2::CmdMinimise_MouseDown(int button) {
    if (button == kLeftButton) CmdMinimisePicture = "MINIMIZE_DOWN";
}

void FrmMain2::CmdClose_MouseMove() {
    if (HotControl == "CmdClose") return;
    ResetCaptionButtons();
    HotControl = "CmdClose";
    CmdClosePicture = "close_hover";
}

void FrmMain2::CmdMinimise_MouseMove() {
    if (HotControl == "CmdMinimise") return;
    ResetCaptionButtons();
    HotControl = "CmdMinimise";
    CmdMinimisePicture = "minimize_hover";
}

void FrmMain2::Form_MouseMove() {
    if (HotControl == "Form") return;
    HotControl = "Form";
    ResetCaptionButtons();
}

// Only which button went up counts, not where: a press released outside still closes.
void FrmMain2::CmdClose_MouseUp(int button) {
    if (button != kLeftButton) return;
    ResetCaptionButtons();
    // Unloading the menu form: it holds no state that outlives it.
    Unload();
    ports_.ui.EndProcess(0);
}

void FrmMain2::CmdMinimise_MouseUp(int button) {
    if (button != kLeftButton) return;
    Resume([&] { WindowState = 1; });
}

void FrmMain2::Form_MouseDown(int, int y) { forms::DragByCaption(ports_.ui, hWnd, y); }

void FrmMain2::BtnClose_Click() {
    Unload();
    ports_.ui.EndProcess(0);
}

void FrmMain2::BackupRegistry() { safety::BackupRegistry(itemOperations_.objReg(), ports_.files); }

void FrmMain2::PopupMenu(forms::Menu& menu) {
    // While a dialog is modal no other window of the program takes input, and no menu opens.
    if (!view || modalDialogs_ > 0) return;
    if (forms::MenuEntry* chosen = view->PopupMenu(menu)) FrmMenu.Choose(*chosen);
}

void FrmMain2::ShowModal(forms::FrmMove& dialog) {
    if (!dialog.Loaded()) dialog.Form_Load();
    if (!dialog.Loaded() || !view) return;
    ++modalDialogs_;
    view->ShowModal(dialog);
    --modalDialogs_;
}

void FrmMain2::ShowModal(forms::FrmEdit& dialog) {
    if (!dialog.Loaded()) dialog.Form_Load();
    if (!view) return;
    ++modalDialogs_;
    view->ShowModal(dialog);
    --modalDialogs_;
}

// A notification-area message comes as the X coordinate in pixels. No icon is
// ever added, so nothing sends one.
void FrmMain2::pictray_MouseDown(int, int, float X, float) {
    constexpr float kTwipsPerPixelX = 15;
    const auto message = static_cast<long>(vb::RoundHalfEven(X / kTwipsPerPixelX));
    if (message == 515) {  // WM_LBUTTONDBLCLK
        Show();
        Tag = "Stop";
        ports_.ui.RemoveTrayIcon();
        treeAuto_Click();
    } else if (message == 517) {  // WM_RBUTTONUP
        PopupMenu(FrmMenu.mnutrayoption);
    }
}

// Nothing enables the timer.
void FrmMain2::TMRRunOnce_Timer() {
    while (!Visible) Pump();
    TMRRunOnceEnabled = false;
}

}  // namespace tessmark::frame

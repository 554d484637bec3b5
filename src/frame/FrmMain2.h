#pragma once
// The main window as a headless model: its controls' state as plain data and
// its event handlers under their own names. The Win32 view creates the real
// controls, forwards events here and paints what this holds.
#include <functional>
#include <string>
#include <vector>

#include "discovery/GetExeName.h"
#include "discovery/ItemList.h"
#include "discovery/ScanContext.h"
#include "forms/FrmMenu.h"
#include "forms/MainForm.h"
#include "monitor/ChangeMonitor.h"
#include "operations/ItemOperations.h"
#include "platform/ports.h"
#include "safety/MainList.h"
#include "storage/IniFile.h"

namespace tessmark::forms {
class FrmEdit;
}  // namespace tessmark::forms

namespace tessmark::frame {

using forms::LabelState;
using forms::PublicVar;
using forms::TreeNodeState;
using forms::TreeState;

// What the view does for the model: paint it anew, show the window, show a
// menu at the pointer, show a dialog until it unloads.
class MainView {
public:
    virtual ~MainView() = default;
    virtual void Show() = 0;
    virtual void Refresh() = 0;
    // The entry the user chose; null when none.
    virtual forms::MenuEntry* PopupMenu(const forms::Menu& menu) = 0;
    virtual void ShowModal(forms::FrmMove& dialog) = 0;
    virtual void ShowModal(forms::FrmEdit& dialog) = 0;
};

class FrmMain2 final : public forms::MainForm, public safety::MainList {
public:
    explicit FrmMain2(platform::Ports ports);

    // ---- what the dialogs and the menu form see of it
    const discovery::SystemFolders& Folders() const override { return folders; }
    discovery::ItemList& List() override { return ListView1; }
    const TreeState& Tree() const override { return treeAuto; }
    PublicVar& Shared() override { return publicVar; }
    void SetTag(const std::string& tag) override { Tag = tag; }

    // ---- members other parts read
    discovery::SystemFolders folders;  // WindowsFolder, ProgramFilesFolder
    const std::string& WindowsFolder() const { return folders.windowsFolder; }
    const std::string& ProgramFilesFolder() const { return folders.programFilesFolder; }
    bool Timer1Enabled = false;      // no statement enables it
    bool TMRRunOnceEnabled = false;  // no statement enables it
    std::string Tag;
    std::string Caption = "Tessmark";
    bool Visible = false;
    int WindowState = 0;

    // ---- controls
    TreeState treeAuto;
    discovery::ItemList ListView1;
    discovery::ImageStore imgListIcons;
    discovery::PictureBox Picture1;  // hidden scratch surface for one icon
    LabelState lblwait{"Please wait while list is being populated...", false};
    LabelState lbltotalitem{"Total  Item(s) :"};
    LabelState lblactiveitem{"Active Item(s):"};
    // The details panel.
    discovery::PictureBox picIcon{false, {}, 960, 840};
    LabelState lblNameVer, lblCompanyName, LblSection, LblDescription;
    bool imgCheckVisible = false;
    bool imgNoCheckVisible = false;
    // Caption buttons: the resource name of the bitmap each shows.
    std::string CmdClosePicture = "close_normal";
    std::string CmdMinimisePicture = "minimize_normal";
    std::string HotControl;
    bool listHasFocus = false;  // the list takes the focus after each population
    forms::FrmMenu FrmMenu{*this};
    PublicVar publicVar;
    std::vector<std::string> OleBusyTexts;  // title, title, server busy, request pending

    MainView* view = nullptr;

    // ---- events
    void Form_Initialize() {}
    void Form_Load();
    void AddAllKeys() override;
    void treeAuto_Click() override;
    void treeAuto_KeyPress(int keyAscii);
    void StartSearch() { monitor.StartSearch(); }
    void SaveState() { monitor.SaveState(); }
    void Timer1_Timer() { StartSearch(); }  // Timer1 is never enabled
    void refreshCheckBox() override;
    void ListView1_Click();
    void ResetCaptionButtons();
    void Form_QueryUnload();
    void Form_Unload();

    // Window chrome. Mouse buttons as flags: 1 left, 2 right, 4 middle; y in twips.
    void CmdClose_MouseDown(int button);
    void CmdMinimise_MouseDown(int button);
    void CmdClose_MouseMove();
    void CmdMinimise_MouseMove();
    void Form_MouseMove();
    void CmdClose_MouseUp(int button);
    void CmdMinimise_MouseUp(int button);
    void Form_Resize() { ResetCaptionButtons(); }
    void Form_MouseDown(int button, int y);
    void Command1_Click() { ports_.ui.ShowAboutBox(); }
    void BtnClose_Click();

    // Menus, dialogs, the notification area and the end.
    void Show() override;
    void PopupMenu(forms::Menu& menu);
    void ShowModal(forms::FrmMove& dialog) override;
    void ShowModal(forms::FrmEdit& dialog);
    void mnuProp_Click() override;
    void pictray_MouseDown(int Button, int Shift, float X, float Y);
    void TMRRunOnce_Timer();
    // Form_QueryUnload, then Form_Unload: what closing the window runs before the end.
    void Unload();

    // What unloading the form calls first; the entry wires it to the instance mutex.
    std::function<void()> ReleaseSingleInstance = [] {};
    platform::WindowHandle hWnd = 0;

    discovery::ScanContext& Context() { return context_; }
    platform::Ports& Ports() override { return ports_; }

private:
    void Hourglass();
    void WaitOn();
    void WaitOff();
    void Pump();
    // The registry backup set; no command calls it.
    void BackupRegistry();

    platform::Ports ports_;
    int modalDialogs_ = 0;  // open modal dialogs
    platform::ShFileInfo shellRecord_{};
    storage::IniFile objinifile_;
    discovery::ScanContext context_;

    // ==== The list's handlers and the item operations (FrmMain2_list.cpp) ====
public:
    // Public operations of the form, also called by the change notification.
    void MarkDisable(const std::string& SectionName, const std::string& ItemName, const std::string& ItemPath,
                     std::int32_t ItemValue) {
        itemOperations_.MarkDisable(SectionName, ItemName, ItemPath, ItemValue);
    }
    void MarkEnable(const std::string& SectionName, const std::string& ItemName, const std::string& ItemPath,
                    std::int32_t ItemValue) {
        itemOperations_.MarkEnable(SectionName, ItemName, ItemPath, ItemValue);
    }

    // These trap nothing: an error raised inside, also one from the
    // operations, goes up to the top-level handler.
    void ListView1_ItemCheck(discovery::ItemRow& Item);
    void ListView1_MouseDown(int Button, int Shift, float x, float y);
    void ListView1_ColumnClick(long ColumnHeaderIndex);  // the header's 1-based Index
    // These run with errors ignored statement by statement.
    void ListView1_DblClick();
    void ListView1_KeyDown(int KeyCode, int Shift);
    void mnuDisable_Click() override;  // the popup's Disable/Enable command

    void DeleteLogon(const std::string& PPath, const std::string& ItemName, const std::string& LogonFolder) {
        itemOperations_.DeleteLogon(PPath, ItemName, LogonFolder);
    }

private:
    operations::ItemOperations itemOperations_{context_};
    // ==== end of the list's handlers ====

public:
    // The change monitor; its rescan is the "all items" population.
    monitor::ChangeMonitor monitor{context_, itemOperations_, [this] {
                                       ListView1.Clear();
                                       AddAllKeys();
                                       refreshCheckBox();
                                   }};
};

// The program's own icon, resource 101, as the first image of the store.
inline constexpr discovery::IconImage kProgramIcon{0, 101, false};

}  // namespace tessmark::frame

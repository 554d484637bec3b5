#pragma once
// The form that is never shown: it holds the item menu and the tray menu,
// entry by entry, and their handlers. A view draws a menu from here and hands
// the chosen entry back to Choose.
#include <string>
#include <utility>
#include <vector>

namespace tessmark::forms {

class FrmMenu;
class MainForm;

struct MenuEntry {
    using Handler = void (FrmMenu::*)();
    MenuEntry(std::string name, std::string caption, Handler click = nullptr, std::string shortcut = {})
        : Name(std::move(name)), Caption(std::move(caption)), Shortcut(std::move(shortcut)), Click(click) {}

    std::string Name;
    std::string Caption;   // "-" is a separator
    std::string Shortcut;  // the design shortcut's key name, shown beside the caption
    bool Checked = false;
    Handler Click;  // none: choosing the entry does nothing

    bool IsSeparator() const { return Caption == "-"; }
};

struct Menu {
    std::string Name;
    std::string Caption;
    std::vector<MenuEntry*> Entries;
};

class FrmMenu {
public:
    explicit FrmMenu(MainForm& main) : main_(main) {}
    FrmMenu(const FrmMenu&) = delete;
    FrmMenu& operator=(const FrmMenu&) = delete;

    MenuEntry mnubackup{"mnubackup", "Backup"};
    MenuEntry mnurestore{"mnurestore", "Restore"};
    MenuEntry Sep1{"Sep1", "-"};
    MenuEntry mnuRefresh{"mnuRefresh", "Refresh", &FrmMenu::mnuRefresh_Click};
    MenuEntry Sep2{"Sep2", "-"};
    MenuEntry mnuAddProgram{"mnuAddProgram", "Add Program"};
    MenuEntry Sep5{"Sep5", "-"};
    MenuEntry mnuDisable{"mnuDisable", "Disable", &FrmMenu::mnuDisable_Click, "F2"};
    MenuEntry mnuDelete{"mnuDelete", "Delete", nullptr, "Del"};
    MenuEntry mnuMove{"mnuMove", "Move", &FrmMenu::mnuMove_Click};
    MenuEntry Sep4{"Sep4", "-"};
    MenuEntry mnuProp{"mnuProp", "Edit Properties", &FrmMenu::mnuProp_Click};
    Menu mnuPopup{"mnuPopup", "Menu",
                  {&mnubackup, &mnurestore, &Sep1, &mnuRefresh, &Sep2, &mnuAddProgram, &Sep5, &mnuDisable, &mnuDelete,
                   &mnuMove, &Sep4, &mnuProp}};

    MenuEntry mnutrayhelp{"mnutrayhelp", "Help", &FrmMenu::mnutrayhelp_Click};
    MenuEntry mnutrayabout{"mnutrayabout", "About...", &FrmMenu::mnutrayabout_Click};
    MenuEntry mnudashshowhide{"mnudashshowhide", "-"};
    MenuEntry mnutrayshowhide{"mnutrayshowhide", "Show / Hide ...", &FrmMenu::mnutrayshowhide_Click};
    MenuEntry mnudashExit{"mnudashExit", "-"};
    MenuEntry mnutrayexit{"mnutrayexit", "Exit", &FrmMenu::mnutrayexit_Click};
    Menu mnutrayoption{"mnutrayoption", "TrayOption",
                       {&mnutrayhelp, &mnutrayabout, &mnudashshowhide, &mnutrayshowhide, &mnudashExit, &mnutrayexit}};

    void Choose(MenuEntry& entry) {
        if (entry.Click) (this->*entry.Click)();
    }

    void mnuRefresh_Click();
    void mnuDisable_Click();
    void mnuMove_Click();  // with FrmMove
    void mnuProp_Click();
    void mnutrayhelp_Click();
    void mnutrayabout_Click();
    void mnutrayshowhide_Click();
    void mnutrayexit_Click();

private:
    MainForm& main_;
};

}  // namespace tessmark::forms

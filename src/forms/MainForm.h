#pragma once
// The main form as its dialogs and its menu form see it: what they read and
// write of it, and the handlers the menus call. The main form implements it,
// so none of them includes the main form.
#include <string>

#include "discovery/GetExeName.h"
#include "discovery/ItemList.h"
#include "forms/Controls.h"
#include "platform/ports.h"

namespace tessmark::forms {

class FrmMove;

// The module of the two texts an edit hands back; empty outside a running edit.
struct PublicVar {
    std::string EditedItemName, EditedItemPath;
};

class MainForm {
public:
    virtual platform::Ports& Ports() = 0;
    virtual const discovery::SystemFolders& Folders() const = 0;
    virtual discovery::ItemList& List() = 0;        // ListView1
    virtual const TreeState& Tree() const = 0;      // treeAuto
    virtual PublicVar& Shared() = 0;                // publicVar
    virtual void SetTag(const std::string& tag) = 0;

    virtual void Show() = 0;
    virtual void treeAuto_Click() = 0;
    virtual void mnuDisable_Click() = 0;
    virtual void mnuProp_Click() = 0;
    virtual void ShowModal(FrmMove& dialog) = 0;

protected:
    ~MainForm() = default;
};

}  // namespace tessmark::forms

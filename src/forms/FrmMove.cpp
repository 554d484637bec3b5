#include "forms/FrmMove.h"

#include <algorithm>

#include "forms/FrmMenu.h"
#include "catalogue/sections.h"
#include "registry/registry_module.h"
#include "vb/vb.h"

namespace tessmark::forms {

namespace {

namespace key = catalogue::key;
using platform::RegHandle;

constexpr RegHandle HKLM = platform::reg::kLocalMachine;
constexpr RegHandle HKCU = platform::reg::kCurrentUser;

bool IsSource(const std::string& k) {
    static constexpr std::array<std::string_view, 7> kSources = {
        key::kRunExAll,  key::kRunOnceAll,  key::kRunServiceAll,  key::kRunServiceOnceAll,
        key::kRunCurr,   key::kRunOnceCurr, key::kRunServiceCurr};
    return std::find(kSources.begin(), kSources.end(), k) != kSources.end();
}

struct Target {
    std::string_view key;
    RegHandle root;
    std::string_view subKey;
};

// "Run Services" of all users writes into RunOnceEx, and the current user's
// entry is spelt with an "s" that no node's key has, so it is never reached.
constexpr std::array<Target, 7> kTargets = {{
    {key::kRunExAll, HKLM, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run"},
    {key::kRunOnceAll, HKLM, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunOnce"},
    {key::kRunServiceAll, HKLM, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunOnceEx"},
    {key::kRunServiceOnceAll, HKLM, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunServiceOnce"},
    {key::kRunCurr, HKCU, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run"},
    {key::kRunOnceCurr, HKCU, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunOnce"},
    {"runservicescurr", HKCU, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\RunServices"},
}};

// The main tree's picture for a node it also has; the current user's nodes
// look like their all-users twins.
int PictureOf(std::string_view nodeKey) {
    if (nodeKey == key::kRegCurr) nodeKey = key::kRegAll;
    if (nodeKey == key::kRunCurr || nodeKey == key::kRunOnceCurr || nodeKey == key::kRunServiceCurr)
        nodeKey = key::kRunExAll;
    for (const auto& node : catalogue::kMainTree)
        if (node.key == nodeKey) return node.image;
    return 0;
}

}  // namespace

FrmMove::FrmMove(MainForm& main) : SkinnedDialog(main.Ports().ui), main_(main) {}

void FrmMove::Form_Load() {
    Load();
    try {
        lblEntry.Caption = "Selected item: " + main_.List().SelectedItem().Text;
        treeAuto.Nodes.clear();
        for (const auto& node : catalogue::kMoveTree)
            treeAuto.Nodes.push_back(
                {std::string(node.key), std::string(node.caption), std::string(node.parent), PictureOf(node.key), true});
        treeAuto.Select(std::string(key::kMain));
        (void)main_.Tree().SelectedItem();  // its Index is read and dropped
    } catch (const vb::VbError&) {
        ui_.MsgBox("No Application Selected", platform::kMbCritical, "");
        Unload();
    }
}

void FrmMove::cmdCommon_Click(int Index) {
    if (Index == 1) {
        Unload();
        return;
    }
    // Positions in two different trees: equal for unrelated nodes. The next
    // line reaches the unloaded form's tree, which loads it afresh on `main`.
    main_.Tree().SelectedItem();  // error 91 when the main tree has no selection
    if (treeAuto.selected == main_.Tree().selected) {
        Unload();
        Form_Load();
    }
    const std::string target = treeAuto.SelectedItem().Key;
    if (target == key::kRegistry || target == key::kRegCurr || target == key::kRegAll) {
        ui_.MsgBox("Select a target section.", 0, "");
        return;
    }
    for (const Target& entry : kTargets) {
        if (target != entry.key) continue;
        const discovery::ItemRow& row = main_.List().SelectedItem();
        registry::SetRegString(main_.Ports().registry, entry.root, std::string(entry.subKey), row.Text,
                               row.SubItems(1));
    }
    main_.SetTag("DELETESELECTED");
    Unload();
}

// Runs with errors ignored statement by statement. The test is on the number
// of rows, not on a selection; and the mark the dialog leaves is not acted on.
void FrmMenu::mnuMove_Click() {
    platform::UiServices& ui = main_.Ports().ui;
    if (main_.List().Count() == 0) {
        ui.MsgBox("Select an item to move", platform::kMbCritical, "No Item Selected!");
        return;
    }
    std::string source;
    vb::Resume([&] { source = main_.Tree().SelectedItem().Key; });
    if (!IsSource(source)) {
        ui.MsgBox("You are not allowed to move item from this section", platform::kMbCritical, "Invalid Move!!!");
        return;
    }
    FrmMove dialog(main_);
    vb::Resume([&] { main_.ShowModal(dialog); });
}

}  // namespace tessmark::forms

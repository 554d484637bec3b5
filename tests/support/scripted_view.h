#pragma once
// A main view for the model tests: counts what it shows, names the menus it
// pops up, and plays the user's part in a menu or a dialog by a script.
#include <functional>
#include <string>
#include <vector>

#include "forms/FrmEdit.h"
#include "forms/FrmMove.h"
#include "frame/FrmMain2.h"

namespace tessmark::testing {

struct ScriptedView final : frame::MainView {
    int shows = 0;
    std::vector<std::string> popups;  // the menus' names, in order
    std::function<forms::MenuEntry*(const forms::Menu&)> choose;
    std::function<void(forms::FrmMove&)> move;
    std::function<void(forms::FrmEdit&)> edit;

    void Show() override { ++shows; }
    void Refresh() override {}
    forms::MenuEntry* PopupMenu(const forms::Menu& menu) override {
        popups.push_back(menu.Name);
        return choose ? choose(menu) : nullptr;
    }
    void ShowModal(forms::FrmMove& dialog) override { if (move) move(dialog); }
    void ShowModal(forms::FrmEdit& dialog) override { if (edit) edit(dialog); }
};

}  // namespace tessmark::testing

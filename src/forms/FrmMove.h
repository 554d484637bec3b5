#pragma once
// The dialog that copies the selected row of the main list into another Run
// section's key. It is a move in name only: the source value stays.
#include <array>
#include <string>

#include "forms/SkinnedDialog.h"
#include "forms/Controls.h"
#include "forms/MainForm.h"

namespace tessmark::forms {

class FrmMove : public SkinnedDialog {
public:
    explicit FrmMove(MainForm& main);

    const std::string Caption = "Move";
    TreeState treeAuto;  // its own tree, not the main form's
    LabelState lblEntry;
    const std::array<std::string, 2> cmdCommon = {"&Ok", "&Cancel"};
    static constexpr const char* kHeading = "Move Selected Item to:";
    static constexpr const char* kExplanation =
        "Select which section you want to move the item to. This determines when the chosen program starts.";

    void Form_Load();
    void cmdCommon_Click(int Index);

private:
    MainForm& main_;
};

}  // namespace tessmark::forms

#pragma once
// The dialog that shows the selected row's section, name and path and lets the
// user change the two texts. It hands them back in two global texts, which the
// caller drops: an edit changes nothing anywhere.
#include <array>
#include <string>

#include "forms/SkinnedDialog.h"
#include "forms/Controls.h"
#include "forms/MainForm.h"

namespace tessmark::forms {

struct TextBoxState {
    std::string Text;
    bool Enabled = true;
    bool Locked = false;
};

class FrmEdit : public SkinnedDialog {
public:
    explicit FrmEdit(MainForm& main);

    const std::string Caption = "Edit Properties";
    TextBoxState txtName, txtPath;
    LabelState lblSection;
    bool cmdChangeEnabled = true;
    const std::array<std::string, 2> Command1 = {"&Ok", "&Cancel"};
    static constexpr const char* kHint = "Modify application title or executable location.";
    static constexpr const char* kFilter = "Executable Files(*.Exe)|*.exe|";

    // Touching a control loads the form.
    void Form_Load() { Load(); }
    void cmdChange_Click();
    void Command1_Click(int Index);

private:
    MainForm& main_;
};

}  // namespace tessmark::forms

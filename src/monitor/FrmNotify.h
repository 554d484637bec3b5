#pragma once
// The change notification: one small modeless window per reported change. Its
// labels are at once its display and its data: the pass writes them by name,
// and the buttons read the change back from them.
#include <array>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "discovery/ScanContext.h"
#include "forms/SkinnedDialog.h"
#include "monitor/MonitorRows.h"
#include "operations/ItemOperations.h"
#include "registry/AdvRegistryAccess.h"

namespace tessmark::monitor {

struct NotifyButton {
    std::string Caption;
    bool Enabled = true;
};

// What the dialog's operations work on: the main form's scan state and item
// operations, and the monitor's rows.
struct NotifyContext {
    discovery::ScanContext& form;
    operations::ItemOperations& ops;
    publicVar& rows;
};

class NotifyForms;

class FrmNotify : public forms::SkinnedDialog {
public:
    // A form is loaded from its creation until it unloads.
    FrmNotify(NotifyContext context, NotifyForms& forms)
        : SkinnedDialog(context.form.ports.ui), context_(context), forms_(forms) {
        Load();
    }
    FrmNotify(const FrmNotify&) = delete;
    FrmNotify& operator=(const FrmNotify&) = delete;

    // ---- controls
    std::string LblName, LblMsg, LblPath, LblSection, LblDescription;
    std::string LblChange, LblKey, LblNewSection;  // below the bottom edge: hidden fields
    NotifyButton CmdDisable{"Mark as Disabled"};
    NotifyButton CmdAllow{"Allow this change"};
    NotifyButton CmdDiscard{"Discard the change"};
    bool Visible = false;

    // Late binding: a label's Caption or a button by its name; error 438 for
    // a name the form lacks.
    std::string& Label(std::string_view name);
    NotifyButton& Button(std::string_view name);
    // The button Tab (back: Shift+Tab) moves the focus to from the named one:
    // the next enabled one in tab order, round the end; from none, the first
    // (back: the last). Empty when no button is enabled.
    std::string_view NextButton(std::string_view from, bool back) const;

    void Show();  // modeless
    void Unload() override;

    // ---- events; none traps an error
    void CmdAllow_Click() { Unload(); }
    void CmdDiscard_Click();
    void CmdDisable_Click();  // leaves the dialog standing
    // None of its own: the Close button stays lit once the mouse has been on it.
    void Form_MouseMove() override {}

    // ---- the undoing of a change, one per change code
    void ReEnableItem();
    void DeleteAgain();
    void RevertItem();
    void MoveBack();

    // Cut from the labels when a button is clicked.
    std::string ChangePath, ChangeArgument, ChangeSection;

private:
    void FillMembers();
    // The third argument and the number of MarkDisable and MarkEnable for ChangeSection.
    void ItemArguments(std::string& itemPath, std::int32_t& itemValue);
    void PatchValues(const std::string& values);
    registry::AdvRegistryAccess& objReg();

    NotifyContext context_;
    NotifyForms& forms_;
    std::unique_ptr<registry::AdvRegistryAccess> objReg_;
};

// Every instance the passes made, in order of creation. Forms stay until
// the next pass makes a new one after they were unloaded.
class NotifyForms {
public:
    explicit NotifyForms(NotifyContext context) : context_(context) {}

    FrmNotify& New();
    // The loaded forms, oldest first.
    std::vector<FrmNotify*> Loaded() const;

    // The view's hooks: a form was shown, a form was unloaded.
    std::function<void(FrmNotify&)> shown = [](FrmNotify&) {};
    std::function<void(FrmNotify&)> unloaded = [](FrmNotify&) {};

private:
    NotifyContext context_;
    std::vector<std::unique_ptr<FrmNotify>> forms_;
};

// ---- the form's design, in twips, for the view

enum class NotifyFont { Default, Arial, Tahoma };

struct NotifyControl {
    std::string_view name;
    bool button;
    int left, top, width, height;
    NotifyFont font;
};

inline constexpr int kNotifyWidth = 6000, kNotifyHeight = 3570;  // twips
inline constexpr int kNotifyBackgroundWidth = 398, kNotifyBackgroundHeight = 237;  // pixels
inline constexpr int kNotifyPanelWidth = 384, kNotifyPanelHeight = 166;  // Image2, pixels
inline constexpr int kNotifyCloseWidth = 43, kNotifyCloseHeight = 17;  // pixels

// In tab order for the buttons; the last three labels lie below the bottom edge.
inline constexpr std::array<NotifyControl, 11> kNotifyControls = {{
    {"LblName", false, 1440, 480, 4215, 255, NotifyFont::Arial},
    {"LblMsg", false, 1440, 810, 4455, 615, NotifyFont::Default},
    {"LblPath", false, 360, 1500, 5415, 615, NotifyFont::Default},
    {"LblSection", false, 360, 2130, 3135, 615, NotifyFont::Default},
    {"LblDescription", false, 360, 2760, 3135, 615, NotifyFont::Tahoma},
    {"CmdDisable", true, 3600, 2160, 2175, 375, NotifyFont::Tahoma},
    {"CmdAllow", true, 3600, 2580, 2175, 375, NotifyFont::Tahoma},
    {"CmdDiscard", true, 3600, 3000, 2175, 375, NotifyFont::Tahoma},
    {"LblChange", false, 240, 3840, 6015, 495, NotifyFont::Default},
    {"LblKey", false, 360, 4680, 6015, 495, NotifyFont::Default},
    {"LblNewSection", false, 360, 5520, 6015, 855, NotifyFont::Default},
}};

}  // namespace tessmark::monitor

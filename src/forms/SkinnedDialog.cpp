#include "forms/SkinnedDialog.h"

#include "storage/modStartup.h"

namespace tessmark::forms {

namespace {
constexpr int kLeftButton = 1;
constexpr int kCaptionStripTwips = 375;
}  // namespace

void SkinnedDialog::CmdClose_MouseDown(int button) {
    if (button == kLeftButton) CmdClosePicture = "CLOSE_DOWN";
}

void SkinnedDialog::CmdClose_MouseMove() {
    if (HotControl == "CmdClose") return;
    CmdClosePicture = "close_normal";
    HotControl = "CmdClose";
    CmdClosePicture = "close_hover";
}

// Only which button went up counts, not where.
void SkinnedDialog::CmdClose_MouseUp(int button) {
    if (button != kLeftButton) return;
    CmdClosePicture = "close_normal";
    Unload();
}

void SkinnedDialog::Form_MouseMove() {
    if (HotControl == "Form_MouseMove") return;
    ResetCaptionButtons();
    HotControl = "Form_MouseMove";
}

void DragByCaption(platform::UiServices& ui, platform::WindowHandle window, int y) {
    if (y < kCaptionStripTwips) storage::DragForm(ui, window);
}

void SkinnedDialog::Form_MouseDown(int, int y) { DragByCaption(ui_, hWnd, y); }

}  // namespace tessmark::forms

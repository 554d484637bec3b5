#pragma once
// What the caption-less dialogs share: the painted caption strip that drags the
// window, the Close button with its three bitmaps, and being loaded or not.
#include <string>

#include "platform/ui_services.h"

namespace tessmark::forms {

// Form_MouseDown of every skinned form, with any button: a press in the
// caption strip (y in twips) drags the window.
void DragByCaption(platform::UiServices& ui, platform::WindowHandle window, int y);

class SkinnedDialog {
public:
    explicit SkinnedDialog(platform::UiServices& ui) : ui_(ui) {}
    virtual ~SkinnedDialog() = default;

    // Loaded: a view shows the dialog modally for as long as this holds.
    bool Loaded() const { return loaded_; }
    virtual void Unload() { loaded_ = false; }

    // Mouse buttons as flags: 1 left, 2 right, 4 middle; y in twips.
    void ResetCaptionButtons() { CmdClosePicture = "close_normal"; }
    void CmdClose_MouseDown(int button);
    void CmdClose_MouseMove();
    void CmdClose_MouseUp(int button);
    virtual void Form_MouseMove();
    void Form_MouseDown(int button, int y);

    std::string CmdClosePicture = "close_normal";  // the resource name of the bitmap it shows
    std::string HotControl;
    platform::WindowHandle hWnd = 0;

protected:
    void Load() { loaded_ = true; }
    platform::UiServices& ui_;

private:
    bool loaded_ = false;
};

}  // namespace tessmark::forms

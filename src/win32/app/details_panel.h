#pragma once
// picDetails on the screen: the last clicked item's icon, name and version,
// company, section and description, and its enabled or disabled mark.
#include <windows.h>

#include "frame/FrmMain2.h"
#include "win32/app/box.h"
#include "win32/app/handles.h"

namespace tessmark::app {

class DetailsPanel {
public:
    DetailsPanel(HWND parent, HBRUSH background, HFONT font, HFONT bold);

    HWND hwnd() const { return panel_.hwnd(); }
    void Sync(const frame::FrmMain2& form);
    // Keeps the marks at the panel's right edge.
    void Arrange();

private:
    Box panel_;
    Box picIcon_;
    Box imgCheck_;
    Box imgNoCheck_;
    HWND lblNameVer_, lblCompanyName_, LblSection_, LblDescription_;
    OwnedIcon check_, noCheck_;
    OwnedIcon icon_;  // what picIcon shows
    bool showingIcon_ = false;
    discovery::IconImage iconImage_;
};

}  // namespace tessmark::app

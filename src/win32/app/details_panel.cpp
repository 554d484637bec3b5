#include "win32/app/details_panel.h"

#include "win32/app/control_ids.h"
#include "win32/app/controls.h"
#include "win32/app/icons.h"

namespace tessmark::app {

namespace {

constexpr int kMarkSize = 48;
constexpr int kMarkMargin = 12;
constexpr int kCheckResource = 301;
constexpr int kNoCheckResource = 302;

Box::Painter DrawIcon(const OwnedIcon& icon) {
    return [&icon](HDC dc, const RECT&) {
        if (icon) DrawIconEx(dc, 0, 0, icon.get(), 0, 0, 0, nullptr, DI_NORMAL);
    };
}

HWND Label(HWND parent, int id, const Twips& box, HFONT font, DWORD style) {
    return Control(parent, "STATIC", id, style, font, box.Pixels());
}

}  // namespace

DetailsPanel::DetailsPanel(HWND parent, HBRUSH background, HFONT font, HFONT bold)
    : panel_(parent, id::picDetails, background, nullptr, WS_EX_STATICEDGE),
      picIcon_(panel_.hwnd(), id::picIcon, background),
      imgCheck_(panel_.hwnd(), id::imgCheck, background),
      imgNoCheck_(panel_.hwnd(), id::imgNoCheck, background),
      lblNameVer_(Label(panel_.hwnd(), id::lblNameVer, {1275, 30, 3885, 195}, bold, SS_LEFTNOWORDWRAP)),
      lblCompanyName_(Label(panel_.hwnd(), id::lblCompanyName, {1275, 340, 3885, 195}, font, SS_LEFTNOWORDWRAP)),
      LblSection_(Label(panel_.hwnd(), id::LblSection, {1275, 650, 3885, 195}, font, SS_LEFTNOWORDWRAP)),
      LblDescription_(Label(panel_.hwnd(), id::LblDescription, {1275, 960, 3885, 615}, font, SS_LEFT)),
      check_(IconOf({0, kCheckResource, false}, kMarkSize)),
      noCheck_(IconOf({0, kNoCheckResource, false}, kMarkSize)) {
    Place(picIcon_.hwnd(), Twips{120, 120, 960, 840}.Pixels());
    picIcon_.onPaint = DrawIcon(icon_);
    imgCheck_.onPaint = DrawIcon(check_);
    imgNoCheck_.onPaint = DrawIcon(noCheck_);
    ShowWindow(imgCheck_.hwnd(), SW_HIDE);
    ShowWindow(imgNoCheck_.hwnd(), SW_HIDE);
    panel_.onResize = [this] { Arrange(); };
}

void DetailsPanel::Arrange() {
    RECT client;
    GetClientRect(panel_.hwnd(), &client);
    // Both marks share one place, at the right edge, clear of the file's icon.
    const int left = client.right - kMarkSize - kMarkMargin;
    const RECT mark{left, kMarkMargin - 2, left + kMarkSize, kMarkMargin - 2 + kMarkSize};
    Place(imgCheck_.hwnd(), mark);
    Place(imgNoCheck_.hwnd(), mark);
}

void DetailsPanel::Sync(const frame::FrmMain2& form) {
    SetText(lblNameVer_, form.lblNameVer.Caption);
    SetText(lblCompanyName_, form.lblCompanyName.Caption);
    SetText(LblSection_, form.LblSection.Caption);
    SetText(LblDescription_, form.LblDescription.Caption);

    const discovery::PictureBox& picture = form.picIcon;
    if (picture.hasPicture != showingIcon_ || (picture.hasPicture && !(picture.picture == iconImage_))) {
        icon_ = picture.hasPicture ? IconOf(picture.picture, 32) : nullptr;
        showingIcon_ = picture.hasPicture;
        iconImage_ = picture.picture;
        InvalidateRect(picIcon_.hwnd(), nullptr, TRUE);
    }
    RECT shown;
    GetWindowRect(picIcon_.hwnd(), &shown);
    const RECT wanted = Twips{120, 120, picture.Width, picture.Height}.Pixels();
    if (shown.right - shown.left != wanted.right - wanted.left || shown.bottom - shown.top != wanted.bottom - wanted.top)
        Place(picIcon_.hwnd(), wanted);

    ShowIf(imgCheck_.hwnd(), form.imgCheckVisible);
    ShowIf(imgNoCheck_.hwnd(), form.imgNoCheckVisible);
}

}  // namespace tessmark::app

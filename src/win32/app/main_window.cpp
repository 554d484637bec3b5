#include "win32/app/main_window.h"

#include <algorithm>

#include "forms/FrmEdit.h"
#include "forms/FrmMove.h"
#include "win32/app/control_ids.h"
#include "win32/app/controls.h"
#include "win32/app/dialog_windows.h"
#include "win32/app/icons.h"
#include "win32/app/view_proc.h"

namespace tessmark::app {

namespace {

constexpr int kWidth = 735;
constexpr int kHeight = 551;
constexpr int kMargin = 8;
constexpr int kContentTop = kCaptionStrip + 7;
constexpr int kContentBottom = 514;
constexpr int kBar = 5;  // a divider's thickness
constexpr int kMinPane = 60;
constexpr int kDetailsHeight = 112;
constexpr WORD kProgramIcon = 101;

constexpr Twips kCommand1{8415, 7830, 1230, 375};
constexpr Twips kBtnClose{9720, 7830, 1185, 375};
constexpr RECT kCmdMinimise{kWidth - 6 - 43 - 2 - 26, 4, kWidth - 6 - 43 - 2, 21};
constexpr RECT kCmdClose{kWidth - 6 - 43, 4, kWidth - 6, 21};
constexpr RECT kTotal{kMargin, 527, kMargin + 160, 541};
constexpr RECT kActive{kMargin + 170, 527, kMargin + 330, 541};

// A click on the tree is handled once the tree has finished with it, so that
// the click acts on the node it selected.
constexpr UINT kTreeClicked = WM_APP + 1;

constexpr COLORREF kBarColour = RGB(0xC8, 0xD3, 0xE2);

}  // namespace

MainWindow::MainWindow(HINSTANCE instance, frame::FrmMain2& form, platform::UiServices& ui)
    : form_(form),
      ui_(ui),
      font_(Tahoma(11, FW_NORMAL)),
      bold_(Tahoma(11, FW_BOLD)),
      captionFont_(Tahoma(12, FW_BOLD)),
      body_(CreateSolidBrush(kBodyColour)),
      white_(CreateSolidBrush(RGB(0xFF, 0xFF, 0xFF))),
      bar_(CreateSolidBrush(kBarColour)),
      smallIcon_(IconOf({0, kProgramIcon, false}, 16)),
      treeWidth_(200),
      detailsTop_(kContentBottom - kDetailsHeight - kBar) {
    INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_TREEVIEW_CLASSES | ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&controls);

    WNDCLASSEXA cls = {};
    cls.cbSize = sizeof cls;
    cls.lpfnWndProc = ViewProc<MainWindow>;
    cls.hInstance = instance;
    cls.hIcon = LoadIconA(instance, MAKEINTRESOURCEA(kProgramIcon));
    cls.hIconSm = smallIcon_.get();
    cls.hCursor = LoadCursor(nullptr, IDC_ARROW);
    cls.lpszClassName = id::kMainWindowClass;
    RegisterClassExA(&cls);
    const int left = std::max(0, (GetSystemMetrics(SM_CXSCREEN) - kWidth) / 2);
    const int top = std::max(0, (GetSystemMetrics(SM_CYSCREEN) - kHeight) / 2);
    // No system caption: the window paints its own frame and plays its own caption buttons.
    CreateWindowExA(WS_EX_APPWINDOW, id::kMainWindowClass, form_.Caption.c_str(),
                    WS_POPUP | WS_CLIPCHILDREN | WS_SYSMENU | WS_MINIMIZEBOX, left, top, kWidth, kHeight, nullptr,
                    nullptr, instance, this);
    form_.hWnd = reinterpret_cast<platform::WindowHandle>(window_);
    CreateControls();
    Arrange();
    ready_ = true;
}

MainWindow::~MainWindow() {
    if (window_ == nullptr) return;
    SetWindowLongPtrA(window_, GWLP_USERDATA, 0);
    DestroyWindow(window_);
}

void MainWindow::CreateControls() {
    treeAuto_ = std::make_unique<SectionTreeView>(window_, id::treeAuto, font_.get());
    treeAuto_->onKeyPress = [this](int keyAscii) { Fire([&] { form_.treeAuto_KeyPress(keyAscii); }); };
    Splitter1_ = std::make_unique<Splitter>(window_, id::Splitter1, Splitter::Axis::Horizontal, bar_.get(), [this](int x) {
        treeWidth_ = std::clamp(x - kMargin, kMinPane, kWidth - 2 * kMargin - kBar - 4 * kMinPane);
        Arrange();
    });
    Splitter2_ = std::make_unique<Splitter>(window_, id::Splitter2, Splitter::Axis::Vertical, bar_.get(), [this](int y) {
        detailsTop_ = std::clamp(y, kContentTop + kMinPane, kContentBottom - kBar - kMinPane);
        Arrange();
    });

    Picture3_ = std::make_unique<Box>(window_, id::Picture3, white_.get());
    ListView1_ = std::make_unique<ItemListView>(Picture3_->hwnd(), id::ListView1, font_.get());
    lblwait_ = Control(Picture3_->hwnd(), "STATIC", id::lblwait, SS_CENTER | SS_CENTERIMAGE, bold_.get(), {},
                       form_.lblwait.Caption.c_str());
    ShowWindow(lblwait_, SW_HIDE);
    Picture3_->onResize = [this] { Picture3_Resize(); };
    // The popup is asked for while the button is still down, so its command
    // caption follows the row selected before the click.
    ListView1_->onRightDown = [this](POINT at) {
        Fire([&] { form_.ListView1_MouseDown(2, 0, at.x * kTwipsPerPixel, at.y * kTwipsPerPixel); });
    };

    picDetails_ = std::make_unique<DetailsPanel>(window_, white_.get(), font_.get(), bold_.get());
    lbltotalitem_ = Control(window_, "STATIC", id::lbltotalitem, SS_LEFTNOWORDWRAP, font_.get(), kTotal,
                            form_.lbltotalitem.Caption.c_str());
    lblactiveitem_ = Control(window_, "STATIC", id::lblactiveitem, SS_LEFTNOWORDWRAP, font_.get(), kActive,
                             form_.lblactiveitem.Caption.c_str());
    Control(window_, "BUTTON", id::Command1, WS_TABSTOP | BS_PUSHBUTTON, font_.get(), kCommand1.Pixels(), "About");
    Control(window_, "BUTTON", id::BtnClose, WS_TABSTOP | BS_PUSHBUTTON, font_.get(), kBtnClose.Pixels(), "Close");

    using F = frame::FrmMain2;
    CmdClose_ = MakeCaptionButton(id::CmdClose, {&F::CmdClose_MouseDown, &F::CmdClose_MouseMove, &F::CmdClose_MouseUp});
    CmdMinimise_ = MakeCaptionButton(id::CmdMinimise,
                                     {&F::CmdMinimise_MouseDown, &F::CmdMinimise_MouseMove, &F::CmdMinimise_MouseUp});
    Place(CmdClose_->hwnd(), kCmdClose);
    Place(CmdMinimise_->hwnd(), kCmdMinimise);
    SyncChrome();
}

std::unique_ptr<CaptionButton> MainWindow::MakeCaptionButton(int id, CaptionHandlers handlers) {
    return std::make_unique<CaptionButton>(
        window_, id, body_.get(),
        CaptionButton::Handlers{[this, handlers](int button) { FireChrome([&] { (form_.*handlers.down)(button); }); },
                                [this, handlers] { FireChrome([&] { (form_.*handlers.move)(); }); },
                                [this, handlers](int button) { FireChrome([&] { (form_.*handlers.up)(button); }); }});
}

void MainWindow::SyncChrome() {
    CmdClose_->Sync(form_.CmdClosePicture);
    CmdMinimise_->Sync(form_.CmdMinimisePicture);
    if (form_.WindowState == 1 && !IsIconic(window_)) ShowWindow(window_, SW_MINIMIZE);
}

void MainWindow::Show() {
    Refresh();
    if (!IsWindowVisible(window_)) ShowWindow(window_, SW_SHOW);
    UpdateWindow(window_);
}

void MainWindow::Refresh() {
    treeAuto_->Sync(form_.treeAuto);
    ListView1_->Sync(form_.ListView1, form_.imgListIcons);
    SetText(lblwait_, form_.lblwait.Caption);
    ShowIf(lblwait_, form_.lblwait.Visible);
    SetText(lbltotalitem_, form_.lbltotalitem.Caption);
    SetText(lblactiveitem_, form_.lblactiveitem.Caption);
    picDetails_->Sync(form_);
    SyncChrome();
    // The form asks once for the list to take the focus.
    if (form_.listHasFocus) {
        form_.listHasFocus = false;
        SetFocus(ListView1_->hwnd());
    }
}

void MainWindow::Arrange() {
    const int splitter1 = kMargin + treeWidth_;
    const int right = splitter1 + kBar;
    const int rightEdge = kWidth - kMargin;
    Place(treeAuto_->hwnd(), {kMargin, kContentTop, splitter1, kContentBottom});
    Place(Splitter1_->hwnd(), {splitter1, kContentTop, right, kContentBottom});
    Place(Picture3_->hwnd(), {right, kContentTop, rightEdge, detailsTop_});
    Place(Splitter2_->hwnd(), {right, detailsTop_, rightEdge, detailsTop_ + kBar});
    Place(picDetails_->hwnd(), {right, detailsTop_ + kBar, rightEdge, kContentBottom});
}

// The list lies over Picture3 and follows it.
void MainWindow::Picture3_Resize() {
    RECT area;
    GetClientRect(Picture3_->hwnd(), &area);
    Place(ListView1_->hwnd(), area);
    Place(lblwait_, area);
}

void MainWindow::Paint(HDC dc) { PaintSkin(window_, dc, smallIcon_.get(), captionFont_.get(), form_.Caption); }

LRESULT MainWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    if (FormMouse(window_, message, lParam,
                  [this](int button, int y) { FireChrome([&] { form_.Form_MouseDown(button, y); }); },
                  [this] { FireChrome([&] { form_.Form_MouseMove(); }); }))
        return 0;
    switch (message) {
    case WM_ERASEBKGND:
        return 1;
    case WM_PAINT: {
        PAINTSTRUCT paint;
        Paint(BeginPaint(window_, &paint));
        EndPaint(window_, &paint);
        return 0;
    }
    case WM_CTLCOLORSTATIC:
        SetBkMode(reinterpret_cast<HDC>(wParam), TRANSPARENT);
        return reinterpret_cast<LRESULT>(body_.get());
    case WM_SIZE:
        if (wParam == SIZE_MINIMIZED || wParam == SIZE_RESTORED) form_.WindowState = wParam == SIZE_MINIMIZED ? 1 : 0;
        FireChrome([&] { form_.Form_Resize(); });
        return 0;
    case WM_SETCURSOR:
        // The hourglass holds while the form says so, whatever the mouse does.
        if (ui_.MousePointer() == platform::kMousePointerHourglass) {
            SetCursor(LoadCursor(nullptr, IDC_WAIT));
            return TRUE;
        }
        if (reinterpret_cast<HWND>(wParam) != window_) return FALSE;  // the child under the pointer chooses
        break;
    case WM_NOTIFY:
        return Notify(*reinterpret_cast<NMHDR*>(lParam));
    case WM_COMMAND:
        if (HIWORD(wParam) == BN_CLICKED && LOWORD(wParam) == id::Command1) Fire([&] { form_.Command1_Click(); });
        if (HIWORD(wParam) == BN_CLICKED && LOWORD(wParam) == id::BtnClose) Fire([&] { form_.BtnClose_Click(); });
        return 0;
    case kTreeClicked:
        Fire([&] { form_.treeAuto_Click(); });
        return 0;
    case WM_CLOSE:
        // Closed from outside (the task bar, Alt+F4): unloaded like the Close button, then the end.
        Fire([&] { form_.Unload(); });
        ui_.EndProcess(0);
        return 0;
    case WM_DESTROY:
        PostQuitMessage(0);
        return 0;
    default:
        break;
    }
    return DefWindowProcA(window_, message, wParam, lParam);
}

// The list's check-box event: the mark flips first, then the form acts on it.
void MainWindow::CheckRow(long row) {
    discovery::ItemRow& item = form_.ListView1(row);
    item.Checked = !item.Checked;
    form_.ListView1_ItemCheck(item);
}

// One of the menu form's menus at the pointer, drawn as the model holds it.
forms::MenuEntry* MainWindow::PopupMenu(const forms::Menu& menu) {
    HMENU popup = CreatePopupMenu();
    for (std::size_t i = 0; i < menu.Entries.size(); ++i) {
        const forms::MenuEntry& entry = *menu.Entries[i];
        if (entry.IsSeparator()) {
            AppendMenuA(popup, MF_SEPARATOR, 0, nullptr);
            continue;
        }
        const std::string text = entry.Shortcut.empty() ? entry.Caption : entry.Caption + "\t" + entry.Shortcut;
        AppendMenuA(popup, MF_STRING | (entry.Checked ? MF_CHECKED : 0), i + 1, text.c_str());
    }
    POINT at;
    GetCursorPos(&at);
    SetForegroundWindow(window_);
    const UINT chosen = TrackPopupMenu(popup, TPM_RETURNCMD | TPM_RIGHTBUTTON, at.x, at.y, 0, window_, nullptr);
    DestroyMenu(popup);
    return chosen >= 1 && chosen <= menu.Entries.size() ? menu.Entries[chosen - 1] : nullptr;
}

void MainWindow::ShowModal(forms::FrmMove& dialog) {
    MoveDialog window(window_, dialog, ui_);
    window.RunModal();
}

void MainWindow::ShowModal(forms::FrmEdit& dialog) {
    EditDialog window(window_, dialog, ui_);
    window.RunModal();
}

LRESULT MainWindow::Notify(NMHDR& header) {
    if (header.idFrom == id::treeAuto) {
        switch (header.code) {
        case TVN_SELCHANGEDA:
        case TVN_SELCHANGEDW:
            // The form's tree follows the user's choice; only a click or a key press fills the list.
            if (long node = treeAuto_->SelectedByUser(reinterpret_cast<const NMTREEVIEWA&>(header)); node >= 0)
                form_.treeAuto.selected = node;
            break;
        case NM_CLICK:
            PostMessageA(window_, kTreeClicked, 0, 0);
            break;
        case NM_CUSTOMDRAW:
            return treeAuto_->CustomDraw(reinterpret_cast<NMTVCUSTOMDRAW&>(header));
        default:
            break;
        }
    } else if (header.idFrom == id::ListView1) {
        switch (header.code) {
        case LVN_GETDISPINFOA:
            ListView1_->FillDisplayInfo(reinterpret_cast<NMLVDISPINFOA&>(header), form_.ListView1);
            break;
        case LVN_ITEMCHANGED:
            if (long row = ListView1_->SelectedByUser(reinterpret_cast<const NMLISTVIEW&>(header), form_.ListView1))
                form_.ListView1.Select(form_.ListView1(row));
            break;
        case NM_CLICK: {
            // A press on a row's check box flips it and checks the item in or out.
            const long row = ListView1_->CheckBoxAt(reinterpret_cast<const NMITEMACTIVATE&>(header));
            if (row > 0) {
                Fire([&] { CheckRow(row); });
            } else {
                Fire([&] { form_.ListView1_Click(); });
            }
            break;
        }
        case NM_DBLCLK:
            Fire([&] { form_.ListView1_DblClick(); });
            break;
        case LVN_KEYDOWN: {
            const WORD key = reinterpret_cast<const NMLVKEYDOWN&>(header).wVKey;
            if (key == VK_SPACE) {
                // The check box's own key: like a click on the selected row's box; nothing without a selection.
                Fire([&] {
                    if (form_.ListView1.HasSelection())
                        CheckRow(form_.ListView1.IndexOf(form_.ListView1.SelectedItem()));
                });
            } else {
                Fire([&] { form_.ListView1_KeyDown(key, 0); });
            }
            break;
        }
        case LVN_COLUMNCLICK:
            Fire([&] { form_.ListView1_ColumnClick(reinterpret_cast<const NMLISTVIEW&>(header).iSubItem + 1); });
            break;
        case NM_CUSTOMDRAW:
            return ListView1_->CustomDraw(reinterpret_cast<NMLVCUSTOMDRAW&>(header));
        default:
            break;
        }
    }
    return 0;
}

}  // namespace tessmark::app

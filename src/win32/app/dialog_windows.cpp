#include "win32/app/dialog_windows.h"

#include <algorithm>
#include <vector>

#include "win32/app/control_ids.h"
#include "win32/app/controls.h"
#include "win32/app/icons.h"
#include "win32/app/view_proc.h"

namespace tessmark::app {

namespace {

constexpr WORD kProgramIcon = 101;
constexpr int kCloseWidth = 43, kCloseHeight = 17;

std::string TextOf(HWND control) {
    std::vector<char> text(static_cast<std::size_t>(GetWindowTextLengthA(control)) + 1);
    GetWindowTextA(control, text.data(), static_cast<int>(text.size()));
    return text.data();
}

void Enable(HWND control, bool enabled) {
    if ((IsWindowEnabled(control) != FALSE) != enabled) EnableWindow(control, enabled);
}

BOOL CALLBACK CollectTakingInput(HWND window, LPARAM found) {
    if (IsWindowVisible(window) && IsWindowEnabled(window))
        reinterpret_cast<std::vector<HWND>*>(found)->push_back(window);
    return TRUE;
}

}  // namespace

DialogWindow::DialogWindow(HWND owner, forms::SkinnedDialog& model, platform::UiServices& ui,
                           const std::string& caption, SIZE size)
    : font_(Tahoma(11, FW_NORMAL)),
      bold_(Tahoma(11, FW_BOLD)),
      captionFont_(Tahoma(12, FW_BOLD)),
      body_(CreateSolidBrush(kBodyColour)),
      model_(model),
      ui_(ui),
      caption_(caption),
      icon_(IconOf({0, kProgramIcon, false}, 16)) {
    HINSTANCE instance = GetModuleHandleA(nullptr);
    WNDCLASSA existing = {};
    if (!GetClassInfoA(instance, id::kDialogClass, &existing)) {
        WNDCLASSA cls = {};
        cls.lpfnWndProc = ViewProc<DialogWindow>;
        cls.hInstance = instance;
        cls.hCursor = LoadCursor(nullptr, IDC_ARROW);
        cls.lpszClassName = id::kDialogClass;
        RegisterClassA(&cls);
    }
    RECT over;
    GetWindowRect(owner, &over);
    const int left = std::max(0L, (over.left + over.right - size.cx) / 2);
    const int top = std::max(0L, (over.top + over.bottom - size.cy) / 2);
    CreateWindowExA(0, id::kDialogClass, caption.c_str(), WS_POPUP | WS_CLIPCHILDREN, left, top,
                    size.cx, size.cy, owner, nullptr, instance, this);
    model_.hWnd = reinterpret_cast<platform::WindowHandle>(window_);
    auto fire = [this](auto handler) { return [this, handler](auto... button) { Fire([&] { (model_.*handler)(button...); }); }; };
    CmdClose_ = std::make_unique<CaptionButton>(
        window_, id::dialogCmdClose, body_.get(),
        CaptionButton::Handlers{fire(&forms::SkinnedDialog::CmdClose_MouseDown),
                                fire(&forms::SkinnedDialog::CmdClose_MouseMove),
                                fire(&forms::SkinnedDialog::CmdClose_MouseUp)});
    RECT client;
    GetClientRect(window_, &client);
    Place(CmdClose_->hwnd(), {client.right - 6 - kCloseWidth, 4, client.right - 6, 4 + kCloseHeight});
}

DialogWindow::~DialogWindow() {
    if (window_ == nullptr) return;
    SetWindowLongPtrA(window_, GWLP_USERDATA, 0);
    DestroyWindow(window_);
}

HWND DialogWindow::Label(int id, const char* text, const RECT& bounds, bool bold) {
    return Control(window_, "STATIC", id, SS_LEFT | SS_NOPREFIX, bold ? bold_.get() : font_.get(), bounds, text);
}

HWND DialogWindow::Button(int id, const char* text, const RECT& bounds) {
    return Control(window_, "BUTTON", id, WS_TABSTOP | BS_PUSHBUTTON, font_.get(), bounds, text);
}

void DialogWindow::SyncAll() {
    CmdClose_->Sync(model_.CmdClosePicture);
    Sync();
}

void DialogWindow::RunModal() {
    ready_ = true;
    SyncAll();
    // Modal to the whole program: the main window, open notifications and any
    // other window of the thread take no input until the dialog unloads.
    std::vector<HWND> others;
    EnumThreadWindows(GetCurrentThreadId(), CollectTakingInput, reinterpret_cast<LPARAM>(&others));
    for (HWND other : others) EnableWindow(other, FALSE);
    ShowWindow(window_, SW_SHOW);
    SetForegroundWindow(window_);
    MSG msg = {};
    while (model_.Loaded()) {
        const BOOL got = GetMessageA(&msg, nullptr, 0, 0);
        if (got <= 0) {
            PostQuitMessage(static_cast<int>(msg.wParam));
            break;
        }
        if (IsDialogMessageA(window_, &msg)) continue;
        TranslateMessage(&msg);
        DispatchMessageA(&msg);
    }
    // The others come back before the dialog goes, so that the owner takes the activation.
    for (HWND other : others)
        if (IsWindow(other)) EnableWindow(other, TRUE);
    ShowWindow(window_, SW_HIDE);
    ready_ = false;
}

LRESULT DialogWindow::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
    if (FormMouse(
            window_, message, lParam, [this](int button, int y) { Fire([&] { model_.Form_MouseDown(button, y); }); },
            [this] { Fire([&] { model_.Form_MouseMove(); }); }))
        return 0;
    switch (message) {
    case WM_ERASEBKGND:
        return 1;
    case WM_PAINT: {
        PAINTSTRUCT paint;
        PaintSkin(window_, BeginPaint(window_, &paint), icon_.get(), captionFont_.get(), caption_);
        EndPaint(window_, &paint);
        return 0;
    }
    case WM_CTLCOLORSTATIC: {
        // A locked or disabled text box keeps the system's look.
        const int control = GetDlgCtrlID(reinterpret_cast<HWND>(lParam));
        if (control == id::txtName || control == id::txtPath) break;
        SetBkMode(reinterpret_cast<HDC>(wParam), TRANSPARENT);
        return reinterpret_cast<LRESULT>(body_.get());
    }
    case WM_COMMAND:
        // Enter and Escape arrive as IDOK and IDCANCEL: the buttons have neither role.
        if (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL) Command(LOWORD(wParam), HIWORD(wParam));
        return 0;
    case WM_NOTIFY:
        Notify(*reinterpret_cast<NMHDR*>(lParam));
        return 0;
    case WM_CLOSE:
        Fire([&] { model_.Unload(); });
        return 0;
    default:
        break;
    }
    return DefWindowProcA(window_, message, wParam, lParam);
}

// ---- Move -------------------------------------------------------------------------

MoveDialog::MoveDialog(HWND owner, forms::FrmMove& form, platform::UiServices& ui)
    : DialogWindow(owner, form, ui, form.Caption, {340, 420}), form_(form) {
    Label(0, forms::FrmMove::kHeading, {12, 34, 328, 50}, true);
    Label(0, forms::FrmMove::kExplanation, {12, 52, 328, 80});
    lblEntry_ = Label(id::lblEntry, "", {12, 84, 328, 100});
    treeAuto_ = std::make_unique<SectionTreeView>(window_, id::moveTree, font_.get());
    Place(treeAuto_->hwnd(), {12, 104, 328, 370});
    Button(id::cmdCommon0, form.cmdCommon[0].c_str(), {158, 382, 238, 406});
    Button(id::cmdCommon1, form.cmdCommon[1].c_str(), {248, 382, 328, 406});
}

void MoveDialog::Sync() {
    SetText(lblEntry_, form_.lblEntry.Caption);
    treeAuto_->Sync(form_.treeAuto);
}

void MoveDialog::Command(int id, int code) {
    if (code != BN_CLICKED) return;
    if (id == id::cmdCommon0) Fire([&] { form_.cmdCommon_Click(0); });
    if (id == id::cmdCommon1) Fire([&] { form_.cmdCommon_Click(1); });
}

void MoveDialog::Notify(NMHDR& header) {
    if (header.idFrom != id::moveTree) return;
    if (header.code == TVN_SELCHANGEDA || header.code == TVN_SELCHANGEDW) {
        if (long node = treeAuto_->SelectedByUser(reinterpret_cast<const NMTREEVIEWA&>(header)); node >= 0)
            form_.treeAuto.selected = node;
    }
}

// ---- Edit Properties -----------------------------------------------------------------

EditDialog::EditDialog(HWND owner, forms::FrmEdit& form, platform::UiServices& ui)
    : DialogWindow(owner, form, ui, form.Caption, {400, 200}), form_(form) {
    Label(0, forms::FrmEdit::kHint, {12, 34, 388, 50}, true);
    Label(0, "Section :", {12, 62, 80, 78});
    lblSection_ = Label(id::lblSection, "", {84, 62, 388, 78});
    Label(0, "Name :", {12, 92, 80, 108});
    txtName_ = Control(window_, "EDIT", id::txtName, WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, font_.get(),
                       {84, 89, 388, 111});
    Label(0, "Path :", {12, 124, 80, 140});
    txtPath_ = Control(window_, "EDIT", id::txtPath, WS_BORDER | WS_TABSTOP | ES_AUTOHSCROLL, font_.get(),
                       {84, 121, 300, 143});
    cmdChange_ = Button(id::cmdChange, "Browse...", {308, 120, 388, 144});
    Button(id::editCommand0, form.Command1[0].c_str(), {218, 160, 298, 184});
    Button(id::editCommand1, form.Command1[1].c_str(), {308, 160, 388, 184});
}

void EditDialog::Sync() {
    SetText(lblSection_, form_.lblSection.Caption);
    for (auto [box, model] : {std::pair{txtName_, &form_.txtName}, std::pair{txtPath_, &form_.txtPath}}) {
        SetText(box, model->Text);
        Enable(box, model->Enabled);
        const bool locked = (GetWindowLongA(box, GWL_STYLE) & ES_READONLY) != 0;
        if (locked != model->Locked) SendMessageA(box, EM_SETREADONLY, model->Locked, 0);
    }
    Enable(cmdChange_, form_.cmdChangeEnabled);
}

void EditDialog::Command(int id, int code) {
    if (code == EN_CHANGE) {
        // What the user types is the text box's text.
        if (id == id::txtName) form_.txtName.Text = TextOf(txtName_);
        if (id == id::txtPath) form_.txtPath.Text = TextOf(txtPath_);
        return;
    }
    if (code != BN_CLICKED) return;
    if (id == id::cmdChange) Fire([&] { form_.cmdChange_Click(); });
    if (id == id::editCommand0) Fire([&] { form_.Command1_Click(0); });
    if (id == id::editCommand1) Fire([&] { form_.Command1_Click(1); });
}

}  // namespace tessmark::app

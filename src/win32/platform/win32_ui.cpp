#include "win32/platform/win32_ui.h"

#include <windows.h>
#include <commdlg.h>

#include <cstdio>
#include <vector>

namespace tessmark::platform::win32 {

namespace {

// A string of the program's own version resource; empty when it has none.
std::string OwnVersionString(const char* name) {
    char path[MAX_PATH] = {};
    ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    DWORD unused = 0;
    std::vector<char> block(::GetFileVersionInfoSizeA(path, &unused));
    if (block.empty() || !::GetFileVersionInfoA(path, 0, static_cast<DWORD>(block.size()), block.data())) return "";
    char* text = nullptr;
    UINT length = 0;
    const std::string key = std::string("\\StringFileInfo\\040904B0\\") + name;
    if (!::VerQueryValueA(block.data(), key.c_str(), reinterpret_cast<void**>(&text), &length) || length == 0) return "";
    return text;
}

}  // namespace

int Win32Ui::MsgBox(const std::string& prompt, int style, const std::string& title) {
    HWND owner = GetActiveWindow();
    return ::MessageBoxA(owner, prompt.c_str(), (title.empty() ? appTitle_ : title).c_str(),
                         static_cast<UINT>(style));
}

void Win32Ui::DoEvents() {
    // Each pass is a round trip to the window system, far dearer than a step of
    // the file search that calls it at every entry. Within a few milliseconds
    // of the last pass nothing waits that a user could tell from no delay.
    const ULONGLONG now = ::GetTickCount64();
    if (pumped_ && now - lastPass_ < kPassInterval) return;
    pumped_ = true;
    lastPass_ = now;
    if (beforeEvents) beforeEvents();
    MSG msg;
    while (::PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
        if (msg.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(msg.wParam));
            break;
        }
        ::TranslateMessage(&msg);
        ::DispatchMessageA(&msg);
    }
}

void Win32Ui::SetMousePointer(int pointer) {
    mousePointer_ = pointer;
    ::SetCursor(::LoadCursor(nullptr, pointer == kMousePointerHourglass ? IDC_WAIT : IDC_ARROW));
}

void Win32Ui::Beep() { ::MessageBeep(MB_OK); }

void Win32Ui::ActivityLog(const std::string& line) {
    // The log is the debugger's output stream, which takes a C string: a NUL
    // would end the line there.
    std::string whole = line + "\n";
    std::erase(whole, '\0');
    ::OutputDebugStringA(whole.c_str());
}

void Win32Ui::RemoveTrayIcon() {
    // No operation of the program adds a notification icon, so there is none to remove.
}

void Win32Ui::ShowAboutBox() {
    const std::string name = OwnVersionString("ProductName");
    const std::string text = name + " " + OwnVersionString("FileVersion") + "\r\n" + OwnVersionString("FileDescription");
    ::MessageBoxA(GetActiveWindow(), text.c_str(), ("About " + name).c_str(), MB_OK | MB_ICONINFORMATION);
}

bool Win32Ui::ShowOpen(const std::string& filter, std::string& fileName, WindowHandle owner) {
    // "description|pattern|" pairs become the NUL-separated list the dialog takes.
    std::string pairs = filter;
    for (char& ch : pairs)
        if (ch == '|') ch = '\0';
    pairs.push_back('\0');
    char file[MAX_PATH] = {};
    fileName.copy(file, MAX_PATH - 1);
    OPENFILENAMEA dialog = {};
    dialog.lStructSize = sizeof dialog;
    dialog.hwndOwner = reinterpret_cast<HWND>(owner);
    dialog.lpstrFilter = pairs.c_str();
    dialog.lpstrFile = file;
    dialog.nMaxFile = MAX_PATH;
    dialog.Flags = OFN_HIDEREADONLY | OFN_EXPLORER;
    if (!::GetOpenFileNameA(&dialog)) return false;
    fileName = file;
    return true;
}

void Win32Ui::DragForm(WindowHandle window) {
    ::ReleaseCapture();
    ::SendMessageA(reinterpret_cast<HWND>(window), WM_NCLBUTTONDOWN, HTCAPTION, 0);
}

WindowHandle Win32Ui::FindWindowA(const char* className, const char* title) {
    return reinterpret_cast<WindowHandle>(::FindWindowA(className, title));
}

bool Win32Ui::ShowWindow(WindowHandle window, int command) {
    return ::ShowWindow(reinterpret_cast<HWND>(window), command) != FALSE;
}

bool Win32Ui::SetForegroundWindow(WindowHandle window) {
    return ::SetForegroundWindow(reinterpret_cast<HWND>(window)) != FALSE;
}

void Win32Ui::EndProcess(int exitCode) { ::ExitProcess(static_cast<UINT>(exitCode)); }

}  // namespace tessmark::platform::win32

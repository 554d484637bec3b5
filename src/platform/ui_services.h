#pragma once
// Side effects the logic asks for but cannot see: message boxes, the message
// pump, the mouse pointer, the activity log, the tray, window look-ups, the end
// of the process.
#include <cstdint>
#include <string>

namespace tessmark::platform {

using WindowHandle = std::uintptr_t;

inline constexpr int kMbCritical = 16;
inline constexpr int kMbInformation = 64;
inline constexpr int kMousePointerDefault = 0;
inline constexpr int kMousePointerHourglass = 11;

class UiServices {
public:
    virtual ~UiServices() = default;

    // An empty title means the application's own title. Returns the button pressed.
    virtual int MsgBox(const std::string& prompt, int style, const std::string& title) = 0;
    virtual void DoEvents() = 0;
    virtual void SetMousePointer(int pointer) = 0;
    virtual int MousePointer() const = 0;  // the last one set
    virtual void Beep() = 0;
    virtual void ActivityLog(const std::string& line) = 0;
    virtual void RemoveTrayIcon() = 0;
    virtual void ShowAboutBox() = 0;
    // The open-file dialog with a filter of "description|pattern|" pairs,
    // opening on fileName; false when cancelled, else fileName is the choice.
    virtual bool ShowOpen(const std::string& filter, std::string& fileName, WindowHandle owner) = 0;
    // ReleaseCapture + WM_NCLBUTTONDOWN/HTCAPTION to the window: a drag by the caption.
    virtual void DragForm(WindowHandle window) = 0;
    virtual WindowHandle FindWindowA(const char* className, const char* title) = 0;
    virtual bool ShowWindow(WindowHandle window, int command) = 0;
    virtual bool SetForegroundWindow(WindowHandle window) = 0;
    // End: the process stops at once.
    [[noreturn]] virtual void EndProcess(int exitCode) = 0;
};

}  // namespace tessmark::platform

#pragma once
// UI services on the real desktop: user32 message boxes and the message pump.
#include <functional>
#include <string>

#include "platform/ui_services.h"

namespace tessmark::platform::win32 {

class Win32Ui final : public UiServices {
public:
    explicit Win32Ui(std::string appTitle) : appTitle_(std::move(appTitle)) {}
    int MsgBox(const std::string& prompt, int style, const std::string& title) override;
    void DoEvents() override;
    void SetMousePointer(int pointer) override;
    int MousePointer() const override { return mousePointer_; }
    void Beep() override;
    void ActivityLog(const std::string& line) override;
    void RemoveTrayIcon() override;
    void ShowAboutBox() override;
    bool ShowOpen(const std::string& filter, std::string& fileName, WindowHandle owner) override;
    void DragForm(WindowHandle window) override;
    WindowHandle FindWindowA(const char* className, const char* title) override;
    bool ShowWindow(WindowHandle window, int command) override;
    bool SetForegroundWindow(WindowHandle window) override;
    [[noreturn]] void EndProcess(int exitCode) override;

    // Runs at the start of each DoEvents, before the waiting messages: lets
    // the windows show what the logic has changed so far.
    std::function<void()> beforeEvents;

private:
    static constexpr unsigned long long kPassInterval = 10;  // milliseconds
    std::string appTitle_;
    int mousePointer_ = kMousePointerDefault;
    bool pumped_ = false;
    unsigned long long lastPass_ = 0;
};

}  // namespace tessmark::platform::win32

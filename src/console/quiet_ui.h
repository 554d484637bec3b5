#pragma once
// The console program shows nothing: no dialog, no pointer, no tray. The
// scanners' calls to these services do nothing here.
#include <cstdlib>

#include "platform/ui_services.h"

namespace tessmark::console {

class QuietUi final : public platform::UiServices {
public:
    int MsgBox(const std::string&, int, const std::string&) override { return 1; }
    void DoEvents() override {}
    void SetMousePointer(int) override {}
    int MousePointer() const override { return platform::kMousePointerDefault; }
    void Beep() override {}
    void ActivityLog(const std::string&) override {}
    void RemoveTrayIcon() override {}
    void ShowAboutBox() override {}
    bool ShowOpen(const std::string&, std::string&, platform::WindowHandle) override { return false; }
    void DragForm(platform::WindowHandle) override {}
    platform::WindowHandle FindWindowA(const char*, const char*) override { return 0; }
    bool ShowWindow(platform::WindowHandle, int) override { return false; }
    bool SetForegroundWindow(platform::WindowHandle) override { return false; }
    [[noreturn]] void EndProcess(int exitCode) override { std::exit(exitCode); }
};

}  // namespace tessmark::console

#pragma once
// UI services that record what they were asked to do and answer message boxes
// from a queue. EndProcess throws ProcessEnded so a test can see the end.
#include <deque>
#include <functional>
#include <ostream>
#include <string>
#include <vector>

#include "platform/ui_services.h"

namespace tessmark::platform::memory {

struct ProcessEnded {
    int exitCode;
};

struct MessageBoxCall {
    std::string prompt;
    int style;
    std::string title;
    bool operator==(const MessageBoxCall&) const = default;
};
inline void PrintTo(const MessageBoxCall& m, std::ostream* os) {
    *os << m.title << " (" << m.style << "): " << m.prompt;
}

class RecordingUi final : public UiServices {
public:
    std::vector<MessageBoxCall> messageBoxes;
    std::deque<int> answers;  // buttons to press, in order; 1 (OK) when empty
    std::vector<std::string> log;
    std::vector<int> mousePointers;
    int doEvents = 0;
    std::function<void()> onDoEvents;  // a handler that runs inside the pump
    int beeps = 0;
    int trayRemovals = 0;
    int aboutBoxes = 0;
    // Files the open-file dialog returns, in order; cancelled when empty.
    std::deque<std::string> openChoices;
    std::vector<std::pair<std::string, std::string>> openDialogs;  // filter, file name it opened on
    std::vector<WindowHandle> drags;
    // Windows that FindWindowA can find, by title.
    std::vector<std::pair<std::string, WindowHandle>> windows;
    std::vector<std::pair<WindowHandle, int>> shown;
    std::vector<WindowHandle> foregrounded;

    int MsgBox(const std::string& prompt, int style, const std::string& title) override;
    void DoEvents() override {
        ++doEvents;
        if (onDoEvents) onDoEvents();
    }
    void SetMousePointer(int pointer) override { mousePointers.push_back(pointer); }
    int MousePointer() const override { return mousePointers.empty() ? kMousePointerDefault : mousePointers.back(); }
    void Beep() override { ++beeps; }
    void ActivityLog(const std::string& line) override { log.push_back(line); }
    void RemoveTrayIcon() override { ++trayRemovals; }
    void ShowAboutBox() override { ++aboutBoxes; }
    bool ShowOpen(const std::string& filter, std::string& fileName, WindowHandle owner) override;
    void DragForm(WindowHandle window) override { drags.push_back(window); }
    WindowHandle FindWindowA(const char* className, const char* title) override;
    bool ShowWindow(WindowHandle window, int command) override;
    bool SetForegroundWindow(WindowHandle window) override;
    [[noreturn]] void EndProcess(int exitCode) override { throw ProcessEnded{exitCode}; }
};

}  // namespace tessmark::platform::memory

#include "platform/memory/recording_ui.h"

namespace tessmark::platform::memory {

int RecordingUi::MsgBox(const std::string& prompt, int style, const std::string& title) {
    messageBoxes.push_back({prompt, style, title});
    if (answers.empty()) return 1;
    int answer = answers.front();
    answers.pop_front();
    return answer;
}

bool RecordingUi::ShowOpen(const std::string& filter, std::string& fileName, WindowHandle) {
    openDialogs.emplace_back(filter, fileName);
    if (openChoices.empty()) return false;
    fileName = openChoices.front();
    openChoices.pop_front();
    return true;
}

WindowHandle RecordingUi::FindWindowA(const char* className, const char* title) {
    if (className != nullptr || title == nullptr) return 0;
    for (const auto& [caption, handle] : windows)
        if (caption == title) return handle;
    return 0;
}

bool RecordingUi::ShowWindow(WindowHandle window, int command) {
    shown.emplace_back(window, command);
    return true;
}

bool RecordingUi::SetForegroundWindow(WindowHandle window) {
    foregrounded.push_back(window);
    return true;
}

}  // namespace tessmark::platform::memory

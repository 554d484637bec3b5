// The console edition's entry: the real ports, the command line, and the
// console or file behind stdout and stderr. No window, no single-instance
// lock, no dialog.
#include <windows.h>

#include <exception>
#include <string>
#include <vector>

#include "console/console.h"
#include "console/quiet_ui.h"
#include "version.h"
#include "win32/platform/win32_codec.h"
#include "win32/platform/win32_disk.h"
#include "win32/platform/win32_process.h"
#include "win32/platform/win32_registry.h"

namespace {

// A console shows the text as the program's ANSI code page means it; a file
// or a pipe gets the bytes as they are (CSV and JSON are UTF-8 already).
void Write(DWORD which, const std::string& text) {
    if (text.empty()) return;
    HANDLE handle = GetStdHandle(which);
    DWORD mode = 0, written = 0;
    if (GetConsoleMode(handle, &mode)) {
        const int size = static_cast<int>(text.size());
        const int length = MultiByteToWideChar(CP_ACP, 0, text.data(), size, nullptr, 0);
        std::wstring wide(static_cast<std::size_t>(length), L'\0');
        MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide.data(), length);
        WriteConsoleW(handle, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
        return;
    }
    WriteFile(handle, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

}  // namespace

int main(int argc, char** argv) {
    using namespace tessmark;
    console::Terminal terminal;
    terminal.version = TESSMARK_VERSION_TEXT;
    DWORD mode = 0;
    HANDLE out = GetStdHandle(STD_OUTPUT_HANDLE);
    CONSOLE_SCREEN_BUFFER_INFO info{};
    terminal.isConsole = GetConsoleMode(out, &mode) != 0;
    if (terminal.isConsole && GetConsoleScreenBufferInfo(out, &info))
        terminal.width = info.srWindow.Right - info.srWindow.Left + 1;

    platform::win32::Win32Registry registry;
    platform::win32::Win32Disk disk;
    platform::win32::Win32Process process;
    platform::win32::Win32Codec codec;
    console::QuietUi ui;
    console::Output output;
    int code = 4;
    try {
        code = console::Run(std::vector<std::string>(argv + 1, argv + argc), {registry, disk, disk, ui, process}, codec,
                            terminal, output);
    } catch (const std::exception& error) {
        output.err += std::string("tessmarkc: ") + error.what() + "\n";
    }
    Write(STD_OUTPUT_HANDLE, output.out);
    Write(STD_ERROR_HANDLE, output.err);
    return code;
}

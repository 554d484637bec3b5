// Fills a fresh Wine prefix with sample start-up entries, so that the program
// shows a filled list on its first run: Run values of both hives (one quoted
// with a switch, one naming a missing file), one disabled value, and a
// shortcut in the current user's Startup folder.
#include <cstdint>
#include <cstdio>
#include <string>

#include "platform/registry_port.h"
#include "platform/shell_port.h"
#include "win32/platform/win32_disk.h"
#include "win32/platform/win32_registry.h"

namespace {

using namespace tessmark::platform;

constexpr const char* kBase = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\";

struct Sample {
    RegHandle root;
    const char* key;
    const char* name;
    const char* value;
};

constexpr Sample kSamples[] = {
    {reg::kLocalMachine, "Run", "Notepad", "C:\\windows\\notepad.exe"},
    {reg::kLocalMachine, "Run", "Task Manager", "\"C:\\windows\\system32\\taskmgr.exe\" /minimized"},
    {reg::kLocalMachine, "Run\\AutorunsDisabled", "Minesweeper", "C:\\windows\\system32\\winemine.exe"},
    {reg::kCurrentUser, "Run", "Registry Editor", "C:\\windows\\regedit.exe"},
    {reg::kCurrentUser, "Run", "Update Helper", "C:\\Program Files\\Update Helper\\helper.exe"},
};

bool SetValue(RegistryPort& registry, const Sample& sample) {
    RegHandle key = 0;
    if (registry.RegCreateKeyA(sample.root, (std::string(kBase) + sample.key).c_str(), &key) != 0) return false;
    const std::string value = sample.value;
    const bool written = registry.RegSetValueExA(key, sample.name, reg::kSz,
                                                 reinterpret_cast<const std::uint8_t*>(value.c_str()),
                                                 static_cast<std::uint32_t>(value.size() + 1)) == 0;
    registry.RegCloseKey(key);
    return written;
}

}  // namespace

int main() {
    win32::Win32Registry registry;
    win32::Win32Disk disk;
    int failures = 0;
    for (const Sample& sample : kSamples)
        if (!SetValue(registry, sample)) {
            std::fprintf(stderr, "cannot write %s\n", sample.name);
            ++failures;
        }
    char startup[260] = {};
    const std::string winver = "C:\\windows\\system32\\winver.exe";
    if (disk.SpecialFolderPath(kCsidlStartup, startup) != 0 ||
        !disk.SaveShortcut(std::string(startup) + "\\About Wine.lnk", winver, winver + ",0", 1)) {
        std::fprintf(stderr, "cannot make the Startup shortcut\n");
        ++failures;
    }
    return failures == 0 ? 0 : 1;
}

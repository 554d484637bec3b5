// Measures how long the program takes from its start to a list that shows
// every entry of a Run key of N values, beside the same for a bare program
// that fills a list from the key (its floor), once with the fewest calls and
// once with the calls the program itself makes: nine starts each, in turns, for
// 10 and for 1,000 values, with the medians and their ratios. Not a test; scripts/bench
// runs it on the release build in a throw-away prefix:
//
//   scripts/wine-exec build/mingw-x64/tests/gui/tessmark_startup_timing.exe
//       build/release-x64/tessmark.exe build/release-x64/tessmark_startup_floor.exe
//
// (under a display, with TESSMARK_TEST_PREFIX naming the prefix).
//
// It replaces the prefix's Run-family keys.
#include <windows.h>
#include <commctrl.h>
#include <psapi.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "gui_driver.h"
#include "machine.h"
#include "win32/app/control_ids.h"
#include "win32/platform/win32_registry.h"

namespace {

using namespace tessmark;
using namespace tessmark::gui;

constexpr const char* kRunFamily = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\";
constexpr int kStarts = 9;

void SeedRunKey(platform::RegistryPort& registry, int values) {
    for (auto root : {platform::reg::kLocalMachine, platform::reg::kCurrentUser})
        for (const char* key : {"Run", "RunOnce", "RunServices", "RunServiceOnce"})
            testing::DeleteTree(registry, root, std::string(kRunFamily) + key);
    platform::RegHandle run = 0;
    registry.RegCreateKeyA(platform::reg::kLocalMachine, (std::string(kRunFamily) + "Run").c_str(), &run);
    const std::string file = "C:\\windows\\notepad.exe";
    for (int i = 0; i < values; ++i) {
        char name[32];
        std::snprintf(name, sizeof name, "Item%04d", i);
        registry.RegSetValueExA(run, name, platform::reg::kSz, reinterpret_cast<const std::uint8_t*>(file.c_str()),
                                static_cast<std::uint32_t>(file.size() + 1));
    }
    registry.RegCloseKey(run);
}

double Seconds(const LARGE_INTEGER& from, const LARGE_INTEGER& to) {
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    return static_cast<double>(to.QuadPart - from.QuadPart) / static_cast<double>(frequency.QuadPart);
}

// Seconds from the start to a list of at least `rows` rows; negative when it never came.
double TimeToFilledList(int rows, bool startMessage) {
    LARGE_INTEGER start, filled;
    QueryPerformanceCounter(&start);
    Program program;
    HWND window = program.WaitForMainWindow();
    if (window == nullptr) return -1;
    HWND list = Descendant(window, app::id::ListView1);
    for (;;) {
        if (SendMessageA(list, LVM_GETITEMCOUNT, 0, 0) >= rows) break;
        if (!program.Running()) return -1;
        Sleep(2);
    }
    QueryPerformanceCounter(&filled);
    if (startMessage) program.DismissStartMessage();
    PostMessageA(window, WM_CLOSE, 0, 0);
    program.WaitForExit();
    return Seconds(start, filled);
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: tessmark_startup_timing PROGRAM FLOOR\n");
        return 2;
    }
    platform::win32::Win32Registry registry;
    const struct {
        const char *program, *floorCalls, *label;
    } starts[] = {{argv[1], "", ""}, {argv[2], "bare", " floor"}, {argv[2], "same-calls", " floor of the same calls"}};
    for (int values : {10, 1000}) {
        SeedRunKey(registry, values);
        // The three take turns, so that whatever else the machine does falls on all of them alike.
        std::vector<double> times[3];
        for (int i = 0; i < kStarts; ++i)
            for (int which = 0; which < 3; ++which) {
                programPath = WindowsPath(starts[which].program);
                SetEnvironmentVariableA("TESSMARK_FLOOR", starts[which].floorCalls);
                times[which].push_back(TimeToFilledList(values, which == 0));
            }
        double medians[3];
        for (int which = 0; which < 3; ++which) {
            std::sort(times[which].begin(), times[which].end());
            medians[which] = times[which][kStarts / 2];
            std::printf("StartToFilledList/%d%s: median %.3f s (", values, starts[which].label, medians[which]);
            for (double t : times[which]) std::printf(" %.3f", t);
            std::printf(" )\n");
        }
        std::printf("StartToFilledList/%d: %.2f x its floor, %.2f x the floor of the same calls\n", values,
                    medians[0] / medians[1], medians[0] / medians[2]);
    }
    // The program's memory once "All Items" shows 10,000 Run values.
    SeedRunKey(registry, 10000);
    programPath = WindowsPath(argv[1]);
    {
        Program program;
        HWND window = program.WaitForMainWindow();
        HWND list = window ? Descendant(window, app::id::ListView1) : nullptr;
        WaitUntil([&] { return SendMessageA(list, LVM_GETITEMCOUNT, 0, 0) >= 10000; });
        program.DismissStartMessage();
        PROCESS_MEMORY_COUNTERS counters{};
        GetProcessMemoryInfo(program.Process(), &counters, sizeof counters);
        std::printf("WorkingSet/10000: %.1f MB (peak %.1f MB) with %ld rows\n", counters.WorkingSetSize / 1048576.0,
                    counters.PeakWorkingSetSize / 1048576.0, static_cast<long>(SendMessageA(list, LVM_GETITEMCOUNT, 0, 0)));
        PostMessageA(window, WM_CLOSE, 0, 0);
        program.WaitForExit();
    }
    SeedRunKey(registry, 0);
    return 0;
}

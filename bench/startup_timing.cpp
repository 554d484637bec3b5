// Measures how long the program takes from its start to a list that shows
// every entry of a Run key of N values, beside the same for three floors: a
// bare program that fills a list from the key with the fewest calls, the same
// with the calls the program itself makes, and a bare program that builds the
// program's own window and then makes those calls. Nine starts each, in turns,
// for 10 and for 1,000 values, with the medians, their ratios and the time to
// a shown window. Not a test; scripts/bench runs it on the release build in a
// throw-away prefix:
//
//   scripts/wine-exec build/mingw-x64/tests/gui/tessmark_startup_timing.exe
//       build/release-x64/tessmark.exe build/release-x64/tessmark_startup_floor.exe
//       build/release-x64/tessmark_startup_floor_window.exe
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

struct Start {
    double shown, filled;  // seconds from the start to a shown window and to a list of the rows
};

// Negative times when the window or the rows never came.
Start TimeToFilledList(int rows, bool startMessage) {
    LARGE_INTEGER start, shown, filled;
    QueryPerformanceCounter(&start);
    Program program;
    HWND window = program.WaitForMainWindow();
    if (window == nullptr) return {-1, -1};
    QueryPerformanceCounter(&shown);
    HWND list = Descendant(window, app::id::ListView1);
    for (;;) {
        if (SendMessageA(list, LVM_GETITEMCOUNT, 0, 0) >= rows) break;
        if (!program.Running()) return {-1, -1};
        Sleep(2);
    }
    QueryPerformanceCounter(&filled);
    if (startMessage) program.DismissStartMessage();
    PostMessageA(window, WM_CLOSE, 0, 0);
    program.WaitForExit();
    return {Seconds(start, shown), Seconds(start, filled)};
}

double Median(std::vector<double> times) {
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        std::fprintf(stderr, "usage: tessmark_startup_timing PROGRAM FLOOR WINDOW-FLOOR\n");
        return 2;
    }
    platform::win32::Win32Registry registry;
    constexpr int kKinds = 4;
    const struct {
        const char *program, *floorCalls, *label;
    } starts[kKinds] = {{argv[1], "", ""},
                        {argv[2], "bare", " the bare floor"},
                        {argv[2], "same-calls", " the floor of the same calls"},
                        {argv[3], "", " the floor of the same window"}};
    for (int values : {10, 1000}) {
        SeedRunKey(registry, values);
        // They take turns, so that whatever else the machine does falls on all of them alike.
        std::vector<double> shown[kKinds], filled[kKinds];
        for (int i = 0; i < kStarts; ++i)
            for (int which = 0; which < kKinds; ++which) {
                programPath = WindowsPath(starts[which].program);
                SetEnvironmentVariableA("TESSMARK_FLOOR", starts[which].floorCalls);
                const Start start = TimeToFilledList(values, which == 0);
                shown[which].push_back(start.shown);
                filled[which].push_back(start.filled);
            }
        for (int which = 0; which < kKinds; ++which) {
            std::printf("StartToFilledList/%d%s: median %.3f s (", values, which ? starts[which].label : " program",
                        Median(filled[which]));
            for (double t : filled[which]) std::printf(" %.3f", t);
            std::printf(" )\n");
        }
        for (int which = 1; which < kKinds; ++which)
            std::printf("StartToFilledList/%d: %.2f x%s\n", values, Median(filled[0]) / Median(filled[which]),
                        starts[which].label);
        std::printf("WindowShown/%d: program %.0f ms,%s %.0f ms\n", values, 1000 * Median(shown[0]),
                    starts[3].label, 1000 * Median(shown[3]));
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

// How long the scanners and the file search take on a well-filled machine,
// each beside its floor: the platform calls it rests on, made in a bare loop
// that builds no rows. The memory adapters natively, the real ones on Windows.
#ifdef _WIN32
#include <windows.h>

#include <algorithm>
#include <thread>

#include "harness.h"
#include "win32/platform/win32_ui.h"
#else
#include <benchmark/benchmark.h>
#endif

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "discovery/RunKeys.h"
#include "discovery/ScanContext.h"
#include "discovery/StartupFolders.h"
#include "machine.h"
#include "storage/FindWalk.h"
#include "storage/filesearch.h"
#include "storage/modStartup.h"

namespace {

using namespace tessmark;
using benchmark::State;
using platform::RegHandle;
namespace reg = platform::reg;

constexpr int kEnabledRunValues = 800;
constexpr int kDisabledRunValues = 200;
constexpr int kRunValues = kEnabledRunValues + kDisabledRunValues;
constexpr int kPrograms = 50;           // distinct files the values and shortcuts name
constexpr int kShortcutsPerFolder = 100;  // in each of the two Startup folders
constexpr int kTreeTop = 10, kTreeMiddle = 10, kTreeFilesPerFolder = 500;  // 50,000 files
constexpr int kTreeFiles = kTreeTop * kTreeMiddle * kTreeFilesPerFolder;

constexpr const char* kRunTree = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run";
constexpr const char* kRunKey = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run\\";
constexpr const char* kDisabledRunKey = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Run\\AutorunsDisabled";
constexpr std::uint32_t kRowIconFlags = 0x6603;

// A figure of a machine that does not hold what was seeded is worthless.
void Check(bool ok, const std::string& what) {
    if (ok) return;
    std::fprintf(stderr, "benchmark failed: %s\n", what.c_str());
    std::exit(1);
}

// prefix, n in four digits, suffix.
std::string Numbered(const std::string& prefix, int n, const std::string& suffix = "") {
    const std::string digits = std::to_string(n);
    return prefix + std::string(digits.size() < 4 ? 4 - digits.size() : 0, '0') + digits + suffix;
}

// One machine for the whole run, each part filled at its first use.
class World {
public:
    static World& Get() {
        static World world;
        return world;
    }

    std::unique_ptr<testing::TestMachine> machine = testing::MakeTestMachine();
#ifdef _WIN32
    platform::win32::Win32Ui ui{"Tessmark"};  // the real message pump
#else
    platform::UiServices& ui = machine->Ui();
#endif
    platform::Ports ports{machine->Registry(), machine->Files(), machine->Shell(), ui, machine->Process()};
    platform::FilesPort& files = machine->Files();
    // A root whose path holds nothing the command-line reduction cuts at.
    const std::string root = machine->ScratchFolder("TessmarkBench");
    discovery::SystemFolders folders{root + "\\Windows", root + "\\Programs"};
    discovery::ItemList list;
    discovery::ImageStore images;
    discovery::PictureBox picture;
    platform::ShFileInfo record{};
    storage::IniFile ini{machine->Files()};
    bool timer1Enabled = false;
    discovery::ScanContext form{ports, folders, list, images, picture, record, ini, timer1Enabled};

    std::vector<std::string> enabledTargets, disabledTargets;  // the file each Run value names
    std::vector<std::string> startupFolders;
    std::string tree;

    void ClearRows() {
        list.Clear();
        images.Clear();
    }

    // Every tenth value names a missing file; the others one of the programs.
    void SeedRunValues() {
        if (!enabledTargets.empty()) return;
        Programs();
        auto& registry = machine->Registry();
        testing::DeleteTree(registry, reg::kLocalMachine, kRunTree);
        for (int i = 0; i < kRunValues; ++i) {
            const bool enabled = i < kEnabledRunValues;
            const std::string target =
                i % 10 == 9 ? Numbered(root + "\\Programs\\Missing\\gone", i, ".exe") : Program(i % kPrograms);
            const std::string data = "\"" + target + "\" /autostart";
            RegHandle key = 0;
            Check(registry.RegCreateKeyA(reg::kLocalMachine, enabled ? kRunKey : kDisabledRunKey, &key) == 0, "Run key");
            Check(registry.RegSetValueExA(key, Numbered("Item", i).c_str(), reg::kSz,
                                          reinterpret_cast<const std::uint8_t*>(data.c_str()),
                                          static_cast<std::uint32_t>(data.size() + 1)) == 0,
                  "Run value");
            registry.RegCloseKey(key);
            (enabled ? enabledTargets : disabledTargets).push_back(target);
        }
    }

    void SeedShortcuts() {
        if (!startupFolders.empty()) return;
        Programs();
        for (int csidl : {platform::kCsidlCommonStartup, platform::kCsidlStartup}) {
            const std::string folder = storage::GetSpecialFolder(machine->Shell(), csidl);
            Check(!folder.empty(), "Startup folder");
            for (const std::string& name : storage::DirNormalFiles(files, folder + "\\*.*")) files.Kill(folder + "\\" + name);
            for (int i = 0; i < kShortcutsPerFolder; ++i) {
                const std::string target = Program(i % kPrograms);
                Check(machine->Shell().SaveShortcut(folder + Numbered("\\Shortcut", i, ".lnk"), target, target + ",0", 1),
                      "shortcut");
            }
            startupFolders.push_back(folder);
        }
        files.Kill(form.SideFolder() + "\\Settings.ini");
    }

    // Ten folders of ten folders of 500 files, and one "needle.exe" in the last.
    void SeedTree() {
        if (!tree.empty()) return;
        const std::string base = root + "\\Tree";
        Check(files.MkDir(base), "tree");
        for (int top = 0; top < kTreeTop; ++top) {
            const std::string topFolder = Numbered(base + "\\Top", top);
            Check(files.MkDir(topFolder), topFolder);
            for (int middle = 0; middle < kTreeMiddle; ++middle) {
                const std::string folder = Numbered(topFolder + "\\Middle", middle);
                Check(files.MkDir(folder), folder);
                for (int i = 0; i < kTreeFilesPerFolder; ++i)
                    Check(files.AppendToFile(Numbered(folder + "\\file", i, ".dat"), "x"), "tree file");
            }
        }
        Check(files.AppendToFile(Numbered(base + "\\Top", kTreeTop - 1) + "\\needle.exe", "MZ"), "needle");
        tree = base;
    }

private:
    bool programsMade_ = false;

    std::string Program(int n) const { return Numbered(root + "\\Programs\\Vendor", n, "\\app.exe"); }

    void Programs() {
        if (programsMade_) return;
        for (int n = 0; n < kPrograms; ++n) {
            std::string program = Program(n);
            storage::MakeFolderPath(files, program);
            Check(files.AppendToFile(program, "MZ"), program);
        }
        programsMade_ = true;
    }
};

// ---- Run values: AddRun over the key and its disabled subkey

void PopulateRunValues(State& state) {
    World& world = World::Get();
    world.SeedRunValues();
    for (auto _ : state) {
        state.PauseTiming();
        world.ClearRows();
        state.ResumeTiming();
        discovery::AddRun(world.form, false);
    }
    Check(world.list.Count() == kRunValues, "AddRun listed " + std::to_string(world.list.Count()) + " rows");
    state.SetItemsProcessed(state.iterations() * kRunValues);
}

// Each value's name enumerated, its data read by that name, and the shell
// asked for its file's icon.
void FloorRunValues(State& state) {
    World& world = World::Get();
    world.SeedRunValues();
    auto& registry = world.machine->Registry();
    auto& shell = world.machine->Shell();
    for (auto _ : state) {
        for (const auto& [subKey, targets] : {std::pair{kRunKey, &world.enabledTargets},
                                              std::pair{kDisabledRunKey, &world.disabledTargets}}) {
            RegHandle key = 0;
            registry.RegOpenKeyExA(reg::kLocalMachine, subKey, 0, reg::kQueryValue, &key);
            std::uint32_t subKeys = 0, values = 0;
            registry.RegQueryInfoKeyA(key, &subKeys, &values);
            Check(values == targets->size(), std::string(subKey) + " holds " + std::to_string(values) + " values");
            for (std::uint32_t i = 0; i < values; ++i) {
                char name[261];
                std::uint8_t data[1024];
                std::uint32_t nameLength = sizeof name, dataLength = 255, type = 0;
                registry.RegEnumValueA(key, i, name, &nameLength, &type, data, &dataLength);
                dataLength = sizeof data;
                registry.RegQueryValueExA(key, name, &type, data, &dataLength);
                platform::ShFileInfo info;
                benchmark::DoNotOptimize(shell.SHGetFileInfoA((*targets)[i].c_str(), 0, &info, kRowIconFlags));
            }
            registry.RegCloseKey(key);
        }
    }
    state.SetItemsProcessed(state.iterations() * kRunValues);
}

// ---- Startup shortcuts: both folder scanners

void PopulateStartupShortcuts(State& state) {
    World& world = World::Get();
    world.SeedShortcuts();
    for (auto _ : state) {
        state.PauseTiming();
        world.ClearRows();
        state.ResumeTiming();
        discovery::AddStartupAllUser(world.form);
        discovery::AddStartupCurrUser(world.form);
    }
    Check(world.list.Count() == 2 * kShortcutsPerFolder, "the folder scanners listed " +
                                                              std::to_string(world.list.Count()) + " rows");
    state.SetItemsProcessed(state.iterations() * 2 * kShortcutsPerFolder);
}

// Each folder walked, each shortcut's target read, and the shell asked for its icon.
void FloorStartupShortcuts(State& state) {
    World& world = World::Get();
    world.SeedShortcuts();
    auto& shell = world.machine->Shell();
    for (auto _ : state) {
        for (const std::string& folder : world.startupFolders) {
            platform::FindData data;
            storage::FindWalk walk(world.files, folder + "\\*.*", data);
            if (!walk.Started()) continue;
            do {
                if (data.attributes & platform::kAttrDirectory) continue;
                std::string target;
                shell.ShortcutTarget(folder + "\\" + data.fileName, &target);
                platform::ShFileInfo info;
                benchmark::DoNotOptimize(shell.SHGetFileInfoA(target.c_str(), 0, &info, kRowIconFlags));
            } while (walk.Next(data));
        }
    }
    state.SetItemsProcessed(state.iterations() * 2 * kShortcutsPerFolder);
}

// ---- The recursive search over 50,000 files

void SearchTree(State& state) {
    World& world = World::Get();
    world.SeedTree();
    std::vector<std::string> found;
    for (auto _ : state) found = storage::FindFiles(world.files, world.ui, world.tree, "needle.exe", 1);
    Check(found.size() == 1, "FindFiles found " + std::to_string(found.size()) + " files");
    state.SetItemsProcessed(state.iterations() * kTreeFiles);
}

// The platform calls of the search, in its order, with nothing else: each
// folder walked whole with an attribute query per entry, then walked for the
// pattern; then each subfolder.
long Walk(platform::FilesPort& files, const std::string& folder, const std::string& pattern) {
    long count = 0;
    std::vector<std::string> subfolders;
    platform::FindData data;
    if (storage::FindWalk walk(files, folder + "\\*", data); walk.Started()) {
        do {
            const std::string name = data.fileName;
            if (name == "." || name == "..") continue;
            if (files.GetFileAttributesA((folder + "\\" + name).c_str()) & platform::kAttrDirectory)
                subfolders.push_back(name);
        } while (walk.Next(data));
    }
    if (storage::FindWalk walk(files, folder + "\\" + pattern, data); walk.Started()) {
        do ++count;
        while (walk.Next(data));
    }
    for (const std::string& subfolder : subfolders) count += Walk(files, folder + "\\" + subfolder, pattern);
    return count;
}

void FloorSearchTree(State& state) {
    World& world = World::Get();
    world.SeedTree();
    long found = 0;
    for (auto _ : state) found = Walk(world.files, world.tree, "needle.exe");
    Check(found == 1, "the walk found " + std::to_string(found) + " files");
    state.SetItemsProcessed(state.iterations() * kTreeFiles);
}

#ifdef _WIN32
// How long a message posted during the search waits before it is handled: a
// second thread posts one every 20 ms to a window of this thread while the
// search runs, and the window notes the wait of each.
std::vector<double> latencies;
LARGE_INTEGER frequency;

LRESULT CALLBACK LatencyProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_APP) return DefWindowProcA(window, message, wParam, lParam);
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    latencies.push_back(1000.0 * static_cast<double>(now.QuadPart - static_cast<LONGLONG>(lParam)) /
                        static_cast<double>(frequency.QuadPart));
    return 0;
}

void InputLatencyDuringSearch(State& state) {
    World& world = World::Get();
    world.SeedTree();
    QueryPerformanceFrequency(&frequency);
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = LatencyProc;
    windowClass.lpszClassName = "TessmarkLatency";
    RegisterClassA(&windowClass);
    HWND window = CreateWindowA("TessmarkLatency", "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    latencies.clear();
    for (auto _ : state) {
        volatile bool searching = true;
        std::thread poster([&] {
            while (searching) {
                Sleep(20);
                LARGE_INTEGER now;
                QueryPerformanceCounter(&now);
                PostMessageA(window, WM_APP, 0, static_cast<LPARAM>(now.QuadPart));
            }
        });
        storage::FindFiles(world.files, world.ui, world.tree, "needle.exe", 1);
        searching = false;
        poster.join();
        world.ui.DoEvents();
    }
    DestroyWindow(window);
    std::sort(latencies.begin(), latencies.end());
    Check(!latencies.empty(), "no message was handled during the search");
    std::printf("InputLatencyDuringSearch: %zu messages, median %.1f ms, max %.1f ms\n", latencies.size(),
                latencies[latencies.size() / 2], latencies.back());
}
#endif

}  // namespace

// Five repetitions each, reported as mean, median, deviation and variation.
#define SCAN_BENCHMARK(function) \
    BENCHMARK(function)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true)

SCAN_BENCHMARK(PopulateRunValues);
SCAN_BENCHMARK(FloorRunValues);
SCAN_BENCHMARK(PopulateStartupShortcuts);
SCAN_BENCHMARK(FloorStartupShortcuts);
SCAN_BENCHMARK(SearchTree);
SCAN_BENCHMARK(FloorSearchTree);
#ifdef _WIN32
BENCHMARK(InputLatencyDuringSearch)->Unit(benchmark::kMillisecond)->Repetitions(1);
#endif

BENCHMARK_MAIN();

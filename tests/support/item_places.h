#pragma once
// Every place a start-up item can live on a test machine: emptied for a test and put back after, with readers.
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "discovery/ItemList.h"
#include "machine.h"
#include "raw_values.h"
#include "storage/IniFile.h"
#include "storage/modStartup.h"

namespace tessmark::testing {

inline constexpr const char* kRunBase = "Software\\Microsoft\\Windows\\CurrentVersion\\";
inline constexpr const char* kRdpwd = "SYSTEM\\CurrentControlSet\\Control\\Terminal Server\\Wds\\rdpwd";
inline constexpr const char* kWinlogon = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion\\Winlogon";
inline constexpr const char* kServiceKey = "SYSTEM\\CurrentControlSet\\Services\\TessmarkTestService";
inline constexpr const char* kBhoBase = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Browser Helper Objects\\";
inline constexpr const char* kTestClsid = "{7E57E57E-0000-4000-8000-7E57E57E0001}";

// A value as stored: its type and its text up to the first NUL.
struct StoredValue { std::uint32_t type; std::string text; bool operator==(const StoredValue&) const = default; };

inline void PrintTo(const StoredValue& v, std::ostream* out) { *out << "{type " << v.type << ", \"" << v.text << "\"}"; }

struct RowView { std::string text, path, flag, section, tag; auto operator<=>(const RowView&) const = default; };

inline void PrintTo(const RowView& r, std::ostream* out) {
    *out << "{" << r.text << " | " << r.path << " | " << r.flag << " | " << r.section << " | " << r.tag << "}";
}

inline std::string Shown(const std::string& text) { return text.substr(0, text.find('\0')); }

// The rows of a list as the user sees them, tags in their kind: "3" a number, "\"7\"" text.
inline std::vector<RowView> RowViews(const discovery::ItemList& list) {
    std::vector<RowView> rows;
    for (const auto& row : list.Rows()) {
        std::string tag;
        if (auto* n = std::get_if<long>(&row->Tag)) tag = std::to_string(*n);
        if (auto* t = std::get_if<std::string>(&row->Tag)) tag = "\"" + *t + "\"";
        rows.push_back({Shown(row->Text), Shown(row->SubItems(1)), row->SubItems(2), row->SubItems(3), tag});
    }
    return rows;
}

// A DWORD value as stored, to compare with what Raw reads.
inline RawValue Dword(std::uint32_t n) { return {platform::reg::kDword, std::string(reinterpret_cast<char*>(&n), 4)}; }

class ItemPlaces {
public:
    static constexpr platform::RegHandle HKLM = platform::reg::kLocalMachine, HKCU = platform::reg::kCurrentUser;

    explicit ItemPlaces(TestMachine& machine) : machine_(machine), registry_(machine.Registry()) {
        ClearKeys();
        rdpwdExisted_ = KeyExists(HKLM, kRdpwd);
        for (auto& v : logonValues_) { v.before = Raw(HKLM, v.key, v.name); Delete(HKLM, v.key, v.name); }
        std::string side = machine_.Files().Environ("Appdata") + "\\Corvane Pulse\\";
        storage::MakeFolderPath(machine_.Files(), side);
        machine_.Files().Kill(SettingsFile());
        for (int csidl : {platform::kCsidlCommonStartup, platform::kCsidlStartup})
            for (const auto& name : NewFolderFiles(csidl)) before_.insert(Path(csidl, name));
    }

    ~ItemPlaces() {
        RemoveNewFolderFiles();
        machine_.Files().Kill(SettingsFile());
        ClearKeys();
        for (const auto& v : logonValues_) v.before ? Put(HKLM, v.key, v.name, *v.before) : Delete(HKLM, v.key, v.name);
        if (!rdpwdExisted_) DeleteTree(registry_, HKLM, kRdpwd);
    }

    void Put(platform::RegHandle root, const std::string& key, const std::string& name, const RawValue& value) {
        ASSERT_TRUE(SetRaw(registry_, root, key, name, value.first, value.second)) << key << "\\" << name;
    }
    // Seeds a value; text types get their terminating NUL, as a setup program stores them.
    void Set(platform::RegHandle root, const std::string& key, const std::string& name, const std::string& text,
             std::uint32_t type = platform::reg::kSz) {
        Put(root, key, name, {type, text + '\0'});
    }
    std::optional<StoredValue> Value(platform::RegHandle root, const std::string& key, const std::string& name) {
        if (auto raw = Raw(root, key, name)) return StoredValue{raw->first, Shown(raw->second)};
        return std::nullopt;
    }
    void Delete(platform::RegHandle root, const std::string& key, const std::string& name) {
        platform::RegHandle handle = 0;
        if (registry_.RegOpenKeyExA(root, key.c_str(), 0, platform::reg::kAllAccess, &handle) != 0) return;
        registry_.RegDeleteValueA(handle, name.c_str());
        registry_.RegCloseKey(handle);
    }
    std::optional<RawValue> Raw(platform::RegHandle root, const std::string& key, const std::string& name) {
        return GetRaw(registry_, root, key, name);
    }
    bool KeyExists(platform::RegHandle root, const std::string& key) {
        platform::RegHandle handle = 0;
        if (registry_.RegOpenKeyExA(root, key.c_str(), 0, platform::reg::kRead, &handle) != 0) return false;
        registry_.RegCloseKey(handle);
        return true;
    }

    // Every item on the machine, sorted: "HKLM RunOnce\\AutorunsDisabled Tool=C:\\t.exe" for a value (its type in
    // brackets unless text, data up to the first NUL), "ini " and Settings.ini's text, "lnk 25 name -> target".
    std::vector<std::string> Everything() {
        std::vector<std::string> all;
        std::vector<std::pair<platform::RegHandle, std::string>> keys;
        for (auto root : {HKLM, HKCU})
            for (const char* key : {"Run", "RunOnce", "RunOnceEx", "RunServices", "RunServiceOnce"})
                keys.push_back({root, key});
        keys.push_back({HKLM, kRdpwd});
        keys.push_back({HKLM, kWinlogon});
        for (const auto& [root, key] : keys)
            for (const std::string below : {"", "\\AutorunsDisabled"}) {
                const std::string path = (key[0] == 'R' ? kRunBase : "") + key + below;
                platform::RegHandle handle = 0;
                if (registry_.RegOpenKeyExA(root, path.c_str(), 0, platform::reg::kRead, &handle) != 0) continue;
                for (std::uint32_t i = 0;; ++i) {
                    char name[300];
                    std::uint8_t data[1024];
                    std::uint32_t nameLength = sizeof name, type = 0, dataLength = sizeof data;
                    if (registry_.RegEnumValueA(handle, i, name, &nameLength, &type, data, &dataLength) != 0) break;
                    const std::string text(reinterpret_cast<char*>(data), dataLength);
                    const bool logon = key[0] != 'R';
                    if (logon && std::string(name) != "StartupPrograms" && std::string(name) != "Userinit" &&
                        std::string(name) != "Shell")
                        continue;
                    all.push_back((root == HKLM ? "HKLM " : "HKCU ") + (logon ? std::string(name) : key) + below +
                                  (logon ? "=" : " " + std::string(name) + "=") + text.substr(0, text.find('\0')) +
                                  (type == platform::reg::kSz ? "" : " [" + std::to_string(type) + "]"));
                }
                registry_.RegCloseKey(handle);
            }
        std::string ini;
        if (machine_.Files().ReadWholeFile(SettingsFile(), &ini) && !ini.empty()) all.push_back("ini " + ini);
        for (int csidl : {platform::kCsidlCommonStartup, platform::kCsidlStartup})
            for (const auto& name : NewFolderFiles(csidl))
                all.push_back("lnk " + std::to_string(csidl) + " " + name + " -> " + Target(csidl, name));
        std::sort(all.begin(), all.end());
        return all;
    }

    std::string SettingsFile() { return machine_.Files().Environ("Appdata") + "\\Corvane Pulse\\Settings.ini"; }
    storage::IniFile& Ini(const std::string& s) { ini_.IniFilePath(SettingsFile()); ini_.IniSection(s); return ini_; }
    std::string StartupFolder(int csidl) { return storage::GetSpecialFolder(machine_.Shell(), csidl); }
    std::string Path(int csidl, const std::string& name) { return StartupFolder(csidl) + "\\" + name; }
    // The plain files of a Startup folder that the test made, sorted.
    std::vector<std::string> NewFolderFiles(int csidl) {
        std::vector<std::string> made;
        for (const auto& name : storage::DirNormalFiles(machine_.Files(), Path(csidl, "*.*")))
            if (!before_.count(Path(csidl, name))) made.push_back(name);
        std::sort(made.begin(), made.end());
        return made;
    }
    void RemoveNewFolderFiles() {
        for (int c : {platform::kCsidlCommonStartup, platform::kCsidlStartup})
            for (const auto& n : NewFolderFiles(c))
                machine_.RemoveFileAttributes(Path(c, n), platform::kAttrReadOnly), machine_.Files().Kill(Path(c, n));
    }
    void Shortcut(int csidl, const std::string& name, const std::string& target) {
        ASSERT_TRUE(machine_.Shell().SaveShortcut(Path(csidl, name), target, target + ",0", 1)) << name;
    }
    std::string Target(int c, const std::string& n) { return storage::GetShortcutTarget(machine_.Shell(), Path(c, n)); }

private:
    struct SavedValue { const char *key, *name; std::optional<RawValue> before; };

    void ClearKeys() {
        for (auto root : {HKLM, HKCU})
            for (const char* key : {"Run", "RunOnce", "RunServices", "RunServiceOnce"})
                DeleteTree(registry_, root, std::string(kRunBase) + key);
        const std::pair<const char*, const char*> keys[] = {{kRdpwd, "\\AutorunsDisabled"}, {kServiceKey, ""},
            {kWinlogon, "\\AutorunsDisabled"}, {kBhoBase, kTestClsid}, {kBhoBase, "AutorunsDisabled"}};
        for (const auto& [key, below] : keys) DeleteTree(registry_, HKLM, std::string(key) + below);
    }

    TestMachine& machine_;
    platform::RegistryPort& registry_;
    storage::IniFile ini_{machine_.Files()};
    SavedValue logonValues_[3] = {{kRdpwd, "StartupPrograms", {}}, {kWinlogon, "Userinit", {}}, {kWinlogon, "Shell", {}}};
    bool rdpwdExisted_ = false;
    std::set<std::string> before_;
};

}  // namespace tessmark::testing

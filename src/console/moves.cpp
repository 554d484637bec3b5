#include "console/moves.h"

#include "catalogue/sections.h"
#include "storage/IniFile.h"
#include "storage/modStartup.h"
#include "vb/vb.h"

namespace tessmark::console {

using discovery::ItemPlace;
namespace reg = platform::reg;

namespace {

std::string NoTrailingBackslash(std::string key) {
    while (!key.empty() && key.back() == '\\') key.pop_back();
    return key;
}

// A Startup item disabled by this program keeps its file here, beside Settings.ini,
// in a folder named after its section ("...\Corvane Pulse\All Users\Startup").
std::string CopyFolder(platform::FilesPort& files, const std::string& section) {
    return SideFolder(files) + "\\" + section;
}

// The disabled key left empty by an enable goes, as it was before the first disable.
void DropIfEmpty(platform::RegistryPort& registry, platform::RegHandle root, const std::string& key) {
    platform::RegHandle handle = 0;
    if (registry.RegOpenKeyExA(root, key.c_str(), 0, reg::kRead, &handle) != 0) return;
    std::uint32_t subKeys = 1, values = 1;
    const bool empty = registry.RegQueryInfoKeyA(handle, &subKeys, &values) == 0 && subKeys == 0 && values == 0;
    registry.RegCloseKey(handle);
    if (empty) registry.RegDeleteKeyA(root, key.c_str());
}

// A registry value moves with its type and every byte.
Outcome MoveValue(Places& places, const Slot& from, const Slot& to) {
    return places.Move({from, to}, [&](const std::vector<State>& before, std::vector<State>& want) -> std::string {
        if (!before[0]) return from.Text() + " is gone";
        if (before[1]) return to.Text() + " already exists";
        want[0].reset();
        want[1] = before[0];
        return {};
    });
}

// ---- list members

std::string Unquoted(const std::string& text) { return vb::Trim(vb::Replace(text, "\"", "")); }

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> fields(1);
    for (char c : text) {
        if (c == separator) fields.emplace_back();
        else fields.back().push_back(c);
    }
    return fields;
}

std::string Join(const std::vector<std::string>& fields, char separator) {
    std::string text;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i) text += separator;
        text += fields[i];
    }
    return text;
}

// The list text up to its NUL, and the bytes from there on, which stay as they are.
std::pair<std::string, std::string> TextAndTail(const std::string& bytes) {
    const std::size_t nul = bytes.find('\0');
    if (nul == std::string::npos) return {bytes, {}};
    return {bytes.substr(0, nul), bytes.substr(nul)};
}

Outcome MoveMember(Places& places, const Slot& from, const Slot& to, const std::string& member, bool emptiedGoes) {
    const char separator = vb::TextEquals(to.name, "Shell") ? ' ' : ',';
    return places.Move({from, to}, [&](const std::vector<State>& before, std::vector<State>& want) -> std::string {
        if (!before[0]) return from.Text() + " is gone";
        auto [text, tail] = TextAndTail(before[0]->bytes);
        std::vector<std::string> fields = Split(text, separator);
        std::size_t at = 0;
        while (at < fields.size() && (fields[at].empty() || Unquoted(fields[at]) != Unquoted(member))) ++at;
        if (at == fields.size()) return "\"" + member + "\" is no longer in " + from.Text();
        const std::string moved = vb::Trim(fields[at]);
        // The member goes with the separator behind it, or, when last, the one before it.
        fields.erase(fields.begin() + static_cast<long>(at));
        const std::string left = Join(fields, separator);
        if (left.empty() && emptiedGoes) want[0].reset();
        else want[0] = Content{before[0]->type, left + tail};

        if (!before[1]) {
            want[1] = Content{reg::kSz, moved + '\0'};
        } else {
            // Into an empty list alone; before a closing separator, which stays.
            auto [list, listTail] = TextAndTail(before[1]->bytes);
            std::vector<std::string> members = Split(list, separator);
            if (vb::Trim(list).empty()) members = {moved};
            else if (members.size() > 1 && vb::Trim(members.back()).empty()) members.insert(members.end() - 1, moved);
            else members.push_back(moved);
            want[1] = Content{before[1]->type, Join(members, separator) + listTail};
        }
        return {};
    });
}

// ---- Startup files and their Settings.ini lines

std::string LineKey(const std::string& fileName) {
    return vb::TextEquals(vb::Right(fileName, 4), ".lnk") ? vb::Left(fileName, vb::Len(fileName) - 4) : fileName;
}

Outcome DisableShortcut(platform::Ports ports, Places& places, const Record& record,
                        const catalogue::ItemSection& entry) {
    const Slot lnk{0, {}, {}, record.place.key + "\\" + record.place.name};
    const Slot copy{0, {}, {}, CopyFolder(ports.files, record.section) + "\\" + record.place.name};
    const Slot ini{0, {}, {}, SideFolder(ports.files) + "\\Settings.ini"};
    const std::string section(entry.disabled.settingsSection), key = LineKey(record.place.name);
    std::string target = storage::GetShortcutTarget(ports.shell, lnk.file);
    if (target == storage::kShortcutError) target = record.rawPath;
    return places.Move({lnk, copy, ini}, [&](const std::vector<State>& before, std::vector<State>& want) -> std::string {
        if (!before[0]) return lnk.file + " is gone";
        const std::string text = before[2] ? before[2]->bytes : std::string();
        if (storage::IniTextWithoutKey(text, section, key)) return ini.file + " already has a line \"" + key + "\"";
        want[0].reset();
        want[1] = before[0];
        want[2] = Content{0, storage::IniTextWithValue(text, section, key, target)};
        return {};
    });
}

Outcome EnableShortcut(platform::Ports ports, Places& places, const Record& record,
                       const catalogue::ItemSection& entry) {
    const std::string folder = storage::GetSpecialFolder(ports.shell, entry.enabled.shellFolder);
    if (folder.empty()) return {4, "the shell names no folder for " + record.section};
    const std::string key = record.place.name, section = record.place.key;
    // The file this program kept, or else a shortcut made as the window makes one.
    std::string fileName = key + ".lnk";
    const std::string copies = CopyFolder(ports.files, record.section);
    if (!ports.files.FileExists(copies + "\\" + fileName) && ports.files.FileExists(copies + "\\" + key))
        fileName = key;
    const Slot lnk{0, {}, {}, folder + "\\" + fileName};
    const Slot copy{0, {}, {}, copies + "\\" + fileName};
    const Slot ini{0, {}, {}, SideFolder(ports.files) + "\\Settings.ini"};
    return places.Move({copy, lnk, ini}, [&](const std::vector<State>& before, std::vector<State>& want) -> std::string {
        if (before[1]) return lnk.file + " already exists";
        const auto text = storage::IniTextWithoutKey(before[2] ? before[2]->bytes : std::string(), section, key, true);
        if (!text) return ini.file + " no longer has the line \"" + key + "\"";
        // A file emptied of its last line goes, as it was before the first disable.
        if (text->empty()) want[2].reset();
        else want[2] = Content{0, *text};
        want[1] = before[0] ? before[0] : Content{0, record.rawPath, true};
        want[0].reset();
        return {};
    });
}

Outcome Act(platform::Ports ports, const Record& record, bool disable) {
    const catalogue::ItemSection* entry = catalogue::FindItemSection(record.section);
    if (!entry) return {4, "no section " + record.section};
    Places places(ports);
    const ItemPlace& place = record.place;
    const catalogue::Location& other = disable ? entry->disabled : entry->enabled;
    const std::string otherKey = NoTrailingBackslash(std::string(other.subKey));
    const Slot here{place.root, NoTrailingBackslash(place.key), place.name, {}};
    Outcome outcome{4, "this kind of item cannot be moved"};
    switch (place.kind) {
        case ItemPlace::Kind::Value:
            outcome = MoveValue(places, here, {place.root, otherKey, place.name, {}});
            break;
        case ItemPlace::Kind::ListMember:
            outcome = MoveMember(places, here, {other.root, otherKey, std::string(other.valueName), {}}, place.member,
                                 !disable);
            break;
        case ItemPlace::Kind::Shortcut:
            if (disable) outcome = DisableShortcut(ports, places, record, *entry);
            break;
        case ItemPlace::Kind::SettingsLine:
            if (!disable) outcome = EnableShortcut(ports, places, record, *entry);
            break;
        case ItemPlace::Kind::None:
            break;
    }
    if (outcome.code == 0 && !disable && place.kind != ItemPlace::Kind::SettingsLine)
        DropIfEmpty(ports.registry, place.root, here.key);
    return outcome;
}

}  // namespace

Outcome DisableItem(platform::Ports ports, const Record& record) { return Act(ports, record, true); }
Outcome EnableItem(platform::Ports ports, const Record& record) { return Act(ports, record, false); }

}  // namespace tessmark::console

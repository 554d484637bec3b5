#include "discovery/Logon.h"

#include "catalogue/sections.h"
#include "discovery/GetExeName.h"
#include "registry/registry_module.h"
#include "registry/regenum.h"
#include "storage/filesearch.h"
#include "vb/vb.h"

namespace tessmark::discovery {

using platform::RegHandle;

namespace {

// The six copies of the logon walk, as their differences.
struct LogonVariant {
    const char* valueName;
    int enabledType;
    int disabledType;  // 0: the name alone decides
    const char* separator;
    bool trimBothEnds;
    bool textEarly;
    bool tailTrimmedTest;  // enabled pass only
    const char* disabledLoopFlag;
};

constexpr LogonVariant kVariants[] = {
    {"StartupPrograms", 1, 0, ",", false, true, true, "NO"},
    {"Userinit", 2, 2, ",", false, false, false, "No"},
    {"Shell", 3, 3, " ", true, true, false, "No"},
};

struct Section {
    std::string path;
    std::string tag;
};

// Any type but 1, 2 or 3 files its rows under an empty section and tag.
Section SectionOf(int logonType) {
    const catalogue::ItemSection* entry = catalogue::FindLogonSection(logonType);
    if (!entry) return {};
    return {std::string(entry->path), std::string(entry->tag.text())};
}

void AddLogonRow(ScanContext& form, std::string piece, const LogonVariant& variant, const Section& section,
                 const char* flag, ItemPlace place) {
    // The row is built apart and added last: the file search below pumps
    // messages, and a handler may clear the list meanwhile.
    ItemRow row;
    if (variant.textEarly) row.Text = piece;
    // Only a backslash more than one character from the end cuts the piece.
    long fromEnd = vb::InStr(vb::StrReverse(piece), "\\");
    if (fromEnd > 2) piece = vb::Right(piece, fromEnd - 1);
    if (!variant.textEarly) row.Text = piece;
    if (vb::Right(piece, 4) != ".exe") piece += ".exe";

    auto& files = form.ports.files;
    const std::string& windows = form.folders.windowsFolder;
    if (files.FileExists(windows + "\\" + piece)) {
        row.SubItems(1) = windows + "\\" + piece;
    } else if (files.FileExists(windows + "\\System\\" + piece)) {
        row.SubItems(1) = windows + "\\System\\" + piece;
    } else if (files.FileExists(windows + "\\System32\\" + piece)) {
        row.SubItems(1) = windows + "\\System32\\" + piece;
    } else {
        auto found = storage::FindFiles(files, form.ports.ui, form.folders.programFilesFolder, piece, 1);
        if (!found.empty()) row.SubItems(1) = found.front();
    }
    row.SubItems(2) = flag;
    row.SubItems(3) = section.path;
    row.SmallIcon = form.RowIcon(row.SubItems(1));
    row.Tag = std::string(section.tag);
    row.Place = std::move(place);
    form.ListView1.Add() = std::move(row);
}

void AddLogonValue(ScanContext& form, RegHandle key, const std::string& keyPath, const std::string& rawName,
                   const LogonVariant& variant, const Section& section, bool enabled) {
    std::string text = CleanValueText(registry::QueryRegValue(form.ports.registry, key, rawName));
    if (variant.trimBothEnds) text = vb::LTrim(text);

    auto place = [&](const std::string& member) {
        return ItemPlace{ItemPlace::Kind::ListMember, platform::reg::kLocalMachine, keyPath,
                         storage::StripAtNull(rawName), member};
    };
    auto pump = [&] {
        if (enabled) form.ports.ui.DoEvents();
    };
    for (long p = vb::InStr(text, variant.separator); p > 0; p = vb::InStr(text, variant.separator)) {
        std::string piece = vb::Left(text, p - 1);
        const std::string member = piece;
        std::string reduced = GetExeName(piece, form.folders);
        text = vb::Mid(text, p + 1);
        pump();
        AddLogonRow(form, reduced, variant, section, enabled ? "Yes" : variant.disabledLoopFlag, place(member));
    }
    bool tail = enabled && variant.tailTrimmedTest ? !vb::Trim(text).empty() : !text.empty();
    if (tail) {
        const std::string member = text;
        std::string reduced = GetExeName(text, form.folders);
        pump();
        AddLogonRow(form, reduced, variant, section, enabled ? "Yes" : "No", place(member));
    }
}

void LogonPass(ScanContext& form, const std::string& subKey, int logonType, const Section& section, bool enabled) {
    auto& registry = form.ports.registry;
    RegHandle key = registry::OpenRegKey(registry, platform::reg::kLocalMachine, subKey);
    long count = registry::CountRegEntries(registry, key, 0);
    for (long i = 0; i <= count - 1; ++i) {
        std::string rawName = registry::EnumRegValueName(registry, key, i);
        std::string name = rawName;
        std::string reduced = GetExeName(name, form.folders);
        for (const LogonVariant& variant : kVariants) {
            int type = enabled ? variant.enabledType : variant.disabledType;
            if (reduced == variant.valueName && (type == 0 || logonType == type))
                AddLogonValue(form, key, subKey, rawName, variant, section, enabled);
        }
    }
    registry.RegCloseKey(key);
}

}  // namespace

std::string CleanValueText(const std::string& text) {
    std::string s = vb::Replace(text, "\"", "");
    const std::string nul(1, '\0');
    if (vb::InStr(s, nul) > 0) s = vb::Left(s, vb::InStr(s, nul) - 1);
    return vb::RTrim(s);
}

void AddLogon(ScanContext& form, const std::string& keyPath, vb::Integer logonType) {
    form.HourglassUnlessTimer();
    Section section = SectionOf(logonType);
    LogonPass(form, keyPath, logonType, section, true);
    LogonPass(form, keyPath + "\\AutorunsDisabled", logonType, section, false);
    form.ports.ui.SetMousePointer(platform::kMousePointerDefault);
}

std::string LogonKey(vb::Integer logonType) {
    const catalogue::ItemSection* entry = catalogue::FindLogonSection(logonType);
    return entry ? std::string(entry->enabled.subKey) : std::string();
}

void AddLogonFolder(ScanContext& form, const std::string& keyPath, const std::string& valueName,
                    const std::string& program) {
    auto& registry = form.ports.registry;
    RegHandle key = registry::OpenRegKey(registry, platform::reg::kLocalMachine, keyPath);
    long count = registry::CountRegEntries(registry, key, 0);
    std::string text;
    for (long i = 0; i <= count - 1; ++i) {
        std::string name = registry::EnumRegValueName(registry, key, i);
        std::string reduced = GetExeName(name, form.folders);
        if (vb::UCase(reduced) == vb::UCase(valueName)) text = registry::QueryRegValue(registry, key, reduced);
    }
    text = CleanValueText(text);
    if (!text.empty()) {
        if (valueName == "Shell") text += " ";
        else if (vb::Right(vb::Trim(text), 1) != ",") text += ",";
    }
    text += program;
    registry::SetRegString(registry, platform::reg::kLocalMachine, keyPath, valueName, text);
    registry.RegCloseKey(key);
}

}  // namespace tessmark::discovery

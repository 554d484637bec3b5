#include "console/records.h"

#include <map>
#include <tuple>

#include "discovery/Logon.h"
#include "discovery/RowServices.h"
#include "discovery/RunKeys.h"
#include "discovery/ScanContext.h"
#include "discovery/StartupFolders.h"
#include "storage/IniFile.h"
#include "storage/filesearch.h"
#include "storage/modStartup.h"
#include "ui/CFileVersionInfo.h"
#include "vb/vb.h"

namespace tessmark::console {

using discovery::ItemPlace;

std::string SideFolder(platform::FilesPort& files) { return files.Environ("Appdata") + "\\Corvane Pulse"; }

std::string LocationText(const ItemPlace& place, const std::string& sideFolder) {
    std::string key = place.key;
    while (!key.empty() && key.back() == '\\') key.pop_back();
    const std::string root = place.root == platform::reg::kCurrentUser ? "HKCU\\" : "HKLM\\";
    switch (place.kind) {
        case ItemPlace::Kind::Value: return root + key + " [" + place.name + "]";
        case ItemPlace::Kind::ListMember: return root + key + " [" + place.name + "] " + place.member;
        case ItemPlace::Kind::Shortcut: return key + "\\" + place.name;
        case ItemPlace::Kind::SettingsLine: return sideFolder + "\\Settings.ini [" + key + "] " + place.name;
        case ItemPlace::Kind::None: break;
    }
    return {};
}

namespace {

std::string Hex(const platform::Sha256Digest& digest) {
    static const char kDigits[] = "0123456789abcdef";
    std::string text;
    for (auto byte : digest) text += {kDigits[byte >> 4], kDigits[byte & 15]};
    return text;
}

// The scanners of the window's nodes "Registry" and "Startup Folder", in its order.
void Scan(discovery::ScanContext& form) {
    using namespace discovery;
    AddRun(form, false);
    AddRunOnce(form, false);
    AddRunServices(form, false);
    AddRunServiceOnce(form, false);
    for (vb::Integer type = 1; type <= 3; ++type) AddLogon(form, LogonKey(type), type);
    AddRun(form, true);
    AddRunOnce(form, true);
    AddRunServices(form, true);
    AddStartupAllUser(form);
    AddStartupCurrUser(form);
}

}  // namespace

std::vector<Record> ListItems(platform::Ports ports, platform::CodecPort& codec, bool hash) {
    discovery::SystemFolders folders{ports.files.Environ("windir"), ports.files.Environ("ProgramFiles")};
    discovery::ItemList list;
    discovery::ImageStore images;
    discovery::PictureBox picture;
    platform::ShFileInfo shellRecord{};
    storage::IniFile ini(ports.files);
    const bool timerEnabled = false;
    discovery::ScanContext form{ports, folders, list, images, picture, shellRecord, ini, timerEnabled};
    // The list's image 1 is the program's own icon, as in the window.
    images.Add({0, 101, false});
    Scan(form);

    std::vector<std::string> rawPaths;
    for (const auto& row : list.Rows()) rawPaths.push_back(row->SubItems(1));
    std::string total, active;
    discovery::refreshCheckBox(list, total, active, [] {});

    const std::string side = SideFolder(ports.files);
    std::vector<Record> records;
    std::map<std::string, std::pair<std::string, std::string>> details;  // program and description of a path
    for (std::size_t i = 0; i < list.Rows().size(); ++i) {
        const discovery::ItemRow& row = *list.Rows()[i];
        Record r;
        r.name = storage::StripAtNull(row.Text);
        r.path = storage::StripAtNull(row.SubItems(1));
        r.enabled = row.SubItems(2) == "Yes";
        r.section = row.SubItems(3);
        r.place = row.Place;
        r.location = LocationText(row.Place, side);
        r.rawPath = storage::StripAtNull(rawPaths[i]);
        // A shortcut whose target could not be read names no program.
        const bool unreadable = r.place.kind == ItemPlace::Kind::Shortcut && r.rawPath == storage::kShortcutError;
        // As the details panel reduces it, but from the path as scanned: a
        // missing file keeps its name.
        std::string path = r.rawPath;
        std::string once = discovery::GetExeName(path, folders);
        const std::string reduced = discovery::GetExeName(once, folders);
        // A program named by many entries is read once.
        auto known = details.find(reduced);
        if (known == details.end()) {
            ui::CFileVersionInfo info(ports.files, ports.shell);
            if (!r.rawPath.empty() && !unreadable) vb::Resume([&] { info.FullPathName(reduced); });
            known = details.emplace(reduced, std::make_pair(info.FullPathName(), info.FileDescription())).first;
        }
        std::tie(r.program, r.description) = known->second;
        r.exists = !r.program.empty() && ports.files.FileExists(r.program);
        std::string bytes;
        platform::Sha256Digest digest{};
        if (hash && r.exists && ports.files.ReadWholeFile(r.program, &bytes) && codec.Sha256(bytes, &digest))
            r.sha256 = Hex(digest);
        records.push_back(std::move(r));
    }
    return records;
}

}  // namespace tessmark::console

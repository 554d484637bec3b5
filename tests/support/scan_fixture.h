#pragma once
// A main form's worth of list state on a test machine, for driving scanners,
// with helpers to seed registry values and read rows back as the user sees them.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "discovery/ScanContext.h"
#include "machine.h"
#include "storage/modStartup.h"

namespace tessmark::testing {

struct RowView {
    std::string text, path, flag, section, tag;
    auto operator<=>(const RowView&) const = default;
};

inline void PrintTo(const RowView& row, std::ostream* out) {
    *out << "{" << row.text << " | " << row.path << " | " << row.flag << " | " << row.section << " | " << row.tag << "}";
}

// Text as the list shows it: up to the first NUL.
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

class ScanFixture : public ::testing::Test {
public:
    std::unique_ptr<TestMachine> machine = MakeTestMachine();
    // A folder whose path holds nothing the reduction cuts at (no hyphen, comma
    // or blank), standing in for windir and ProgramFiles so lookups see only
    // the files a test makes.
    std::string scratch = machine->ScratchFolder("TessmarkScan");
    discovery::SystemFolders folders{scratch + "\\Windows", scratch + "\\Programs"};
    discovery::ItemList list;
    discovery::ImageStore images;
    discovery::PictureBox picture;
    platform::ShFileInfo record{};
    storage::IniFile ini{machine->Files()};
    bool timer1Enabled = false;
    discovery::ScanContext form{machine->Ports(), folders, list, images, picture, record, ini, timer1Enabled};

    static constexpr platform::RegHandle HKLM = platform::reg::kLocalMachine;
    static constexpr platform::RegHandle HKCU = platform::reg::kCurrentUser;

    // Makes the file and the folders above it.
    void Touch(const std::string& path) {
        std::string folder = path;
        storage::MakeFolderPath(machine->Files(), folder);
        ASSERT_TRUE(machine->Files().WriteWholeFile(path, "MZ")) << path;
    }

    std::vector<RowView> Rows() { return RowViews(list); }
};

}  // namespace tessmark::testing

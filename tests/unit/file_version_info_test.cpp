// The file version reader: formats, tables, the 0409 fall-back and stale values.
#include <gtest/gtest.h>

#include <cstring>
#include <map>

#include "null_disk.h"
#include "ui/CFileVersionInfo.h"

using namespace tessmark;

namespace {

// A shell whose version blocks are maps from sub-block to bytes; enough to
// drive the reader through every branch.
class VersionShell : public tessmark::testing::NullDisk {
public:
    std::map<std::string, std::map<std::string, std::vector<std::uint8_t>>> files;

    std::uint32_t GetFileVersionInfoSizeA(const char* path) override { return files.count(path) ? 100 : 0; }
    bool GetFileVersionInfoA(const char* path, std::vector<std::uint8_t>* block) override {
        block->assign(path, path + std::strlen(path));
        return true;
    }
    bool VerQueryValueA(const std::vector<std::uint8_t>& block, const char* sub,
                        std::vector<std::uint8_t>* value) override {
        auto& entries = files[std::string(block.begin(), block.end())];
        auto it = entries.find(sub);
        if (it == entries.end()) return false;
        *value = it->second;
        return true;
    }
    std::uint32_t VerLanguageNameA(std::uint32_t language, char* buffer, std::uint32_t size) override {
        std::string name = language == 0x0409 ? "English (United States)" : language == 0x0407 ? "German (Germany)" : "";
        std::memcpy(buffer, name.c_str(), std::min<std::size_t>(name.size() + 1, size));
        return static_cast<std::uint32_t>(name.size());
    }
    std::uint32_t GetFullPathNameA(const char* path, std::uint32_t length, char* buffer) override {
        std::string full = path[0] == '\0' ? "" : std::string("C:\\") + path;
        if (full.empty()) return 0;
        if (full.size() + 1 > length) return static_cast<std::uint32_t>(full.size() + 1);
        std::memcpy(buffer, full.c_str(), full.size() + 1);
        return static_cast<std::uint32_t>(full.size());
    }

    void AddFile(const std::string& name, std::uint32_t fileMS, std::uint32_t fileLS, std::uint32_t flags,
                 std::uint32_t os, std::uint32_t type, std::uint32_t subtype) {
        std::uint32_t fixed[13] = {0xFEEF04BD, 0x00010000, fileMS, fileLS, fileMS, fileLS, 0x3F, flags, os, type, subtype, 0, 0};
        auto& entries = files["C:\\" + name];
        entries["\\"].assign(reinterpret_cast<std::uint8_t*>(fixed), reinterpret_cast<std::uint8_t*>(fixed) + 52);
    }
    void AddTranslation(const std::string& name, std::uint16_t language, std::uint16_t codePage) {
        std::uint32_t entry = language | (static_cast<std::uint32_t>(codePage) << 16);
        auto& bytes = files["C:\\" + name]["\\VarFileInfo\\Translation"];
        bytes.assign(reinterpret_cast<std::uint8_t*>(&entry), reinterpret_cast<std::uint8_t*>(&entry) + 4);
    }
    void AddString(const std::string& name, const std::string& block, const std::string& key, const std::string& text) {
        auto& bytes = files["C:\\" + name]["\\StringFileInfo\\" + block + "\\" + key];
        bytes.assign(text.begin(), text.end());
        bytes.push_back(0);
    }
};

struct FileVersionInfo : ::testing::Test {
    VersionShell shell;
    ui::CFileVersionInfo info{shell, shell};
};

TEST(VersionFormat, FourPartFormWithoutPointInTheBuild) {
    struct Case { std::uint32_t ms, ls; const char* want; } cases[] = {
        {0x00050001, 0x0A280000, "5.01.260000"},  // 5.1.2600.0
        {0x00010002, 0x00000003, "1.02.0003"},    // 1.2.0.3
        {0x000A000C, 0x00000000, "10.12.0000"},
        {0x00010000, 0x00010002, "1.00.0102"},    // 1.0.1.2
        {0x00010000, 0xFFFF0005, "1.00.0005"},    // a build high word that is negative as 16 bits
    };
    for (const auto& c : cases) EXPECT_EQ(ui::FormatVersion(c.ms, c.ls), c.want);
    EXPECT_EQ(ui::HexPadded(0x409, 4), "0409");
    EXPECT_EQ(ui::HexPadded(0x4B0, 4), "04B0");
}

TEST_F(FileVersionInfo, FixedInfoTablesAndFlags) {
    struct Case { std::uint32_t flags, os, type, subtype; const char *wantFlags, *wantOs, *wantType, *wantSubtype; } cases[] = {
        {3, 0x40004, 1, 0, "Debug PreRel", "NT-Win32", "Application", ""},
        {0x3F, 0x10001, 3, 7, "Debug PreRel Patched Private Info Special", "DOS-Win16", "Driver", "System drv"},
        {0, 0x99, 4, 3, "", "Unknown", "Font", "TrueType Font"},
        {16, 0x30003, 6, 0, "Info", "OS/2-16 PM-32", "Unknown", ""},
    };
    int n = 0;
    for (const auto& c : cases) {
        std::string name = "f" + std::to_string(n++) + ".exe";
        shell.AddFile(name, 0x00010000, 0, c.flags, c.os, c.type, c.subtype);
        ui::CFileVersionInfo fresh(shell, shell);
        fresh.FullPathName(name);
        EXPECT_TRUE(fresh.Available());
        EXPECT_EQ(fresh.FileFlags(), c.wantFlags);
        EXPECT_EQ(fresh.FileOS(), c.wantOs);
        EXPECT_EQ(fresh.FileType(), c.wantType);
        EXPECT_EQ(fresh.FileSubType(), c.wantSubtype);
        EXPECT_EQ(fresh.VerStructure(), "1.0");
    }
}

TEST_F(FileVersionInfo, UnknownSubtypeLeavesThePreviousFilesText) {
    shell.AddFile("a.sys", 0x00010000, 0, 0, 0x40004, 3, 4);
    shell.AddFile("b.sys", 0x00010000, 0, 0, 0x40004, 3, 11);
    info.FullPathName("a.sys");
    info.FullPathName("b.sys");
    EXPECT_EQ(info.FileSubType(), "Display drv");
}

TEST_F(FileVersionInfo, StringsComeFromTheTranslatedBlockOrFromEnglishWithTheSameCodePage) {
    shell.AddFile("de.exe", 0x00010000, 0, 0, 0x40004, 1, 0);
    shell.AddTranslation("de.exe", 0x0407, 0x04B0);
    shell.AddString("de.exe", "040704B0", "ProductName", "Deutsch");
    shell.AddString("de.exe", "040904B0", "CompanyName", "Quillon");
    shell.AddString("de.exe", "040904B0", "ProductName", "English");
    info.FullPathName("de.exe");
    EXPECT_EQ(info.Language(), "German (Germany)");
    EXPECT_EQ(info.CompanyName(), "Quillon");
    EXPECT_EQ(info.ProductName(), "English");  // the fall-back block serves every later read

    shell.AddFile("plain.exe", 0x00010000, 0, 0, 0x40004, 1, 0);
    shell.AddTranslation("plain.exe", 0x0409, 0x04E4);
    shell.AddString("plain.exe", "040904E4", "FileDescription", "Plain");
    info.FullPathName("plain.exe");
    EXPECT_EQ(info.CompanyName(), "");
    EXPECT_EQ(info.ProductName(), "");  // a missing string overwrites the old one
    EXPECT_EQ(info.FileDescription(), "Plain");
    EXPECT_EQ(info.PredefinedValue(3), "Plain");
}

TEST_F(FileVersionInfo, FileWithoutVersionKeepsThePreviousTexts) {
    ui::CFileVersionInfo fresh(shell, shell);
    fresh.FullPathName("none.exe");
    EXPECT_FALSE(fresh.Available());
    EXPECT_EQ(fresh.ProductName(), "");
    EXPECT_EQ(fresh.VerFile(), "");

    shell.AddFile("v.exe", 0x00050001, 0x0A280000, 0, 0x40004, 1, 0);
    shell.AddTranslation("v.exe", 0x0409, 0x04B0);
    shell.AddString("v.exe", "040904B0", "ProductName", "Product");
    info.FullPathName("v.exe");
    info.FullPathName("none.exe");
    EXPECT_FALSE(info.Available());
    EXPECT_EQ(info.ProductName(), "Product");
    EXPECT_EQ(info.VerFile(), "5.01.260000");
    EXPECT_EQ(info.FullPathName(), "C:\\none.exe");
}

TEST_F(FileVersionInfo, NoTranslationTableEndsTheRefreshAfterTheFixedPart) {
    shell.AddFile("v.exe", 0x00010000, 0, 0, 0x40004, 1, 0);
    shell.AddTranslation("v.exe", 0x0409, 0x04B0);
    shell.AddString("v.exe", "040904B0", "CompanyName", "Old");
    info.FullPathName("v.exe");
    shell.AddFile("bare.dll", 0x00020000, 0, 0, 0x40004, 2, 0);
    info.FullPathName("bare.dll");
    EXPECT_TRUE(info.Available());
    EXPECT_EQ(info.FileType(), "DLL");
    EXPECT_EQ(info.VerFile(), "2.00.0000");
    EXPECT_EQ(info.CompanyName(), "Old");
}

TEST_F(FileVersionInfo, FailedFullPathChangesNothing) {
    shell.AddFile("v.exe", 0x00010000, 0, 0, 0x40004, 1, 0);
    info.FullPathName("v.exe");
    info.FullPathName("");
    EXPECT_EQ(info.FullPathName(), "C:\\v.exe");
    EXPECT_EQ(info.PredefinedName(15), "");
    EXPECT_EQ(info.PredefinedName(-1), "");
    EXPECT_EQ(info.PredefinedName(13), "LegalTrademarks1");
}

}  // namespace

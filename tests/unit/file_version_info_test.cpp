// The file version reader: formats, tables, the 0409 fall-back and stale values.
#include <gtest/gtest.h>

#include <map>
#include <optional>

#include "platform/memory/memory_disk.h"
#include "ui/CFileVersionInfo.h"

using namespace tessmark;
using platform::memory::VersionResource;

namespace {

using Strings = std::map<std::string, std::map<std::string, std::string>>;

VersionResource Resource(platform::memory::FixedFileInfo fixed,
                         std::vector<platform::memory::Translation> translations = {}, Strings strings = {}) {
    return {fixed, std::move(translations), std::move(strings)};
}

struct FileVersionInfo : ::testing::Test {
    platform::memory::MemoryDisk disk;
    ui::CFileVersionInfo info{disk, disk};

    // Reads "C:\<name>", which exists with the resource if one is given.
    void Read(const std::string& name, const std::optional<VersionResource>& resource = std::nullopt) {
        if (resource) {
            disk.AddFile("C:\\" + name, "MZ");
            disk.SetVersionResource("C:\\" + name, *resource);
        }
        info.FullPathName(name.empty() ? "" : "C:\\" + name);
    }
};

// The four-part form has no point before the build; a build high word negative as 16 bits counts for nothing.
TEST(VersionFormat, FourPartFormWithoutPointInTheBuild) {
    const std::tuple<std::uint32_t, std::uint32_t, const char*> cases[] = {{0x00010002, 3, "1.02.0003"},
        {0x000A000C, 0, "10.12.0000"}, {0x00010000, 0x00010002, "1.00.0102"}, {0x00010000, 0xFFFF0005, "1.00.0005"}};
    for (const auto& [ms, ls, want] : cases) EXPECT_EQ(ui::FormatVersion(ms, ls), want);
}

// An unknown subtype leaves the previous file's text.
TEST_F(FileVersionInfo, FixedInfoTablesAndFlags) {
    struct Case { std::uint32_t flags, os, type, subtype; const char* want; } cases[] = {
        {0xFF, 0x10001, 3, 7, "Debug PreRel Patched Private Info Special|DOS-Win16|Driver|System drv"},
        {0, 0x40004, 3, 11, "|NT-Win32|Driver|System drv"}, {0, 0x99, 4, 3, "|Unknown|Font|TrueType Font"},
        {16, 0x30003, 6, 0, "Info|OS/2-16 PM-32|Unknown|TrueType Font"},
        {2, 0x10004, 1, 0, "PreRel|DOS-Win32|Application|TrueType Font"}, {4, 0x20002, 2, 0, "Patched|OS/2-16 PM-16|DLL|TrueType Font"},
        {8, 0, 5, 0, "Private|Unknown|VxD|TrueType Font"}, {32, 0, 7, 1, "Special|Unknown|Lib|TrueType Font"},
        {0, 0, 4, 1, "|Unknown|Font|Raster Font"}, {0, 0, 4, 2, "|Unknown|Font|Vector Font"},
    };
    for (const auto& c : cases) {
        const std::string name = "f" + std::to_string(&c - cases) + ".exe";
        Read(name, Resource({.fileFlags = c.flags, .fileOS = c.os, .fileType = c.type, .fileSubtype = c.subtype}));
        EXPECT_TRUE(info.Available()) << name;
        EXPECT_EQ(info.FileFlags() + "|" + info.FileOS() + "|" + info.FileType() + "|" + info.FileSubType(), c.want);
        EXPECT_EQ(info.VerStructure(), "1.0");
    }
    std::string drivers;
    for (std::uint32_t subtype = 0; subtype <= 10; ++subtype) {
        Read("d" + std::to_string(subtype) + ".sys", Resource({.fileType = 3, .fileSubtype = subtype}));
        drivers += info.FileSubType() + "|";
    }
    EXPECT_EQ(drivers, "Unknown|Printer drv|Keyboard drv|Language drv|Display drv|Mouse drv|Network drv|System drv|"
                       "Installable|Sound drv|Comm drv|");
}

TEST_F(FileVersionInfo, StringsComeFromTheTranslatedBlockOrFromEnglishWithTheSameCodePage) {
    Read("de.exe", Resource({}, {{0x0407, 0x04B0}}, {{"040704B0", {{"ProductName", "Deutsch"}}},
                             {"040904B0", {{"CompanyName", "Quillon"}, {"ProductName", "English"}}}}));
    EXPECT_EQ(info.Language(), "German");
    EXPECT_EQ(info.CompanyName(), "Quillon");
    EXPECT_EQ(info.ProductName(), "English");  // the fall-back block serves every later read

    Read("plain.exe", Resource({}, {{0x0409, 0x04E4}}, {{"040904E4", {{"FileDescription", "Plain"}}}}));
    EXPECT_EQ(info.CompanyName(), "");
    EXPECT_EQ(info.ProductName(), "");  // a missing string overwrites the old one
    EXPECT_EQ(info.PredefinedValue(3), "Plain");

    // Each predefined string by its name and key, read from a block that holds every key as its own value.
    std::map<std::string, std::string> all;
    for (const char* key : {"Comments", "CompanyName", "FileDescription", "FileVersion", "InternalName", "LegalCopyright",
                            "LegalTrademarks", "OriginalFilename", "ProductName", "ProductVersion", "PrivateBuild",
                            "SpecialBuild", "LegalTrademarks1", "LegalTrademarks2"})
        all[key] = key;
    Read("all.exe", Resource({}, {{0x0409, 0x04B0}}, {{"040904B0", all}}));
    std::string table;
    for (long i = -1; i <= 15; ++i) table += info.PredefinedName(i) + "=" + info.PredefinedValue(i) + "|";
    EXPECT_EQ(table, "=|Language=English|Comments=Comments|Company Name=CompanyName|"
                     "File Description=FileDescription|File Version=FileVersion|Internal Name=InternalName|"
                     "Legal Copyright=LegalCopyright|Legal Trademarks=LegalTrademarks|Original Filename=OriginalFilename|"
                     "Product Name=ProductName|Product Version=ProductVersion|Private Build=PrivateBuild|"
                     "Special Build=SpecialBuild|LegalTrademarks1=LegalTrademarks1|LegalTrademarks2=LegalTrademarks2|=|");
    // The named readers give the same texts.
    const std::string named[] = {info.Language(), info.Comments(), info.CompanyName(), info.FileDescription(),
        info.FileVersion(), info.InternalName(), info.LegalCopyright(), info.LegalTrademarks(), info.OriginalFilename(),
        info.ProductName(), info.ProductVersion(), info.PrivateBuild(), info.SpecialBuild()};
    for (long i = 0; i < 13; ++i) EXPECT_EQ(named[i], info.PredefinedValue(i)) << i;
}

TEST_F(FileVersionInfo, FileWithoutVersionOrTranslationsKeepsThePreviousTexts) {
    Read("none.exe");
    EXPECT_FALSE(info.Available());
    EXPECT_EQ(info.ProductName() + info.VerFile(), "");

    Read("v.exe", Resource({.fileVersionMS = 0x00050001, .fileVersionLS = 0x0A280000}, {{0x0409, 0x04B0}},
                           {{"040904B0", {{"ProductName", "Product"}}}}));
    Read("none.exe");
    EXPECT_FALSE(info.Available());
    EXPECT_EQ(info.ProductName(), "Product");
    EXPECT_EQ(info.VerFile(), "5.01.260000");
    EXPECT_EQ(info.FullPathName(), "C:\\none.exe");
    // Without a translation table the refresh ends after the fixed part.
    Read("bare.dll", Resource({.fileVersionMS = 0x00020000, .fileType = 2}));
    EXPECT_TRUE(info.Available());
    EXPECT_EQ(info.FileType() + " " + info.VerFile(), "DLL 2.00.0000");
    EXPECT_EQ(info.ProductName(), "Product");
    // A path without a full form changes nothing.
    Read("");
    EXPECT_EQ(info.FullPathName(), "C:\\bare.dll");
    EXPECT_EQ(info.PredefinedName(15), "");
    EXPECT_EQ(info.PredefinedName(-1), "");
}

}  // namespace

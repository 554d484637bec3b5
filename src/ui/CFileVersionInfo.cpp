#include "ui/CFileVersionInfo.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "vb/vb.h"

namespace tessmark::ui {

namespace {

struct Predefined {
    const char* name;
    const char* key;
};

constexpr Predefined kPredefined[15] = {
    {"Language", nullptr},
    {"Comments", "Comments"},
    {"Company Name", "CompanyName"},
    {"File Description", "FileDescription"},
    {"File Version", "FileVersion"},
    {"Internal Name", "InternalName"},
    {"Legal Copyright", "LegalCopyright"},
    {"Legal Trademarks", "LegalTrademarks"},
    {"Original Filename", "OriginalFilename"},
    {"Product Name", "ProductName"},
    {"Product Version", "ProductVersion"},
    {"Private Build", "PrivateBuild"},
    {"Special Build", "SpecialBuild"},
    {"LegalTrademarks1", "LegalTrademarks1"},
    {"LegalTrademarks2", "LegalTrademarks2"},
};

constexpr int kCompanyName = 2;

std::uint32_t LoWord(std::uint32_t value) { return value & 0xFFFFu; }
std::uint32_t HiWord(std::uint32_t value) { return value >> 16; }

// VS_FIXEDFILEINFO as 13 double words.
struct FixedInfo {
    std::uint32_t signature, strucVersion, fileVersionMS, fileVersionLS, productVersionMS,
        productVersionLS, fileFlagsMask, fileFlags, fileOS, fileType, fileSubtype, fileDateMS,
        fileDateLS;
};
static_assert(sizeof(FixedInfo) == 52);

std::string OsText(std::uint32_t os) {
    switch (os) {
    case 0x10001: return "DOS-Win16";
    case 0x10004: return "DOS-Win32";
    case 0x20002: return "OS/2-16 PM-16";
    case 0x30003: return "OS/2-16 PM-32";
    case 0x40004: return "NT-Win32";
    default: return "Unknown";
    }
}

const char* DriverSubtype(std::uint32_t subtype) {
    static const char* const kNames[] = {"Unknown",      "Printer drv", "Keyboard drv", "Language drv",
                                         "Display drv",  "Mouse drv",   "Network drv",  "System drv",
                                         "Installable",  "Sound drv",   "Comm drv"};
    return subtype < 11 ? kNames[subtype] : nullptr;
}

const char* FontSubtype(std::uint32_t subtype) {
    switch (subtype) {
    case 1: return "Raster Font";
    case 2: return "Vector Font";
    case 3: return "TrueType Font";
    default: return nullptr;
    }
}

}  // namespace

std::string HexPadded(std::uint32_t value, int width) {
    return vb::Right(std::string(static_cast<std::size_t>(width), '0') + vb::Hex(static_cast<std::int32_t>(value)), width);
}

std::string FormatVersion(std::uint32_t versionMS, std::uint32_t versionLS) {
    std::string text = vb::CStr(static_cast<long>(HiWord(versionMS))) + "." +
                       vb::FormatDigits(static_cast<long>(LoWord(versionMS)), 2) + ".";
    auto buildHigh = static_cast<std::int16_t>(HiWord(versionLS));
    if (buildHigh < 1) return text + vb::FormatDigits(static_cast<long>(LoWord(versionLS)), 4);
    return text + vb::FormatDigits(buildHigh, 2) + vb::FormatDigits(static_cast<long>(LoWord(versionLS)), 2);
}

void CFileVersionInfo::FullPathName(const std::string& path) {
    char buffer[260];
    std::memset(buffer, ' ', sizeof buffer);
    std::uint32_t length = files_.GetFullPathNameA(path.c_str(), sizeof buffer, buffer);
    if (length == 0) return;
    fullPath_ = vb::Left(std::string(buffer, sizeof buffer), static_cast<long>(length));
    Refresh();
}

std::string CFileVersionInfo::PredefinedName(long index) const {
    return index >= 0 && index < 15 ? kPredefined[index].name : std::string();
}

std::string CFileVersionInfo::PredefinedValue(long index) const {
    return index >= 0 && index < 15 ? values_[static_cast<std::size_t>(index)] : std::string();
}

std::string CFileVersionInfo::ReadVersionString(const std::vector<std::uint8_t>& block,
                                                const std::string& stringBlock, const char* key) {
    std::vector<std::uint8_t> value;
    if (!shell_.VerQueryValueA(block, (stringBlock + key).c_str(), &value) || value.empty()) return {};
    const char* text = reinterpret_cast<const char*>(value.data());
    return std::string(text, strnlen(text, value.size()));
}

void CFileVersionInfo::Refresh() {
    if (shell_.GetFileVersionInfoSizeA(fullPath_.c_str()) == 0) {
        available_ = false;  // only this changes: the texts of the previous file stay
        return;
    }
    available_ = true;
    std::vector<std::uint8_t> block;
    shell_.GetFileVersionInfoA(fullPath_.c_str(), &block);
    FixedInfo fixed{};
    std::vector<std::uint8_t> root;
    shell_.VerQueryValueA(block, "\\", &root);
    if (!root.empty()) std::memcpy(&fixed, root.data(), std::min(root.size(), sizeof fixed));

    verStructure_ = vb::CStr(static_cast<long>(HiWord(fixed.strucVersion))) + "." +
                    vb::CStr(static_cast<long>(LoWord(fixed.strucVersion)));
    verFile_ = FormatVersion(fixed.fileVersionMS, fixed.fileVersionLS);
    verProduct_ = FormatVersion(fixed.productVersionMS, fixed.productVersionLS);

    static const char* const kFlagWords[] = {"Debug ", "PreRel ", "Patched ", "Private ", "Info ", "Special "};
    fileFlags_.clear();
    for (int bit = 0; bit < 6; ++bit)
        if (fixed.fileFlags & (1u << bit)) fileFlags_ += kFlagWords[bit];
    fileFlags_ = vb::Trim(fileFlags_);

    fileOS_ = OsText(fixed.fileOS);
    switch (fixed.fileType) {
    case 1: fileType_ = "Application"; break;
    case 2: fileType_ = "DLL"; break;
    case 3:
        fileType_ = "Driver";
        if (const char* name = DriverSubtype(fixed.fileSubtype)) fileSubType_ = name;
        break;
    case 4:
        fileType_ = "Font";
        if (const char* name = FontSubtype(fixed.fileSubtype)) fileSubType_ = name;
        break;
    case 5: fileType_ = "VxD"; break;
    case 7: fileType_ = "Lib"; break;
    default: fileType_ = "Unknown"; break;
    }

    std::vector<std::uint8_t> translation;
    if (!shell_.VerQueryValueA(block, "\\VarFileInfo\\Translation", &translation) || translation.size() < 4)
        return;
    std::uint32_t entry = 0;
    std::memcpy(&entry, translation.data(), 4);
    std::uint32_t language = LoWord(entry), codePage = HiWord(entry);

    char name[256];
    std::memset(name, ' ', sizeof name);
    // The language goes in as a signed 16-bit number, widened with its sign.
    auto widened = static_cast<std::uint32_t>(static_cast<std::int32_t>(static_cast<std::int16_t>(language)));
    std::uint32_t length = shell_.VerLanguageNameA(widened, name, sizeof name);
    values_[0] = length == 0 ? std::string() : vb::Left(std::string(name, sizeof name), static_cast<long>(length));

    std::string stringBlock = "\\StringFileInfo\\" + HexPadded(language, 4) + HexPadded(codePage, 4) + "\\";
    values_[kCompanyName] = ReadVersionString(block, stringBlock, "CompanyName");
    if (values_[kCompanyName].empty()) {
        std::string english = "\\StringFileInfo\\" + HexPadded(0x0409, 4) + HexPadded(codePage, 4) + "\\";
        values_[kCompanyName] = ReadVersionString(block, english, "CompanyName");
        if (!values_[kCompanyName].empty()) stringBlock = english;
    }
    for (std::size_t i = 1; i < 15; ++i)
        if (i != kCompanyName) values_[i] = ReadVersionString(block, stringBlock, kPredefined[i].key);
}

}  // namespace tessmark::ui

#include "registry/AdvRegistryAccess.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace tessmark::registry {

using platform::RegHandle;
namespace reg = platform::reg;

namespace {

constexpr std::pair<std::string_view, std::string_view> kHelpTexts[] = {
    {"CreateKeyIfDoesntExists",
     "Let/Get. Should key will be created if no exists (when writting data to registry)"},
    {"CreateKey", "Creates key in registry..."},
    {"KillKey", "Deletes key from registry..."},
    {"KeyExists", "Checks if some key exists..."},
    {"EnumKeys", "Enumerates subkeys of some key..."},
    {"HaveSubkey", "Checks for subkeys in some key..."},
    {"WriteString", "Writes data of string type..."},
    {"ReadString", "Reads data of string type..."},
    {"WriteDWORD", "Writes data of dword type..."},
    {"ReadDWORD", "Reads data of dword type..."},
    {"WriteBinary", "Writes data of binary type..."},
    {"ReadBinary", "Reads data of binary type..."},
    {"KillValue", "Deletes value from registry..."},
    {"ValueExists", "Checks if some value exists in registry"},
    {"EnumValues", "Enumerates all values from specified key..."},
    {"ImportFromReg", "Imports .reg file into registry..."},
    {"StrToBin", "Converts hex (string) into it's binary value..."},
    {"BinToStr", "Converts binary data into string..."},
    {"isBinValid", "Checks if given binary data is in valid hex format (used for writting binary)"},
};

// Every buffer handed to the enumerations and queries: 255 blanks.
constexpr long kBufferSize = 255;

std::uint8_t* Bytes(std::string& buffer) { return reinterpret_cast<std::uint8_t*>(buffer.data()); }

VbBool ToVbBool(bool value) { return value ? kTrue : kFalse; }

}  // namespace

AdvRegistryAccess::AdvRegistryAccess(platform::RegistryPort& registry) : registry_(registry) {}

AdvRegistryAccess::AdvRegistryAccess(platform::RegistryPort& registry, platform::FilesPort& files,
                                     platform::UiServices& ui)
    : registry_(registry), files_(&files), ui_(&ui) {}

void AdvRegistryAccess::CreateKeyIfDoesntExists(VbBool value) {
    m_bCreateKeyIfDoesntExists = ToVbBool(value != kFalse);
}

std::string_view AdvRegistryAccess::HelpText(std::string_view member) {
    for (const auto& [name, text] : kHelpTexts)
        if (name == member) return text;
    return {};
}

void AdvRegistryAccess::SplitRegistryPath(std::string& sPath, std::string& sSubKey, RegHandle& hRoot) {
    // Every occurrence is replaced, also inside the subkey.
    for (const auto& root : kRoots)
        sPath = vb::Replace(sPath, std::string(root.longName), std::string(root.shortName), 1, -1,
                            vb::Compare::Text);

    // The root name is the first four characters, whatever stands before the backslash.
    std::string rootName;
    long slash = vb::InStr(sPath, "\\");
    if (slash > 0) {
        rootName = vb::UCase(vb::Left(sPath, 4));
        sSubKey = vb::Mid(sPath, slash + 1);
    } else {
        rootName = vb::UCase(sPath);
        sSubKey = "";
    }

    // An unknown root stays 0, and the platform call that follows fails.
    hRoot = 0;
    for (const auto& root : kRoots) {
        if (rootName == root.shortName) {
            hRoot = root.handle;
            break;
        }
    }
}

std::int32_t AdvRegistryAccess::CreateKey(std::string sPath) {
    SplitRegistryPath(sPath, m_sSubKey, m_hRootKey);
    if (registry_.RegCreateKeyA(m_hRootKey, m_sSubKey.c_str(), &m_hKey) != reg::kSuccess) return 0;
    registry_.RegCloseKey(m_hKey);
    return static_cast<std::int32_t>(m_hKey);
}

std::int32_t AdvRegistryAccess::KillKey(std::string sPath) {
    SplitRegistryPath(sPath, m_sSubKey, m_hRootKey);
    if (registry_.RegOpenKeyExA(m_hRootKey, m_sSubKey.c_str(), 0, reg::kAllAccess, &m_hKey) != reg::kSuccess)
        return 0;
    // The key deletes itself through its own handle; one with subkeys stays, unseen.
    registry_.RegDeleteKeyA(m_hKey, "");
    registry_.RegCloseKey(m_hKey);
    return static_cast<std::int32_t>(m_hKey);
}

VbBool AdvRegistryAccess::KeyExists(std::string sPath) {
    SplitRegistryPath(sPath, m_sSubKey, m_hRootKey);
    if (registry_.RegOpenKeyExA(m_hRootKey, m_sSubKey.c_str(), 0, reg::kAllAccess, &m_hKey) != reg::kSuccess)
        return kFalse;
    registry_.RegCloseKey(m_hKey);
    return kTrue;
}

std::int32_t AdvRegistryAccess::EnumKeys(std::string sPath, vb::Array<std::string>& key) {
    key.Erase();
    SplitRegistryPath(sPath, m_sSubKey, m_hRootKey);
    if (registry_.RegOpenKeyA(m_hRootKey, m_sSubKey.c_str(), &m_hKey) != reg::kSuccess) return -1;

    std::uint32_t index = 0;
    for (;; ++index) {
        std::string buffer = vb::Space(kBufferSize);
        std::uint32_t length = kBufferSize;
        // Only the end of the list stops; any other failure still counts as an entry.
        if (registry_.RegEnumKeyExA(m_hKey, index, buffer.data(), &length) == reg::kNoMoreItems) break;
        key.ReDimPreserve(static_cast<long>(index));
        key[static_cast<long>(index)] = vb::Left(buffer, length);
    }
    registry_.RegCloseKey(m_hKey);
    return static_cast<std::int32_t>(index);
}

VbBool AdvRegistryAccess::HaveSubkey(std::string sPath) {
    SplitRegistryPath(sPath, m_sSubKey, m_hRootKey);
    if (registry_.RegOpenKeyA(m_hRootKey, m_sSubKey.c_str(), &m_hKey) != reg::kSuccess) return kFalse;
    std::string buffer = vb::Space(kBufferSize);
    std::uint32_t length = kBufferSize;
    std::int32_t code = registry_.RegEnumKeyExA(m_hKey, 0, buffer.data(), &length);
    registry_.RegCloseKey(m_hKey);
    return ToVbBool(code != reg::kNoMoreItems);
}

bool AdvRegistryAccess::PrepareKeyForWriting(const std::string& sPath) {
    if (KeyExists(sPath)) return true;
    if (m_bCreateKeyIfDoesntExists == kFalse) return false;
    CreateKey(sPath);
    return true;
}

std::int32_t AdvRegistryAccess::SetValue(std::string sPath, const std::string& SName, std::uint32_t type,
                                         const std::uint8_t* data, std::uint32_t size) {
    SplitRegistryPath(sPath, m_sSubKey, m_hRootKey);
    if (registry_.RegOpenKeyExA(m_hRootKey, m_sSubKey.c_str(), 0, reg::kWrite, &m_hKey) != reg::kSuccess)
        return 0;
    // A refused write leaves the key open; accepted, as with the failed reads.
    if (registry_.RegSetValueExA(m_hKey, SName.c_str(), type, data, size) != reg::kSuccess) return 0;
    registry_.RegCloseKey(m_hKey);
    return static_cast<std::int32_t>(m_hKey);
}

std::int32_t AdvRegistryAccess::WriteString(std::string sPath, std::string SName, std::string sValue) {
    if (!PrepareKeyForWriting(sPath)) return 0;
    // "@" names the key's default value here only; the other members take it literally.
    if (SName == "@") SName = "";
    // No terminating NUL is counted.
    return SetValue(sPath, SName, reg::kSz, Bytes(sValue), static_cast<std::uint32_t>(vb::Len(sValue)));
}

std::string AdvRegistryAccess::ReadString(std::string sPath, std::string SName, const std::string& sDefault) {
    SplitRegistryPath(sPath, m_sSubKey, m_hRootKey);
    if (registry_.RegOpenKeyExA(m_hRootKey, m_sSubKey.c_str(), 0, reg::kRead, &m_hKey) != reg::kSuccess)
        return sDefault;
    std::string buffer = vb::Space(kBufferSize);
    std::uint32_t length = kBufferSize;
    std::uint32_t type = reg::kSz;
    // Whatever the stored type, data that fits is text; larger data reads as the
    // default, and the key stays open.
    if (registry_.RegQueryValueExA(m_hKey, SName.c_str(), &type, Bytes(buffer), &length) != reg::kSuccess)
        return sDefault;
    registry_.RegCloseKey(m_hKey);
    // The length counts the terminating NUL, which thus ends the text; the trim
    // takes leading blanks of the value with the unused tail of the buffer.
    return vb::Left(vb::Trim(buffer), length);
}

std::int32_t AdvRegistryAccess::WriteDWORD(std::string sPath, std::string SName, std::int32_t lValue) {
    if (!PrepareKeyForWriting(sPath)) return 0;
    return SetValue(sPath, SName, reg::kDword, reinterpret_cast<const std::uint8_t*>(&lValue), 4);
}

std::int32_t AdvRegistryAccess::ReadDWORD(std::string sPath, std::string SName, std::int32_t lDefault) {
    SplitRegistryPath(sPath, m_sSubKey, m_hRootKey);
    if (registry_.RegOpenKeyExA(m_hRootKey, m_sSubKey.c_str(), 0, reg::kRead, &m_hKey) != reg::kSuccess)
        return lDefault;
    std::int32_t value = 0;
    std::uint32_t length = 4;
    std::uint32_t type = reg::kDword;
    // A failed query leaves the key open.
    if (registry_.RegQueryValueExA(m_hKey, SName.c_str(), &type, reinterpret_cast<std::uint8_t*>(&value),
                                   &length) != reg::kSuccess)
        return lDefault;
    registry_.RegCloseKey(m_hKey);
    return value;
}

std::int32_t AdvRegistryAccess::WriteBinary(std::string sPath, std::string SName, std::string sValue) {
    if (!PrepareKeyForWriting(sPath)) return 0;
    std::string raw = StrToBin(sValue);
    // Never an empty array: an empty value still gets one byte, of which none is written.
    std::vector<std::uint8_t> bytes(std::max<std::size_t>(raw.size(), 1), 0);
    std::copy(raw.begin(), raw.end(), bytes.begin());
    return SetValue(sPath, SName, reg::kBinary, bytes.data(), static_cast<std::uint32_t>(raw.size()));
}

std::string AdvRegistryAccess::ReadBinary(std::string sPath, std::string SName, const std::string& sDefault) {
    SplitRegistryPath(sPath, m_sSubKey, m_hRootKey);
    if (registry_.RegOpenKeyExA(m_hRootKey, m_sSubKey.c_str(), 0, reg::kRead, &m_hKey) != reg::kSuccess)
        return sDefault;
    std::uint32_t type = 0;
    std::string probe = vb::Space(1);
    std::uint32_t length = 1;
    // Asked only for the length; the code does not matter.
    registry_.RegQueryValueExA(m_hKey, SName.c_str(), &type, Bytes(probe), &length);
    std::string buffer = vb::Space(length);
    // A failed query leaves the key open.
    if (registry_.RegQueryValueExA(m_hKey, SName.c_str(), &type, Bytes(buffer), &length) != reg::kSuccess)
        return sDefault;
    registry_.RegCloseKey(m_hKey);
    return vb::Trim(BinToStr(buffer));
}

std::int32_t AdvRegistryAccess::KillValue(std::string sPath, std::string SName) {
    SplitRegistryPath(sPath, m_sSubKey, m_hRootKey);
    if (registry_.RegOpenKeyExA(m_hRootKey, m_sSubKey.c_str(), 0, reg::kAllAccess, &m_hKey) != reg::kSuccess)
        return 0;
    // A value that isn't there goes unnoticed.
    registry_.RegDeleteValueA(m_hKey, SName.c_str());
    registry_.RegCloseKey(m_hKey);
    return static_cast<std::int32_t>(m_hKey);
}

VbBool AdvRegistryAccess::ValueExists(std::string sPath, std::string SName) {
    SplitRegistryPath(sPath, m_sSubKey, m_hRootKey);
    if (registry_.RegOpenKeyExA(m_hRootKey, m_sSubKey.c_str(), 0, reg::kRead, &m_hKey) != reg::kSuccess)
        return kFalse;
    std::uint32_t type = 0;
    std::uint32_t length = 1;
    // A missing value leaves the key open.
    if (registry_.RegQueryValueExA(m_hKey, SName.c_str(), &type, nullptr, &length) != reg::kSuccess)
        return kFalse;
    registry_.RegCloseKey(m_hKey);
    return kTrue;
}

std::int32_t AdvRegistryAccess::EnumValues(std::string sPath, vb::Array<std::string>& SName,
                                           vb::Array<RegValue>& sValue, std::int32_t OnlyType) {
    SplitRegistryPath(sPath, m_sSubKey, m_hRootKey);
    RegHandle hKey = 0;
    if (registry_.RegOpenKeyA(m_hRootKey, m_sSubKey.c_str(), &hKey) != reg::kSuccess) return -1;
    SName.Erase();
    sValue.Erase();

    long count = 0;
    for (std::uint32_t index = 0;; ++index) {
        std::string name = vb::Space(kBufferSize);
        std::string data = vb::Space(kBufferSize);
        std::uint32_t nameLength = kBufferSize;
        std::uint32_t dataLength = kBufferSize;
        std::uint32_t type = 0;
        // Only the end of the list stops. Data over 255 bytes (234) keeps its
        // entry, made of whatever the buffer holds after the call.
        if (registry_.RegEnumValueA(hKey, index, name.data(), &nameLength, &type, Bytes(data), &dataLength) ==
            reg::kNoMoreItems)
            break;
        if (OnlyType != -1 && OnlyType != static_cast<std::int32_t>(type)) continue;

        SName.ReDimPreserve(count);
        sValue.ReDimPreserve(count);
        SName[count] = vb::Trim(vb::Left(name, nameLength));
        // Numbers and texts are read again by their trimmed name, with the
        // readers' limits and defaults.
        switch (type) {
        case reg::kBinary:
            sValue[count] = dataLength < 1 ? std::string() : vb::Trim(BinToStr(vb::Left(data, dataLength)));
            break;
        case reg::kDword:
            sValue[count] = ReadDWORD(sPath, SName[count], 0);
            break;
        case reg::kSz:
        case reg::kExpandSz:
            sValue[count] = ReadString(sPath, SName[count], "");
            break;
        default:
            break;
        }
        ++count;
    }
    // Closes the root of the last read rather than its own key, which stays open.
    registry_.RegCloseKey(m_hRootKey);
    return static_cast<std::int32_t>(count);
}

std::string AdvRegistryAccess::BinToStr(const std::string& sStr) {
    if (sStr.empty()) return {};
    // The character counter is 16-bit.
    const long count = vb::CInt(vb::Len(sStr));
    std::string result;
    for (long i = 1; i <= count; ++i) {
        std::string pair = vb::Hex(vb::Asc(vb::Mid(sStr, i, 1)));
        if (vb::Len(pair) == 1) pair = "0" + pair;
        result += " " + pair;
    }
    return result;
}

std::string AdvRegistryAccess::StrToBin(std::string& sBin) {
    sBin = vb::Trim(vb::Replace(sBin, " ", ""));
    if (sBin.empty()) return {};
    // The character counter is 16-bit.
    const long length = vb::CInt(vb::Len(sBin));
    // Half the length rounded half to even: a lone last digit is dropped after
    // one or five digits, kept after three or seven.
    const long pieces = static_cast<long>(vb::RoundHalfEven(length / 2.0));
    std::string result;
    for (long piece = 0; piece < pieces; ++piece) {
        // A piece without hexadecimal digits is the code 0.
        long code = static_cast<long>(vb::Val("&H" + vb::Mid(sBin, 2 * piece + 1, 2)));
        result += vb::Chr(code);
    }
    return result;
}

}  // namespace tessmark::registry

#pragma once
// The path-addressed registry layer: every operation takes one text path that
// begins with a root name, long ("HKEY_LOCAL_MACHINE\...") or short ("HKLM\..."),
// and opens and closes its key by itself. Texts, names and enumerated data go
// through buffers of 255 bytes. Failures are result values, never messages.
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "platform/files_port.h"
#include "platform/registry_port.h"
#include "platform/ui_services.h"
#include "vb/vb.h"

namespace tessmark::testing {
struct ExportProbe;
}  // namespace tessmark::testing

namespace tessmark::registry {

// The class's booleans are 16-bit: true is -1 (all bits set), false is 0.
using VbBool = std::int16_t;
inline constexpr VbBool kTrue = -1;
inline constexpr VbBool kFalse = 0;

// One element of the values listed by EnumValues: Empty for a type that is not
// read, text for binary and string values, a number for DWORD values.
using RegValue = std::variant<std::monostate, std::string, std::int32_t>;

// What an export shows its progress in: anything with a settable text.
struct TextBox {
    std::string Text;
};

class AdvRegistryAccess {
public:
    explicit AdvRegistryAccess(platform::RegistryPort& registry);
    // With files and the message pump the text half works too; without them
    // every file operation fails as a file error would.
    AdvRegistryAccess(platform::RegistryPort& registry, platform::FilesPort& files, platform::UiServices& ui);

    // Whether the writers create a missing key first; true after construction.
    VbBool CreateKeyIfDoesntExists() const { return m_bCreateKeyIfDoesntExists; }
    void CreateKeyIfDoesntExists(VbBool value);

    // Writers and killers return the number of the handle they just closed (only
    // ever tested against 0), or 0.
    std::int32_t CreateKey(std::string sPath);
    std::int32_t KillKey(std::string sPath);
    VbBool KeyExists(std::string sPath);
    // The count of subkeys, -1 when the key can't be opened; `key` is erased
    // first and stays undimensioned when there is nothing to list.
    std::int32_t EnumKeys(std::string sPath, vb::Array<std::string>& key);
    VbBool HaveSubkey(std::string sPath);

    std::int32_t WriteString(std::string sPath, std::string SName, std::string sValue);
    std::string ReadString(std::string sPath, std::string SName, const std::string& sDefault);
    std::int32_t WriteDWORD(std::string sPath, std::string SName, std::int32_t lValue);
    std::int32_t ReadDWORD(std::string sPath, std::string SName, std::int32_t lDefault);
    // Binary data travels as text of hexadecimal pairs ("4A 6F").
    std::int32_t WriteBinary(std::string sPath, std::string SName, std::string sValue);
    std::string ReadBinary(std::string sPath, std::string SName, const std::string& sDefault);
    std::int32_t KillValue(std::string sPath, std::string SName);
    VbBool ValueExists(std::string sPath, std::string SName);
    // The count of values of type OnlyType (-1: every type), -1 when the key
    // can't be opened, in which case both arrays are left as they were.
    std::int32_t EnumValues(std::string sPath, vb::Array<std::string>& SName,
                            vb::Array<RegValue>& sValue, std::int32_t OnlyType);

    // ---- the text half: "REGEDIT4" files of the class's own dialect

    // Writes the key (and with IncludeSubkeys its subkeys) to a new file: 1, or
    // 0 when the file exists already or anything failed. It hands ExportKey a
    // box nothing has set, so it ends after the header with 0.
    std::int32_t ExportToReg(std::string sPath, std::string sRegFile, VbBool& IncludeSubkeys);
    // Reads such a file into the registry: 1, or 0 for a missing file, a
    // foreign header or any error, leaving what was written.
    std::int32_t ImportFromReg(std::string sRegFile);
    // Always false: each character is looked for the wrong way round.
    static VbBool isBinValid(std::string sBin);

    // Raw characters to " 41 42" (a blank before every pair) and back. Both raise
    // the overflow error for input of over 32767 characters.
    static std::string BinToStr(const std::string& sStr);
    // Removes the blanks from sBin in place.
    static std::string StrToBin(std::string& sBin);

    // The help text of a public member, empty for an unknown name.
    static std::string_view HelpText(std::string_view member);

private:
    friend struct testing::ExportProbe;  // exports with a box of its own

    struct RootName {
        std::string_view longName;
        std::string_view shortName;
        platform::RegHandle handle;
    };
    // In the order in which the names are replaced and compared.
    static constexpr std::array<RootName, 7> kRoots{{
        {"HKEY_CURRENT_USER", "HKCU", platform::reg::kCurrentUser},
        {"HKEY_LOCAL_MACHINE", "HKLM", platform::reg::kLocalMachine},
        {"HKEY_CLASSES_ROOT", "HKCR", platform::reg::kClassesRoot},
        {"HKEY_USERS", "HKUS", platform::reg::kUsers},
        {"HKEY_PERFORMANCE_DATA", "HKPD", platform::reg::kPerformanceData},
        {"HKEY_DYN_DATA", "HKDD", platform::reg::kDynData},
        {"HKEY_CURRENT_CONFIG", "HKCC", platform::reg::kCurrentConfig},
    }};

    void SplitRegistryPath(std::string& sPath, std::string& sSubKey, platform::RegHandle& hRoot);
    // KeyExists, then CreateKey when allowed; false when the writer must give up.
    bool PrepareKeyForWriting(const std::string& sPath);
    // The common end of the writers: open for writing, set, close.
    std::int32_t SetValue(std::string sPath, const std::string& SName, std::uint32_t type,
                          const std::uint8_t* data, std::uint32_t size);

    // One key's block, then its subkeys'; box null is the box nothing has set.
    VbBool ExportKey(std::string sKeyPath, const std::string& sRegFile, VbBool IncludeSubkeys, TextBox* box);
    void AppendText(const std::string& sRegFile, const std::string& text);

    platform::RegistryPort& registry_;
    platform::FilesPort* files_ = nullptr;
    platform::UiServices* ui_ = nullptr;

    platform::RegHandle m_hRootKey = 0;
    platform::RegHandle m_hKey = 0;
    std::string m_sSubKey;
    VbBool m_bCreateKeyIfDoesntExists = kTrue;
};

}  // namespace tessmark::registry

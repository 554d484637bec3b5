#pragma once
// The version resource of one file, as properties: the fixed numbers as text
// and the string table. Values of a previous file stay where the new one has
// none, by design of the reader.
#include <array>
#include <cstdint>
#include <string>

#include "platform/files_port.h"
#include "platform/shell_port.h"

namespace tessmark::ui {

class CFileVersionInfo {
public:
    CFileVersionInfo(platform::FilesPort& files, platform::ShellPort& shell) : files_(files), shell_(shell) {}

    void FullPathName(const std::string& path);
    const std::string& FullPathName() const { return fullPath_; }
    bool Available() const { return available_; }
    const std::string& FileFlags() const { return fileFlags_; }
    const std::string& FileOS() const { return fileOS_; }
    const std::string& FileType() const { return fileType_; }
    const std::string& FileSubType() const { return fileSubType_; }
    const std::string& VerFile() const { return verFile_; }
    const std::string& VerProduct() const { return verProduct_; }
    const std::string& VerStructure() const { return verStructure_; }
    std::string PredefinedName(long index) const;
    std::string PredefinedValue(long index) const;

    const std::string& Language() const { return values_[0]; }
    const std::string& Comments() const { return values_[1]; }
    const std::string& CompanyName() const { return values_[2]; }
    const std::string& FileDescription() const { return values_[3]; }
    const std::string& FileVersion() const { return values_[4]; }
    const std::string& InternalName() const { return values_[5]; }
    const std::string& LegalCopyright() const { return values_[6]; }
    const std::string& LegalTrademarks() const { return values_[7]; }
    const std::string& OriginalFilename() const { return values_[8]; }
    const std::string& ProductName() const { return values_[9]; }
    const std::string& ProductVersion() const { return values_[10]; }
    const std::string& PrivateBuild() const { return values_[11]; }
    const std::string& SpecialBuild() const { return values_[12]; }

    void Refresh();

private:
    std::string ReadVersionString(const std::vector<std::uint8_t>& block, const std::string& stringBlock,
                                  const char* key);

    platform::FilesPort& files_;
    platform::ShellPort& shell_;
    std::string fullPath_;
    bool available_ = false;
    std::string verStructure_, verFile_, verProduct_;
    std::string fileFlags_, fileOS_, fileType_, fileSubType_;
    std::array<std::string, 15> values_;
};

// The last `width` characters of `width` zeros followed by the value in upper-case hex.
std::string HexPadded(std::uint32_t value, int width);
// Major.minor.build in the program's four-part form: 5.1.2600.0 reads 5.01.260000.
std::string FormatVersion(std::uint32_t versionMS, std::uint32_t versionLS);

}  // namespace tessmark::ui

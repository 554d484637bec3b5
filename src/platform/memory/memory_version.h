#pragma once
// Version resources of the in-memory disk and the block that stands for
// GetFileVersionInfoA's copy of one.
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tessmark::platform::memory {

// VS_FIXEDFILEINFO, field for field.
struct FixedFileInfo {
    std::uint32_t signature = 0xFEEF04BDu;
    std::uint32_t structVersion = 0x00010000u;
    std::uint32_t fileVersionMS = 0;
    std::uint32_t fileVersionLS = 0;
    std::uint32_t productVersionMS = 0;
    std::uint32_t productVersionLS = 0;
    std::uint32_t fileFlagsMask = 0x3F;
    std::uint32_t fileFlags = 0;
    std::uint32_t fileOS = 0x40004;  // VOS_NT_WINDOWS32
    std::uint32_t fileType = 1;      // VFT_APP
    std::uint32_t fileSubtype = 0;
    std::uint32_t fileDateMS = 0;
    std::uint32_t fileDateLS = 0;
};

struct Translation {
    std::uint16_t language = 0;
    std::uint16_t codePage = 0;
};

struct VersionResource {
    FixedFileInfo fixed;
    std::vector<Translation> translations;  // "\VarFileInfo\Translation", in this order
    // String tables by block name ("040904E4"), each a map of key to value.
    std::map<std::string, std::map<std::string, std::string>> strings;
};

std::vector<std::uint8_t> EncodeVersionBlock(const VersionResource& resource);

// VerQueryValueA on an encoded block: names compare without regard to case, the
// leading backslash is optional, a block's own name gives an empty value, and a
// string's value holds its terminating NUL.
bool QueryVersionBlock(const std::vector<std::uint8_t>& block, const std::string& subBlock,
                       std::vector<std::uint8_t>* value);

}  // namespace tessmark::platform::memory

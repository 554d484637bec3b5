#include "platform/memory/memory_version.h"

#include <algorithm>
#include <cctype>
#include <cstring>

namespace tessmark::platform::memory {
namespace {

constexpr char kMagic[4] = {'T', 'M', 'V', 'B'};

std::string Key(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    if (name.empty() || name.front() != '\\') name.insert(name.begin(), '\\');
    while (name.size() > 1 && name.back() == '\\') name.pop_back();
    return name;
}

void PutWord(std::vector<std::uint8_t>& out, std::uint32_t word) {
    for (int i = 0; i < 4; ++i) out.push_back(static_cast<std::uint8_t>(word >> (8 * i)));
}

std::uint32_t GetWord(const std::vector<std::uint8_t>& in, std::size_t at) {
    std::uint32_t word = 0;
    for (int i = 0; i < 4; ++i) word |= static_cast<std::uint32_t>(in[at + i]) << (8 * i);
    return word;
}

void PutEntry(std::vector<std::uint8_t>& out, const std::string& name, const std::vector<std::uint8_t>& value) {
    const std::string key = Key(name);
    PutWord(out, static_cast<std::uint32_t>(key.size()));
    out.insert(out.end(), key.begin(), key.end());
    PutWord(out, static_cast<std::uint32_t>(value.size()));
    out.insert(out.end(), value.begin(), value.end());
}

}  // namespace

std::vector<std::uint8_t> EncodeVersionBlock(const VersionResource& resource) {
    std::vector<std::uint8_t> block(std::begin(kMagic), std::end(kMagic));

    const FixedFileInfo& f = resource.fixed;
    std::vector<std::uint8_t> fixed;
    for (std::uint32_t word : {f.signature, f.structVersion, f.fileVersionMS, f.fileVersionLS,
                               f.productVersionMS, f.productVersionLS, f.fileFlagsMask, f.fileFlags,
                               f.fileOS, f.fileType, f.fileSubtype, f.fileDateMS, f.fileDateLS})
        PutWord(fixed, word);
    PutEntry(block, "\\", fixed);

    if (!resource.translations.empty()) {
        std::vector<std::uint8_t> table;
        for (const Translation& t : resource.translations)
            PutWord(table, t.language | static_cast<std::uint32_t>(t.codePage) << 16);
        PutEntry(block, "\\VarFileInfo", {});
        PutEntry(block, "\\VarFileInfo\\Translation", table);
    }
    if (!resource.strings.empty()) PutEntry(block, "\\StringFileInfo", {});
    for (const auto& [table, entries] : resource.strings) {
        const std::string tableName = "\\StringFileInfo\\" + table;
        PutEntry(block, tableName, {});
        for (const auto& [key, text] : entries) {
            std::vector<std::uint8_t> value(text.begin(), text.end());
            value.push_back(0);
            PutEntry(block, tableName + "\\" + key, value);
        }
    }
    return block;
}

bool QueryVersionBlock(const std::vector<std::uint8_t>& block, const std::string& subBlock,
                       std::vector<std::uint8_t>* value) {
    value->clear();
    if (block.size() < sizeof kMagic || std::memcmp(block.data(), kMagic, sizeof kMagic) != 0) return false;
    const std::string wanted = Key(subBlock);
    std::size_t at = sizeof kMagic;
    while (at + 4 <= block.size()) {
        const std::size_t keyLength = GetWord(block, at);
        const std::size_t valueAt = at + 4 + keyLength + 4;
        if (valueAt > block.size()) return false;
        const std::size_t valueLength = GetWord(block, valueAt - 4);
        if (valueAt + valueLength > block.size()) return false;
        if (std::string(block.begin() + at + 4, block.begin() + at + 4 + keyLength) == wanted) {
            value->assign(block.begin() + valueAt, block.begin() + valueAt + valueLength);
            return true;
        }
        at = valueAt + valueLength;
    }
    return false;
}

}  // namespace tessmark::platform::memory

// What the program relies on from the registry calls, run against the memory registry and against the real
// one. Values enumerate in creation order on Windows and sorted by name on Wine, so no test depends on it.
#include <gtest/gtest.h>

#include <map>
#include <tuple>
#include <vector>

#include "machine.h"

namespace tessmark::testing {
namespace {

using platform::RegHandle;
namespace reg = platform::reg;
using namespace std::string_literals;

const std::uint8_t* Bytes(const std::string& s) { return reinterpret_cast<const std::uint8_t*>(s.data()); }
std::uint8_t* Bytes(std::string& s) { return reinterpret_cast<std::uint8_t*>(s.data()); }
std::string Padded(std::string s, std::size_t size, char fill) { return s.resize(size, fill), s; }

class RegistryConformance : public ::testing::TestWithParam<RegHandle> {
protected:
    void TearDown() override { for (RegHandle h : opened) registry.RegCloseKey(h); }
    RegHandle Keep(RegHandle h) { return opened.push_back(h), h; }
    // Creates a key below the scratch key, or below parent; Keep closes its handle after the test.
    RegHandle Create(const std::string& sub = "", RegHandle parent = 0) {
        const std::string path = parent ? sub : kScratchKey + (sub.empty() ? "" : "\\" + sub);
        RegHandle h = 0;
        EXPECT_EQ(registry.RegCreateKeyA(parent ? parent : GetParam(), path.c_str(), &h), reg::kSuccess) << path;
        return Keep(h);
    }
    // Counts the whole string unless told; the string keeps its own terminator behind the counted bytes.
    void Set(RegHandle h, const char* name, std::uint32_t type, const std::string& data, std::uint32_t count = ~0u) {
        count = count == ~0u ? static_cast<std::uint32_t>(data.size()) : count;
        ASSERT_EQ(registry.RegSetValueExA(h, name, type, Bytes(data), count), reg::kSuccess);
    }
    // A query offering length bytes of a buffer of the given size, none for 0: the code, the type
    // and length reported, and the buffer.
    using Queried = std::tuple<std::int32_t, std::uint32_t, std::uint32_t, std::string>;
    Queried Query(RegHandle h, const char* name, std::uint32_t size, std::uint32_t length) {
        std::string buffer(size, '#');
        std::uint32_t type = 9;
        const std::int32_t rc = registry.RegQueryValueExA(h, name, &type, size ? Bytes(buffer) : nullptr, &length);
        return {rc, type, length, buffer};
    }
    // The codes of the calls a key handle serves, in this order: query a value,
    // enumerate a value and a subkey, query the counts, set and delete a value.
    std::vector<std::int32_t> Calls(RegHandle h) {
        char name[16];
        std::uint32_t length = sizeof name, other = sizeof name, count = 0;
        return {registry.RegQueryValueExA(h, "v", nullptr, nullptr, nullptr),
                registry.RegEnumValueA(h, 0, name, &length, nullptr, nullptr, nullptr),
                registry.RegEnumKeyExA(h, 0, name, &other), registry.RegQueryInfoKeyA(h, &count, &count),
                registry.RegSetValueExA(h, "w", reg::kSz, Bytes("y"s), 1), registry.RegDeleteValueA(h, "w")};
    }
    // One value enumerated into buffers of the given sizes, the data buffer with a guard byte behind:
    // the code, the type, the name buffer and the length reported, the data buffer and its length.
    using Enumerated = std::tuple<std::int32_t, std::uint32_t, std::string, std::uint32_t, std::string, std::uint32_t>;
    Enumerated EnumValue(RegHandle key, std::uint32_t index, std::uint32_t nameLength = 261,
                         std::uint32_t dataLength = 255) {
        std::string name(nameLength, ' '), data(dataLength + 1, '#');
        std::uint32_t type = 0;
        const std::int32_t rc =
            registry.RegEnumValueA(key, index, name.data(), &nameLength, &type, Bytes(data), &dataLength);
        return {rc, type, name, nameLength, data, dataLength};
    }

    std::unique_ptr<TestMachine> machine = MakeTestMachine();
    platform::RegistryPort& registry = machine->Registry();
    std::vector<RegHandle> opened;
};

// Without a subkey RegOpenKeyA hands back the very handle, for a root as for any key; RegOpenKeyExA
// gives a root back as itself, and a new handle to any other key. A missing key gives handle 0.
TEST_P(RegistryConformance, OpeningAndCreatingBySubkeyText) {
    const RegHandle key = Create(), root = GetParam();
    Create("A\\B");
    const std::tuple<bool, RegHandle, bool> opens[] = {
        {false, key, true}, {false, root, true}, {true, root, true}, {true, key, false}};
    for (const auto& [extended, parent, same] : opens) {
        RegHandle h = 0;
        ASSERT_EQ(reg::kSuccess, extended ? registry.RegOpenKeyExA(parent, "", 0, reg::kRead, &h)
                                          : registry.RegOpenKeyA(parent, "", &h));
        EXPECT_EQ(h == parent, same) << extended << ' ' << parent;
        EXPECT_NE(h, 0u);
        if (!same) Keep(h);
    }
    const std::tuple<std::string, std::int32_t, std::int32_t> cases[] = {
        {"Missing", reg::kFileNotFound, reg::kSuccess}, {"A\\", reg::kSuccess, reg::kSuccess},
        {"A\\\\B", reg::kSuccess, reg::kSuccess},         {"a\\b\\", reg::kSuccess, reg::kSuccess},
        {"\\A", 161, 161},                              {std::string(256, 'k'), reg::kFileNotFound, reg::kSuccess},
        {std::string(257, 'k'), reg::kInvalidParameter, reg::kInvalidParameter},
        {std::string(240, 'p') + "\\" + std::string(19, 'q'), reg::kFileNotFound, reg::kSuccess},
        {std::string(240, 'p') + "\\" + std::string(20, 'q'), reg::kMoreData, reg::kMoreData},
    };
    RegHandle h = 0x1234;
    EXPECT_EQ(registry.RegOpenKeyA(key, "Missing", &h), reg::kFileNotFound);
    EXPECT_EQ(h, 0u);
    for (const auto& [subKey, open, create] : cases) {
        h = 0x1234;
        EXPECT_EQ(registry.RegOpenKeyExA(key, subKey.c_str(), 0, reg::kRead, &h), open) << subKey;
        EXPECT_TRUE(open != reg::kFileNotFound || h == 0) << subKey;
        if (open == reg::kSuccess) Keep(h);
        h = 0;
        EXPECT_EQ(registry.RegCreateKeyA(key, subKey.c_str(), &h), create) << subKey;
        if (h) Keep(h);
    }
}

// A handle serves the calls its access allows; a closed or unknown one serves none.
TEST_P(RegistryConformance, HandlesServeTheCallsTheirAccessAllows) {
    Set(Create(), "v", reg::kSz, "x");
    Create("Sub");
    const std::pair<std::uint32_t, std::vector<std::int32_t>> cases[] = {
        {reg::kQueryValue, {0, 0, 5, 0, 5, 5}}, {reg::kRead, {0, 0, 0, 0, 5, 5}},
        {reg::kWrite, {5, 5, 5, 0, 0, 0}},      {reg::kAllAccess, {0, 0, 0, 0, 0, 0}},
    };
    RegHandle closed = 0;
    for (const auto& [access, codes] : cases) {
        ASSERT_EQ(registry.RegOpenKeyExA(GetParam(), kScratchKey, 0, access, &closed), reg::kSuccess);
        EXPECT_EQ(Calls(closed), codes) << access;
        EXPECT_EQ(registry.RegCloseKey(closed), reg::kSuccess);
    }
    EXPECT_EQ(registry.RegCloseKey(closed), reg::kInvalidHandle);
    EXPECT_EQ(registry.RegCloseKey(GetParam()), reg::kSuccess);
    EXPECT_EQ(registry.RegCloseKey(0), reg::kInvalidHandle);
    for (RegHandle bad : {RegHandle{0}, closed}) {
        RegHandle result = 0;
        EXPECT_EQ(registry.RegOpenKeyExA(bad, "X", 0, reg::kRead, &result), reg::kInvalidHandle) << bad;
        EXPECT_EQ(registry.RegCreateKeyA(bad, "X", &result), reg::kInvalidHandle) << bad;
        EXPECT_EQ(registry.RegDeleteKeyA(bad, "X"), reg::kInvalidHandle) << bad;
        EXPECT_EQ(Calls(bad), std::vector<std::int32_t>(6, reg::kInvalidHandle)) << bad;
    }
}

// Only a key without subkeys goes, and never a root; a key also deletes itself through its own handle.
// Value names ignore case, and the empty one stands for the default value.
TEST_P(RegistryConformance, DeletingKeysAndValues) {
    const RegHandle key = Create();
    Create("Parent\\Child");
    const std::tuple<RegHandle, const char*, std::int32_t> keys[] = {
        {key, "Parent", reg::kAccessDenied}, {key, "Missing", reg::kFileNotFound}, {GetParam(), "", reg::kAccessDenied},
        {key, "PARENT\\child", reg::kSuccess}};
    for (const auto& [parent, sub, rc] : keys) EXPECT_EQ(registry.RegDeleteKeyA(parent, sub), rc) << sub;
    RegHandle h = 0;
    ASSERT_EQ(registry.RegOpenKeyExA(key, "Parent", 0, reg::kAllAccess, &h), reg::kSuccess);
    EXPECT_EQ(registry.RegDeleteKeyA(h, ""), reg::kSuccess);
    EXPECT_EQ(registry.RegCloseKey(h), reg::kSuccess);
    EXPECT_EQ(registry.RegOpenKeyExA(key, "Parent", 0, reg::kRead, &h), reg::kFileNotFound);
    Set(key, "Name", reg::kSz, "x");
    Set(key, "", reg::kSz, "default");
    const std::pair<const char*, std::int32_t> values[] = {
        {"missing", reg::kFileNotFound}, {"NAME", reg::kSuccess}, {"Name", reg::kFileNotFound}, {"", reg::kSuccess},
        {"", reg::kFileNotFound}};
    for (const auto& [name, rc] : values) EXPECT_EQ(registry.RegDeleteValueA(key, name), rc) << name;
}

TEST_P(RegistryConformance, StoredLengthOfWrittenData) {
    const RegHandle key = Create();
    std::string high;
    for (int c = 0x80; c <= 0xFF; ++c) high += static_cast<char>(c);
    // Name, type, data (what follows the counted bytes matters for strings), count and what is stored.
    // The NUL the count leaves out is counted when it follows the text; bytes beyond ASCII stay as they are.
    const std::tuple<const char*, std::uint32_t, std::string, std::uint32_t, std::string> cases[] = {
        {"sz", reg::kSz, "abc"s, 3, "abc\0"s},                   {"sz with nul", reg::kSz, "abc\0"s, 4, "abc\0"s},
        {"sz unterminated", reg::kSz, "abcz"s, 3, "abc"s},        {"sz ending in nul", reg::kSz, "ab\0\0"s, 3, "ab\0"s},
        {"sz empty", reg::kSz, ""s, 0, ""s},                      {"multi", reg::kMultiSz, "a\0b\0"s, 3, "a\0b\0"s},
        {"expand", reg::kExpandSz, "%windir%"s, 8, "%windir%\0"s}, {"binary", reg::kBinary, "abc"s, 3, "abc"s},
        {"dword", reg::kDword, "\x04\x03\x02\x01"s, 4, "\x04\x03\x02\x01"s},
        {"", reg::kSz, "default"s, 7, "default\0"s}, {"Caf\xE9 \xC4\xD6\xDC", reg::kSz, high, 128, high + '\0'},
    };
    std::map<std::string, std::pair<std::uint32_t, std::string>> expected, seen;
    for (const auto& [name, type, data, count, stored] : cases) {
        Set(key, name, type, data, count);
        const std::uint32_t size = static_cast<std::uint32_t>(stored.size());
        EXPECT_EQ(Query(key, name, size, size), Queried(reg::kSuccess, type, size, stored)) << name;
        expected[name] = {type, stored};
    }
    // A null buffer asks for the size; a missing value reports type 0 and keeps the length.
    EXPECT_EQ(Query(key, "sz", 0, 1), Queried(reg::kSuccess, reg::kSz, 4, ""));
    EXPECT_EQ(Query(key, "missing", 8, 8), Queried(reg::kFileNotFound, reg::kNone, 8, "########"));
    // A string stored without its NUL gets one written behind it where there is room, not counted.
    EXPECT_EQ(Query(key, "sz unterminated", 8, 8), Queried(reg::kSuccess, reg::kSz, 3, "abc\0####"s));
    // Names ignore case and keep their first spelling. Enumeration gives every value once, with the
    // same type and data; of the name buffer only the name and its NUL are written.
    Set(key, "SZ", reg::kSz, "abc");
    for (std::uint32_t index = 0;; ++index) {
        const auto [rc, type, nameBuffer, nameLength, data, dataLength] = EnumValue(key, index);
        if (rc == reg::kNoMoreItems) break;
        ASSERT_EQ(rc, reg::kSuccess);
        const std::string name = nameBuffer.substr(0, nameLength);
        EXPECT_EQ(nameBuffer, name + '\0' + std::string(260 - name.size(), ' '));
        seen[name] = {type, data.substr(0, dataLength)};
    }
    EXPECT_EQ(seen, expected);
}

// One value per key, so that order plays no part, read into buffers of the program's sizes by enumeration and by
// query; bytes beyond ASCII count one each. Data that doesn't fit stops everything: neither buffer is touched, only
// the data's length is told. A name too long is cut to fill the buffer with its NUL; its length stays.
TEST_P(RegistryConformance, ReadingValuesIntoFixedBuffers) {
    const std::uint32_t bin = reg::kBinary, sz = reg::kSz;
    // Lengths of the value's name and data (a string's NUL included), its type, the buffers' sizes, the code.
    const std::tuple<std::size_t, std::size_t, std::uint32_t, std::uint32_t, std::uint32_t, std::int32_t> cases[] = {
        {255, 10, bin, 261, 255, 0},    {256, 10, bin, 261, 255, 0},   {260, 10, bin, 261, 255, 0},
        {261, 10, bin, 261, 255, 234},  {254, 10, bin, 255, 255, 0},   {255, 10, bin, 255, 255, 234},
        {256, 10, bin, 255, 255, 234},  {5, 255, bin, 261, 255, 0},    {5, 256, bin, 261, 255, 234},
        {261, 256, bin, 261, 255, 234}, {5, 1024, bin, 261, 1024, 0},  {5, 1025, bin, 261, 1024, 234},
        {5, 255, sz, 261, 255, 0},      {5, 256, sz, 261, 255, 234},   {5, 1024, sz, 261, 1024, 0},
        {5, 1025, sz, 261, 1024, 234},
    };
    int index = 0;
    for (const auto& [nameSize, dataSize, type, nameBuffer, dataBuffer, rc] : cases) {
        const std::string label = "Case" + std::to_string(index++);
        const RegHandle key = Create(label);
        const std::string name(nameSize, '\xC4');
        std::string data(dataSize, '\xE9');
        if (type == sz) data.back() = '\0';
        Set(key, name.c_str(), type, data);
        const bool dataFits = dataSize <= dataBuffer, nameFits = nameSize < nameBuffer;
        const std::string expectedData = Padded(dataFits ? data : "", dataBuffer + 1, '#');
        const std::string cut = dataFits ? name.substr(0, nameFits ? nameSize : nameBuffer - 1) + '\0' : "";
        const auto size = static_cast<std::uint32_t>(dataSize);
        const auto nameLength = static_cast<std::uint32_t>(dataFits && nameFits ? nameSize : nameBuffer);
        EXPECT_EQ(EnumValue(key, 0, nameBuffer, dataBuffer),
                  Enumerated(rc, type, Padded(cut, nameBuffer, ' '), nameLength, expectedData, size)) << label;
        EXPECT_EQ(Query(key, name.c_str(), dataBuffer + 1, dataBuffer),
                  Queried(dataFits ? 0 : 234, type, size, expectedData)) << label;
    }
}

// Names ignore case and keep their first spelling. The buffer must hold the NUL too; a name that
// doesn't fit leaves buffer and length alone.
TEST_P(RegistryConformance, EnumeratingKeysIntoFixedBuffers) {
    const std::tuple<std::size_t, std::uint32_t, std::int32_t> cases[] = {
        {254, 255, 0}, {255, 255, 234}, {255, 256, 0}, {256, 256, 234}, {256, 261, 0}};
    for (const auto& [size, buffer, rc] : cases) {
        const std::string label = std::to_string(size) + " into " + std::to_string(buffer);
        const RegHandle key = Create(label);
        Create(std::string(size, 'k'), key);
        Create(std::string(size, 'K'), key);
        std::string name(buffer, ' ');
        std::uint32_t length = buffer;
        EXPECT_EQ(registry.RegEnumKeyExA(key, 0, name.data(), &length), rc) << label;
        EXPECT_EQ(name, Padded(rc ? "" : std::string(size, 'k') + '\0', buffer, ' ')) << label;
        EXPECT_EQ(length, rc ? buffer : size) << label;
        length = buffer;
        EXPECT_EQ(registry.RegEnumKeyExA(key, 1, name.data(), &length), reg::kNoMoreItems) << label;
    }
}

INSTANTIATE_TEST_SUITE_P(Roots, RegistryConformance, ::testing::Values(reg::kCurrentUser, reg::kLocalMachine),
                         [](const auto& info) { return info.param == reg::kCurrentUser ? "HKCU" : "HKLM"; });

}  // namespace
}  // namespace tessmark::testing

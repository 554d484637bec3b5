// The memory registry's own test hook: a key that allows reading only.
#include <gtest/gtest.h>

#include <string>

#include "platform/memory/memory_registry.h"

namespace tessmark::platform::memory {
namespace {

TEST(MemoryRegistryDenyWrites, KeyOpensForReadingOnly) {
    MemoryRegistry registry;
    RegHandle writable = 0;
    ASSERT_EQ(registry.RegCreateKeyA(reg::kLocalMachine, "Software\\Locked\\Child", &writable), reg::kSuccess);
    registry.RegCloseKey(writable);
    registry.DenyWrites(reg::kLocalMachine, "Software\\Locked");
    const std::string text = "x";
    const auto* data = reinterpret_cast<const std::uint8_t*>(text.c_str());

    struct Case {
        std::uint32_t access;
        std::int32_t rc;
    };
    for (const Case& c : {Case{reg::kQueryValue, 0}, Case{reg::kRead, 0}, Case{reg::kWrite, 5}, Case{reg::kAllAccess, 5}}) {
        RegHandle h = 0;
        EXPECT_EQ(registry.RegOpenKeyExA(reg::kLocalMachine, "Software\\Locked", 0, c.access, &h), c.rc) << c.access;
        registry.RegCloseKey(h);
    }
    // Opens for the maximum allowed succeed with reading rights only.
    RegHandle h = 0;
    ASSERT_EQ(registry.RegCreateKeyA(reg::kLocalMachine, "Software\\Locked", &h), reg::kSuccess);
    EXPECT_EQ(registry.RegSetValueExA(h, "v", reg::kSz, data, 1), reg::kAccessDenied);
    EXPECT_EQ(registry.RegQueryValueExA(h, "v", nullptr, nullptr, nullptr), reg::kFileNotFound);
    RegHandle child = 0;
    EXPECT_EQ(registry.RegCreateKeyA(h, "New", &child), reg::kAccessDenied);
    EXPECT_EQ(registry.RegCreateKeyA(h, "Child", &child), reg::kSuccess);
    registry.RegCloseKey(child);
    registry.RegCloseKey(h);
    // Its subkeys stay writable, but it cannot be deleted.
    EXPECT_EQ(registry.RegDeleteKeyA(reg::kLocalMachine, "Software\\Locked\\Child"), reg::kSuccess);
    EXPECT_EQ(registry.RegDeleteKeyA(reg::kLocalMachine, "Software\\Locked"), reg::kAccessDenied);
}

}  // namespace
}  // namespace tessmark::platform::memory

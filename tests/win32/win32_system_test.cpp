// The system calls of the restore-point form under Wine: the version it decides
// by, and the restore point, which Wine's WMI refuses with a run-time error.
#include <gtest/gtest.h>

#include "safety/SysRes.h"
#include "win32/platform/win32_system.h"

using namespace tessmark;

TEST(Win32System, TheVersionIsReadAndTheRestorePointRefusedWithACode) {
    platform::win32::Win32System system;
    platform::OsVersionInfoA version;
    version.dwOSVersionInfoSize = 148;
    ASSERT_NE(system.GetVersionExA(&version), 0);
    EXPECT_GE(version.dwMajorVersion, 5u);
    EXPECT_NE(system.CallByMoniker(safety::kCreatePointMoniker, "CreateRestorePoint",
                                   {std::string("x"), std::int16_t{12}, std::int16_t{100}}), 0);
}

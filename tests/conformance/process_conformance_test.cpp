// Named mutexes as the single-instance rule uses them, on both adapters.
#include <gtest/gtest.h>

#include "machine.h"

namespace tessmark::testing {
namespace {

TEST(ProcessConformance, MutexesAreTakenByAZeroWaitReleasedOnlyByTheirOwnerAndClosedOnce) {
    auto machine = MakeTestMachine();
    platform::ProcessPort& process = machine->Process();
    auto fresh = process.CreateMutexA(false, "TessmarkConformance.Fresh");
    auto owned = process.CreateMutexA(true, "TessmarkConformance.Owned");
    auto unnamed = process.CreateMutexA(false, nullptr), other = process.CreateMutexA(false, nullptr);
    ASSERT_NE(fresh, 0u);
    EXPECT_FALSE(process.ReleaseMutex(fresh));
    ASSERT_EQ(process.WaitForSingleObject(fresh, 0), platform::kWaitObject0);
    EXPECT_TRUE(process.ReleaseMutex(fresh));
    EXPECT_FALSE(process.ReleaseMutex(fresh));
    EXPECT_TRUE(process.ReleaseMutex(owned));
    // Unnamed mutexes are separate objects.
    ASSERT_EQ(process.WaitForSingleObject(unnamed, 0), platform::kWaitObject0);
    EXPECT_FALSE(process.ReleaseMutex(other));
    EXPECT_TRUE(process.ReleaseMutex(unnamed));
    for (auto handle : {fresh, owned, unnamed, other}) {
        EXPECT_TRUE(process.CloseHandle(handle));
        EXPECT_FALSE(process.CloseHandle(handle));
    }
}

}  // namespace
}  // namespace tessmark::testing

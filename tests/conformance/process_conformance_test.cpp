// A named mutex as the single-instance rule uses it, on both adapters.
#include <gtest/gtest.h>

#include "machine.h"

namespace tessmark::testing {
namespace {

TEST(ProcessConformance, MutexesAreTakenByAZeroWaitReleasedOnlyByTheirOwnerAndClosedOnce) {
    auto machine = MakeTestMachine();
    platform::ProcessPort& process = machine->Process();
    const auto mutex = process.CreateMutexA(false, "TessmarkConformance.Mutex");
    ASSERT_NE(mutex, 0u);
    EXPECT_FALSE(process.ReleaseMutex(mutex));
    ASSERT_EQ(process.WaitForSingleObject(mutex, 0), platform::kWaitObject0);
    EXPECT_TRUE(process.ReleaseMutex(mutex));
    EXPECT_FALSE(process.ReleaseMutex(mutex));
    EXPECT_TRUE(process.CloseHandle(mutex));
    EXPECT_FALSE(process.CloseHandle(mutex));
}

}  // namespace
}  // namespace tessmark::testing

// Named mutexes as the single-instance rule uses them, on both adapters.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "machine.h"

using namespace tessmark;
using platform::kWaitObject0;

namespace {

class ProcessConformance : public ::testing::Test {
protected:
    std::unique_ptr<tessmark::testing::TestMachine> machine = tessmark::testing::MakeTestMachine();
    platform::ProcessPort& process = machine->Process();

    std::string UniqueName() const {
        return std::string("TessmarkConformance.") + ::testing::UnitTest::GetInstance()->current_test_info()->name();
    }
};

TEST_F(ProcessConformance, FreshMutexIsTakenByAZeroWaitAndReleasedByItsOwner) {
    auto mutex = process.CreateMutexA(false, UniqueName().c_str());
    ASSERT_NE(mutex, 0u);
    EXPECT_EQ(process.WaitForSingleObject(mutex, 0), kWaitObject0);
    EXPECT_TRUE(process.ReleaseMutex(mutex));
    EXPECT_TRUE(process.CloseHandle(mutex));
}

TEST_F(ProcessConformance, ReleaseFailsWhenTheMutexIsNotOwned) {
    auto mutex = process.CreateMutexA(false, UniqueName().c_str());
    EXPECT_FALSE(process.ReleaseMutex(mutex));
    ASSERT_EQ(process.WaitForSingleObject(mutex, 0), kWaitObject0);
    EXPECT_TRUE(process.ReleaseMutex(mutex));
    EXPECT_FALSE(process.ReleaseMutex(mutex));
    process.CloseHandle(mutex);
}

TEST_F(ProcessConformance, InitialOwnerHoldsTheMutexFromCreation) {
    auto mutex = process.CreateMutexA(true, UniqueName().c_str());
    EXPECT_TRUE(process.ReleaseMutex(mutex));
    process.CloseHandle(mutex);
}

TEST_F(ProcessConformance, UnnamedMutexesAreSeparateObjects) {
    auto a = process.CreateMutexA(false, nullptr);
    auto b = process.CreateMutexA(false, nullptr);
    ASSERT_EQ(process.WaitForSingleObject(a, 0), kWaitObject0);
    EXPECT_FALSE(process.ReleaseMutex(b));
    EXPECT_TRUE(process.ReleaseMutex(a));
    process.CloseHandle(a);
    process.CloseHandle(b);
}

TEST_F(ProcessConformance, HandleCanBeClosedOnlyOnce) {
    auto mutex = process.CreateMutexA(false, UniqueName().c_str());
    EXPECT_TRUE(process.CloseHandle(mutex));
    EXPECT_FALSE(process.CloseHandle(mutex));
}

}  // namespace

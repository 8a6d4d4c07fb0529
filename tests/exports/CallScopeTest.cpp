// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>

#include "config/ConfiguredState.h"
#include "config/FixedState.h"
#include "exports/CallScope.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

class CallScopeTest : public testing::Test {
protected:
    CallScopeTest() : configuredBefore_(SharedConfiguredState()), fixedBefore_(SharedFixedState()) {
        WriteBytes(folder_.Path() / "profile.ini", "[a]\nk=1\n");
    }
    ~CallScopeTest() override {
        SharedConfiguredState() = configuredBefore_;
        SharedFixedState() = fixedBefore_;
    }
    CallScopeTest(const CallScopeTest&) = delete;
    CallScopeTest& operator=(const CallScopeTest&) = delete;

    std::wstring Profile() const { return folder_.Wide(L"profile.ini"); }

private:
    TemporaryFolder folder_;
    const ConfiguredState configuredBefore_;
    const FixedState fixedBefore_;
};

TEST_F(CallScopeTest, TellsHowTheProfileWasRead) {
    EXPECT_EQ(CallScope(Profile()).ProfileState(), ReadResult::Done);
    EXPECT_EQ(CallScope(Profile() + L"x").ProfileState(), ReadResult::Missing);
}

TEST_F(CallScopeTest, ValuesOfACallOutliveIt) {
    {
        const CallScope call(Profile());
        SharedConfiguredState().SectionName = L"General";
        SharedFixedState().SaveImage = 5;
    }
    EXPECT_EQ(SharedConfiguredState().SectionName, L"General");
    EXPECT_EQ(SharedFixedState().SaveImage, 5);
}

TEST_F(CallScopeTest, ACallWithinACallLeavesTheOuterOnesValues) {
    const CallScope outer(Profile());
    SharedConfiguredState().SectionName = L"outer";
    SharedConfiguredState().DumpNumber = 3;
    SharedFixedState().SectionName = L"outer";
    {
        const CallScope inner(Profile());
        SharedConfiguredState().SectionName = L"inner";
        SharedConfiguredState().DumpNumber = 8;
        SharedFixedState().SectionName = L"inner";
    }
    EXPECT_EQ(SharedConfiguredState().SectionName, L"outer");
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 8);
    EXPECT_EQ(SharedFixedState().SectionName, L"outer");
}

TEST_F(CallScopeTest, ACallOfAnotherThreadWaitsForItsTurn) {
    std::atomic<bool> hasFirstEnded{false};
    bool hadFirstEnded = false;
    std::thread other;
    {
        const CallScope first(Profile());
        other = std::thread([&] {
            const CallScope second(Profile());
            hadFirstEnded = hasFirstEnded;
        });
        std::this_thread::yield();
        hasFirstEnded = true;
    }
    other.join();
    EXPECT_TRUE(hadFirstEnded);
}

}  // namespace
}  // namespace vastrelline

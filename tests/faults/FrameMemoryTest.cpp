// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "faults/FaultInjector.h"
#include "pixels/ScratchArena.h"
#include "support/Frames.h"
#include "support/MadeFrame.h"
#include "support/ProfileWriter.h"
#include "support/TemporaryFolder.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

// So large that its blocks come from the arena.
constexpr int32_t kWidth = 224;
constexpr int32_t kHeight = 200;
static_assert(size_t{kWidth} * kHeight * sizeof(uint16_t) >= ScratchArena::kSmallestBlock);

struct Outcome {
    int32_t code = 0;
    int64_t requests = 0;
    int64_t keptBlocks = 0;
    std::string failedFunction;
    std::vector<uint16_t> pixels;
};

class FrameMemoryTest : public testing::Test {
protected:
    void SetUp() override {
        ProfileWriter writer;
        writer.Section("General").Key("PROCMODE", "2");
        writer.Stage("8")
            .Stage("6")
            .Stage("5", {{"ADAPTIVESMOOTHING_Mode", "1"}})
            .Stage("3")
            .WriteTo(folder_.Path() / "profile.ini");
        Call({});  // what is made once in a process
    }

    // A call in a process that has no memory of an earlier one.
    Outcome Call(const FaultPlan& plan) {
        Frame input = MadeRadiograph(kWidth, kHeight);
        Frame output(kWidth, kHeight);
        const std::string profile = folder_.Narrow("profile.ini");
        ScratchArena::Shared().ReleaseUnused();
        Outcome outcome;
        {
            const ScopedFaults faults(plan);
            outcome.code = ImageProcessing(input.Data(), output.Data(), kWidth, kHeight, profile.c_str(),
                                           "General", 0, 0);
            outcome.requests = faults.CallCount();
            ScratchArena::Shared().ReleaseUnused();
            outcome.keptBlocks = faults.OpenBlocks();
            if (faults.FailedFunction() != nullptr) outcome.failedFunction = faults.FailedFunction();
        }
        outcome.pixels = output.pixels;
        return outcome;
    }

    // Every request fails once, alone or with all behind it. Counts the calls with a code, and those that did
    // without a large block.
    void Sweep(bool isForGood, int64_t& failures, int64_t& madeUpFor) {
        const Outcome expected = Call({});
        ASSERT_EQ(expected.code, VASTRELLINE_OK);
        for (int64_t first = 1; first <= expected.requests; ++first) {
            const Outcome outcome = Call({.first = first, .isForGood = isForGood});
            EXPECT_EQ(outcome.keptBlocks, 0) << first;
            if (outcome.code == VASTRELLINE_OK) {
                EXPECT_EQ(outcome.pixels, expected.pixels) << first;
                if (outcome.failedFunction == "mmap") ++madeUpFor;
                continue;
            }
            EXPECT_TRUE(outcome.code == VASTRELLINE_INTERNAL_FAILURE) << first << ": " << outcome.code;
            ++failures;
        }
    }

    TemporaryFolder folder_;
};

TEST_F(FrameMemoryTest, ARequestThatFailsIsACodeOrMadeUpFor) {
    int64_t failures = 0;
    int64_t madeUpFor = 0;
    Sweep(false, failures, madeUpFor);
    EXPECT_GT(failures, 0);
    EXPECT_GT(madeUpFor, 0) << "the heap stands in for a large block";
}

TEST_F(FrameMemoryTest, NoMemoryFromOneRequestOnIsACode) {
    int64_t failures = 0;
    int64_t madeUpFor = 0;
    Sweep(true, failures, madeUpFor);
    EXPECT_GT(failures, 0);
}

}  // namespace
}  // namespace vastrelline

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/InstructionSet.h"

namespace vastrelline {
namespace {

class InstructionSetTest : public testing::Test {
protected:
    void TearDown() override { LimitInstructionSet(InstructionSet::Avx512); }
};

TEST_F(InstructionSetTest, LimitHolds) {
    LimitInstructionSet(InstructionSet::Reference);
    EXPECT_EQ(InstructionSet::Reference, AllowedInstructionSet());
    LimitInstructionSet(InstructionSet::Baseline);
    EXPECT_EQ(std::min(InstructionSet::Baseline, DetectInstructionSet()), AllowedInstructionSet());
}

TEST_F(InstructionSetTest, LimitBeyondTheMachineActsAsTheMachine) {
    LimitInstructionSet(InstructionSet::Avx512);
    EXPECT_EQ(DetectInstructionSet(), AllowedInstructionSet());
}

TEST_F(InstructionSetTest, DetectionDoesNotChange) {
    EXPECT_EQ(DetectInstructionSet(), DetectInstructionSet());
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "platform/InstructionSet.h"
#include "support/Processor.h"

namespace vastrelline {
namespace {

TEST(ScopedInstructionSet, LimitsWhatIsAllowed) {
    const InstructionSet before = AllowedInstructionSet();
    const ScopedInstructionSet baseline(InstructionSet::Baseline);
    EXPECT_EQ(std::min(InstructionSet::Baseline, before), AllowedInstructionSet());
    const ScopedInstructionSet reference(InstructionSet::Reference);
    EXPECT_EQ(InstructionSet::Reference, AllowedInstructionSet());
}

TEST(ScopedInstructionSet, RestoresTheLimitBeforeIt) {
    const ScopedInstructionSet outer(InstructionSet::Baseline);
    const InstructionSet before = AllowedInstructionSet();
    { const ScopedInstructionSet inner(InstructionSet::Reference); }
    EXPECT_EQ(before, AllowedInstructionSet());
}

TEST(ScopedInstructionSet, RestoresTheLimitWhenLeftEarly) {
    const InstructionSet before = AllowedInstructionSet();
    try {
        const ScopedInstructionSet limit(InstructionSet::Reference);
        throw std::runtime_error("left early");
    } catch (const std::runtime_error&) {
        EXPECT_EQ(before, AllowedInstructionSet());
    }
}

TEST(ScopedInstructionSet, LiftsNoLimit) {
    const InstructionSet before = AllowedInstructionSet();
    const ScopedInstructionSet best(InstructionSet::Avx512);
    EXPECT_EQ(before, AllowedInstructionSet());
    const ScopedInstructionSet reference(InstructionSet::Reference);
    const ScopedInstructionSet lifted(InstructionSet::Avx512);
    EXPECT_EQ(InstructionSet::Reference, AllowedInstructionSet());
}

TEST(InstructionSet, AllowedIsWhatTheMachineHasAtMost) {
    EXPECT_LE(AllowedInstructionSet(), DetectInstructionSet());
}

TEST(InstructionSet, DetectionAgreesWithTheProcessorsOwnWord) {
    EXPECT_EQ(ExpectedInstructionSet(), DetectInstructionSet());
}

}  // namespace
}  // namespace vastrelline

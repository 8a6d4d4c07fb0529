// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstddef>
#include <map>
#include <span>
#include <string>

#include "platform/InstructionSet.h"
#include "platform/Variant.h"
#include "support/VariantForms.h"

namespace vastrelline {
namespace {

int One() { return 1; }
int Two() { return 2; }
int Three() { return 3; }

using IntVariant = Variant<int (*)()>;

constexpr IntVariant kPlainForms[] = {{"scalar", InstructionSet::Reference, One},
                                      {"histogram", InstructionSet::Reference, Two}};
constexpr IntVariant kForms[] = {{"scalar", InstructionSet::Reference, One},
                                 {"avx2", InstructionSet::Avx2, Two},
                                 {"avx512", InstructionSet::Avx512, Three}};

TEST(AllowedVariants, EndWhereTheLimitIs) {
    EXPECT_EQ(AllowedVariants(kPlainForms).size(), 2U);
    const ScopedInstructionSet limit(InstructionSet::Baseline);
    EXPECT_EQ(AllowedVariants(kForms).size(), 1U);
    EXPECT_EQ(AllowedVariants(kForms).data(), kForms);
}

TEST(AllowedVariants, HoldAllThatTheProcessorRuns) {
    size_t expected = 1;
    if (ExpectedInstructionSet() >= InstructionSet::Avx2) ++expected;
    if (ExpectedInstructionSet() >= InstructionSet::Avx512) ++expected;
    EXPECT_EQ(AllowedVariants(kForms).size(), expected);
}

TEST(FastestOf, IsTheLastOne) {
    EXPECT_EQ(FastestOf(std::span<const IntVariant>(kForms)).run(), 3);
    EXPECT_EQ(FastestOf(std::span<const IntVariant>(kForms).first(2)).run(), 2);
}

TEST(FastestOf, ShowsItsPick) {
    const SeenPicks picks;
    FastestOf(AllowedVariants(kPlainForms));
    FastestOf(AllowedVariants(kPlainForms));
    EXPECT_EQ(SeenPicks::CountOf(AllowedVariants(kPlainForms)),
              (std::map<std::string, size_t>{{"histogram", 2}}));
}

TEST(FastestOf, ShowsNobodyWhenNobodyLooks) {
    { const SeenPicks picks; }
    EXPECT_EQ(FastestOf(AllowedVariants(kPlainForms)).run(), 2);
    EXPECT_TRUE(SeenPicks::CountOf(AllowedVariants(kPlainForms)).empty());
}

}  // namespace
}  // namespace vastrelline

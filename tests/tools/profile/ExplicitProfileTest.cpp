// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "profile/ExplicitProfile.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

std::string Explicit(const std::string& bytes, const std::string& section = "A",
                     ExportKind kind = ExportKind::Plain) {
    const ProfileFile file("p.ini", bytes);
    return WriteExplicitProfile("Head.", ReadEffectiveValues(file, MakeSectionPlan(file, section, kind)));
}

TEST(ExplicitProfile, WritesDefaultsOutWithTheirMeaning) {
    const std::string text = Explicit("[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=7\n");
    EXPECT_THAT(text, StartsWith("; Head.\n\n[A]\n"));
    EXPECT_THAT(text, HasSubstr("\n; ---- 00 Median\n"));
    EXPECT_THAT(text, HasSubstr("This is the default.\n00_MEDIAN_SIZE=3\n"));
    EXPECT_THAT(text, HasSubstr("\n[Settings]\n"));
}

TEST(ExplicitProfile, WritesWhatIsReadAndNotWhatStands) {
    const std::string text =
        Explicit("[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=3\n00_MAX_SLOPE=1,5\n");
    EXPECT_THAT(text, HasSubstr("\n00_MAX_SLOPE=1\n"));
}

TEST(ExplicitProfile, QuotesWhatWouldLoseItsBlanksOrQuotes) {
    EXPECT_THAT(Explicit("[A]\nVERSION=\" 1 \"\n"), HasSubstr("\nVERSION=\" 1 \"\n"));
    EXPECT_THAT(Explicit("[A]\nVERSION=\"'1'\"\n"), HasSubstr("\nVERSION=\"'1'\"\n"));
    EXPECT_THAT(Explicit("[A]\nVERSION=\"1\"\n"), HasSubstr("\nVERSION=1\n"));
}

TEST(ExplicitProfile, HasAMarkIfItIsNotAscii) {
    EXPECT_THAT(Explicit("[A]\nVERSION=\xC3\xA4\n"), StartsWith("\xEF\xBB\xBF; Head."));
    EXPECT_THAT(Explicit("[A]\nVERSION=a\n"), StartsWith("; Head."));
}

TEST(ExplicitProfile, HoldsEachSectionAndKeyOnce) {
    // The named section is the sensor's, too.
    const std::string text = Explicit("[Settings]\nPROCMODE=2\n", "SETTINGS");
    EXPECT_EQ(text.find("[SETTINGS]"), text.rfind("["));
    const std::string low = Explicit("[IP_LOWMODE]\nPROCMODE=3\n", "IP_LOWMODE", ExportKind::S);
    EXPECT_EQ(low.find("\nOUTPUTRANGE="), low.rfind("\nOUTPUTRANGE="));
    EXPECT_THAT(low, Not(HasSubstr("[A]")));
}

}  // namespace
}  // namespace vastrelline

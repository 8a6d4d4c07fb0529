// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "lint/LintedSection.h"

namespace vastrelline {
namespace {

LintedSection Linted(const ProfileFile& file, const std::string& name) {
    return MakeLintedSection(file, *file.FindSection(name));
}

// Why nobody reads a key of a section; Unknown, with a failure, if somebody does.
UnreadCause CauseOf(const std::string& text, const std::string& section, const std::string& key) {
    const ProfileFile file("P.ini", text);
    const LintedSection linted = Linted(file, section);
    const auto found = std::find_if(linted.unread.begin(), linted.unread.end(),
                                    [&](const UnreadLine& line) { return line.entry->key == key; });
    EXPECT_NE(found, linted.unread.end()) << key;
    return found == linted.unread.end() ? UnreadCause::Unknown : found->cause;
}

const std::string kList =
    "[A]\nPROCMODE=2\nFunctionCount=3\n00_Function_Number=8\n01_Function_Number=99\n03_Function_Number=3\n";

TEST(LintedSection, KnowsWhyALineIsNotRead) {
    EXPECT_EQ(CauseOf(kList + "00_MAX_SLOPE=1\n", "A", "00_MAX_SLOPE"), UnreadCause::OtherStage);
    EXPECT_EQ(CauseOf(kList + "01_MAX_SLOPE=1\n", "A", "01_MAX_SLOPE"), UnreadCause::AtOddPosition);
    EXPECT_EQ(CauseOf(kList + "02_MAX_SLOPE=1\n", "A", "02_MAX_SLOPE"), UnreadCause::AtOddPosition);
    EXPECT_EQ(CauseOf(kList + "03_MAX_SLOPE=1\n", "A", "03_MAX_SLOPE"), UnreadCause::BeyondCount);
    EXPECT_EQ(CauseOf(kList + "03_MEDIAN_SIZE=1\n", "A", "03_MEDIAN_SIZE"), UnreadCause::OtherStage);
    EXPECT_EQ(CauseOf(kList + "04_MAX_SLOPE=1\n", "A", "04_MAX_SLOPE"), UnreadCause::NoPosition);
    EXPECT_EQ(CauseOf(kList + "00_WORD=1\n", "A", "00_WORD"), UnreadCause::Unknown);
    EXPECT_EQ(CauseOf(kList + "MAX_SLOPE=1\n", "A", "MAX_SLOPE"), UnreadCause::OtherChain);
    EXPECT_EQ(CauseOf(kList + "Flip=1\n", "A", "Flip"), UnreadCause::OtherSection);
    EXPECT_EQ(CauseOf(kList + "word\n", "A", "word"), UnreadCause::NotAKey);
    EXPECT_EQ(CauseOf("[A]\nPROCMODE=1\n00_MAX_SLOPE=1\n", "A", "00_MAX_SLOPE"), UnreadCause::OtherChain);
}

TEST(LintedSection, KnowsItsRoleByItsNameUnlessAHostMeansIt) {
    const ProfileFile file("P.ini",
                           "[settings]\nFlip=1\n[ip_lowmode]\n00_GAUSSIAN_SIZE=1\n[A]\nPROCMODE=2\n");
    EXPECT_EQ(Linted(file, "Settings").role, SectionRole::Sensor);
    EXPECT_TRUE(Linted(file, "Settings").unread.empty());
    EXPECT_EQ(Linted(file, "IP_LOWMODE").role, SectionRole::Low);
    EXPECT_TRUE(Linted(file, "IP_LOWMODE").unread.empty());
    EXPECT_EQ(Linted(file, "A").role, SectionRole::Host);
    const ProfileFile meant("P.ini", "[IP_LOWMODE]\nPROCMODE=2\n");
    EXPECT_EQ(Linted(meant, "IP_LOWMODE").role, SectionRole::Host);
}

TEST(LintedSection, ReadsOnWhereModeAndCountAreMisspelt) {
    const ProfileFile file("P.ini", "[A]\nPROCMOD=2\nFunctionCont=1\n00_Function_Number=3\n00_MAX_SLOPE=2\n");
    const LintedSection linted = Linted(file, "A");
    EXPECT_TRUE(linted.isModeDoubtful);
    EXPECT_TRUE(linted.isCountDoubtful);
    EXPECT_TRUE(linted.RunsList());
    EXPECT_EQ(linted.unread.size(), 2U);
    EXPECT_TRUE(linted.HasMisspelt("PROCMODE"));
    EXPECT_FALSE(linted.HasMisspelt("SAVE_LOG"));
}

TEST(LintedSection, RecognisesMisspeltNumbers) {
    const ProfileFile file("P.ini",
                           "[A]\nPROCMODE=2\nFunctionCount=12\n11_Function_Nmber=3\n11_MAX_SLOPE=2\n");
    const LintedSection linted = Linted(file, "A");
    EXPECT_TRUE(linted.HasMisspeltNumber(11));
    EXPECT_FALSE(linted.HasMisspeltNumber(5555));
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "lint/ProfileSetting.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

const std::string kText =
    "[A]\nPROCMODE=2\nFunctionCount=1\n00_Function_Number=3\n00_MAX_SLOPE=2\n[B]\nx=1\n";

ProfileSetting Set(const std::vector<ProfileValue>& values, const std::string& section = "A") {
    return SetInProfile(ProfileFile("P.ini", kText), section, values);
}

TEST(ProfileSetting, TellsWhatItChanged) {
    const ProfileSetting setting =
        Set({{L"00_MAX_SLOPE", L"1.5"}, {L"00_BLOCK_SIZE", L"128"}, {L"procmode", L"2"}});
    ASSERT_EQ(setting.lines.size(), 3U);
    EXPECT_EQ(setting.lines[0].line, 5U);
    EXPECT_EQ(setting.lines[0].old, "2");
    EXPECT_TRUE(setting.lines[0].isChanged);
    EXPECT_EQ(setting.lines[1].line, 6U);
    EXPECT_EQ(setting.lines[1].old, std::nullopt);
    EXPECT_EQ(setting.lines[2].key, "PROCMODE");
    EXPECT_FALSE(setting.lines[2].isChanged);
    EXPECT_TRUE(setting.areAllRead);
    EXPECT_TRUE(setting.findings.empty());
}

TEST(ProfileSetting, TellsOfLinesThatItSetOnly) {
    EXPECT_TRUE(Set({{L"SAVE_LOG", L"1"}}).findings.empty());  // though x of [B] is no key
    const ProfileSetting setting = Set({{L"00_MAX_SLOPE", L"30"}});
    ASSERT_EQ(setting.findings.size(), 1U);
    EXPECT_EQ(setting.findings[0].finding.rule, "value-range");
    EXPECT_TRUE(setting.areAllRead);
}

TEST(ProfileSetting, SeesAKeyThatNobodyReads) {
    EXPECT_FALSE(Set({{L"00_WORD", L"1"}}).areAllRead);
    EXPECT_FALSE(Set({{L"07_MAX_SLOPE", L"1"}}).areAllRead);
    // ImageProcessingCR reads it.
    EXPECT_TRUE(Set({{L"CONTRAST_ENHANCE2", L"1"}}).areAllRead);
}

TEST(ProfileSetting, RefusesWhatWouldNotComeBack) {
    EXPECT_THROW(Set({{L"a", L"1\n2"}}), UsageError);
    EXPECT_THROW(Set({{L"; a", L"1"}}), UsageError);
    EXPECT_THROW(Set({{L"a", L"1"}}, ""), UsageError);
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "profile/KeyLookup.h"
#include "profile/SectionPlan.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;

TEST(LookUpKey, FindsKeysWithAndWithoutPosition) {
    const std::optional<LookedUp> plain = LookUpKey("max_slope");
    ASSERT_TRUE(plain);
    EXPECT_EQ(plain->name, "MAX_SLOPE");
    EXPECT_EQ(plain->position, std::nullopt);
    ASSERT_EQ(plain->keys.size(), 1U);  // the fixed chain's is the same
    EXPECT_EQ(plain->keys[0].stage->number, 3);
    EXPECT_NE(plain->keys[0].fixedKey, nullptr);
    const std::optional<LookedUp> numbered = LookUpKey("04_MAX_SLOPE");
    ASSERT_TRUE(numbered);
    EXPECT_EQ(numbered->position, 4);
    EXPECT_FALSE(LookUpKey("4_MAX_SLOPE"));
}

TEST(LookUpKey, FindsAKeyOfSeveralStages) {
    const std::optional<LookedUp> found = LookUpKey("GAUSSIAN_SIZE");
    ASSERT_TRUE(found);
    ASSERT_EQ(found->keys.size(), 2U);
    EXPECT_EQ(found->keys[0].stage->number, 6);
    EXPECT_EQ(found->keys[1].stage->number, 8);
    EXPECT_NE(found->keys[0].fixedKey, nullptr);
    EXPECT_EQ(found->keys[1].fixedKey, nullptr);  // PRE_ and POST_GAUSSIAN_SIZE there
}

TEST(LookUpKey, FindsSettingsAndKeysOfTheFixedChain) {
    EXPECT_EQ(LookUpKey("PROCMODE")->keys[0].group, SettingsGroup::Common);
    EXPECT_EQ(LookUpKey("rccutoff")->keys[0].group, SettingsGroup::Sensor);
    const KeyTopic topic = LookUpKey("PRE_MEDIAN_SIZE")->keys[0];
    EXPECT_EQ(topic.group, SettingsGroup::Fixed);
    EXPECT_EQ(topic.stage->number, 7);
    EXPECT_EQ(LookUpKey("02_Function_Number")->keys[0].key, &ListNumberKey());
}

TEST(LookUpKey, FindsStagesByNumberNameAndTitle) {
    for (const char* const word : {"10", "GammaLUT", "gamma curve", "gamma", "010"}) {
        const std::optional<LookedUp> found = LookUpKey(word);
        ASSERT_TRUE(found) << word;
        ASSERT_NE(found->stage, nullptr) << word;
        EXPECT_EQ(found->stage->number, 10) << word;
    }
    for (const char* const word : {"0", "14", "-3", "10x", "", "99999999999999", "ALPHA"})
        EXPECT_FALSE(LookUpKey(word)) << word;
}

TEST(LookUpKey, BringsTheNotesThatNameTheKey) {
    const KeyTopic topic = LookUpKey("MAX_SLOPE")->keys[0];
    ASSERT_FALSE(topic.notes.empty());
    for (const std::string_view note : topic.notes) EXPECT_THAT(std::string(note), HasSubstr("MAX_SLOPE"));
    // LAYER is a word of its own in its notes, not the end of PYRAMID_LAYER.
    const KeyTopic layer = LookUpKey("LAYER")->keys[0];
    ASSERT_FALSE(layer.notes.empty());
    for (const std::string_view note : layer.notes)
        EXPECT_THAT(std::string(note), testing::Not(HasSubstr("PYRAMID_LAYER")));
}

TEST(FindNearestKey, KeepsThePosition) {
    EXPECT_EQ(FindNearestKey("MAX_SLOP"), "MAX_SLOPE");
    EXPECT_EQ(FindNearestKey("04_MAX_SLOP"), "04_MAX_SLOPE");
    EXPECT_EQ(FindNearestKey("ENHANCED_RATIO_CONTRAST"), "ENAHCNED_RATIO_CONTRAST");
    EXPECT_EQ(FindNearestKey("Gama curve"), "Gamma curve");
    EXPECT_EQ(FindNearestKey("quite another word"), "");
}

}  // namespace

}  // namespace vastrelline

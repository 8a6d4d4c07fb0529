// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <string>

#include "keys/KeyTable.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<Key> AllKeys() {
    std::vector<Key> keys;
    for (const Stage& stage : AllStageRows()) keys.insert(keys.end(), stage.keys.begin(), stage.keys.end());
    for (const SettingsGroup group : {SettingsGroup::Common, SettingsGroup::Fixed, SettingsGroup::Sensor}) {
        const std::span<const Key> more = SettingsOf(group).keys;
        keys.insert(keys.end(), more.begin(), more.end());
    }
    return keys;
}

bool Fits(const SensibleRange& range, double value) {
    return value >= range.smallest && value <= range.largest;
}

TEST(KeyTable, HasThirteenStagesByNumber) {
    int32_t number = 0;
    for (const Stage& stage : AllStageRows()) {
        EXPECT_EQ(stage.number, ++number);
        EXPECT_EQ(FindStage(number), &stage);
        EXPECT_FALSE(stage.keys.empty()) << stage.title;
        EXPECT_FALSE(stage.text.empty()) << stage.title;
    }
    EXPECT_EQ(number, 13);
    EXPECT_EQ(FindStage(0), nullptr);
    EXPECT_EQ(FindStage(14), nullptr);
}

TEST(KeyTable, TellsAKeyOfAStage) {
    const Stage* const clahe = FindStage(3);
    ASSERT_NE(clahe, nullptr);
    EXPECT_EQ(clahe->name, "CLAHE");
    EXPECT_THAT(clahe->fixedSwitches, ElementsAre("CONTRAST_ENHANCE2"));
    const Key* const slope = FindStageKey(*clahe, "max_slope");
    ASSERT_NE(slope, nullptr);
    EXPECT_EQ(slope->name, "MAX_SLOPE");
    EXPECT_EQ(slope->type, KeyType::Number);
    EXPECT_EQ(slope->defaultText, "1.5");
    EXPECT_EQ(slope->stage, 3);
    EXPECT_TRUE(slope->hasEffect);
    ASSERT_EQ(slope->sensible.size(), 1U);
    EXPECT_EQ(slope->sensible[0].smallest, 1.2);
    EXPECT_EQ(slope->sensible[0].largest, 3.0);
    EXPECT_EQ(FindStageKey(*clahe, "MEDIAN_SIZE"), nullptr);
}

TEST(KeyTable, TellsHowKeysAreRead) {
    EXPECT_EQ(FindStageKey(*FindStage(11), "POST_LINEAR_MODE")->type, KeyType::CutNumber);
    EXPECT_EQ(FindStageKey(*FindStage(13), "WF_SLOPE")->type, KeyType::SingleNumber);
    EXPECT_EQ(FindStageKey(*FindStage(13), "WF_SLOPE")->defaultText, "0.005");
    EXPECT_EQ(FindSetting(SettingsGroup::Common, "VERSION")->type, KeyType::Text);
    EXPECT_FALSE(FindStageKey(*FindStage(12), "PREPROCESSING_AUMALPHA")->hasEffect);
}

// A run takes a record of zeros from a section without a line, and the fixed chain if PROCMODE is missing.
TEST(KeyTable, TellsWhatAnEmptySectionGives) {
    const Key* const bits = FindSetting(SettingsGroup::Common, "BITSTORED");
    EXPECT_EQ(bits->defaultText, "12");
    EXPECT_EQ(bits->emptySectionText, "0");
    EXPECT_EQ(FindSetting(SettingsGroup::Common, "PROCMODE")->emptySectionText, "1");
    EXPECT_EQ(FindSetting(SettingsGroup::Common, "WRITE_PATH")->emptySectionText, "");
    EXPECT_EQ(FindSetting(SettingsGroup::Fixed, "BITSTORED")->emptySectionText, "12");
}

TEST(KeyTable, TellsWhatTheSensorsProfileLacks) {
    const Key* const cut = FindSetting(SettingsGroup::Sensor, "RCCutOff");
    EXPECT_EQ(cut->defaultText, "150");
    EXPECT_EQ(cut->syncText, "159");
    EXPECT_EQ(FindSetting(SettingsGroup::Sensor, "TargetRange")->syncText, std::nullopt);
}

TEST(KeyTable, FindsAllPlacesOfAName) {
    const std::vector<KeyPlace> places = FindKeyPlaces("gaussian_size");
    ASSERT_EQ(places.size(), 3U);
    EXPECT_EQ(places[0].stage, FindStage(6));
    EXPECT_EQ(places[1].stage, FindStage(8));
    EXPECT_EQ(places[2].group, SettingsGroup::Fixed);
    EXPECT_EQ(places[2].key->stage, 6);
    EXPECT_THAT(FindKeyPlaces("GAUSSIAN"), IsEmpty());
}

TEST(KeyTable, KnowsTheNamesOfTheFixedChain) {
    EXPECT_THAT(FindStageKey(*FindStage(7), "MEDIAN_SIZE")->fixedNames,
                ElementsAre("PRE_MEDIAN_SIZE", "POST_MEDIAN_SIZE"));
    EXPECT_THAT(FindStageKey(*FindStage(7), "MEDIAN_Mode")->fixedNames, IsEmpty());
    EXPECT_THAT(FindStageKey(*FindStage(13), "LAYER")->fixedNames, IsEmpty());
    for (const Stage& stage : AllStageRows())
        for (const Key& key : stage.keys)
            for (const std::string_view name : key.fixedNames)
                EXPECT_NE(FindSetting(SettingsGroup::Fixed, name), nullptr) << name;
}

TEST(KeyTable, HasRangesOfTheFixedChainWhereTheyDiffer) {
    const Key* const width = FindSetting(SettingsGroup::Fixed, "NOISE_WIDTH");
    EXPECT_EQ(width->type, KeyType::Integer);
    ASSERT_EQ(width->sensible.size(), 1U);
    EXPECT_EQ(width->sensible[0].largest, 100.0);
    // The fixed chain knows the least-squares filter only: its ranges hold without a mode.
    const Key* const mask = FindSetting(SettingsGroup::Fixed, "ADAPTIVESMOOTHING_MASK");
    ASSERT_EQ(mask->sensible.size(), 1U);
    EXPECT_EQ(mask->sensible[0].whenKey, "");
    EXPECT_EQ(mask->sensible[0].shape, ValueShape::Odd);
}

TEST(KeyTable, ConditionsOfRangesNameKeysOfTheSamePlace) {
    for (const Stage& stage : AllStageRows())
        for (const Key& key : stage.keys)
            for (const SensibleRange& range : key.sensible)
                EXPECT_TRUE(range.whenKey.empty() || FindStageKey(stage, range.whenKey) != nullptr)
                    << key.name;
    for (const Key& key : SettingsOf(SettingsGroup::Fixed).keys)
        for (const SensibleRange& range : key.sensible)
            EXPECT_TRUE(range.whenKey.empty() || FindSetting(SettingsGroup::Fixed, range.whenKey) != nullptr)
                << key.name;
}

TEST(KeyTable, EveryKeyWithEffectHasAMeaning) {
    for (const Key& key : AllKeys()) {
        if (!key.hasEffect) continue;
        EXPECT_FALSE(key.meaning.empty()) << key.name;
        EXPECT_NE(key.meaning, "No effect.") << key.name;
        EXPECT_EQ(key.range.empty(), false) << key.name;
    }
}

TEST(KeyTable, RangesAreNotEmpty) {
    for (const Key& key : AllKeys()) {
        for (const SensibleRange& range : key.sensible) {
            EXPECT_LE(range.smallest, range.largest) << key.name;
            EXPECT_EQ(range.whenKey.empty(), range.whenIs.empty()) << key.name;
            EXPECT_FALSE(std::isnan(range.smallest) || std::isnan(range.largest)) << key.name;
        }
    }
    EXPECT_FALSE(Fits(FindSetting(SettingsGroup::Common, "SATURATION_VALUE")->sensible[0], 0));
}

TEST(KeyTable, KnowsTheStepsOfTheFixedChain) {
    std::vector<int32_t> stages;
    for (const FixedStep& step : FixedSteps()) stages.push_back(step.stage);
    EXPECT_THAT(stages, ElementsAre(0, 7, 8, 1, 2, 6, 4, 3, 5, 7, 8, 9, 10));
    EXPECT_EQ(FixedSteps()[5].switchKey, "PYRAMID_PROCESSING");
    EXPECT_FALSE(FixedSteps()[5].isInCrChain);
    EXPECT_TRUE(FixedSteps()[6].isInCrChain);
    EXPECT_THAT(FixedSteps()[9].keys, ElementsAre("POST_MEDIAN_SIZE", "POST_MEDIAN_REPEAT"));
}

TEST(KeyTable, KnowsTheLowSequence) { EXPECT_THAT(LowSequence(), ElementsAre(8, 12, 2, 3, 3, 11, 10)); }

// A group's names differ, or an edit could not tell which key it means.
TEST(KeyTable, HasEachNameOnceInAPlace) {
    const auto namesOf = [](std::span<const Key> keys) {
        std::set<std::string_view> names;
        for (const Key& key : keys) names.insert(key.name);
        return names;
    };
    for (const Stage& stage : AllStageRows()) EXPECT_EQ(namesOf(stage.keys).size(), stage.keys.size());
    EXPECT_EQ(SettingsOf(SettingsGroup::Fixed).keys.size(), 60U);
    EXPECT_EQ(namesOf(SettingsOf(SettingsGroup::Fixed).keys).size(), 60U);
}

}  // namespace
}  // namespace vastrelline

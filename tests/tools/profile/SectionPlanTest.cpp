// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "profile/SectionPlan.h"

namespace vastrelline {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

const std::string kListed =
    "[A]\nPROCMODE=2\nFunctionCount=2\n00_Function_Number=8\n00_GAUSSIAN_SIZE=0.9\n01_Function_Number=13\n"
    "02_Function_Number=3\nMAX_SLOPE=2\n";

std::vector<std::string> UnreadOf(const SectionPlan& plan) {
    std::vector<std::string> names;
    for (const ProfileEntry* const entry : plan.unread) names.push_back(entry->key);
    return names;
}

std::vector<int32_t> RunningStages(const SectionPlan& plan) {
    std::vector<int32_t> numbers;
    for (const PlannedPlace& place : plan.places)
        if (place.runs && place.stageNumber != 0) numbers.push_back(place.stageNumber);
    return numbers;
}

std::vector<std::string> KeysOf(const PlannedPlace& place) {
    std::vector<std::string> names;
    for (const PlannedKey& key : place.keys) names.push_back(key.name);
    return names;
}

TEST(SectionPlan, ExportAndModeDecideTheChain) {
    EXPECT_EQ(ChainOf(2, ExportKind::Plain), ChainKind::Configured);
    EXPECT_EQ(ChainOf(2, ExportKind::NS), ChainKind::Configured);
    EXPECT_EQ(ChainOf(2, ExportKind::NE), ChainKind::Extended);
    EXPECT_EQ(ChainOf(3, ExportKind::S), ChainKind::LowExposure);
    EXPECT_EQ(ChainOf(3, ExportKind::NS), ChainKind::LowExposure);
    EXPECT_EQ(ChainOf(3, ExportKind::Plain), ChainKind::Fixed);
    EXPECT_EQ(ChainOf(3, ExportKind::NE), ChainKind::Fixed);
    EXPECT_EQ(ChainOf(1, ExportKind::S), ChainKind::Fixed);
    EXPECT_EQ(ChainOf(2, ExportKind::CR), ChainKind::Cr);
}

TEST(SectionPlan, AListRunsUpToItsCount) {
    const ProfileFile file("p.ini", kListed);
    const SectionPlan plan = MakeSectionPlan(file, "a", ExportKind::Plain);
    EXPECT_EQ(plan.procMode, 2);
    EXPECT_EQ(plan.functionCount, 2);
    EXPECT_THAT(RunningStages(plan), ElementsAre(8));
    EXPECT_THAT(UnreadOf(plan), ElementsAre("02_Function_Number", "MAX_SLOPE"));
    const PlannedPlace& gaussian = plan.places[2];
    EXPECT_EQ(gaussian.role, PlaceRole::ListedStage);
    EXPECT_THAT(KeysOf(gaussian), ElementsAre("00_Function_Number", "00_GAUSSIAN_SIZE", "00_GAUSSIAN_REPEAT",
                                              "00_GAUSSIAN_ReduceTimeRatio", "00_GAUSSIAN_ProtectOutline"));
    EXPECT_EQ(gaussian.keys[1].entry, file.FindEntry("A", "00_GAUSSIAN_SIZE"));
    EXPECT_EQ(gaussian.keys[2].entry, nullptr);
    EXPECT_EQ(plan.places[3].role, PlaceRole::PassedOver);
}

TEST(SectionPlan, TheExtendedChainRunsHdr) {
    const ProfileFile file("p.ini", kListed);
    EXPECT_THAT(RunningStages(MakeSectionPlan(file, "A", ExportKind::NE)), ElementsAre(8, 13));
}

TEST(SectionPlan, AMissingSectionRunsTheFixedChain) {
    const ProfileFile file("p.ini", kListed);
    const SectionPlan plan = MakeSectionPlan(file, "B", ExportKind::Plain);
    EXPECT_FALSE(plan.hasSection);
    EXPECT_EQ(plan.chain, ChainKind::Fixed);
    EXPECT_THAT(RunningStages(plan), ElementsAre(9));
    EXPECT_THAT(plan.unread, IsEmpty());
}

TEST(SectionPlan, TheFixedChainReadsPlainKeysAndRunsWhatIsSwitchedOn) {
    const ProfileFile file("p.ini",
                           "[A]\nCONTRAST_ENHANCE2=1\nMAX_SLOPE=2\nPYRAMID_PROCESSING=1\n00_MAX_SLOPE=3\n");
    const SectionPlan fixed = MakeSectionPlan(file, "A", ExportKind::Plain);
    EXPECT_THAT(RunningStages(fixed), ElementsAre(6, 3, 9));
    EXPECT_THAT(UnreadOf(fixed), ElementsAre("00_MAX_SLOPE"));
    EXPECT_THAT(RunningStages(MakeSectionPlan(file, "A", ExportKind::CR)), ElementsAre(3, 9));
    size_t keys = 0;
    for (const PlannedPlace& place : fixed.places)
        if (place.role != PlaceRole::Sensor) keys += place.keys.size();
    EXPECT_EQ(keys, SettingsOf(SettingsGroup::Fixed).keys.size() + 1);  // and PROCMODE
}

TEST(SectionPlan, TheLowSequenceStandsBesideTheList) {
    const ProfileFile file("p.ini", "[A]\nPROCMODE=3\n[IP_LOWMODE]\n04_MAX_SLOPE=1.3\n");
    const SectionPlan plan = MakeSectionPlan(file, "A", ExportKind::S);
    EXPECT_EQ(plan.chain, ChainKind::LowExposure);
    EXPECT_THAT(RunningStages(plan), ElementsAre(8, 12, 2, 3, 3, 11, 10));
    const auto place = std::find_if(plan.places.begin(), plan.places.end(), [](const PlannedPlace& each) {
        return each.role == PlaceRole::LowStage && each.position == 4;
    });
    ASSERT_NE(place, plan.places.end());
    EXPECT_EQ(place->section, "IP_LOWMODE");
    EXPECT_THAT(KeysOf(*place), Contains("04_MAX_SLOPE"));
    EXPECT_THAT(KeysOf(*place), Not(Contains("04_Function_Number")));
    EXPECT_EQ(place->keys[2].entry, file.FindEntry("IP_LOWMODE", "04_MAX_SLOPE"));
}

TEST(SectionPlan, PositionsAreThoseThatTheLibraryWrites) {
    EXPECT_EQ(NumberedKeyName(4, "K"), "04_K");
    EXPECT_EQ(NumberedKeyName(120, "K"), "120_K");
    EXPECT_EQ(SplitNumberedKey("04_MAX_SLOPE")->position, 4);
    EXPECT_EQ(SplitNumberedKey("04_MAX_SLOPE")->key, "MAX_SLOPE");
    EXPECT_EQ(SplitNumberedKey("120_K")->position, 120);
    for (const char* const name : {"4_K", "004_K", "K", "04", "04K", "", "_K", "99999999999_K"})
        EXPECT_EQ(SplitNumberedKey(name), std::nullopt) << name;
}

TEST(SectionPlan, IntegersAreReadAsTheLibraryReadsThem) {
    const ProfileFile file("p.ini", "[A]\na=12px\nb=\"7\"\nc=\nd\ne=4294967298\n");
    EXPECT_EQ(ReadIntegerKey(file, "A", "a", 1), 12);
    EXPECT_EQ(ReadIntegerKey(file, "A", "b", 1), 7);
    EXPECT_EQ(ReadIntegerKey(file, "A", "c", 1), 0);
    EXPECT_EQ(ReadIntegerKey(file, "A", "d", 1), 1);
    EXPECT_EQ(ReadIntegerKey(file, "A", "e", 1), 2);
    EXPECT_EQ(ReadIntegerKey(file, "A", "f", 1), 1);
}

TEST(SectionPlan, AnEndlessCountCostsNoMoreThanTheLinesDo) {
    const ProfileFile file("p.ini",
                           "[A]\nFunctionCount=2000000000\n01_function_number=3\n900_Function_Number=8\n");
    EXPECT_THAT(ListedPositions(file, "A", 2000000000), ElementsAre(1, 900));
}

}  // namespace
}  // namespace vastrelline

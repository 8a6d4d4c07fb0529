// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "profile/StageAlignment.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

size_t AllAlike(size_t /*first*/, size_t /*second*/) { return 0; }

// "0-1" for places in both lists, "0-" and "-1" in one, "!" behind a stage that was moved.
std::vector<std::string> Align(const std::vector<int32_t>& first, const std::vector<int32_t>& second,
                               const std::function<size_t(size_t, size_t)>& likeness = AllAlike) {
    std::vector<std::string> texts;
    for (const AlignedStage& each : AlignStages(first, second, likeness))
        texts.push_back((each.first ? std::to_string(*each.first) : "") + "-" +
                        (each.second ? std::to_string(*each.second) : "") + (each.isMoved ? "!" : ""));
    return texts;
}

TEST(AlignStages, SameListsStandSideBySide) {
    EXPECT_THAT(Align({8, 3, 10}, {8, 3, 10}), ElementsAre("0-0", "1-1", "2-2"));
    EXPECT_THAT(Align({}, {}), IsEmpty());
}

TEST(AlignStages, AStageInOneListShiftsTheOthers) {
    EXPECT_THAT(Align({8, 3, 10}, {8, 7, 3, 10}), ElementsAre("0-0", "-1", "1-2", "2-3"));
    EXPECT_THAT(Align({8, 3, 10}, {3, 10}), ElementsAre("0-", "1-0", "2-1"));
    EXPECT_THAT(Align({}, {3}), ElementsAre("-0"));
    EXPECT_THAT(Align({3}, {}), ElementsAre("0-"));
    EXPECT_THAT(Align({3}, {4}), ElementsAre("0-", "-0"));
}

TEST(AlignStages, AMovedStageIsOneStage) {
    EXPECT_THAT(Align({8, 3, 10, 11}, {3, 10, 11, 8}), ElementsAre("0-3!", "1-0", "2-1", "3-2"));
    EXPECT_THAT(Align({8, 3, 10}, {10, 8, 3}), ElementsAre("0-1", "1-2", "2-0!"));
}

TEST(AlignStages, RepeatedStagesKeepTheirOrder) {
    EXPECT_THAT(Align({3, 3, 3}, {3, 3}), ElementsAre("0-0", "1-1", "2-"));
    EXPECT_THAT(Align({3, 8, 3, 9}, {3, 3, 9, 8}), ElementsAre("0-0", "1-3!", "2-1", "3-2"));
}

TEST(AlignStages, OfEquallyManyTheMoreAlikeStandTogether) {
    const auto secondIsLikeFirst = [](size_t i, size_t j) -> size_t { return i == 1 && j == 0 ? 5 : 0; };
    EXPECT_THAT(Align({3, 3}, {3}, secondIsLikeFirst), ElementsAre("0-", "1-0"));
    // But no likeness outweighs a stage.
    const auto crossed = [](size_t i, size_t j) -> size_t { return i != j ? 999 : 0; };
    EXPECT_THAT(Align({3, 3}, {3, 3}, crossed), ElementsAre("0-0", "1-1"));
}

TEST(AlignStages, ListsOfUnreasonableLengthAreCountedOff) {
    std::vector<int32_t> first(5000, 3);
    std::vector<int32_t> second(5000, 3);
    first[10] = 4;
    const std::vector<AlignedStage> aligned = AlignStages(first, second, AllAlike);
    EXPECT_EQ(aligned.size(), 5001U);
    EXPECT_EQ(aligned.back().second, 4999U);
}

}  // namespace
}  // namespace vastrelline

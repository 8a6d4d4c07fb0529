// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "runs/DumpNames.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;

TEST(DumpNames, BeginWithANumberOfTwoDigits) {
    const std::optional<NumberedFile> file = ReadNumberedName("dumps/103_Unsharp3.RAW");
    ASSERT_TRUE(file);
    EXPECT_EQ(file->number, 103);
    EXPECT_EQ(file->rest, "unsharp3.raw");
    EXPECT_EQ(file->path, "dumps/103_Unsharp3.RAW");
    for (const char* const other : {"3_a.raw", "a.raw", "03a.raw", "03"})
        EXPECT_FALSE(ReadNumberedName(other));
}

TEST(DumpNames, AreListedByTheirNumbers) {
    const TemporaryFolder folder;
    for (const char* const leaf : {"100_a.raw", "99_b.raw", "99_a.raw", "words.txt"})
        WriteBytes(folder.Path() / leaf, "");
    std::vector<std::string> names;
    for (const NumberedFile& file : ListNumberedFiles(folder.Path().string()))
        names.push_back(std::to_string(file.number) + " " + file.rest);
    EXPECT_THAT(names, ElementsAre("99 a.raw", "99 b.raw", "100 a.raw"));
}

TEST(DumpNames, AreFoundInTheListsOfStages) {
    const std::vector<std::string_view> names{"NN_clahe.raw", "NN_Unsharp<mode>.raw", "Diff1_<i>.raw"};
    EXPECT_EQ(FindDumpName(names, "clahe.raw"), 0U);
    EXPECT_EQ(FindDumpName(names, "unsharp12.raw"), 1U);
    EXPECT_FALSE(FindDumpName(names, "clahe_00.raw"));
    EXPECT_FALSE(FindDumpName(names, "diff1_0.raw")) << "it carries no number of the run";
}

TEST(DumpNames, OfAPlaceWithoutAStageAreNone) {
    EXPECT_TRUE(DumpsOf(PlannedPlace{}).empty());
    EXPECT_TRUE(CurvesOf(PlannedPlace{}).empty());
}

TEST(DumpNames, OfAStageDependOnItsChain) {
    PlannedPlace place;
    place.stage = FindStage(3);
    place.stageNumber = 3;
    place.role = PlaceRole::ListedStage;
    EXPECT_THAT(DumpsOf(place), ElementsAre("NN_clahe.raw"));
    place.role = PlaceRole::FixedStep;
    EXPECT_THAT(DumpsOf(place), ElementsAre("NN_clahe_00.raw", "NN_clahe_01.raw", "NN_clahe.raw"));
}

}  // namespace
}  // namespace vastrelline

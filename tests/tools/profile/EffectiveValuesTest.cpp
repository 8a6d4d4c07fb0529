// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "profile/EffectiveValues.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;

std::vector<EffectivePlace> Read(const std::string& bytes, ExportKind kind = ExportKind::Plain) {
    const ProfileFile file("p.ini", bytes);
    return ReadEffectiveValues(file, MakeSectionPlan(file, "A", kind));
}

std::vector<std::string> Titles(const std::vector<EffectivePlace>& places) {
    std::vector<std::string> titles;
    for (const EffectivePlace& place : places) titles.push_back(PlaceTitle(place));
    return titles;
}

// "KEY=value mark line" of each value.
std::vector<std::string> Lines(const EffectivePlace& place) {
    std::vector<std::string> lines;
    for (const EffectiveValue& value : place.values)
        lines.push_back(value.name + "=" + FormatReadValue(value.reading.value) + " " +
                        std::string(MarkName(value.reading.mark)) + " " + std::to_string(value.line));
    return lines;
}

TEST(EffectiveValues, OfAListStandAtTheirPositions) {
    const std::vector<EffectivePlace> places = Read(
        "[A]\nPROCMODE=2\nFunctionCount=2\n00_Function_Number=10\n00_POST_GAMMA_RATIO=1,5\n"
        "01_Function_Number=3\n01_MAX_SLOPE=2\n00_MAX_SLOPE=7\n");
    EXPECT_THAT(Titles(places), ElementsAre("Settings of the section", "Sensor and range, section Settings",
                                            "00 Gamma curve", "01 CLAHE"));
    EXPECT_THAT(Lines(places[2]),
                ElementsAre("00_Function_Number=10 from-file 4", "00_POST_GAMMA_RATIO=1 misread 5"));
    // CORRECTVAL belongs to the fixed chain alone.
    EXPECT_THAT(Lines(places[3]),
                ElementsAre("01_Function_Number=3 from-file 6", "01_BLOCK_SIZE=64 default 0",
                            "01_HISTO_BINS=256 default 0", "01_MAX_SLOPE=2 from-file 7"));
    EXPECT_FALSE(IsStep(places[0]));
    EXPECT_TRUE(IsStep(places[2]));
}

TEST(EffectiveValues, OfAWeakFrameStandInASectionOfTheirOwn) {
    const std::vector<EffectivePlace> places =
        Read("[A]\nPROCMODE=3\n[IP_LOWMODE]\n06_POST_GAMMA_RATIO=2\n", ExportKind::S);
    EXPECT_THAT(Titles(places), ElementsAre("Settings of the section", "Sensor and range, section Settings",
                                            "Curve stages of a weak frame, section IP_LOWMODE",
                                            "00 Gaussian of a weak frame, section IP_LOWMODE",
                                            "01 preProcessing of a weak frame, section IP_LOWMODE",
                                            "02 Histogram stretch of a weak frame, section IP_LOWMODE",
                                            "03 CLAHE of a weak frame, section IP_LOWMODE",
                                            "04 CLAHE of a weak frame, section IP_LOWMODE",
                                            "05 Linear curve of a weak frame, section IP_LOWMODE",
                                            "06 Gamma curve of a weak frame, section IP_LOWMODE"));
    EXPECT_THAT(Lines(places[2]), ElementsAre("OUTPUTRANGE=4095 default 0"));
    EXPECT_THAT(Lines(places[9]), ElementsAre("06_POST_GAMMA_RATIO=2 from-file 4"));
}

TEST(EffectiveValues, OfTheFixedChainHavePlainKeys) {
    const std::vector<EffectivePlace> places = Read("[A]\nPOST_MEDIAN=1\nPOST_MEDIAN_SIZE\n");
    const std::vector<std::string> titles = Titles(places);
    EXPECT_THAT(titles, testing::IsSupersetOf({"Inversion", "Median, first", "Median, second", "CLAHE"}));
    const auto second =
        static_cast<size_t>(std::find(titles.begin(), titles.end(), "Median, second") - titles.begin());
    EXPECT_TRUE(places[second].runs);
    EXPECT_FALSE(places[second - 1].runs);
    // A key without an equals sign is as good as none.
    EXPECT_THAT(Lines(places[second]),
                ElementsAre("POST_MEDIAN=1 from-file 2", "POST_MEDIAN_SIZE=3 default 3",
                            "POST_MEDIAN_REPEAT=3 default 0"));
}

TEST(EffectiveValues, OfASectionThatIsMissingAreDefaults) {
    for (const EffectivePlace& place : Read("[B]\nBITSTORED=14\n"))
        for (const EffectiveValue& value : place.values) {
            EXPECT_EQ(value.reading.mark, ReadingMark::Default) << value.name;
            EXPECT_TRUE(IsAsWritten(value.reading));
        }
}

TEST(EffectiveValues, PositionsOfNoStageArePassedOver) {
    const std::vector<EffectivePlace> places =
        Read("[A]\nPROCMODE=2\nFunctionCount=9\n00_Function_Number=13\n03_Function_Number=77\n");
    ASSERT_EQ(places.size(), 4U);
    EXPECT_EQ(RoleName(places[2].role), "passed-over");
    EXPECT_EQ(PlaceTitle(places[2]), "00 HDR");
    EXPECT_EQ(PlaceTitle(places[3]), "03 no stage");
    EXPECT_FALSE(places[3].runs);
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "profile/ProfileDiff.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<EffectivePlace> Read(const std::string& section, ExportKind kind = ExportKind::Plain) {
    const ProfileFile file("p.ini", "[A]\n" + section);
    return ReadEffectiveValues(file, MakeSectionPlan(file, "A", kind));
}

std::string Side(const std::optional<EffectiveValue>& value) {
    return value ? FormatReadValue(value->reading.value) : "-";
}

// "changed Median 0>1 MEDIAN_SIZE:3>5"
std::vector<std::string> Diff(const std::vector<EffectivePlace>& first,
                              const std::vector<EffectivePlace>& second) {
    std::vector<std::string> lines;
    for (const PlaceDifference& place : DiffPlaces(first, second)) {
        std::string line = std::string(ChangeName(place.change)) + " " + place.title;
        if (place.firstPosition || place.secondPosition)
            line += " " + (place.firstPosition ? std::to_string(*place.firstPosition) : "") + ">" +
                    (place.secondPosition ? std::to_string(*place.secondPosition) : "");
        if (place.isOfWeakFrame) line += " weak";
        for (const ValueDifference& value : place.values)
            line += " " + value.name + ":" + Side(value.first) + ">" + Side(value.second);
        lines.push_back(line);
    }
    return lines;
}

std::string List(const std::vector<std::string>& stages, const std::string& more = "") {
    std::string text = "PROCMODE=2\nFunctionCount=" + std::to_string(stages.size()) + "\n" + more;
    for (size_t i = 0; i < stages.size(); ++i) {
        const std::string position = NumberedKeyName(static_cast<int32_t>(i), "");
        const size_t blank = stages[i].find(' ');
        text += position + "Function_Number=" + stages[i].substr(0, blank) + "\n";
        if (blank != std::string::npos) text += position + stages[i].substr(blank + 1) + "\n";
    }
    return text;
}

TEST(ProfileDiff, OfTheSameRunIsEmpty) {
    EXPECT_THAT(Diff(Read(List({"3", "7"})), Read(List({"3", "7"}))), IsEmpty());
}

TEST(ProfileDiff, FillsDefaultsIn) {
    EXPECT_THAT(Diff(Read(List({"3 MAX_SLOPE=1.50"})), Read(List({"3"}))), IsEmpty());
    EXPECT_THAT(
        Diff(Read(List({"3 MAX_SLOPE=2"}, "BITSTORED=14\n")), Read(List({"3"}))),
        ElementsAre("changed Settings of the section BITSTORED:14>12", "changed CLAHE 0>0 MAX_SLOPE:2>1.5"));
}

TEST(ProfileDiff, FollowsAStageToItsPlace) {
    EXPECT_THAT(
        Diff(Read(List({"3 MAX_SLOPE=2", "7"})), Read(List({"8 GAUSSIAN_SIZE=3", "3 MAX_SLOPE=2", "7"}))),
        ElementsAre("only-in-b Gaussian >0 GAUSSIAN_SIZE:->3"));
    EXPECT_THAT(Diff(Read(List({"7", "8", "3"})), Read(List({"8", "3", "7 MEDIAN_SIZE=5"}))),
                ElementsAre("moved Median 0>2 MEDIAN_SIZE:3>5"));
}

TEST(ProfileDiff, AStageThatDoesNotRunIsNotThere) {
    EXPECT_THAT(Diff(Read(List({"3", "13", "77"})), Read(List({"3"}))), IsEmpty());
    EXPECT_THAT(Diff(Read(List({"3", "7"})), Read(List({"3"}))), ElementsAre("only-in-a Median 1>"));
}

TEST(ProfileDiff, KnowsKeysOfTheFixedChainByTheirStage) {
    EXPECT_THAT(Diff(Read("PRE_MEDIAN=1\nPRE_MEDIAN_SIZE=5\n"), Read("PRE_MEDIAN=2\nPRE_MEDIAN_SIZE=7\n")),
                ElementsAre("changed Median MEDIAN_SIZE:5>7"));
    EXPECT_THAT(Diff(Read("x=1\n"), Read("POST_SIGMOID_LUT=1\n")),
                ElementsAre("changed Sigmoid curve POST_SIGMOID_LUT:0>1"));
    // The inversion is a setting, so that chains of both families can be set side by side.
    EXPECT_THAT(Diff(Read("INVERSE_INTENSITY=2\n"), Read(List({"9"}, "INVERSE_INTENSITY=2\n"))),
                ElementsAre("changed Settings of the section PROCMODE:1>2"));
}

TEST(ProfileDiff, ComparesWeakFramesWhereBothKnowThem) {
    const std::string deciding = "PROCMODE=3\n";
    const std::string low = "[IP_LOWMODE]\n06_POST_GAMMA_RATIO=2\nOUTPUTRANGE=100\n";
    EXPECT_THAT(Diff(Read(deciding, ExportKind::S), Read(deciding + low, ExportKind::S)),
                ElementsAre("changed Curve stages of a weak frame, section IP_LOWMODE OUTPUTRANGE:4095>100",
                            "changed Gamma curve 6>6 weak POST_GAMMA_RATIO:0.5>2"));
    EXPECT_THAT(Diff(Read("PROCMODE=2\n", ExportKind::S), Read(deciding + low, ExportKind::S)),
                ElementsAre("changed Settings of the section PROCMODE:2>3"));
}

TEST(ProfileDiff, MarksWhatHasNoEffect) {
    const std::vector<PlaceDifference> differences = DiffPlaces(Read("LITTLEENDIAN=0\n"), Read("x=1\n"));
    ASSERT_EQ(differences.size(), 1U);
    EXPECT_FALSE(differences[0].values[0].hasEffect);
}

}  // namespace
}  // namespace vastrelline

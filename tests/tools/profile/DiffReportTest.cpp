// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "profile/DiffReport.h"

namespace vastrelline {
namespace {

std::vector<PlaceDifference> Diff(const std::string& first, const std::string& second) {
    const auto read = [](const std::string& lines) {
        const ProfileFile file("p.ini", "[A]\nPROCMODE=2\nFunctionCount=9\n" + lines);
        return ReadEffectiveValues(file, MakeSectionPlan(file, "A", ExportKind::Plain));
    };
    return DiffPlaces(read(first), read(second));
}

// The median only stands elsewhere, which is no difference.
const std::string kFirst = "VERSION=1\n00_Function_Number=7\n01_Function_Number=3\n01_MAX_SLOPE=2\n";
const std::string kSecond =
    "00_Function_Number=3\n00_MAX_SLOPE=1,5\n01_Function_Number=7\n02_Function_Number=8\nLITTLEENDIAN=0\n";

TEST(FormatDifferences, ShowsBothSidesPlaceByPlace) {
    EXPECT_EQ(FormatDifferences(Diff(kFirst, kSecond), 80),
              "  key           A            B\n"
              "\n"
              "Settings of the section\n"
              "  VERSION       1            '' (default)\n"
              "  LITTLEENDIAN  1 (default)  0             no effect\n"
              "\n"
              "01 CLAHE: moved, in B at 00\n"
              "  MAX_SLOPE     2            1 (misread)\n"
              "\n"
              "02 Gaussian: only in B\n");
}

TEST(FormatDifferences, SaysWhereAStageStandsOnTheOtherSide) {
    EXPECT_THAT(
        FormatDifferences(Diff("00_Function_Number=7\n", "05_Function_Number=7\n05_MEDIAN_SIZE=5\n"), 80),
        testing::HasSubstr("\n00 Median (05 in B)\n"));
}

TEST(FormatDifferences, SaysNothingOfEqualRuns) {
    EXPECT_EQ(FormatDifferences({}, 80), "");
    EXPECT_EQ(SumUpDifferences({}), "equal");
}

TEST(SumUpDifferences, CountsByKind) {
    EXPECT_EQ(SumUpDifferences(Diff("", "BITSTORED=1\n")), "1 value differs");
    EXPECT_EQ(SumUpDifferences(Diff("00_Function_Number=3\n01_Function_Number=4\n", "")),
              "2 stages only in A");
    EXPECT_EQ(SumUpDifferences(Diff(kFirst, kSecond)), "3 values differ, 1 stage only in B, 1 stage moved");
}

TEST(DifferencesToJson, HoldsBothSides) {
    const nlohmann::ordered_json places = DifferencesToJson(Diff(kFirst, kSecond));
    const nlohmann::ordered_json& version = places.at(0).at("values").at(0);
    EXPECT_EQ(version.at("name"), "VERSION");
    EXPECT_EQ(version.at("a").at("value"), "1");
    EXPECT_EQ(version.at("a").at("line"), 4);
    EXPECT_EQ(version.at("b").at("mark"), "default");
    EXPECT_FALSE(version.at("b").contains("line"));
    EXPECT_EQ(places.back().at("change"), "only-in-b");
    EXPECT_EQ(places.back().at("stage"), 8);
    EXPECT_EQ(places.back().at("positionB"), 2);
    EXPECT_FALSE(places.back().contains("positionA"));
}

}  // namespace
}  // namespace vastrelline

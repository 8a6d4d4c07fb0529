// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "commands/CompareOutput.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;
using testing::Not;

PairOutcome Compared(const std::string& name, const Frame& first, const Frame& second) {
    FramePair frames;
    frames.first.frame = first;
    frames.second.frame = second;
    PairOutcome outcome = ComparePair("x/" + name, "y/" + name, frames, {});
    outcome.name = name;
    return outcome;
}

const Frame kFrame{2, 1, {258, 4000}};

TEST(FormatPair, TellsAllFiguresOfADifference) {
    // Mean square (1 + 9) / 2 = 5; 10 log10(4095^2 / 5) = 65.26
    EXPECT_EQ(FormatPair(Compared("a.raw", kFrame, {2, 1, {259, 3997}}), {}),
              "different: 2 of 2 pixels (100.0000 %), largest difference 3\n"
              "noise      PSNR 65.26 dB at peak 4095\n"
              "by levels  1: 1, 3 to 4: 1\n"
              "largest    at (1, 0): 4000, 3997\n"
              "places over the frame (x, y): first frame, second frame\n"
              "  (0, 0): 258, 259\n"
              "  (1, 0): 4000, 3997\n");
    EXPECT_EQ(FormatPair(Compared("a.raw", kFrame, kFrame), {}), "equal: 2x1 pixels\n");
}

TEST(FormatPairs, HasALineForWhatIsNotEqual) {
    PairOutcome unreadable;
    unreadable.name = "b\x1B[31m.raw";
    unreadable.state = PairState::Unreadable;
    unreadable.error = InputError("x/b.raw", "does not exist");
    CompareOptions options;
    const std::string text =
        FormatPairs({unreadable, Compared("s.raw", kFrame, {1, 1, {1}}),
                     Compared("d.raw", kFrame, {2, 1, {259, 4000}}), Compared("e.raw", kFrame, kFrame)},
                    options);
    EXPECT_EQ(text,
              "unreadable: 4 names: 1 equal, 1 different, 1 different sizes, 1 unreadable\n"
              "\n"
              "state                 pixels  largest  PSNR dB  name\n"
              "unreadable                 -        -        -  b?[31m.raw: x/b.raw: does not exist\n"
              "different sizes            -        -        -  s.raw: the sizes are 2x1 and 1x1\n"
              "different                  1        1    75.26  d.raw\n");
}

TEST(FormatPairs, EqualFoldersAreOneLine) {
    EXPECT_EQ(FormatPairs({Compared("e.raw", kFrame, kFrame)}, {}), "equal: 1 name: 1 equal\n");
}

TEST(PairToJson, TellsStateFilesAndFigures) {
    CompareOptions options;
    options.tolerance = 1;
    const nlohmann::json object = PairToJson(Compared("a.raw", kFrame, {2, 1, {259, 3997}}), options);
    EXPECT_EQ(object["equal"], false);
    EXPECT_EQ(object["state"], "different");
    EXPECT_EQ(object["tolerance"], 1);
    EXPECT_EQ(object["first"], "x/a.raw");
    EXPECT_EQ(object["firstSize"], (nlohmann::json{2, 1}));
    const nlohmann::json& pixels = object["pixels"];
    EXPECT_EQ(pixels["count"], 2);
    EXPECT_EQ(pixels["beyondTolerance"], 2);
    EXPECT_EQ(pixels["largestPlace"],
              nlohmann::json::parse(R"({"x": 1, "y": 0, "first": 4000, "second": 3997})"));
    EXPECT_EQ(pixels["differences"], nlohmann::json::parse(R"([{"least": 1, "greatest": 1, "count": 1},
        {"least": 2, "greatest": 2, "count": 0}, {"least": 3, "greatest": 4, "count": 1}])"));
    EXPECT_EQ(pixels["meanSquaredError"], 5.0);
    EXPECT_EQ(pixels["peak"], 4095);
    EXPECT_EQ(PairToJson(Compared("a.raw", kFrame, kFrame), options)["pixels"]["psnr"], "inf");
}

TEST(PairsToJson, HasEveryPairAndTheCounts) {
    CompareOptions options;
    options.first = "x";
    options.second = "y";
    PairOutcome lonely;
    lonely.name = "l.raw";
    lonely.first = "x/l.raw";
    lonely.firstSize = FrameSize{2, 1};
    lonely.state = PairState::OnlyFirst;
    const nlohmann::json object = PairsToJson({lonely, Compared("e.raw", kFrame, kFrame)}, options);
    EXPECT_EQ(object["equal"], false);
    EXPECT_EQ(object["first"], "x");
    EXPECT_EQ(object["counts"]["only-first"], 1);
    EXPECT_EQ(object["counts"]["equal"], 1);
    EXPECT_EQ(object["counts"]["unreadable"], 0);
    ASSERT_EQ(object["pairs"].size(), 2U);
    EXPECT_EQ(object["pairs"][0]["name"], "l.raw");
    EXPECT_EQ(object["pairs"][0]["second"], nullptr);
    EXPECT_EQ(object["pairs"][0]["secondSize"], nullptr);
    EXPECT_EQ(object["pairs"][0]["error"], nullptr);
    EXPECT_EQ(object["pairs"][1]["state"], "equal");
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "formats/FrameFile.h"
#include "runs/LookAtFrame.h"
#include "support/SourceTree.h"

namespace vastrelline {
namespace {

std::vector<std::string> Rules(const std::vector<Finding>& findings) {
    std::vector<std::string> rules;
    for (const Finding& finding : findings) rules.push_back(finding.rule);
    return rules;
}

using Names = std::vector<std::string>;

TEST(LookAtFrame, FindsLevelsAboveTheBitsOfTheSection) {
    const ProfileFile file("p.ini", "[A]\nx=1\n[B]\nBITSTORED=16\n[C]\nBITSTORED=77\n[D]\nBITSTORED=-1\n");
    const Frame frame{2, 1, {0, 4096}};
    EXPECT_EQ(Rules(LookAtFrame({"f", frame, 16}, file, "A")), Names{"above-bits"});
    EXPECT_EQ(Rules(LookAtFrame({"f", frame, 16}, file, "B")), Names{});
    EXPECT_EQ(Rules(LookAtFrame({"f", frame, 16}, file, "C")), Names{});
    EXPECT_EQ(Rules(LookAtFrame({"f", frame, 16}, file, "D")), Names{"above-bits"});
    const Frame fitting{2, 1, {0, 4095}};
    EXPECT_EQ(Rules(LookAtFrame({"f", fitting, 16}, file, "A")), Names{});
}

TEST(LookAtFrame, FindsEightBits) {
    const ProfileFile file("p.ini", "[A]\nx=1\n");
    const Frame frame{2, 1, {0, 255}};
    EXPECT_EQ(Rules(LookAtFrame({"f", frame, 8}, file, "A")), Names{"few-bits"});
}

TEST(LookAtFrame, FindsTheSensorsSizeTurned) {
    const ProfileFile file("p.ini", "[A]\nx=1\n[Settings]\nFrameWidth=5\nFrameHeight=3\nImgCutLeft=1\n");
    EXPECT_EQ(FindSensorSize(file), (FrameSize{4, 3}));
    const Frame right{4, 3, std::vector<uint16_t>(12, 7)};
    const Frame turned{3, 4, std::vector<uint16_t>(12, 7)};
    EXPECT_EQ(Rules(LookAtFrame({"f", right, 16}, file, "A")), Names{});
    EXPECT_EQ(Rules(LookAtFrame({"f", turned, 16}, file, "A")), Names{"swapped-size"});
}

TEST(FindSensorSize, IsNothingWhereTheProfileDoesNotTellIt) {
    for (const char* text :
         {"", "[Settings]\nFrameWidth=5\n", "[Settings]\nFrameWidth=5\nFrameHeight=3\nImgCutTop=3\n",
          "[Settings]\nFrameWidth=-5\nFrameHeight=3\n", "[Settings]\nFrameWidth=99999\nFrameHeight=99999\n"})
        EXPECT_FALSE(FindSensorSize(ProfileFile("p.ini", text)).has_value()) << text;
}

TEST(LooksSwapped, IsSoForARealFrameCutInRowsOfItsHeight) {
    for (const char* leaf : {"bitewing_1300x1668.png", "periapical_a_1012x1316.png"}) {
        const std::string path = (SourceTreeFolder() / "tests/data/frames" / leaf).string();
        Frame frame = ReadFrameFile(path, std::nullopt);
        EXPECT_FALSE(LooksSwapped(frame)) << leaf;
        std::swap(frame.width, frame.height);
        EXPECT_TRUE(LooksSwapped(frame)) << leaf;
    }
}

TEST(LooksSwapped, IsNotSoForFlatOrTinyFrames) {
    EXPECT_FALSE(LooksSwapped({4, 3, std::vector<uint16_t>(12, 9)}));
    EXPECT_FALSE(LooksSwapped({1, 3, {1, 9, 1}}));
    EXPECT_FALSE(LooksSwapped({2, 2, {1, 9, 9, 1}}));
    EXPECT_FALSE(LooksSwapped({0, 0, {}}));
}

TEST(LookAtResult, FindsBlackAndFlatPictures) {
    EXPECT_EQ(Rules(LookAtResult("o", {0, 0})), Names{"black-result"});
    EXPECT_EQ(Rules(LookAtResult("o", {4095, 4095})), Names{"flat-result"});
    EXPECT_EQ(Rules(LookAtResult("o", {0, 1})), Names{});
    EXPECT_EQ(Rules(LookAtResult("o", {})), Names{});
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "sensor/RoundCornerMask.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MaskFrames.h"
#include "support/ShownMessages.h"

namespace vastrelline {
namespace {

// One letter keeps the pictures of masks in shape.
constexpr uint16_t M = 255;  // NOLINT(readability-identifier-naming)
constexpr int32_t kLowest = std::numeric_limits<int32_t>::min();
constexpr int32_t kHighest = std::numeric_limits<int32_t>::max();

// How many pixels are hidden in each column of a full frame, from the bottom up; no pixel above a gap.
std::vector<int32_t> HiddenRows(int32_t frameWidth, int32_t frameHeight, int32_t cutOff,
                                int32_t cutOffRight) {
    const std::optional<RowMask> pixels =
        BuildRoundCornerMask(frameWidth, frameHeight, cutOff, cutOffRight, 0, 0, 0, frameWidth, frameHeight);
    EXPECT_TRUE(pixels.has_value());
    if (!pixels) return {};
    const Frame mask = FrameOfMask(*pixels);
    std::vector<int32_t> rows;
    for (int32_t x = 0; x < frameWidth; ++x) {
        int32_t hidden = 0;
        while (hidden < frameHeight && mask.At(x, frameHeight - 1 - hidden) == M) ++hidden;
        for (int32_t y = 0; y < frameHeight - hidden; ++y) EXPECT_EQ(mask.At(x, y), 0) << x << ", " << y;
        rows.push_back(hidden);
    }
    return rows;
}

struct OutlineCase {
    const char* name;
    int32_t frameWidth;
    int32_t frameHeight;
    int32_t cutOff;
    int32_t cutOffRight;
    std::vector<int32_t> hiddenRows;
};

class RoundCornerOutlineTest : public testing::TestWithParam<OutlineCase> {};

TEST_P(RoundCornerOutlineTest, HidesTheLowestRowsOfEachColumn) {
    const ShownMessages messages;
    const OutlineCase& test = GetParam();
    EXPECT_EQ(HiddenRows(test.frameWidth, test.frameHeight, test.cutOff, test.cutOffRight), test.hiddenRows);
    EXPECT_EQ(messages.Count(), 0U);
}

INSTANTIATE_TEST_SUITE_P(
    Chamfer, RoundCornerOutlineTest,
    testing::Values(OutlineCase{"FallsByOneRowPerColumn", 10, 6, 2, 0, {3, 2, 1, 0, 0, 0, 0, 1, 2, 3}},
                    OutlineCase{"SizeOneHidesTwoRows", 6, 4, 1, 0, {2, 1, 0, 0, 1, 2}},
                    OutlineCase{"HalfOfTheShorterSideIsAccepted", 7, 7, 3, 0, {4, 3, 2, 1, 2, 3, 4}},
                    OutlineCase{"MiddleColumnOfAnOddWidth", 5, 6, 2, 0, {3, 2, 1, 2, 3}},
                    // Column 2 is the mirror of column 1 before it comes to its own, smaller height.
                    OutlineCase{"MiddleOfAnEvenWidth", 4, 6, 2, 0, {3, 2, 2, 3}},
                    OutlineCase{"SizeZeroHidesNothing", 6, 4, 0, 0, {0, 0, 0, 0, 0, 0}},
                    OutlineCase{"NegativeSizesHideNothing", 6, 4, -1, -1, {0, 0, 0, 0, 0, 0}},
                    OutlineCase{"LowestSizesHideNothing", 6, 4, kLowest, kLowest, {0, 0, 0, 0, 0, 0}},
                    OutlineCase{"NegativeRightSizeLeavesTheChamfer", 6, 4, 1, -7, {2, 1, 0, 0, 1, 2}},
                    OutlineCase{"OneColumn", 1, 4, 0, 0, {0}}, OutlineCase{"TwoColumns", 2, 4, 1, 0, {2, 2}}),
    [](const auto& test) { return std::string(test.param.name); });

// For a size of 4: t = 0.01, 0.2575, 0.505, 0.7525 and exp(-t) = 0.99005, 0.77298, 0.60351, 0.47119. From
// the first down to exp(-1) = 0.36788 there are 0.62217, so the outline has fallen by 0, 1.396, 2.485, 3.336
// rows: to 4, 3, 2, 1.
INSTANTIATE_TEST_SUITE_P(
    Exponential, RoundCornerOutlineTest,
    testing::Values(OutlineCase{"TakesTheHigherOutline", 12, 6, 1, 4, {5, 4, 3, 2, 0, 0, 0, 0, 2, 3, 4, 5}},
                    OutlineCase{"WithoutAChamfer", 12, 6, 0, 4, {5, 4, 3, 2, 0, 0, 0, 0, 2, 3, 4, 5}},
                    OutlineCase{"WithANegativeChamfer", 12, 6, -100, 4, {5, 4, 3, 2, 0, 0, 0, 0, 2, 3, 4, 5}},
                    OutlineCase{"ChamferGoesOnAfterIt", 12, 6, 3, 1, {4, 3, 2, 1, 0, 0, 0, 0, 1, 2, 3, 4}},
                    // The whole shorter side is accepted: the height of 4 rows ends the first column.
                    OutlineCase{"ShorterSideIsAccepted", 8, 4, 0, 4, {4, 4, 3, 2, 2, 3, 4, 4}},
                    OutlineCase{"ReachesOverTheMiddle", 4, 6, 0, 4, {5, 4, 4, 5}},
                    OutlineCase{"OnePixel", 1, 1, 0, 1, {1}}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(RoundCornerMask, OutlineFallsExponentiallyFromItsSizeToZero) {
    // In exact arithmetic, compared only where no rounding of 32 bits can matter.
    constexpr int32_t kSize = 170;
    const std::vector<int32_t> rows = HiddenRows(1300, 400, 0, kSize);
    ASSERT_EQ(rows.size(), 1300U);
    int32_t compared = 0;
    for (int32_t x = 0; x < kSize; ++x) {
        const double t = 0.01 + 0.99 * x / kSize;
        const double fall = kSize * (std::exp(-0.01) - std::exp(-t)) / (std::exp(-0.01) - std::exp(-1.0));
        if (x > 0 && std::fabs(fall - std::round(fall)) < 0.001) continue;
        ++compared;
        const int32_t expected = kSize - static_cast<int32_t>(fall) + 1;
        EXPECT_EQ(rows[static_cast<size_t>(x)], expected) << x;
        EXPECT_EQ(rows[static_cast<size_t>(1299 - x)], expected) << x;
    }
    EXPECT_GT(compared, 160);
    EXPECT_EQ(rows[kSize], 0);
    EXPECT_EQ(rows[650], 0);
}

TEST(RoundCornerMask, CropBeginsAtTheCutsAndIsZeroOutside) {
    const auto crop = [](int32_t left, int32_t top, int32_t width, int32_t height) {
        return FrameOfMask(BuildRoundCornerMask(4, 3, 1, 0, 0, left, top, width, height).value());
    };
    const Frame full = FromRows({{0, 0, 0, 0}, {M, 0, 0, M}, {M, M, M, M}});
    EXPECT_THAT(crop(0, 0, 4, 3), EqualsFrame(full));
    EXPECT_THAT(crop(1, 1, 3, 2), EqualsFrame(FromRows({{0, 0, M}, {M, M, M}})));
    EXPECT_THAT(crop(-1, 1, 3, 3), EqualsFrame(FromRows({{0, M, 0}, {0, M, M}, {0, 0, 0}})));
    EXPECT_THAT(crop(3, -1, 3, 3), EqualsFrame(FromRows({{0, 0, 0}, {0, 0, 0}, {M, 0, 0}})));
    EXPECT_THAT(crop(kLowest, kHighest, 2, 2), EqualsFrame(Flat(2, 2, 0)));
    EXPECT_THAT(crop(0, 0, 0, 0), EqualsFrame(Frame(0, 0)));
}

struct RefusedCase {
    const char* name;
    int32_t frameWidth;
    int32_t frameHeight;
    int32_t cutOff;
    int32_t cutOffRight;
};

class RefusedCornersTest : public testing::TestWithParam<RefusedCase> {};

TEST_P(RefusedCornersTest, ShowAMessageAndGiveNoMask) {
    const ShownMessages messages;
    EXPECT_FALSE(BuildRoundCornerMask(GetParam().frameWidth, GetParam().frameHeight, GetParam().cutOff,
                                      GetParam().cutOffRight, 0, 0, 0, 4, 4));
    EXPECT_TRUE(messages.AreOnly(L"Wrong parameters of round-corner mask", MessageIcon::Error));
}

INSTANTIATE_TEST_SUITE_P(Sizes, RefusedCornersTest,
                         testing::Values(RefusedCase{"AboveHalfOfTheShorterHeight", 20, 7, 4, 0},
                                         RefusedCase{"AboveHalfOfTheShorterWidth", 8, 20, 5, 0},
                                         RefusedCase{"RightSizeAboveTheShorterHeight", 20, 7, 0, 8},
                                         RefusedCase{"RightSizeAboveTheShorterWidth", 7, 20, 0, 8},
                                         RefusedCase{"FullFrameWithoutColumns", 0, 0, 159, 159},
                                         RefusedCase{"NegativeFullFrame", -100, -100, 0, 0},
                                         RefusedCase{"LargestCorners", 1300, 1668, kHighest, kHighest}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(RoundCornerMask, FullFrameThatNoMemoryHoldsGivesNoMaskAndNoMessage) {
    const ShownMessages messages;
    EXPECT_FALSE(BuildRoundCornerMask(kHighest, kHighest, 159, 159, 0, 0, 0, 4, 4));
    EXPECT_FALSE(BuildRoundCornerMask(kHighest, 400, 159, 159, 2, 0, 0, 4, 4));
    EXPECT_FALSE(BuildRoundCornerMask(-4, 4, -4, -4, 0, 0, 0, 4, 4));
    EXPECT_EQ(messages.Count(), 0U);
}

// ---- where the corners lie

TEST(OrientationCode, IsUnknownForOtherTurnsAndMirrors) {
    for (const int32_t other : {-10, -1, 3, 4, kLowest, kHighest})
        for (int32_t flip = -1; flip <= 4; ++flip) EXPECT_EQ(ComputeOrientationCode(other, flip), -1);
    for (const int32_t other : {-10, -1, 4, 5, kLowest, kHighest})
        for (int32_t rotation = -1; rotation <= 3; ++rotation)
            EXPECT_EQ(ComputeOrientationCode(rotation, other), -1);
}

struct OrientationCase {
    int32_t rotation;
    int32_t flip;
    int32_t code;
};

class OrientationTest : public testing::TestWithParam<OrientationCase> {};

INSTANTIATE_TEST_SUITE_P(
    All, OrientationTest,
    testing::Values(OrientationCase{0, 0, 0}, OrientationCase{0, 1, 0}, OrientationCase{0, 2, 1},
                    OrientationCase{0, 3, 1}, OrientationCase{1, 0, 3}, OrientationCase{1, 1, 2},
                    OrientationCase{1, 2, 3}, OrientationCase{1, 3, 2}, OrientationCase{2, 0, 2},
                    OrientationCase{2, 1, 3}, OrientationCase{2, 2, 2}, OrientationCase{2, 3, 3}),
    [](const auto& test) {
        return "Rotation" + std::to_string(test.param.rotation) + "Flip" + std::to_string(test.param.flip);
    });

TEST_P(OrientationTest, HasItsCode) {
    EXPECT_EQ(ComputeOrientationCode(GetParam().rotation, GetParam().flip), GetParam().code);
}

enum class Side { Bottom, Top, Left, Right };

// The side of the delivered frame at which both rounded corners lie. Unturned it is the bottom, the two turns
// bring it to the right and to the left, and then the frame is mirrored.
Side SideOfCorners(int32_t rotation, int32_t flip) {
    const bool isMirroredLeftRight = flip == 1 || flip == 3;
    const bool isMirroredTopBottom = flip == 2 || flip == 3;
    if (rotation == 0) return isMirroredTopBottom ? Side::Top : Side::Bottom;
    return (rotation == 1) != isMirroredLeftRight ? Side::Right : Side::Left;
}

// Whether (x, y) of the delivered full frame is hidden by corners at a side: their chamfer of `cutOff` hides
// cutOff + 1 pixels along the edge beside it, and one less with each step away from that edge.
bool IsHidden(int32_t x, int32_t y, int32_t width, int32_t height, Side side, int32_t cutOff) {
    const int32_t fromLeftOrRight = std::min(x, width - 1 - x);
    const int32_t fromTopOrBottom = std::min(y, height - 1 - y);
    switch (side) {
        case Side::Bottom:
            return height - 1 - y <= cutOff - fromLeftOrRight;
        case Side::Top:
            return y <= cutOff - fromLeftOrRight;
        case Side::Left:
            return x <= cutOff - fromTopOrBottom;
        case Side::Right:
            break;
    }
    return width - 1 - x <= cutOff - fromTopOrBottom;
}

TEST_P(OrientationTest, PutsTheCornersAtTheirSideOfAFrameCutUnevenly) {
    constexpr int32_t kFullWidth = 13;
    constexpr int32_t kFullHeight = 10;
    constexpr int32_t kCutOff = 4;
    constexpr int32_t kCutLeft = 1;
    constexpr int32_t kCutTop = 2;
    const bool isTurned = GetParam().rotation != 0;
    const int32_t width = isTurned ? kFullHeight : kFullWidth;
    const int32_t height = isTurned ? kFullWidth : kFullHeight;
    // Cut by one column at the left, three at the right, two rows at the top and none at the bottom.
    Frame expected(width - 4, height - 2);
    for (int32_t y = 0; y < expected.height; ++y)
        for (int32_t x = 0; x < expected.width; ++x)
            expected.At(x, y) = IsHidden(x + kCutLeft, y + kCutTop, width, height,
                                         SideOfCorners(GetParam().rotation, GetParam().flip), kCutOff)
                                    ? M
                                    : uint16_t{0};
    const std::optional<RowMask> mask = BuildRoundCornerMask(
        kFullWidth, kFullHeight, kCutOff, 0, ComputeOrientationCode(GetParam().rotation, GetParam().flip),
        kCutLeft, kCutTop, expected.width, expected.height);
    ASSERT_TRUE(mask.has_value());
    EXPECT_THAT(FrameOfMask(*mask), EqualsFrame(expected));
}

TEST(RoundCornerMask, CodesTurnTheCornersOfATinyFrame) {
    const auto mask = [](int32_t code, int32_t width, int32_t height) {
        return FrameOfMask(BuildRoundCornerMask(5, 3, 1, 0, code, 0, 0, width, height).value());
    };
    EXPECT_THAT(mask(0, 5, 3), EqualsFrame(FromRows({{0, 0, 0, 0, 0}, {M, 0, 0, 0, M}, {M, M, 0, M, M}})));
    EXPECT_THAT(mask(1, 5, 3), EqualsFrame(FromRows({{M, M, 0, M, M}, {M, 0, 0, 0, M}, {0, 0, 0, 0, 0}})));
    EXPECT_THAT(mask(2, 3, 5),
                EqualsFrame(FromRows({{M, M, 0}, {M, 0, 0}, {0, 0, 0}, {M, 0, 0}, {M, M, 0}})));
    EXPECT_THAT(mask(3, 3, 5),
                EqualsFrame(FromRows({{0, M, M}, {0, 0, M}, {0, 0, 0}, {0, 0, M}, {0, M, M}})));
}

// Outlines of all kinds in frames of odd and even sides, cut at places that lie in, partly in and beside the
// full frame. The mask written into has guards behind it.
TEST(RoundCornerMask, MarksWhatTheDrawnFullFrameHas) {
    struct Sides {
        int32_t width;
        int32_t height;
    };
    for (const Sides full : {Sides{1, 1}, {2, 5}, {9, 4}, {12, 12}, {31, 24}, {0, 3}, {4, 0}})
        for (const int32_t cutOff : {-1, 0, 1, 6})
            for (const int32_t cutOffRight : {-3, 0, 1, 9}) {
                const int32_t shortSide = std::min(full.width, full.height);
                if (cutOff > shortSide / 2 || cutOffRight > shortSide) continue;
                const CornerOutline outline(full.width, full.height, cutOff, cutOffRight);
                for (const int32_t code : {0, 1, 2, 3, 4, -1})
                    for (const int32_t left : {0, 1, -2, 40, kLowest, kHighest})
                        for (const int32_t top : {0, 2, -3, -40, kHighest}) {
                            constexpr int32_t kWidth = 14;
                            constexpr int32_t kHeight = 17;
                            Frame mask(kWidth, kHeight + 1);
                            MarkRoundCorners(mask.Data(), kWidth, kHeight, outline, code, left, top);
                            const ScratchVector<uint16_t> drawn =
                                DrawRoundCorners(outline, code, left, top, kWidth, kHeight);
                            ASSERT_TRUE(std::equal(drawn.begin(), drawn.end(), mask.pixels.begin()))
                                << full.width << " x " << full.height << ", " << cutOff << ", " << cutOffRight
                                << ", code " << code << " at " << left << ", " << top;
                            ASSERT_EQ(std::count(mask.pixels.end() - kWidth, mask.pixels.end(), 0), kWidth);
                        }
            }
}

// ---- corners from the frame itself

Frame Triangles(const Frame& frame) {
    Frame mask(frame.width, frame.height);
    EXPECT_EQ(MarkCornerTriangles(frame.Data(), mask.Data(), frame.width, frame.height), 1);
    return mask;
}

struct TriangleCase {
    const char* name;
    Frame frame;
    Frame mask;
};

class CornerTrianglesTest : public testing::TestWithParam<TriangleCase> {};

TEST_P(CornerTrianglesTest, MarkZerosInTwoCorners) {
    EXPECT_THAT(Triangles(GetParam().frame), EqualsFrame(GetParam().mask));
}

// In frames of so few pixels each triangle covers all of them: one corner counts as much as any other.
INSTANTIATE_TEST_SUITE_P(
    TinyFrames, CornerTrianglesTest,
    testing::Values(TriangleCase{"BlackPixel", Flat(1, 1, 0), Flat(1, 1, M)},
                    TriangleCase{"ExposedPixel", Flat(1, 1, 1), Flat(1, 1, 0)},
                    TriangleCase{"OneRow", FromRows({{0, 1, 65535, 0}}), FromRows({{M, 0, 0, M}})},
                    TriangleCase{"OneColumn", FromRows({{0}, {4096}, {0}}), FromRows({{M}, {0}, {M}})},
                    TriangleCase{"OnlyExactZerosCount", FromRows({{0, 1}, {2, 0}, {3, 4}}),
                                 FromRows({{M, 0}, {0, M}, {0, 0}})},
                    TriangleCase{"Empty", Frame(0, 0), Frame(0, 0)},
                    TriangleCase{"NoColumns", Frame(0, 4), Frame(0, 4)},
                    TriangleCase{"NoRows", Frame(4, 0), Frame(4, 0)}),
    [](const auto& test) { return std::string(test.param.name); });

// The corners, 170 pixels along each edge, that a black frame may have marked.
Frame CornersOfABlackFrame(int32_t width, int32_t height,
                           const std::vector<std::pair<bool, bool>>& bottomAndRight) {
    Frame mask(width, height);
    for (const auto& [isBottom, isRight] : bottomAndRight)
        for (int32_t y = 0; y < height; ++y)
            for (int32_t x = 0; x < width; ++x) {
                const int32_t down = isBottom ? height - 1 - y : y;
                const int32_t across = isRight ? width - 1 - x : x;
                if (down + across < 170) mask.At(x, y) = M;
            }
    return mask;
}

TEST(CornerTriangles, TieGoesToTheBottomOfAFrameHigherThanWide) {
    const Frame mask = Triangles(Flat(345, 346, 0));
    EXPECT_THAT(mask, EqualsFrame(CornersOfABlackFrame(345, 346, {{true, false}, {true, true}})));
    EXPECT_EQ(std::count(mask.pixels.begin(), mask.pixels.end(), M), 170 * 171);
    EXPECT_EQ(mask.At(169, 345), M);
    EXPECT_EQ(mask.At(170, 345), 0);
    EXPECT_EQ(mask.At(0, 345 - 169), M);
    EXPECT_EQ(mask.At(0, 345 - 170), 0);
}

TEST(CornerTriangles, TieGoesToTheRightOfAnyOtherFrame) {
    for (const int32_t height : {345, 346})
        EXPECT_THAT(Triangles(Flat(346, height, 0)),
                    EqualsFrame(CornersOfABlackFrame(346, height, {{false, true}, {true, true}})));
}

TEST(CornerTriangles, OneMoreZeroDecidesForTheTopOrTheLeft) {
    Frame high = Flat(345, 346, 0);
    high.At(0, 345) = 1;
    EXPECT_THAT(Triangles(high),
                EqualsFrame(CornersOfABlackFrame(345, 346, {{false, false}, {false, true}})));
    Frame wide = Flat(346, 345, 0);
    wide.At(345, 0) = 1;
    EXPECT_THAT(Triangles(wide),
                EqualsFrame(CornersOfABlackFrame(346, 345, {{false, false}, {true, false}})));
}

TEST(CornerTriangles, ZerosOutsideTheTrianglesNeitherCountNorAreMarked) {
    Frame frame = Flat(345, 400, 1);
    for (int32_t y = 0; y < 200; ++y) frame.At(172, y) = 0;  // in the upper half, between the triangles
    frame.At(0, 399) = 0;
    Frame expected(345, 400);
    expected.At(0, 399) = M;
    EXPECT_THAT(Triangles(frame), EqualsFrame(expected));
}

TEST(CornerTriangles, FollowTheFrameWhenItIsMirrored) {
    Frame high = Noise(61, 200, 2, 8);
    for (int32_t x = 0; x < 61; ++x) high.At(x, 199) = 0;
    const Frame mask = Triangles(high);
    EXPECT_THAT(Triangles(MirrorLeftRight(high)), EqualsFrame(MirrorLeftRight(mask)));
    EXPECT_THAT(Triangles(MirrorTopBottom(high)), EqualsFrame(MirrorTopBottom(mask)));
}

}  // namespace
}  // namespace vastrelline

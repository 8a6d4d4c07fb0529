// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <limits>

#include "views/FrameView.h"

namespace vastrelline {
namespace {

using Bytes = std::vector<uint8_t>;

// A window in which a level is its grey.
constexpr GreyWindow kPlain{0, 255};

const Frame kSmall{3, 2, {10, 20, 30, 40, 50, 60}};

TEST(FrameView, ShowsPixelsAsTheyAreAtTheirSize) {
    EXPECT_EQ(RenderView(kSmall, {0, 0, 3, 2, 3, 2}, kPlain), (Bytes{10, 20, 30, 40, 50, 60}));
    EXPECT_EQ(RenderView(kSmall, {1, 1, 2, 1, 2, 1}, kPlain), (Bytes{50, 60}));
}

TEST(FrameView, TakesThePixelUnderTheMiddleWhenItBecomesLarger) {
    EXPECT_EQ(RenderView(kSmall, {0, 0, 3, 1, 6, 1}, kPlain), (Bytes{10, 10, 20, 20, 30, 30}));
    EXPECT_EQ(RenderView(kSmall, {0.5, 0, 1, 2, 2, 4}, kPlain), (Bytes{10, 20, 10, 20, 40, 50, 40, 50}));
}

TEST(FrameView, TakesTheMeanWhenItBecomesSmaller) {
    EXPECT_EQ(RenderView(kSmall, {0, 0, 3, 2, 1, 1}, kPlain), (Bytes{35}));
    // 10 and half of 20; half of 20 and 30.
    EXPECT_EQ(RenderView(kSmall, {0, 0, 3, 1, 2, 1}, kPlain), (Bytes{13, 27}));
    EXPECT_EQ(RenderView(kSmall, {0, 0, 1, 2, 1, 1}, kPlain), (Bytes{25}));
    // Smaller in one direction and larger in the other.
    EXPECT_EQ(RenderView(kSmall, {0, 0, 3, 1, 1, 2}, kPlain), (Bytes{20, 20}));
}

TEST(FrameView, RoundsTheMeanBeforeTheWindow) {
    // The mean of 1 and 2 is 2; 2 of 0 to 4 is 127.5, which becomes 128.
    EXPECT_EQ(RenderView({2, 1, {1, 2}}, {0, 0, 2, 1, 1, 1}, {0, 4}), (Bytes{128}));
    EXPECT_EQ(RenderView({3, 1, {99, 100, 65535}}, {0, 0, 3, 1, 3, 1}, {99, 100}), (Bytes{0, 255, 255}));
}

TEST(FrameView, IsGreyOutsideOfTheFrame) {
    EXPECT_EQ(RenderView(kSmall, {-1, -1, 5, 4, 5, 4}, kPlain),
              (Bytes{128, 128, 128, 128, 128, 128, 10,  20,  30,  128,
                     128, 40,  50,  60,  128, 128, 128, 128, 128, 128}));
    EXPECT_EQ(RenderView(kSmall, {100, 100, 2, 1, 2, 1}, kPlain), (Bytes{128, 128}));
    // A pixel of the screen that is half outside shows what is inside: 10, and 20 beside 30.
    EXPECT_EQ(RenderView(kSmall, {-1, 0, 4, 1, 2, 1}, kPlain), (Bytes{10, 25}));
    // Less than half of it is inside.
    EXPECT_EQ(RenderView(kSmall, {-1.5, 0, 2, 1, 1, 1}, kPlain), (Bytes{128}));
}

TEST(FrameView, KeepsAFlatFrameFlat) {
    const Frame flat{97, 301, std::vector<uint16_t>(97 * 301, 60001)};
    for (const uint32_t side : {1U, 7U, 64U, 96U, 97U, 150U})
        EXPECT_EQ(RenderView(flat, {0.3, 0.7, 96.1, 299.9, side, side}, {60000, 60002}),
                  Bytes(size_t{side} * side, 128));
}

TEST(FrameView, MirrorsAMirroredFrame) {
    const Frame mirrored{3, 2, {30, 20, 10, 60, 50, 40}};
    const Bytes picture = RenderView(kSmall, {0, 0, 3, 2, 2, 2}, kPlain);
    EXPECT_EQ(RenderView(mirrored, {0, 0, 3, 2, 2, 2}, kPlain),
              (Bytes{picture[1], picture[0], picture[3], picture[2]}));
}

TEST(FrameView, ShowsDifferencesAroundTheMiddle) {
    const Frame a{3, 1, {100, 100, 100}};
    const Frame b{3, 1, {100, 110, 80}};
    EXPECT_EQ(RenderDifference(a, b, {0, 0, 3, 1, 3, 1}, 2.0), (Bytes{128, 148, 88}));
    EXPECT_EQ(RenderDifference(b, a, {0, 0, 3, 1, 3, 1}, 100.0), (Bytes{128, 0, 255}));
    // The mean of 0, 10 and -20 is -10/3, twice that is -6.67.
    EXPECT_EQ(RenderDifference(a, b, {0, 0, 3, 1, 1, 1}, 2.0), (Bytes{121}));
    EXPECT_EQ(RenderDifference(a, b, {-3, 0, 3, 1, 3, 1}, 2.0), (Bytes{128, 128, 128}));
}

TEST(FrameView, KnowsWhatIsNoView) {
    EXPECT_TRUE(IsUsableView({0, 0, 1, 1, 1, 1}));
    EXPECT_TRUE(IsUsableView({-5, 5.5, 0.01, 1e6, 8192, 2048}));
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const ViewRequest& view :
         {ViewRequest{kNan, 0, 1, 1, 1, 1}, ViewRequest{0, kInfinity, 1, 1, 1, 1},
          ViewRequest{0, 0, 0, 1, 1, 1}, ViewRequest{0, 0, 1, -1, 1, 1}, ViewRequest{0, 0, 1, 1, 0, 1},
          ViewRequest{0, 0, 1, 1, 1, 0}, ViewRequest{0, 0, 1, 1, 8193, 1}, ViewRequest{0, 0, 1, 1, 1, 8193},
          ViewRequest{0, 0, 1, 1, 8192, 2049}, ViewRequest{0, 0, 1.1e6, 1, 1, 1},
          ViewRequest{0, 0, 1, kNan, 1, 1}})
        EXPECT_FALSE(IsUsableView(view));
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>

#include "measure/EdgeMeasure.h"
#include "measure/MeasuredArea.h"
#include "phantom/EdgePhantom.h"

namespace vastrelline {
namespace {

struct EdgeCase {
    double angle;
    double blur;
    double noise;
    uint64_t seed;
};

EdgePhantom PhantomOf(const EdgeCase& test) {
    return {{240, 300}, {500.0, 3500.0, 4095, test.seed}, test.noise, test.angle, test.blur};
}

class EdgeMeasureTest : public testing::TestWithParam<EdgeCase> {};

// A quarter of a pixel's bin holds 75 pixels: its mean errs by s = noise / 8.7, of 3000 levels. The window of
// +-32 pixels holds 256 differences, each pair of neighbours sharing one bin, so at a frequency f the
// modulation errs by about s / 3000 * sqrt(2 * 256) * 2 sin(pi f / 4) / sqrt(2) * 0.63 (the Hamming window's
// root mean square): with a noise of 30 at f = 0.3 by 0.0078. Five of that, and 0.006 for what the window
// takes from a line spread of a pixel's width and the rounding of bins.
TEST_P(EdgeMeasureTest, FindsWhatThePhantomWasMadeWith) {
    const EdgePhantom phantom = PhantomOf(GetParam());
    const EdgeMeasure measure = MeasureEdge(MakeEdgePhantom(phantom));
    const BlurredStep truth(phantom.angleDegrees, phantom.blurPixels);
    EXPECT_FALSE(measure.isLying);
    EXPECT_NEAR(measure.angleDegrees, phantom.angleDegrees, 0.02 + 0.003 * phantom.noise);
    EXPECT_NEAR(measure.darkLevel, 500.0, 0.5 + 0.1 * phantom.noise);
    EXPECT_NEAR(measure.brightLevel, 3500.0, 0.5 + 0.1 * phantom.noise);
    const double noise = std::sqrt(phantom.noise * phantom.noise + (phantom.noise > 0.0 ? 1.0 / 12.0 : 0.0));
    EXPECT_NEAR(measure.noise, noise,
                0.05 * noise + 0.5);  // of some 9600 pixels 0.7 %; half a level of rounding
    const double unit = phantom.noise / std::sqrt(75.0) / 3000.0;
    for (const ModulationPoint& point : measure.mtf) {
        const double sine = 2.0 * std::sin(std::acos(-1.0) * point.frequency / 4.0);
        const double error = unit * std::sqrt(256.0) * sine * 0.63;
        if (point.frequency > 0.5) break;
        EXPECT_NEAR(point.modulation, truth.ModulationAt(point.frequency), 0.006 + 5.0 * error)
            << point.frequency;
    }
    EXPECT_NEAR(measure.mtf50.value(), truth.HalfModulation(), 0.01 + 0.0005 * phantom.noise);
    EXPECT_NEAR(measure.risePixels, truth.RiseDistance(), 0.06 + 0.005 * phantom.noise);
}

INSTANTIATE_TEST_SUITE_P(Edges, EdgeMeasureTest,
                         testing::Values(EdgeCase{5.0, 0.7, 0.0, 1}, EdgeCase{-5.0, 0.7, 8.0, 1},
                                         EdgeCase{3.0, 1.2, 8.0, 2}, EdgeCase{8.0, 0.5, 8.0, 3},
                                         EdgeCase{12.0, 2.0, 30.0, 4}, EdgeCase{2.0, 0.7, 30.0, 5},
                                         EdgeCase{-17.0, 1.0, 3.0, 6}));

TEST(EdgeMeasure, FindsALyingEdgeThatFalls) {
    Frame frame = Transpose(MakeEdgePhantom(PhantomOf({5.0, 0.7, 8.0, 1})));
    for (uint16_t& level : frame.pixels) level = static_cast<uint16_t>(4095 - level);
    const EdgeMeasure measure = MeasureEdge(frame);
    EXPECT_TRUE(measure.isLying);
    EXPECT_NEAR(measure.angleDegrees, 5.0, 0.05);
    EXPECT_NEAR(measure.mtf50.value(), BlurredStep(5.0, 0.7).HalfModulation(), 0.014);
    EXPECT_NEAR(measure.darkLevel, 595.0, 2.0);
    EXPECT_NEAR(measure.brightLevel, 3595.0, 2.0);
}

TEST(EdgeMeasure, TellsOvershootAndClipping) {
    EXPECT_LT(MeasureEdge(MakeEdgePhantom(PhantomOf({5.0, 0.7, 0.0, 1}))).overshoot, 0.001);
    Frame frame = MakeEdgePhantom({{240, 300}, {500.0, 4000.0, 4095, 1}, 0.0, 5.0, 0.7});
    for (uint16_t& level : frame.pixels)
        if (level > 3500) level = 4095;
    EXPECT_GT(MeasureEdge(frame).clippedShare, 0.45);
}

TEST(EdgeMeasure, RefusesWhatHasNoEdge) {
    const auto wordsOf = [](const Frame& frame) -> std::string {
        try {
            MeasureEdge(frame);
        } catch (const CannotMeasure& error) {
            return error.what();
        }
        return "measured";
    };
    EXPECT_EQ(wordsOf({19, 300, std::vector<uint16_t>(19 * 300, 9)}),
              "an area of 19x300 pixels is too small for an edge");
    EXPECT_EQ(wordsOf({60, 60, std::vector<uint16_t>(3600, 4095)}),
              "there is no straight edge: both halves are of one level");
    EXPECT_EQ(wordsOf(MakeEdgePhantom(PhantomOf({0.0, 0.7, 0.0, 1}))), "the edge lies along the pixels");
    // Noise alone has its steepest places anywhere.
    EXPECT_EQ(wordsOf(MakeEdgePhantom({{240, 300}, {2000.0, 2001.0, 4095, 3}, 50.0, 5.0, 0.7})).substr(0, 26),
              "there is no straight edge:");
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <numeric>

#include "phantom/PhantomFrame.h"

namespace vastrelline {
namespace {

constexpr FrameSize kSensor{1300, 1668};
constexpr FrameSize kStrip{400, 1668};  // out of the middle, with pixels as large as the sensor's

const Frame& SensorFrame() {
    static const Frame kFrame = MakePhantomFrame(kSensor, 1.0, 1);
    return kFrame;
}

uint16_t At(const Frame& frame, int32_t x, int32_t y) {
    return frame.pixels[PixelCount(frame.width, y) + static_cast<size_t>(x)];
}

// The mean of a square of 21 pixels' width; x and y in mm on a sensor of 20 micrometres' pitch.
double MeanAround(const Frame& frame, double xMm, double yMm) {
    double sum = 0.0;
    for (int32_t dy = -10; dy <= 10; ++dy)
        for (int32_t dx = -10; dx <= 10; ++dx)
            sum += At(frame, static_cast<int32_t>(xMm * 50.0) + dx, static_cast<int32_t>(yMm * 50.0) + dy);
    return sum / (21.0 * 21.0);
}

TEST(PhantomFrame, IsTheSameForTheSameArguments) {
    const Frame first = MakePhantomFrame({130, 160}, 0.5, 7);
    EXPECT_EQ(first.pixels, MakePhantomFrame({130, 160}, 0.5, 7).pixels);
    EXPECT_NE(first.pixels, MakePhantomFrame({130, 160}, 0.5, 8).pixels);
    EXPECT_NE(first.pixels, MakePhantomFrame({130, 160}, 0.6, 7).pixels);
}

TEST(PhantomFrame, HasTheSizeThatIsAskedFor) {
    for (const FrameSize size :
         {FrameSize{1, 1}, FrameSize{1, 9}, FrameSize{9, 1}, FrameSize{64, 48}, FrameSize{301, 17}}) {
        const Frame frame = MakePhantomFrame(size, 1.0, 1);
        EXPECT_EQ(frame.width, size.width);
        EXPECT_EQ(frame.height, size.height);
        EXPECT_EQ(frame.pixels.size(), PixelCount(size.width, size.height));
    }
}

TEST(PhantomFrame, MuchRadiationIsALargeValue) {
    const double cheek = MeanAround(SensorFrame(), 13.0, 1.5);
    const double bone = MeanAround(SensorFrame(), 11.0, 25.0);
    const double root = MeanAround(SensorFrame(), 5.6, 17.0);
    const double crown = MeanAround(SensorFrame(), 15.5, 8.0);
    EXPECT_GT(cheek, 3400.0);
    EXPECT_LT(cheek, 3900.0);
    EXPECT_GT(cheek, bone + 1000.0);
    EXPECT_GT(bone, root);
    EXPECT_GT(root, crown + 100.0);
    EXPECT_LT(crown, 700.0);
    EXPECT_LE(*std::max_element(SensorFrame().pixels.begin(), SensorFrame().pixels.end()), 4095);
}

TEST(PhantomFrame, TheLevelFollowsTheDose) {
    const Frame good = MakePhantomFrame(kStrip, 1.0, 1);
    const Frame weak = MakePhantomFrame(kStrip, 0.12, 1);
    EXPECT_NEAR(MeanAround(weak, 4.0, 1.5), 0.12 * MeanAround(good, 4.0, 1.5), 2.5);
    EXPECT_NEAR(MeanAround(weak, 4.0, 28.0), 0.12 * MeanAround(good, 4.0, 28.0), 2.5);
}

TEST(PhantomFrame, MoreThanTheSensorHoldsIsItsTopLevel) {
    const Frame bright = MakePhantomFrame({130, 160}, 5.0, 1);
    EXPECT_EQ(At(bright, 65, 3), 4095);
}

// At dose 1 a pixel of 20 micrometres counts 20000 photons in the open beam, which make 4200 levels: one
// photon is 0.21 levels, so the variance is 0.21 times the level, and 4 of the electronics, and 1/12 of the
// rounding. Neighbours' differences have twice that, whatever lies behind.
TEST(PhantomFrame, TheNoiseIsThatOfCountedPhotons) {
    for (const double dose : {1.0, 0.12}) {
        const Frame frame = MakePhantomFrame(kStrip, dose, 3);
        double sum = 0.0;
        double squares = 0.0;
        int32_t count = 0;
        for (int32_t y = 0; y < 100; ++y)
            for (int32_t x = 0; x + 1 < frame.width; x += 2, ++count) {
                const double difference = At(frame, x, y) - At(frame, x + 1, y);
                sum += At(frame, x, y);
                squares += difference * difference;
            }
        const double expected = 0.21 * sum / count + 4.0 + 1.0 / 12.0;
        EXPECT_NEAR(squares / count / 2.0, expected, 0.04 * expected) << dose;
    }
}

TEST(PhantomFrame, TheLowerCornersAreRoundedOff) {
    const Frame frame = MakePhantomFrame({400, 500}, 1.0, 1);
    int32_t wrong = 0;
    for (int32_t y = 0; y < frame.height; ++y)
        for (int32_t x = 0; x < frame.width; ++x) {
            const double left = 150.0 - (x + 0.5);
            const double right = (x + 0.5) - 250.0;
            const double out = std::max(left, right);
            const double down = (y + 0.5) - 350.0;
            const bool isCut = out > 0.0 && down > 0.0 && out * out + down * down > 150.0 * 150.0;
            if (isCut != (At(frame, x, y) == 0)) ++wrong;
        }
    EXPECT_EQ(wrong, 0);
    // Counted by hand from the circle: in the last row 150 - sqrt(150^2 - 149.5^2) = 137.8 pixels.
    EXPECT_EQ(At(frame, 137, 499), 0);
    EXPECT_NE(At(frame, 138, 499), 0);
    EXPECT_EQ(At(frame, 399 - 137, 499), 0);
    EXPECT_NE(At(frame, 399 - 138, 499), 0);
}

TEST(PhantomFrame, CornersOfASmallFrameMeetInTheMiddle) {
    const Frame frame = MakePhantomFrame({40, 60}, 1.0, 1);  // the radius is 20
    EXPECT_EQ(At(frame, 0, 59), 0);
    EXPECT_EQ(At(frame, 39, 59), 0);
    EXPECT_NE(At(frame, 19, 59), 0);
    EXPECT_NE(At(frame, 20, 59), 0);
    EXPECT_NE(At(frame, 0, 39), 0);
}

}  // namespace
}  // namespace vastrelline

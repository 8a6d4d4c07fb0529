// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "stages/pre_processing/MidBandLoops.h"
#include "stages/pre_processing/PreProcessFrame.h"
#include "support/Frames.h"
#include "support/RepeatedPixels.h"
#include "support/VariantForms.h"

namespace vastrelline {
namespace {

constexpr int32_t kTwelveBits = 4095;

template <typename Loop>
void ExpectOfAllForms(const Pixels& in, const Pixels& expected, const Loop& loop) {
    ExpectOfForms(MidBandVariants(), in, expected, loop);
}

TEST(MidBandLoops, FloorIsTheSmallestPixelAboveZero) {
    const auto expectFloor = [](const Pixels& pixels, uint16_t start, uint16_t floor) {
        for (const MidBandVariant& variant : MidBandVariants())
            EXPECT_EQ(variant.run->findFloor(pixels.data(), pixels.size(), start), floor) << variant.name;
    };
    expectFloor({}, 4095, 4095);
    expectFloor(Pixels(50, 0), 4095, 4095);
    expectFloor(Pixels(50, 65535), 4095, 4095);
    expectFloor(Pixels(50, 65535), 65535, 65535);
    for (const size_t place : {size_t{0}, size_t{31}, size_t{32}, size_t{49}}) {
        Pixels pixels(50, 0);
        pixels[place] = 1;
        expectFloor(pixels, 4095, 1);
        pixels[place] = 4094;
        expectFloor(pixels, 4095, 4094);
        pixels[place] = 40000;
        expectFloor(pixels, 65535, 40000);
    }
}

TEST(MidBandLoops, DifferencesKeepTheirLowBits) {
    const Pixels first = Repeated({5, 3, 65535, 0, 40000});
    const Pixels base = Repeated({3, 5, 0, 65535, 40000});
    ExpectOfAllForms({9, 9, 9, 9, 9}, {2, 65534, 65535, 1, 0},
                     [&](const MidBandLoops& loops, uint16_t* detail, size_t count) {
                         loops.subtract(first.data(), base.data(), count, detail);
                     });
}

// 100 + 10 * 2.55 is 125.5, 100 - 10 * 2.55 is 74.5; 4000 + 50 * 2.55 is above the limit, 10 - 5 * 2.55 below
// 0.
TEST(MidBandLoops, BoostMovesAwayFromTheSmoothed) {
    const Pixels smoothed = Repeated({100, 100, 4000, 10, 77});
    ExpectOfAllForms({110, 90, 4050, 5, 77}, {125, 74, 4095, 0, 77},
                     [&](const MidBandLoops& loops, uint16_t* pixels, size_t count) {
                         loops.boost(pixels, smoothed.data(), count, kTwelveBits, 2.55);
                     });
}

TEST(MidBandLoops, FineDetailIsPutBack) {
    const Pixels smoothed = Repeated({100, 100, 100, 65535, 0});
    const Pixels boosted = Repeated({200, 5, 4094, 0, 65535});
    ExpectOfAllForms({103, 90, 102, 0, 65535}, {203, 0, 4095, 0, 4095},
                     [&](const MidBandLoops& loops, uint16_t* pixels, size_t count) {
                         loops.addFine(pixels, smoothed.data(), boosted.data(), count, kTwelveBits);
                     });
}

// A detail of -3 reads as 65533 and is left out; so is what would pass the limit.
TEST(MidBandLoops, DetailIsAddedWhereItFitsAboveTheFloor) {
    const Pixels base = Repeated({100, 100, 4095, 4095, 20, 0});
    ExpectOfAllForms({7, 65533, 0, 1, 10, 0}, {107, 100, 4095, 4095, 50, 50},
                     [&](const MidBandLoops& loops, uint16_t* detail, size_t count) {
                         loops.finish(base.data(), detail, count, kTwelveBits, 50);
                     });
}

TEST(MidBandVariants, AreThoseThatTheProcessorRuns) {
    ExpectForms(MidBandVariants, {"scalar", "baseline", "avx2", "avx512"});
}

// One pick for the stage, one for the boost, one for what is put back after it.
TEST(MidBandVariants, TheLastOneRuns) {
    Frame frame = Noise(20, 11, kTwelveBits, 5);
    ExpectLastFormRuns(MidBandVariants, 3,
                       [&] { PreProcessFrame(frame.Data(), frame.width, frame.height, kTwelveBits, {}); });
}

class EveryMidBandForm : public testing::Test {
protected:
    template <typename Loop>
    static void ExpectEqual(const char* what, const Pixels& in, const Loop& loop) {
        ExpectReferenceBits(MidBandVariants(), what, in, loop);
    }
};

TEST_F(EveryMidBandForm, GivesTheReferenceBitsAndWritesNothingElse) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
    for (int32_t count = 0; count <= 70; ++count) {
        for (const uint16_t top : {uint16_t{0}, uint16_t{1}, uint16_t{4095}, uint16_t{65535}}) {
            const Pixels in = Noise(count, 1, top, 20261121).pixels;
            const Pixels other = Noise(count, 1, top, 20261122).pixels;
            const Pixels third = Noise(count, 1, top, 20261123).pixels;
            ExpectEqual("subtract", in, [&](const MidBandLoops& loops, uint16_t* detail, size_t size) {
                loops.subtract(other.data(), third.data(), size, detail);
            });
            for (const uint16_t start : {uint16_t{1}, uint16_t{4095}, uint16_t{65535}}) {
                ExpectEqual("floor", {0}, [&](const MidBandLoops& loops, uint16_t* floor, size_t) {
                    *floor = loops.findFloor(in.data(), in.size(), start);
                });
            }
            for (const int32_t maxValue : {kTwelveBits, 65535, 0, -1, INT_MAX, INT_MIN}) {
                ExpectEqual("fine", in, [&](const MidBandLoops& loops, uint16_t* pixels, size_t size) {
                    loops.addFine(pixels, other.data(), third.data(), size, maxValue);
                });
                ExpectEqual("finish", in, [&](const MidBandLoops& loops, uint16_t* detail, size_t size) {
                    loops.finish(other.data(), detail, size, maxValue, 700);
                });
                for (const double gain : {2.5, 0.0, -1.0 / 3, 40000.0, 1e300, -kInfinity, kNotANumber}) {
                    ExpectEqual("boost", in, [&](const MidBandLoops& loops, uint16_t* pixels, size_t size) {
                        loops.boost(pixels, other.data(), size, maxValue, gain);
                    });
                }
            }
        }
        if (HasFailure()) return;
    }
}

}  // namespace
}  // namespace vastrelline

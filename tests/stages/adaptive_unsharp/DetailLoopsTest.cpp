// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "stages/adaptive_unsharp/ActivityWeightedUnsharp.h"
#include "stages/adaptive_unsharp/DetailLoops.h"
#include "stages/adaptive_unsharp/EdgeWeightedUnsharp.h"
#include "stages/adaptive_unsharp/HistogramShapedUnsharp.h"
#include "support/Frames.h"
#include "support/RepeatedPixels.h"
#include "support/VariantForms.h"

namespace vastrelline {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr int32_t kTwelveBits = 4095;

template <typename Loop>
void ExpectOfAllForms(const Pixels& in, const Pixels& expected, const Loop& loop) {
    ExpectOfForms(DetailVariants(), in, expected, loop);
}

// 110 and 90 of base 100: 100 + 10 * 2.5, 100 - 10 * 2.5; 100 + 10 * 0.55 = 105.5 is cut, 100 - 10 * 0.55 =
// 94.5 as well; then above the limit, below 0, and no number.
TEST(DetailLoops, BlendByEdgesScalesWhatTheBaseLacks) {
    const std::vector<double> gains = {2.5, 0.55, 1e300, -1e300, kNotANumber, 500.0, -500.0};
    const Pixels original = Repeated({110, 90, 110, 90, 110, 110, 110, 110, 90});
    const Pixels base(original.size(), 100);
    ExpectOfAllForms(
        {0, 0, 1, 1, 2, 3, 4, 5, 5}, {125, 75, 105, 94, 0, 0, 0, 4095, 0},
        [&](const DetailLoops& loops, uint16_t* pixels, size_t count) {
            loops.blendByEdges({pixels, original.data(), base.data(), count, kTwelveBits, gains});
        });
}

// No detail is 32767; a difference of 32768 wraps to -32768, one below the scale, and one of 32767 is one
// above its top.
TEST(DetailLoops, ScaleDetailWrapsAndLimits) {
    const Pixels pixels = Repeated({100, 90, 110, 32768, 32767, 32766, 0, 65535, 0});
    const Pixels smooth = Repeated({100, 100, 100, 0, 0, 0, 32767, 0, 65535});
    ExpectOfAllForms({0, 0, 0, 0, 0, 0, 0, 0, 0}, {32767, 32757, 32777, 0, 65533, 65533, 0, 32766, 32768},
                     [&](const DetailLoops& loops, uint16_t* detail, size_t count) {
                         loops.scaleDetail(pixels.data(), smooth.data(), count, detail);
                     });
}

// 100 + 2.75, cut; 100 - 300 and 100 + 9000, limited. A mask of 255 keeps the pixel 50, as one above does; at
// 51, a fifth of 255, 50 * 0.2 + 102.75 * 0.8 is 92.2.
TEST(DetailLoops, AddShapedKeepsWhatIsMasked) {
    const std::vector<double> enhanced = {0.0, 2.75, -300.0, 9000.0, kNotANumber};
    const Pixels detail = Repeated({0, 1, 2, 3, 4, 1});
    const Pixels smooth(detail.size(), 100);
    const auto run = [&](const uint16_t* mask) {
        return [&, mask](const DetailLoops& loops, uint16_t* pixels, size_t count) {
            loops.addShaped({pixels, smooth.data(), detail.data(), mask, count, kTwelveBits, enhanced});
        };
    };
    const Pixels fifty(6, 50);
    ExpectOfAllForms(fifty, {100, 102, 0, 4095, 0, 102}, run(nullptr));
    const Pixels mask = Repeated({0, 51, 255, 255, 0, 300});
    ExpectOfAllForms(fifty, {100, 92, 50, 50, 0, 50}, run(mask.data()));
}

TEST(DetailLoops, AddFinestPutsBackWhatTheBaseLacks) {
    const Pixels base = Repeated({100, 100, 100, 65535, 0});
    const Pixels shaped = Repeated({200, 5, 4094, 0, 65535});
    ExpectOfAllForms({103, 90, 102, 0, 65535}, {203, 0, 4095, 0, 4095},
                     [&](const DetailLoops& loops, uint16_t* image, size_t count) {
                         loops.addFinest(image, base.data(), shaped.data(), count, kTwelveBits);
                     });
}

TEST(DetailLoops, MagnitudesAndLevels) {
    const Pixels wide = Repeated({3, 5, 65535, 0, 7});
    ExpectOfAllForms({5, 3, 0, 65535, 7}, {2, 2, 65535, 65535, 0},
                     [&](const DetailLoops& loops, uint16_t* band, size_t count) {
                         loops.takeMagnitude(band, wide.data(), count);
                     });
    ExpectOfAllForms({0, 9, 10, 40000, 40001, 65535}, {10, 10, 10, 40000, 40000, 40000},
                     [&](const DetailLoops& loops, uint16_t* pixels, size_t count) {
                         loops.clampToLevels(pixels, count, 10, 40000);
                     });
}

// Weights 0.5, -1 and none of a number at the levels 100 to 102, all times 1. With a gain of 3 a pixel of 111
// at base 100 gets 11 * 0.5 * 3 = 16.5, cut, and one of 90 loses 15; 2 - 98 * 1.5 is below 0 and wraps. A
// second term at a gain of 1 adds (111 - 91) * 0.5.
TEST(DetailLoops, AddWeightedAddsWhereTheWeightIsAboveZero) {
    const WeightTable brightness{3, 100, {0.5, -1.0, kNotANumber}};
    const WeightTable activity{1, 7, {1.0}};
    const Pixels base = Repeated({100, 100, 100, 101, 102, 101});
    const Pixels second = Repeated({91, 90, 2, 0, 0, 0});
    const Pixels busy(base.size(), 7);
    const auto run = [&](DetailTerm secondTerm, int32_t maxValue) {
        return [&, secondTerm, maxValue](const DetailLoops& loops, uint16_t* pixels, size_t count) {
            loops.addWeighted(
                {pixels, busy.data(), count, maxValue, {base.data(), 3.0}, secondTerm, brightness, activity});
        };
    };
    const Pixels pixels = {111, 90, 2, 3000, 3000, 5000};
    ExpectOfAllForms(pixels, {127, 75, 4095, 3000, 3000, 4095}, run({nullptr, 1.0}, kTwelveBits));
    ExpectOfAllForms(pixels, {127, 75, 65391, 3000, 3000, 5000}, run({nullptr, 1.0}, 65535));
    ExpectOfAllForms(pixels, {137, 75, 4095, 3000, 3000, 4095}, run({second.data(), 1.0}, kTwelveBits));
}

TEST(DetailVariants, AreThoseThatTheProcessorRuns) {
    ExpectForms(DetailVariants, {"scalar", "baseline", "avx2", "avx512"});
}

// Mode 3 shapes and puts the finest detail back; mode 5 takes the band, limits the activity and adds.
TEST(DetailVariants, TheLastOneRuns) {
    Frame frame = Noise(40, 31, kTwelveBits, 5);
    ExpectLastFormRuns(DetailVariants, 1, [&] {
        EdgeWeightedUnsharp(frame.Data(), frame.width, frame.height, kTwelveBits, 1.0, 2.0, 50, 1);
    });
    ExpectLastFormRuns(DetailVariants, 2, [&] {
        HistogramShapedUnsharp(frame.Data(), frame.width, frame.height, kTwelveBits, 1.0, 2.0, 50, nullptr);
    });
    ExpectLastFormRuns(DetailVariants, 3, [&] {
        ActivityWeightedUnsharp(frame.Data(), frame.width, frame.height, kTwelveBits, 1, 1, 0, 2.0, 0.0);
    });
}

class EveryDetailForm : public testing::Test {
protected:
    template <typename Loop>
    static void ExpectEqual(const char* what, const Pixels& in, const Loop& loop) {
        ExpectReferenceBits(DetailVariants(), what, in, loop);
    }

    static Pixels NoiseOf(int32_t count, uint16_t top, uint32_t seed) {
        return Noise(count, 1, top, seed).pixels;
    }

    static Pixels MakeLevels(int32_t count, uint32_t seed) {
        return NoiseOf(count, static_cast<uint16_t>(Table().size() - 1), seed);
    }

    // What a table may hold, and what no weight should be.
    static const std::vector<double>& Table() {
        static const std::vector<double> table = {
            0.0,      -0.0,         0.5,          1.0 / 3, 0.999999999, -0.7,      1.0,         255.25,
            -40000.0, 4294967295.0, 2147483647.9, 1e300,   -kInfinity,  kInfinity, kNotANumber, 1e-300};
        return table;
    }
};

TEST_F(EveryDetailForm, OfWholeNumbersGivesTheReferenceBits) {
    for (int32_t count = 0; count <= 70; ++count) {
        for (const uint16_t top : {uint16_t{1}, uint16_t{4095}, uint16_t{65535}}) {
            const Pixels in = NoiseOf(count, top, 20261101);
            const Pixels other = NoiseOf(count, top, 20261102);
            const Pixels third = NoiseOf(count, top, 20261103);
            ExpectEqual("scale", in, [&](const DetailLoops& loops, uint16_t* detail, size_t size) {
                loops.scaleDetail(in.data(), other.data(), size, detail);
            });
            ExpectEqual("magnitude", in, [&](const DetailLoops& loops, uint16_t* band, size_t size) {
                loops.takeMagnitude(band, other.data(), size);
            });
            ExpectEqual("levels", in, [&](const DetailLoops& loops, uint16_t* pixels, size_t size) {
                loops.clampToLevels(pixels, size, top / 3, top / 2);
            });
            for (const int32_t maxValue : {kTwelveBits, 65535, 0, -1, INT_MAX, INT_MIN}) {
                ExpectEqual("finest", in, [&](const DetailLoops& loops, uint16_t* image, size_t size) {
                    loops.addFinest(image, other.data(), third.data(), size, maxValue);
                });
            }
        }
        if (HasFailure()) return;
    }
}

TEST_F(EveryDetailForm, OfDoublesGivesTheReferenceBits) {
    for (int32_t count = 0; count <= 40; ++count) {
        for (const uint16_t top : {uint16_t{3}, uint16_t{4095}, uint16_t{65535}}) {
            const Pixels levels = MakeLevels(count, 20261104);
            const Pixels pixels = NoiseOf(count, top, 20261105);
            const Pixels smooth = NoiseOf(count, top, 20261106);
            const Pixels mask = NoiseOf(count, 300, 20261107);
            for (const int32_t maxValue : {kTwelveBits, 65535, 0, -1, INT_MAX, INT_MIN}) {
                ExpectEqual("edges", levels, [&](const DetailLoops& loops, uint16_t* image, size_t size) {
                    loops.blendByEdges({image, pixels.data(), smooth.data(), size, maxValue, Table()});
                });
                for (const uint16_t* maskOrNone : {static_cast<const uint16_t*>(nullptr), mask.data()}) {
                    ExpectEqual(
                        "shaped", pixels, [&](const DetailLoops& loops, uint16_t* image, size_t size) {
                            loops.addShaped(
                                {image, smooth.data(), levels.data(), maskOrNone, size, maxValue, Table()});
                        });
                }
            }
        }
        if (HasFailure()) return;
    }
}

TEST_F(EveryDetailForm, OfWeightsGivesTheReferenceBits) {
    const auto tableFrom = [](int32_t base) {
        return WeightTable{static_cast<int32_t>(Table().size()), base, Table()};
    };
    for (int32_t count = 0; count <= 40; ++count) {
        // The levels of both tables begin somewhere, at the top of 16 bits too.
        for (const uint16_t base : {uint16_t{0}, uint16_t{1000}, uint16_t{65520}}) {
            Pixels smooth = MakeLevels(count, 20261108);
            Pixels activity = MakeLevels(count, 20261109);
            for (uint16_t& level : smooth) level = static_cast<uint16_t>(level + base);
            for (uint16_t& level : activity) level = static_cast<uint16_t>(level + 50);
            const Pixels pixels = NoiseOf(count, base == 65520 ? 65535 : kTwelveBits, 20261110);
            const Pixels second = NoiseOf(count, kTwelveBits, 20261111);
            for (const double gain : {2.0, -1.0 / 3, 1e300, kInfinity, kNotANumber}) {
                for (const uint16_t* secondOrNone : {static_cast<const uint16_t*>(nullptr), second.data()}) {
                    for (const int32_t maxValue : {kTwelveBits, 65535, -1, INT_MAX}) {
                        const WeightTable brightnessTable = tableFrom(base);
                        const WeightTable activityTable = tableFrom(50);
                        ExpectEqual("weighted", pixels,
                                    [&](const DetailLoops& loops, uint16_t* image, size_t size) {
                                        loops.addWeighted({image,
                                                           activity.data(),
                                                           size,
                                                           maxValue,
                                                           {smooth.data(), gain},
                                                           {secondOrNone, 1.5},
                                                           brightnessTable,
                                                           activityTable});
                                    });
                    }
                }
            }
        }
        if (HasFailure()) return;
    }
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "exports/OutputMapping.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

struct MappingCase {
    const char* name;
    uint16_t pixel;
    uint16_t mapped;
};

class OutputMappingTest : public testing::TestWithParam<MappingCase> {};

TEST_P(OutputMappingTest, MapsThePixel) {
    Frame frame = Flat(1, 1, GetParam().pixel);
    ApplyOutputMapping(frame.Data(), 1, 1);
    EXPECT_EQ(frame.At(0, 0), GetParam().mapped);
}

// (pixel + 3000) / 10000 * 4095 by hand, without the fraction.
INSTANTIATE_TEST_SUITE_P(Levels, OutputMappingTest,
                         testing::Values(MappingCase{"Zero", 0, 1228},                  // 1228.5
                                         MappingCase{"One", 1, 1228},                   // 1228.91
                                         MappingCase{"Two", 2, 1229},                   // 1229.32
                                         MappingCase{"Thousand", 1000, 1638},           // exactly
                                         MappingCase{"MiddleOfTheWindow", 2000, 2047},  // 2047.5
                                         MappingCase{"ThreeThousand", 3000, 2457},      // exactly
                                         MappingCase{"LastOfTheTable", 4095, 2905},     // 2905.40
                                         MappingCase{"FirstPastTheTable", 4096, 2905},
                                         MappingCase{"Largest", 65535, 2905}),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(OutputMapping, EveryLevelIsTheRampInIntegers) {
    Frame frame = Ramp(64, 64, 0, 1, 64);
    ApplyOutputMapping(frame.Data(), 64, 64);
    for (int64_t level = 0; level < 4096; ++level) {
        const int32_t x = static_cast<int32_t>(level % 64);
        const int32_t y = static_cast<int32_t>(level / 64);
        // Only 1000 and 3000 give whole numbers, and doubles hold those exactly; every other result lies
        // 1/2000 or more away from a whole number, far beyond any rounding.
        EXPECT_EQ(frame.At(x, y), (level + 3000) * 4095 / 10000) << level;
    }
}

TEST(OutputMapping, MapsEveryPixelOfAFrame) {
    Frame frame = FromRows({{0, 2000, 4095}, {65535, 1000, 3000}});
    ApplyOutputMapping(frame.Data(), 3, 2);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{1228, 2047, 2905}, {2905, 1638, 2457}})));
}

TEST(OutputMapping, FrameWithoutRowsOrColumnsIsNoWork) {
    Frame frame = FromRows({{7, 2000}});
    ApplyOutputMapping(frame.Data(), 0, 2);
    ApplyOutputMapping(frame.Data(), 2, 0);
    EXPECT_THAT(frame, EqualsFrame(FromRows({{7, 2000}})));
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <utility>
#include <vector>

#include "sensor/ExposureDecision.h"

namespace vastrelline {
namespace {

std::vector<uint32_t> Histogram(std::initializer_list<std::pair<size_t, uint32_t>> counts) {
    std::vector<uint32_t> histogram(4096);
    for (const auto& [level, count] : counts) histogram.at(level) = count;
    return histogram;
}

// Figures of an earlier frame, all of which have to go.
DoseRecord Classified(const std::vector<uint32_t>& histogram, int32_t threshold, double lowThreshold) {
    DoseRecord record{-1, -1, -1, -1.0, -1};
    EXPECT_EQ(ClassifyExposure(nullptr, 0, 0, histogram, threshold, lowThreshold, 4095, record),
              record.LowExposure);
    return record;
}

// 100 pixels below level 300, half of them below level 100.
std::vector<uint32_t> HalfLow() {
    return Histogram({{2, 10}, {50, 30}, {99, 10}, {100, 25}, {200, 25}, {300, 1000}, {4095, 500}});
}

TEST(ClassifyExposure, CountsTheObjectBelowTheThreshold) {
    const DoseRecord record = Classified(HalfLow(), 300, 0.25);
    EXPECT_EQ(record.ObjectTotal, 100);
    EXPECT_EQ(record.LowSignal, 50);
    EXPECT_EQ(record.LowRatio, 0.5);
    EXPECT_EQ(record.LowExposure, 1);
    // From level 5 on: 30, 40, 65, and 65 is above 50.
    EXPECT_EQ(record.ObjectMedian, 100);
}

TEST(ClassifyExposure, ThresholdItselfIsBackground) {
    EXPECT_EQ(Classified(HalfLow(), 301, 0.25).ObjectTotal, 1100);
    EXPECT_EQ(Classified(HalfLow(), 200, 0.25).ObjectTotal, 75);
    EXPECT_EQ(Classified(HalfLow(), 99, 0.25).LowSignal, 40);
}

TEST(ClassifyExposure, EqualRatioIsNormal) {
    EXPECT_EQ(Classified(HalfLow(), 300, 0.5).LowExposure, 0);
    EXPECT_EQ(Classified(HalfLow(), 300, std::nextafter(0.5, 0.0)).LowExposure, 1);
    EXPECT_EQ(Classified(HalfLow(), 300, std::nextafter(0.5, 1.0)).LowExposure, 0);
    EXPECT_EQ(Classified(Histogram({{20, 7}}), 21, 1.0).LowExposure, 0);
    EXPECT_EQ(Classified(HalfLow(), 300, std::numeric_limits<double>::quiet_NaN()).LowExposure, 0);
}

TEST(ClassifyExposure, MedianIsWhereTheHalfIsPassedNotReached) {
    EXPECT_EQ(Classified(Histogram({{10, 50}, {20, 50}}), 100, 1.0).ObjectMedian, 20);
    EXPECT_EQ(Classified(Histogram({{10, 51}, {20, 50}}), 100, 1.0).ObjectMedian, 10);
    EXPECT_EQ(Classified(Histogram({{5, 3}}), 6, 1.0).ObjectMedian, 5);
}

TEST(ClassifyExposure, HalfThatIsNeverPassedStaysANumberOfPixels) {
    // 40 pixels from level 5 on do not pass a half of 50.
    const DoseRecord record = Classified(Histogram({{2, 60}, {10, 40}}), 300, 0.5);
    EXPECT_EQ(record.ObjectTotal, 100);
    EXPECT_EQ(record.ObjectMedian, 50);
    // Half of them exactly is not above it either.
    EXPECT_EQ(Classified(Histogram({{4, 100}, {10, 100}}), 300, 0.5).ObjectMedian, 100);
}

TEST(ClassifyExposure, ThresholdsUpToFiveLeaveTheHalf) {
    const std::vector<uint32_t> histogram = Histogram({{0, 4}, {4, 11}, {5, 1000}});
    const DoseRecord record = Classified(histogram, 5, 0.5);
    EXPECT_EQ(record.ObjectTotal, 15);
    EXPECT_EQ(record.LowSignal, 15);
    EXPECT_EQ(record.LowRatio, 1.0);
    EXPECT_EQ(record.LowExposure, 1);
    EXPECT_EQ(record.ObjectMedian, 7);
    EXPECT_EQ(Classified(histogram, 1, 0.5).ObjectMedian, 2);
}

TEST(ClassifyExposure, WithoutAnObjectTheRatioIsNotANumber) {
    for (const int32_t threshold : {0, -1, std::numeric_limits<int32_t>::min()})
        for (const double lowThreshold : {0.5, 0.0, -1.0, -std::numeric_limits<double>::infinity()}) {
            const DoseRecord record = Classified(HalfLow(), threshold, lowThreshold);
            EXPECT_EQ(record.ObjectTotal, 0);
            EXPECT_EQ(record.LowSignal, 0);
            EXPECT_TRUE(std::isnan(record.LowRatio));
            EXPECT_EQ(record.LowExposure, 0);
            EXPECT_EQ(record.ObjectMedian, 0);
        }
}

TEST(ClassifyExposure, BinsThatDoNotExistAreEmpty) {
    const std::vector<uint32_t> three = {1, 2, 4};
    const DoseRecord record = Classified(three, std::numeric_limits<int32_t>::max(), 0.5);
    EXPECT_EQ(record.ObjectTotal, 7);
    EXPECT_EQ(record.ObjectMedian, 3);
    EXPECT_EQ(Classified({}, 100, 0.5).ObjectTotal, 0);
}

}  // namespace
}  // namespace vastrelline

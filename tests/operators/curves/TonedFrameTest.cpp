// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "operators/curves/LookupTable.h"
#include "operators/curves/TonedFrame.h"
#include "operators/histogram/Histogram.h"
#include "operators/histogram/PixelRange.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

TonedFrame Toned(Frame& frame) { return TonedFrame({frame.Data(), frame.width, frame.height}); }

// The toned frame and the plain one agree on counts and range.
void ExpectSameRange(TonedFrame& toned, const Frame& frame) {
    EXPECT_EQ(toned.MinLevel(), MinPixel(frame.Data(), frame.width, frame.height));
    EXPECT_EQ(toned.MaxLevel(), MaxPixel(frame.Data(), frame.width, frame.height));
}

void ExpectSameCounts(TonedFrame& toned, const Frame& frame) {
    for (const int32_t maxValue : {-1, 0, 4095, 4096, 4097, 65535, 65600}) {
        EXPECT_EQ(toned.Histogram(maxValue),
                  BuildHistogram(frame.Data(), frame.width, frame.height, maxValue));
        EXPECT_EQ(toned.UnclampedHistogram(maxValue),
                  BuildUnclampedHistogram(frame.Data(), frame.width, frame.height, maxValue));
    }
    ExpectSameRange(toned, frame);
}

// Not monotonous, many levels to one, and beyond 12 bits.
std::vector<uint16_t> MakeTable(size_t levels, uint32_t factor) {
    std::vector<uint16_t> table(levels);
    for (size_t level = 0; level < levels; ++level) table[level] = static_cast<uint16_t>(level / 3 * factor);
    return table;
}

std::vector<uint16_t> Falling(size_t levels) {
    std::vector<uint16_t> table(levels);
    for (size_t level = 0; level < levels; ++level) table[level] = static_cast<uint16_t>(levels - level);
    return table;
}

// Rising; rising, falling, with jumps; ending below the highest levels; of one level; none.
const std::vector<std::vector<uint16_t>> kTables = {MakeTable(5000, 2),
                                                    MakeTable(4000, 31),
                                                    Falling(4096),
                                                    MakeTable(20000, 7),
                                                    MakeTable(65536, 3),
                                                    {9},
                                                    {}};

void MapPlainly(Frame& frame, const std::vector<uint16_t>& table) {
    ApplyLookupTable(frame.Data(), frame.width, frame.height, table);
}

std::vector<Frame> Originals() {
    return {Noise(37, 11, 65535, 1), Noise(90, 70, 4095, 2), Flat(2, 2, 65535),
            Flat(3, 1, 4096),        Flat(1, 1, 0),          Frame(0, 5)};
}

std::string NameOf(const Frame& frame) {
    return std::to_string(frame.width) + " x " + std::to_string(frame.height);
}

TEST(TonedFrame, CurvesPassOverThePixelsOnce) {
    for (const bool isCounted : {false, true})
        for (const bool isAskedBetween : {false, true})
            for (const bool isReadBetween : {false, true})
                for (const Frame& original : Originals()) {
                    SCOPED_TRACE(testing::Message()
                                 << NameOf(original) << isCounted << isAskedBetween << isReadBetween);
                    Frame mapped = original;
                    Frame expected = original;
                    TonedFrame toned = Toned(mapped);
                    if (isCounted) ExpectSameCounts(toned, expected);
                    for (const std::vector<uint16_t>& table : kTables) {
                        if (isAskedBetween) ExpectSameRange(toned, expected);
                        toned.Map(table);
                        MapPlainly(expected, table);
                        if (isAskedBetween) ExpectSameRange(toned, expected);
                        if (isReadBetween) {
                            toned.Read();
                            EXPECT_THAT(mapped, EqualsFrame(expected));
                        }
                    }
                    ExpectSameCounts(toned, expected);
                    toned.Read();
                    EXPECT_THAT(mapped, EqualsFrame(expected));
                    toned.Read();
                    EXPECT_THAT(mapped, EqualsFrame(expected));
                }
}

TEST(TonedFrame, PixelsStayUntilTheyAreAskedFor) {
    Frame frame = FromRows({{1, 2, 3}});
    TonedFrame toned = Toned(frame);
    toned.Map(std::vector<uint16_t>{9, 8, 7, 6});
    toned.Map({});
    EXPECT_THAT(frame, EqualsFrame(FromRows({{1, 2, 3}})));
    EXPECT_EQ(toned.Read().begin(), frame.Data());
    EXPECT_THAT(frame, EqualsFrame(FromRows({{8, 7, 6}})));
}

TEST(TonedFrame, ChangedPixelsAreCountedAnew) {
    Frame frame = FromRows({{1, 2, 3}});
    TonedFrame toned = Toned(frame);
    ExpectSameCounts(toned, frame);
    EXPECT_TRUE(toned.IsCounted());
    toned.Change().begin()[1] = 7000;
    EXPECT_FALSE(toned.IsCounted());
    ExpectSameRange(toned, FromRows({{1, 7000, 3}}));
    ExpectSameCounts(toned, FromRows({{1, 7000, 3}}));
}

TEST(TonedFrame, CurveOfALevelIsAskedForLevelsOfTheFrameAlone) {
    Frame frame = FromRows({{10, 4000}, {10, 300}});
    TonedFrame toned = Toned(frame);
    toned.Map(std::vector<uint16_t>(1, 77));
    Frame other = frame;
    TonedFrame plain = Toned(other);
    std::set<int32_t> asked;
    plain.MapBy([&](int32_t level) {
        asked.insert(level);
        return static_cast<uint16_t>(level + 5);
    });
    EXPECT_EQ(asked, (std::set<int32_t>{10, 300, 4000}));
    plain.Read();
    EXPECT_THAT(other, EqualsFrame(FromRows({{15, 4005}, {15, 305}})));
    toned.MapBy([&](int32_t level) { return static_cast<uint16_t>(level + 5); });
    toned.Read();
    EXPECT_THAT(frame, EqualsFrame(Flat(2, 2, 82)));
}

TEST(TonedFrame, CurveOfALevelMapsUncountedFrames) {
    // More pixels than levels: nothing is counted.
    Frame frame = Noise(40, 30, 900, 4);
    Frame expected = frame;
    for (uint16_t& pixel : expected.pixels) pixel = static_cast<uint16_t>(60000 - pixel);
    TonedFrame toned = Toned(frame);
    toned.MapBy([](int32_t level) { return static_cast<uint16_t>(60000 - level); });
    EXPECT_FALSE(toned.IsCounted());
    ExpectSameRange(toned, expected);
    toned.Read();
    EXPECT_THAT(frame, EqualsFrame(expected));
}

// ---- copies

TEST(TonedFrame, CopyAndSourceAreMappedTogether) {
    for (const bool isCounted : {false, true})
        for (const bool isAskedBetween : {false, true})
            for (const Frame& original : Originals()) {
                SCOPED_TRACE(testing::Message() << NameOf(original) << isCounted << isAskedBetween);
                Frame sourcePixels = original;
                Frame expectedSource = original;
                TonedFrame source = Toned(sourcePixels);
                if (isCounted) ExpectSameCounts(source, original);
                source.Map(kTables[1]);
                MapPlainly(expectedSource, kTables[1]);

                Frame copyPixels(original.width, original.height);
                TonedFrame copy(source, {copyPixels.Data(), original.width, original.height});
                Frame expectedCopy = expectedSource;
                for (const std::vector<uint16_t>& table : {kTables[2], kTables[0]}) {
                    if (isAskedBetween) ExpectSameCounts(copy, expectedCopy);
                    copy.Map(table);
                    MapPlainly(expectedCopy, table);
                }
                EXPECT_THAT(sourcePixels, EqualsFrame(original));
                ExpectSameCounts(copy, expectedCopy);
                copy.Read();
                EXPECT_THAT(copyPixels, EqualsFrame(expectedCopy));
                EXPECT_THAT(sourcePixels, EqualsFrame(expectedSource));
                // From now on they are two frames.
                copy.Map(kTables[5]);
                copy.Read();
                source.Read();
                EXPECT_THAT(sourcePixels, EqualsFrame(expectedSource));
                ExpectSameCounts(source, expectedSource);
            }
}

// ---- rearrangement

void MirrorRow(uint16_t* row, int32_t /*y*/) { std::reverse(row, row + 2); }

// The first pixel of a row is lost.
void CopyToFirst(uint16_t* row, int32_t y) { row[0] = row[y == 0 ? 1 : 2]; }

TEST(TonedFrame, RearrangedPixelsAreCountedWhereverTheyLie) {
    const std::vector<uint16_t> table = Falling(5000);
    for (const bool isCopy : {false, true})
        for (const bool isCounted : {false, true})
            for (const bool isMappedBefore : {false, true}) {
                SCOPED_TRACE(testing::Message() << isCopy << isCounted << isMappedBefore);
                Frame sourcePixels = FromRows({{9, 20, 3000}, {6000, 50, 60}, {70, 80, 4000}});
                TonedFrame source = Toned(sourcePixels);
                Frame copyPixels(3, 3);
                TonedFrame copy(source, {copyPixels.Data(), 3, 3});
                Frame& pixels = isCopy ? copyPixels : sourcePixels;
                TonedFrame& toned = isCopy ? copy : source;

                if (isCounted) toned.Histogram(1);
                if (isMappedBefore) toned.Map(table);
                toned.Rearrange({0, 2}, CopyToFirst);
                if (!isMappedBefore) toned.Map(table);
                Frame expected = FromRows({{20, 20, 3000}, {6000, 50, 60}, {4000, 80, 4000}});
                MapPlainly(expected, table);
                ExpectSameCounts(toned, expected);
                toned.Read();
                EXPECT_THAT(pixels, EqualsFrame(expected));
                ExpectSameCounts(toned, expected);
            }
}

TEST(TonedFrame, RearrangesMoreThanOnce) {
    Frame sourcePixels = FromRows({{1, 2}, {3, 4}});
    TonedFrame source = Toned(sourcePixels);
    Frame pixels(2, 2);
    TonedFrame copy(source, {pixels.Data(), 2, 2});
    copy.Rearrange({1}, MirrorRow);
    copy.Rearrange({0, 1}, MirrorRow);
    copy.Read();
    EXPECT_THAT(pixels, EqualsFrame(FromRows({{2, 1}, {3, 4}})));
    EXPECT_THAT(sourcePixels, EqualsFrame(FromRows({{1, 2}, {3, 4}})));
}

}  // namespace
}  // namespace vastrelline

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>

#include "operators/median/MedianWindow.h"
#include "stages/pre_processing/PreProcessingStage.h"
#include "support/ConfiguredRun.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int32_t kTwelveBits = 4095;

Frame Processed(Frame frame, const PreProcessingParams& params = {}, int32_t maxValue = kTwelveBits) {
    PreProcessFrame(frame.Data(), frame.width, frame.height, maxValue, params);
    return frame;
}

TEST(PreProcessing, BlackFrameComesOutAtTheStartOfTheFloor) {
    EXPECT_THAT(Processed(Flat(6, 5, 0)), EqualsFrame(Flat(6, 5, 4095)));
    EXPECT_THAT(Processed(Flat(6, 5, 0), {}, 255), EqualsFrame(Flat(6, 5, 4095)));
}

TEST(PreProcessing, PixelsOf4095AndAboveLeaveTheFloorThere) {
    EXPECT_THAT(Processed(Flat(6, 5, 5000), {}, 65535), EqualsFrame(Flat(6, 5, 5000)));
    // The single pixel has a median of 0 around it, and the floor is above what the boost leaves.
    Frame frame = Flat(6, 5, 0);
    frame.At(3, 2) = 5000;
    EXPECT_THAT(Processed(frame, {}, 65535), EqualsFrame(Flat(6, 5, 4095)));
}

TEST(PreProcessing, FlatFrameStaysFlat) {
    EXPECT_THAT(Processed(Flat(9, 7, 300)), EqualsFrame(Flat(9, 7, 300)));
}

TEST(PreProcessing, DarkestPixelAboveZeroIsTheFloor) {
    Frame frame = Flat(9, 9, 0);
    frame.At(4, 4) = 77;  // the median takes it away, the floor stays
    EXPECT_THAT(Processed(frame), EqualsFrame(Flat(9, 9, 77)));
}

// At a gain of 1 the base is the second median as it is. Where the first one lies above it the detail brings
// that back; where it lies below, the detail is too large a number to be added.
TEST(PreProcessing, DetailIsAddedOnlyWhereItIsPositive) {
    PreProcessingParams params;
    params.PREPROCESSING_ENHANCESCALE = 1.0;
    const Frame frame = Noise(40, 30, kTwelveBits, 9);
    Frame first = frame;
    Median3x3ToBuffer(frame.Data(), first.Data(), 40, 30);
    Frame second = frame;
    Median3x3ToBuffer(first.Data(), second.Data(), 40, 30);
    uint16_t floor = 4095;
    for (const uint16_t pixel : frame.pixels) floor = pixel > 0 ? std::min(floor, pixel) : floor;
    Frame expected = frame;
    for (size_t i = 0; i < expected.pixels.size(); ++i)
        expected.pixels[i] = std::max({first.pixels[i], second.pixels[i], floor});
    EXPECT_NE(first, second);
    EXPECT_THAT(Processed(frame, params), EqualsFrame(expected));
}

TEST(PreProcessing, MapKeysHaveNoEffect) {
    const Frame frame = Noise(40, 30, kTwelveBits, 9);
    const Frame expected = Processed(frame);
    PreProcessingParams params;
    params.PREPROCESSING_AUMALPHA = 3.0;
    params.PREPROCESSING_AUMWEIGHT = 0.1;
    params.PREPROCESSING_AUMPOWER = 2.0;
    params.PREPROCESSING_AUMRANGE = -5.0;
    EXPECT_THAT(Processed(frame, params), EqualsFrame(expected));
}

TEST(PreProcessing, GainAndSigmaHaveOne) {
    const Frame frame = Noise(40, 30, kTwelveBits, 9);
    PreProcessingParams gain;
    gain.PREPROCESSING_ENHANCESCALE = 1.5;
    PreProcessingParams sigma;
    sigma.PREPROCESSING_GAUSSIANPOWER = 2.0;
    EXPECT_NE(Processed(frame, gain), Processed(frame));
    EXPECT_NE(Processed(frame, sigma), Processed(frame));
}

TEST(PreProcessing, SmallFramesAreSafe) {
    for (const auto& [width, height] : {std::pair{1, 1}, {1, 9}, {9, 1}, {2, 2}, {3, 3}})
        EXPECT_THAT(Processed(Flat(width, height, 9)), EqualsFrame(Flat(width, height, 9)));
}

TEST(PreProcessingParams, DefaultsAndKeys) {
    ConfiguredRun run;
    run.WriteProfile("[Molar]\r\n");
    PreProcessingParams params = ReadPreProcessingParams(run.Wide(L"profile.ini"), L"Molar", 3);
    EXPECT_EQ(params.PREPROCESSING_ENHANCESCALE, 2.5);
    EXPECT_EQ(params.PREPROCESSING_GAUSSIANPOWER, 6.0);
    EXPECT_EQ(params.PREPROCESSING_AUMALPHA, 1.0);
    EXPECT_EQ(params.PREPROCESSING_AUMWEIGHT, 1.0);
    EXPECT_EQ(params.PREPROCESSING_AUMPOWER, 0.0);
    EXPECT_EQ(params.PREPROCESSING_AUMRANGE, 1.0);
    run.WriteProfile(
        "[Molar]\r\n03_PREPROCESSING_ENHANCESCALE=1\r\n03_PREPROCESSING_GAUSSIANPOWER=2\r\n"
        "03_PREPROCESSING_AUMALPHA=3\r\n03_PREPROCESSING_AUMWEIGHT=4\r\n"
        "03_PREPROCESSING_AUMPOWER=5\r\n03_PREPROCESSING_AUMRANGE=6\r\n");
    params = ReadPreProcessingParams(run.Wide(L"profile.ini"), L"Molar", 3);
    EXPECT_EQ(params.PREPROCESSING_ENHANCESCALE, 1.0);
    EXPECT_EQ(params.PREPROCESSING_GAUSSIANPOWER, 2.0);
    EXPECT_EQ(params.PREPROCESSING_AUMALPHA, 3.0);
    EXPECT_EQ(params.PREPROCESSING_AUMWEIGHT, 4.0);
    EXPECT_EQ(params.PREPROCESSING_AUMPOWER, 5.0);
    EXPECT_EQ(params.PREPROCESSING_AUMRANGE, 6.0);
}

TEST(PreProcessingStage, DumpsAndWritesNoLogLine) {
    ConfiguredRun run;
    run.WriteProfile("[Molar]\r\n07_PREPROCESSING_ENHANCESCALE=1\r\n");
    SharedConfiguredState().SaveLog = 1;
    SharedConfiguredState().SaveImage = 1;
    Frame frame = Impulse(4, 3, 1, 1, 300, 200);
    PreProcessingStage(frame.Data(), kTwelveBits, 4, 3, run.Log(), 7);
    EXPECT_THAT(frame, EqualsFrame(Flat(4, 3, 200)));
    EXPECT_THAT(run.DumpedNames(), ElementsAre("05_preprocessing.raw"));
    EXPECT_EQ(run.Dumped("05_preprocessing.raw").size(), 24U);
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 6);
    EXPECT_EQ(run.LogText(), "");
}

TEST(PreProcessingStage, DumpsNothingWhileSavingIsOff) {
    ConfiguredRun run;
    run.WriteProfile("[Molar]\r\n");
    Frame frame = Flat(4, 3, 200);
    PreProcessingStage(frame.Data(), kTwelveBits, 4, 3, run.Log(), 7);
    EXPECT_THAT(run.DumpedNames(), IsEmpty());
    EXPECT_EQ(SharedConfiguredState().DumpNumber, 5);
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0

// Real frames come out the right way round, what took up much radiation being bright, and each stage makes a
// picture of them.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "support/Frames.h"
#include "support/ProfileFolder.h"
#include "support/RealFrames.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

struct Region {
    int32_t left;
    int32_t top;
    int32_t right;   // beside the region
    int32_t bottom;  // below it
};

// Regions that a person found in the picture of a frame.
struct RealFrameCase {
    const char* name;
    Frame (*read)();
    Region tooth;
    Region air;
};

double MeanOver(const Frame& frame, const Region& region) {
    double sum = 0.0;
    for (int32_t y = region.top; y < region.bottom; ++y)
        for (int32_t x = region.left; x < region.right; ++x) sum += frame.At(x, y);
    return sum / ((region.right - region.left) * (region.bottom - region.top));
}

class RightWayRoundTest : public testing::TestWithParam<RealFrameCase> {};

TEST_P(RightWayRoundTest, TeethAreBrightAndCornersBlack) {
    constexpr double kClearly = 1000.0;
    const Frame input = WithBlackCorners(GetParam().read());
    for (const char* mode : {"1", "2", "3"}) {
        SCOPED_TRACE(std::string("inversion ") + mode);
        const ProfileFolder folder;
        ProfileWriter()
            .Section("General")
            .Key("PROCMODE", "2")
            .Key("INVERSE_INTENSITY", mode)
            .Key("INVERSE_LOGRATIO", "1")
            .WriteTo(folder.At("profile.ini"));
        Frame frame = input;
        ASSERT_GT(MeanOver(frame, GetParam().air), MeanOver(frame, GetParam().tooth) + kClearly);
        Frame output(frame.width, frame.height);
        ASSERT_EQ(ImageProcessing(frame.Data(), output.Data(), frame.width, frame.height,
                                  folder.Profile().c_str(), "General", 0, 0),
                  VASTRELLINE_OK);
        EXPECT_GT(MeanOver(output, GetParam().tooth), MeanOver(output, GetParam().air) + kClearly);
        // The rounded corners lie at the bottom; the two at the top hold a picture.
        EXPECT_EQ(output.At(0, frame.height - 1), 0);
        EXPECT_EQ(output.At(frame.width - 1, frame.height - 1), 0);
        EXPECT_NE(output.At(0, 0), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Frames, RightWayRoundTest,
    testing::Values(RealFrameCase{"Bitewing", ReadBitewing, {300, 160, 400, 320}, {560, 1460, 640, 1560}},
                    RealFrameCase{"Periapical", ReadPeriapical, {720, 80, 800, 200}, {860, 800, 920, 1100}}),
    [](const auto& test) { return std::string(test.param.name); });

struct StageCase {
    const char* name;
    const char* number;
    std::vector<std::pair<std::string, std::string>> keys;  // so that it has work to do
};

class SingleStageTest : public testing::TestWithParam<StageCase> {
protected:
    // The frames to run on: whole ones where the library is optimised, else a piece of one, for some stages
    // are a hundred times slower then.
    static std::vector<std::pair<std::string, Frame>> TestFrames() {
#ifdef NDEBUG
        return ReadRealFrames();
#else
        return {{"piece", ReadPieceOfBitewing(150, 120)}};
#endif
    }

    // Through the chain whose list may hold all stages. No frame is too dark for it.
    static Frame Process(const ProfileFolder& folder, Frame input) {
        Frame output(input.width, input.height);
        EXPECT_EQ(ImageProcessingS(input.Data(), output.Data(), input.width, input.height,
                                   folder.Profile().c_str(), "General", 0, 0, nullptr),
                  VASTRELLINE_OK);
        return output;
    }

    static ProfileWriter WithoutStage() {
        ProfileWriter writer;
        writer.Section("General").Key("PROCMODE", "3").Key("SETCLIPBIN", "1").Key("INTRAORAL_MASK", "0");
        return writer;
    }
};

TEST_P(SingleStageTest, MakesAnotherPictureOfTwelveBits) {
    const ProfileFolder with;
    WithoutStage().Stage(GetParam().number, GetParam().keys).WriteTo(with.At("profile.ini"));
    const ProfileFolder without;
    WithoutStage().WriteTo(without.At("profile.ini"));
    for (const auto& [name, input] : TestFrames()) {
        SCOPED_TRACE(name);
        const Frame output = Process(with, input);
        const auto [darkest, brightest] = std::minmax_element(output.pixels.begin(), output.pixels.end());
        EXPECT_LT(*darkest, *brightest);
        EXPECT_LE(*brightest, 4095);
        EXPECT_NE(output, Process(without, input));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Stages, SingleStageTest,
    testing::Values(StageCase{"PreContrast", "1", {}}, StageCase{"Stretch", "2", {}},
                    StageCase{"Clahe", "3", {}}, StageCase{"Unsharp", "4", {{"MODE_CONTRAST", "1"}}},
                    StageCase{"AdaptiveSmoothing", "5", {}}, StageCase{"Pyramid", "6", {}},
                    StageCase{"Median", "7", {}}, StageCase{"Gaussian", "8", {}},
                    StageCase{"Sigmoid", "9", {}}, StageCase{"Gamma", "10", {}},
                    StageCase{"Linear", "11", {{"POST_LINEAR_MODE", "2"}, {"POST_LINEAR_BRIGHTOPT", "-80"}}},
                    StageCase{"PreProcessing", "12", {}}, StageCase{"Hdr", "13", {}}),
    [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace vastrelline

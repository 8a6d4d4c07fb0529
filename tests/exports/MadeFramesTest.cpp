// SPDX-License-Identifier: Apache-2.0

// Whole chains on made frames, pinned by the hash of their result, and on real frames.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/MadeFrame.h"
#include "support/PlainExposure.h"
#include "support/PlainGammaChain.h"
#include "support/ProfileFolder.h"
#include "support/RealFrames.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

struct ChainCase {
    const char* name;
    std::vector<const char*> ratios;  // of one gamma stage each
    int32_t outputRange;
    uint8_t applyMapping;
    uint64_t hash;  // of the plain model's result, should the model change
};

class MadeFrameTest : public testing::TestWithParam<ChainCase> {};

TEST_P(MadeFrameTest, ResultIsThatOfThePlainModelAndHasItsHash) {
    const ProfileFolder folder;
    ProfileWriter writer;
    writer.Section("General").Key("PROCMODE", "2").Key("INTRAORAL_MASK", "0").Key("INVERSE_INTENSITY", "0");
    writer.Key("SATURATION_VALUE", "4000").Key("OUTPUTRANGE", std::to_string(GetParam().outputRange));
    for (const char* ratio : GetParam().ratios) writer.Stage("10", {{"POST_GAMMA_RATIO", ratio}});
    writer.WriteTo(folder.At("profile.ini"));

    Frame input = MadeFrame();
    Frame output(input.width, input.height);
    ASSERT_EQ(ImageProcessing(input.Data(), output.Data(), input.width, input.height,
                              folder.Profile().c_str(), "General", GetParam().applyMapping, 0),
              VASTRELLINE_OK);
    EXPECT_THAT(input, EqualsFrame(Frame(input.width, input.height, PlainExposure(MadeFrame().pixels))));

    std::vector<uint16_t> expected = PlainCap(input.pixels, 4000);
    for (const char* ratio : GetParam().ratios) {
        expected = PlainGamma(expected, GetParam().outputRange, std::strtod(ratio, nullptr));
    }
    if (GetParam().applyMapping != 0) {
        for (uint16_t& pixel : expected)
            pixel = static_cast<uint16_t>((std::min<int32_t>(pixel, 4095) + 3000) * 4095 / 10000);
    }
    EXPECT_THAT(output, EqualsFrame(Frame(input.width, input.height, expected)));
    if (!kHasUsualFunctions) return;
    EXPECT_EQ(HashOf(output), GetParam().hash);
}

INSTANTIATE_TEST_SUITE_P(
    Chains, MadeFrameTest,
    testing::Values(ChainCase{"NoStage", {}, 4095, 0, 13796314188672761915U},
                    ChainCase{"Line", {"1"}, 4095, 0, 17250419391780784845U},
                    ChainCase{"DerivedExponent", {"0.5"}, 4095, 0, 11508319870386667366U},
                    ChainCase{"FractionOfTheBrightest", {"0.125"}, 4095, 0, 5298388635171504200U},
                    ChainCase{"ThreeStages", {"0.3", "-1.5", "2.2"}, 4095, 0, 15388322670404998882U},
                    ChainCase{"NarrowRangeAndMapping", {"1.7", "-0.5"}, 1000, 1, 14444588486417846926U}),
    [](const auto& test) { return std::string(test.param.name); });

class RealFrameTest : public testing::TestWithParam<const char*> {};

TEST_P(RealFrameTest, ResultIsThatOfThePlainModel) {
    const char* const ratio = GetParam();
    std::vector<std::pair<std::string, Frame>> frames = ReadRealFrames();
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    // The plain model takes half a minute for all of them there, and one shows what a sanitizer can.
    frames.erase(frames.begin() + 1, frames.end());
#endif
    const ProfileFolder folder;
    ProfileWriter writer;
    writer.Section("General").Key("PROCMODE", "2").Key("INTRAORAL_MASK", "0").Key("INVERSE_INTENSITY", "0");
    writer.Stage("10", {{"POST_GAMMA_RATIO", ratio}}).WriteTo(folder.At("profile.ini"));
    for (auto& [name, input] : frames) {
        SCOPED_TRACE(name);
        const std::vector<uint16_t> capped = PlainCap(PlainExposure(input.pixels), 4095);
        const Frame expected(input.width, input.height,
                             PlainGamma(capped, 4095, std::strtod(ratio, nullptr)));
        Frame output(input.width, input.height);
        EXPECT_EQ(ImageProcessing(input.Data(), output.Data(), input.width, input.height,
                                  folder.Profile().c_str(), "General", 0, 0),
                  VASTRELLINE_OK);
        EXPECT_THAT(output, EqualsFrame(expected));
    }
}

INSTANTIATE_TEST_SUITE_P(Ratios, RealFrameTest, testing::Values("0.5", "0.01", "2.2", "-1.8"),
                         [](const auto& test) { return "Gamma" + std::to_string(test.index); });

}  // namespace
}  // namespace vastrelline

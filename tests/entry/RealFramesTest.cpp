// Real frames come out the right way round: what took up much radiation is bright.

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "entry/ProfileFolder.h"
#include "entry/RealFrames.h"
#include "support/Frames.h"
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
    bool isFound = false;
    for (auto& [name, input] : ReadRealFrames()) {
        if (name.rfind(GetParam().name, 0) != 0) continue;
        isFound = true;
        for (const char* mode : {"1", "2", "3"}) {
            SCOPED_TRACE(std::string(name) + ", inversion " + mode);
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
    if (!isFound) GTEST_SKIP() << "no such frame in " << FramesFolder();
}

INSTANTIATE_TEST_SUITE_P(
    Frames, RightWayRoundTest,
    testing::Values(RealFrameCase{"bitewing_corners", {300, 160, 400, 320}, {560, 1460, 640, 1560}},
                    RealFrameCase{"periapical_a_corners", {720, 80, 800, 200}, {860, 800, 920, 1100}}),
    [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace vastrelline

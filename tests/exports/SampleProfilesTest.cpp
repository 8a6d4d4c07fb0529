// SPDX-License-Identifier: Apache-2.0

// The sections of the sample profile for viewing are tuned apart: each makes another picture of a radiograph,
// and the endodontic one, which lifts fine structures, lifts no grain.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "support/Frames.h"
#include "support/ProfileFolder.h"
#include "support/RealFrames.h"
#include "support/SourceTree.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

// A frame, and a part of it that a person found to be as good as flat.
struct SampleFrameCase {
    const char* name;
    Frame (*read)();
    int32_t left;
    int32_t top;
    int32_t right;   // beside the part
    int32_t bottom;  // below it
};

class DentalSampleTest : public testing::TestWithParam<SampleFrameCase> {
protected:
    static Frame Process(const char* section) {
        const ProfileFolder folder;
        std::filesystem::copy_file(SourceTreeFolder() / "profiles" / "dental.ini", folder.At("profile.ini"));
        Frame input = GetParam().read();
        Frame output(input.width, input.height);
        EXPECT_EQ(ImageProcessing(input.Data(), output.Data(), input.width, input.height,
                                  folder.Profile().c_str(), section, 0, 0),
                  VASTRELLINE_OK);
        return output;
    }

    // What differs from the mean of the 5 x 5 pixels around it, over the flat part.
    static double Grain(const Frame& frame) {
        double sum = 0.0;
        const SampleFrameCase& part = GetParam();
        for (int32_t y = part.top; y < part.bottom; ++y)
            for (int32_t x = part.left; x < part.right; ++x) {
                double around = 0.0;
                for (int32_t dy = -2; dy <= 2; ++dy)
                    for (int32_t dx = -2; dx <= 2; ++dx) around += frame.At(x + dx, y + dy);
                const double difference = frame.At(x, y) - around / 25;
                sum += difference * difference;
            }
        return std::sqrt(sum / ((part.right - part.left) * (part.bottom - part.top)));
    }

    static double MeanLevel(const Frame& frame) {
        double sum = 0.0;
        for (const uint16_t pixel : frame.pixels) sum += pixel;
        return sum / static_cast<double>(frame.pixels.size());
    }

    static double MeanDifference(const Frame& one, const Frame& other) {
        double sum = 0.0;
        for (size_t i = 0; i < one.pixels.size(); ++i) sum += std::abs(one.pixels[i] - other.pixels[i]);
        return sum / static_cast<double>(one.pixels.size());
    }
};

TEST_P(DentalSampleTest, SectionsMakePicturesOfTheirOwn) {
    constexpr double kSeen = 100.0;  // levels, of 4095: side by side nobody takes one for the other
    const Frame general = Process("General");
    const Frame endodontic = Process("Endodontic");
    const Frame periodontal = Process("Periodontal");
    EXPECT_GT(MeanDifference(general, endodontic), kSeen);
    EXPECT_GT(MeanDifference(general, periodontal), kSeen);
    EXPECT_GT(MeanDifference(endodontic, periodontal), kSeen);
    EXPECT_GT(MeanLevel(periodontal), MeanLevel(general) + kSeen);
    EXPECT_LT(Grain(endodontic), Grain(general));
}

INSTANTIATE_TEST_SUITE_P(Frames, DentalSampleTest,
                         testing::Values(SampleFrameCase{"Bitewing", ReadBitewing, 820, 500, 920, 560},
                                         SampleFrameCase{"Periapical", ReadPeriapical, 300, 480, 400, 520}),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0

// What the processing exports do to their input, and how they take the sensor's geometry.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/ProcessingExports.h"
#include "support/ProfileFolder.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

using testing::IsEmpty;

// By hand: black is 0 and the clip level 2047. The lift ends at trunc(2047 * 250 / 4095) = 124, where 31
// becomes 124 * (31 / 124)^0.55 = 57.8; the clip begins at trunc(2047 * 3800 / 4095) = 1899.
const Frame kRaw = FromRows({{2047, 0, 31, 124}});
const Frame kCorrected = FromRows({{1899, 0, 57, 124}});

class ExposureTest : public testing::TestWithParam<ProcessingExport> {
protected:
    // At this output range the linear curve of the chain that has one leaves a frame of 16 bits as it is.
    ExposureTest() {
        ProfileFolder::PlainSection().Key("OUTPUTRANGE", "65535").WriteTo(folder_.At("profile.ini"));
    }

    ExportArguments Arguments() {
        return {input_.Data(), output_.Data(), 4, 1, profile_.c_str(), "General", 0, nullptr};
    }
    // Only the export for frames without corners leaves its input alone.
    Frame Expected() const { return GetParam().name == "ImageProcessingCR" ? kRaw : kCorrected; }
    const Frame& Input() const { return input_; }
    const Frame& Output() const { return output_; }
    const ProfileFolder& Folder() const { return folder_; }

private:
    ProfileFolder folder_;
    std::string profile_ = folder_.Profile();
    Frame input_ = kRaw;
    Frame output_ = Flat(4, 1, 7);
};

TEST_P(ExposureTest, InputIsCorrectedInPlaceAndThenProcessed) {
    EXPECT_EQ(GetParam().call(Arguments()), VASTRELLINE_OK);
    EXPECT_THAT(Input(), EqualsFrame(Expected()));
    if (!GetParam().hasOutput) return;
    EXPECT_THAT(Output(), EqualsFrame(Expected()));
}

TEST_P(ExposureTest, InputIsCorrectedWithoutAProfile) {
    const std::string missing = Folder().Narrow("missing.ini");
    ExportArguments arguments = Arguments();
    arguments.iniPath = missing.c_str();
    EXPECT_EQ(GetParam().call(arguments), VASTRELLINE_NO_PROFILE);
    EXPECT_THAT(Input(), EqualsFrame(Expected()));
    EXPECT_THAT(Output(), EqualsFrame(Flat(4, 1, 7)));
    EXPECT_THAT(Folder().Files(), IsEmpty());
}

TEST_P(ExposureTest, InputIsCorrectedWithoutASection) {
    ExportArguments arguments = Arguments();
    arguments.sectionName = "";
    EXPECT_EQ(GetParam().call(arguments), VASTRELLINE_OK);
    EXPECT_THAT(Input(), EqualsFrame(Expected()));
}

TEST_P(ExposureTest, InputIsCorrectedWithoutAnOutput) {
    if (!GetParam().hasOutput) return;
    ExportArguments arguments = Arguments();
    arguments.output = nullptr;
    EXPECT_EQ(GetParam().call(arguments), VASTRELLINE_NO_OUTPUT);
    EXPECT_THAT(Input(), EqualsFrame(Expected()));
}

TEST_P(ExposureTest, InputIsCorrectedWhenNoBitmapIsSaved) {
    if (GetParam().hasOutput) return;
    const std::string bitmap = Folder().Narrow("missing") + "\\a.bmp";
    ExportArguments arguments = Arguments();
    arguments.bitmapPath = bitmap.c_str();
    EXPECT_EQ(GetParam().call(arguments), VASTRELLINE_NO_BITMAP);
    EXPECT_THAT(Input(), EqualsFrame(Expected()));
}

TEST_P(ExposureTest, NothingHappensWithoutAnInput) {
    ExportArguments arguments = Arguments();
    arguments.input = nullptr;
    EXPECT_EQ(GetParam().call(arguments), VASTRELLINE_NO_INPUT);
    EXPECT_THAT(Output(), EqualsFrame(Flat(4, 1, 7)));
}

// Without a sensor profile the first run leaves a sensor of no size in the profile. That is ordinary: from
// then on the outline cannot be built, which is said once a call, and the frame comes out all the same.
TEST_P(ExposureTest, EveryLaterCallWithoutASensorProfileSaysSoAndWorks) {
    WriteBytes(Folder().At("profile.ini"), "[General]\r\nPROCMODE=2\r\nINTRAORAL_MASK=1\r\n");
    const bool isSilent = GetParam().name == "ImageProcessingCR";
    Frame firstOutput = Flat(4, 1, 7);
    for (int call = 0; call < 3; ++call) {
        SCOPED_TRACE(call);
        Frame input = kRaw;
        Frame output = Flat(4, 1, 7);
        const std::string profile = Folder().Profile();
        EXPECT_EQ(
            GetParam().call({input.Data(), output.Data(), 4, 1, profile.c_str(), "General", 0, nullptr}),
            VASTRELLINE_OK);
        EXPECT_THAT(input, EqualsFrame(Expected()));
        if (call == 0) firstOutput = output;
        EXPECT_THAT(output, EqualsFrame(firstOutput));
        const ShownMessages::Message message{L"Wrong parameters of round-corner mask", MessageIcon::Error};
        if (isSilent || call == 0) {
            EXPECT_TRUE(ShownMessages::Take().empty());
        } else {
            EXPECT_EQ(ShownMessages::Take(), std::vector{message});
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Exports, ExposureTest, testing::ValuesIn(ProcessingExports()),
                         [](const auto& test) { return test.param.name; });

// A frame of 8 by 6 pixels of level 2000 whose bottom corners, of the sensor's outline, hold 4000.
constexpr SensorGeometry kGeometry = {0, 0, 2, 0, 8, 6, 0, 0, 0, 0};

Frame WithCornersOf(uint16_t c) {
    constexpr uint16_t k = 2000;
    return FromRows({{k, k, k, k, k, k, k, k},
                     {k, k, k, k, k, k, k, k},
                     {k, k, k, k, k, k, k, k},
                     {c, k, k, k, k, k, k, c},
                     {c, c, k, k, k, k, c, c},
                     {c, c, c, k, k, c, c, c}});
}

class GeometryTest : public testing::Test {
protected:
    GeometryTest() { WriteProfile("[General]\r\nPROCMODE=2\r\n"); }

    void WriteProfile(const std::string& text) const { WriteBytes(folder_.At("profile.ini"), text); }
    std::string Profile() const { return folder_.Profile(); }
    const ProfileFolder& Folder() const { return folder_; }

private:
    ProfileFolder folder_;
};

// Pixels under the outline do not count for the clip, so it begins at 2000. Counted, they make the span 2000
// and the clip 2000 + trunc(2000 * 3800 / 4095) = 3855.
TEST_F(GeometryTest, CallersGeometryKeepsCornersOutOfTheClip) {
    const std::string profile = Profile();
    Frame input = WithCornersOf(4000);
    Frame output = Flat(8, 6, 7);
    EXPECT_EQ(
        ImageProcessingS(input.Data(), output.Data(), 8, 6, profile.c_str(), "General", 0, 0, &kGeometry),
        VASTRELLINE_OK);
    EXPECT_THAT(input, EqualsFrame(Flat(8, 6, 2000)));

    input = WithCornersOf(4000);
    EXPECT_EQ(ImageProcessing_NS(input.Data(), 8, 6, profile.c_str(), "General", 0, 0, nullptr, &kGeometry),
              VASTRELLINE_OK);
    EXPECT_THAT(input, EqualsFrame(Flat(8, 6, 2000)));
    EXPECT_TRUE(ShownMessages::Take().empty());
}

TEST_F(GeometryTest, WithoutAGeometryTheCornersCount) {
    const std::string missing = Folder().Narrow("missing.ini");  // an unknown orientation at every call
    for (const ProcessingExport& processing : ProcessingExports()) {
        if (processing.name == "ImageProcessingCR") continue;
        Frame input = WithCornersOf(4000);
        Frame output = Flat(8, 6, 7);
        EXPECT_EQ(
            processing.call({input.Data(), output.Data(), 8, 6, missing.c_str(), "General", 0, nullptr}),
            VASTRELLINE_NO_PROFILE);
        EXPECT_THAT(input, EqualsFrame(WithCornersOf(3855))) << processing.name;
    }
}

// The profile's geometry counts where it stands already; a sensor's values arrive only behind the correction.
TEST_F(GeometryTest, ProfilesGeometryKeepsCornersOutOfTheClipFromTheSecondCallOn) {
    Folder().Sensor().WritePlain(
        "[Settings]\r\nFrameWidth=8\r\nFrameHeight=6\r\nRCCutOff=2\r\nRCCutOffR=0\r\n");
    const std::string profile = Profile();
    for (const uint16_t corners : {uint16_t{3855}, uint16_t{2000}, uint16_t{2000}}) {
        Frame input = WithCornersOf(4000);
        Frame output = Flat(8, 6, 7);
        EXPECT_EQ(ImageProcessing(input.Data(), output.Data(), 8, 6, profile.c_str(), "General", 0, 0),
                  VASTRELLINE_OK);
        EXPECT_THAT(input, EqualsFrame(WithCornersOf(corners)));
    }
    EXPECT_TRUE(ShownMessages::Take().empty());
}

TEST_F(GeometryTest, CallersGeometryMasksTheCornersOfTheOutput) {
    const std::string profile = Profile();
    Frame input = WithCornersOf(4000);
    Frame output = Flat(8, 6, 7);
    EXPECT_EQ(
        ImageProcessingS(input.Data(), output.Data(), 8, 6, profile.c_str(), "General", 0, 0, &kGeometry),
        VASTRELLINE_OK);
    constexpr uint16_t k = 2095;
    EXPECT_THAT(output, EqualsFrame(FromRows({{k, k, k, k, k, k, k, k},
                                              {k, k, k, k, k, k, k, k},
                                              {k, k, k, k, k, k, k, k},
                                              {0, k, k, k, k, k, k, 0},
                                              {0, 0, k, k, k, k, 0, 0},
                                              {0, 0, 0, k, k, 0, 0, 0}})));
    // No geometry there: the outline of the profile is one of no size, and no pixel is dark.
    input = Flat(8, 6, 2000);
    EXPECT_EQ(ImageProcessingS(input.Data(), output.Data(), 8, 6, profile.c_str(), "General", 0, 0, nullptr),
              VASTRELLINE_OK);
    EXPECT_THAT(output, EqualsFrame(Flat(8, 6, k)));
}

}  // namespace
}  // namespace vastrelline

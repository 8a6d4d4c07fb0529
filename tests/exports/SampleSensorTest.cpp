// SPDX-License-Identifier: Apache-2.0

// The sample of a sensor's own profile holds the values of a sensor of 1300 x 1668 pixels whose two lower
// corners are rounded by a radius of 150: with it no call shows a message, and the corners lie where they
// are.

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>

#include "config/SensorSettings.h"
#include "support/Frames.h"
#include "support/KeptDoseRecord.h"
#include "support/MaskFrames.h"
#include "support/ProfileFolder.h"
#include "support/ShownMessages.h"
#include "support/SourceTree.h"
#include "support/TemporaryFolder.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

constexpr int32_t kRadius = 150;
constexpr std::array<size_t, 6> kSilent{};

// Flat, and 0 where the sensor has no pixels.
Frame FrameOfTheSensor() {
    constexpr double kMiddle = kRadius - 0.5;
    Frame frame(1300, 1668);
    for (uint16_t& pixel : frame.pixels) pixel = 2000;
    for (int32_t fromBottom = 0; fromBottom < kRadius; ++fromBottom)
        for (int32_t fromSide = 0; fromSide < kRadius; ++fromSide) {
            const double x = kMiddle - fromSide;
            const double y = kMiddle - fromBottom;
            if (x * x + y * y <= double{kRadius} * kRadius) continue;
            frame.At(fromSide, frame.height - 1 - fromBottom) = 0;
            frame.At(frame.width - 1 - fromSide, frame.height - 1 - fromBottom) = 0;
        }
    return frame;
}

std::string SampleText() { return ReadBytes(SourceTreeFolder() / "profiles" / "sensor" / "Brindmap.ini"); }

class SampleSensorTest : public testing::Test {
protected:
    void WriteSection(const std::string& mode) {
        ProfileWriter writer;
        writer.Section("General").Key("PROCMODE", mode).Key("INTRAORAL_MASK", "1");
        writer.Section("Fixed").Key("PROCMODE", "1").Key("INTRAORAL_MASK", "1");
        writer.WriteTo(folder_.At("profile.ini"));
    }

    // Calls of every processing function, one after the other on the same profile. Gives how often each said
    // that the corners are wrong; nothing else is said.
    std::array<size_t, 6> CallAll(const char* section = "General", const SensorGeometry* geometry = nullptr) {
        const ShownMessages messages;
        const std::string profile = folder_.Profile();
        const std::string bitmap = folder_.Narrow("picture.bmp");
        Frame output(1300, 1668);
        std::array<int32_t, 6> codes{};
        std::array<size_t, 6> counts{};
        size_t call = 0;
        const auto input = [this] { return (input_ = FrameOfTheSensor()).Data(); };
        const auto note = [&](int32_t code) {
            codes[call] = code;
            for (const ShownMessages::Message& message : ShownMessages::Take()) {
                EXPECT_EQ(message.text, L"Wrong parameters of round-corner mask");
                ++counts[call];
            }
            ++call;
        };
        note(ImageProcessing(input(), output.Data(), 1300, 1668, profile.c_str(), section, 0, 0));
        note(ImageProcessingS(input(), output.Data(), 1300, 1668, profile.c_str(), section, 0, 0, geometry));
        note(ImageProcessing_N(input(), 1300, 1668, profile.c_str(), section, 0, 0, bitmap.c_str()));
        note(ImageProcessing_NS(input(), 1300, 1668, profile.c_str(), section, 0, 0, bitmap.c_str(),
                                geometry));
        note(ImageProcessing_NE(input(), 1300, 1668, profile.c_str(), section, 0, 0, bitmap.c_str(), "", 0));
        note(ImageProcessingCR(input(), output.Data(), 1300, 1668, profile.c_str(), section));
        EXPECT_EQ(codes, (std::array<int32_t, 6>{}));
        return counts;
    }

    const ProfileFolder& Folder() const { return folder_; }

private:
    Frame input_{0, 0};
    KeptDoseRecord record_;
    ProfileFolder folder_;
};

TEST_F(SampleSensorTest, GivesNoMessage) {
    Folder().Sensor().WritePlain(SampleText());
    for (const char* mode : {"1", "2", "3"}) {
        WriteSection(mode);
        EXPECT_EQ(CallAll(), kSilent) << "PROCMODE " << mode;
    }
}

TEST_F(SampleSensorTest, GivesNoMessageWithAnUnknownRotationEither) {
    Folder().Sensor().WritePlain("[Settings]\r\nRotation=-10\r\n");
    WriteSection("2");
    EXPECT_EQ(CallAll(), kSilent);
}

// What the first call of the configured family leaves in the profile is of no size, and the exposure curve of
// every function but that for frames without corners reads it, whatever chain comes behind.
TEST_F(SampleSensorTest, IsMissedByEveryCallButTheFirstOnAProfile) {
    WriteSection("2");
    EXPECT_EQ(CallAll(), (std::array<size_t, 6>{0, 1, 1, 1, 1, 0}));
    EXPECT_EQ(CallAll(), (std::array<size_t, 6>{1, 1, 1, 1, 1, 0}));
    EXPECT_EQ(CallAll("Fixed"), (std::array<size_t, 6>{1, 1, 1, 1, 1, 0}));
}

// A PROCMODE of 3 is of that family where the function can decide: not in the first call, which so leaves the
// second one silent, too.
TEST_F(SampleSensorTest, IsMissedFromTheFirstDecisionOn) {
    WriteSection("3");
    EXPECT_EQ(CallAll(), (std::array<size_t, 6>{0, 0, 1, 1, 1, 0}));
}

TEST_F(SampleSensorTest, IsNotMissedByTheFixedChainAlone) {
    WriteSection("1");
    for (int round = 0; round < 2; ++round) EXPECT_EQ(CallAll(), kSilent);
}

TEST_F(SampleSensorTest, IsNotMissedWhereTheCallerHasTheGeometry) {
    constexpr SensorGeometry kTrue{0, 0, kRadius, kRadius, 1300, 1668, 0, 0, 0, 0};
    WriteSection("2");
    EXPECT_EQ(CallAll("General", &kTrue), (std::array<size_t, 6>{0, 0, 1, 0, 1, 0}));
    EXPECT_EQ(CallAll("Fixed", &kTrue), (std::array<size_t, 6>{1, 0, 1, 0, 1, 0}));
}

// Sizes that do not fit the very frame are met twice, by the exposure curve and by the fill of the corners.
// That of the fixed chain looks into the profile also where the caller has the geometry.
TEST_F(SampleSensorTest, WithWrongCornersIsMetByTheFillOfTheCornersToo) {
    constexpr SensorGeometry kTrue{0, 0, kRadius, kRadius, 1300, 1668, 0, 0, 0, 0};
    Folder().Sensor().WritePlain(
        "[Settings]\r\nRCCutOff=651\r\nRCCutOffR=150\r\nFrameWidth=1300\r\nFrameHeight=1668\r\n");
    WriteSection("2");
    EXPECT_EQ(CallAll("General", &kTrue), (std::array<size_t, 6>{1, 0, 2, 0, 2, 0}));
    EXPECT_EQ(CallAll("Fixed", &kTrue), (std::array<size_t, 6>{2, 1, 2, 1, 2, 0}));
}

TEST_F(SampleSensorTest, HasTheCornersOfTheSensor) {
    WriteBytes(Folder().At("profile.ini"), SampleText());
    SensorGeometry geometry{};
    ReadSensorGeometry(Folder().WideProfile(), L"", geometry);
    const Frame frame = FrameOfTheSensor();
    RowMask mask(frame.width, frame.height);
    // From the values: a frame without any corner has them, too.
    BuildMaskFromGeometry(
        Frame(frame.width, frame.height, std::vector<uint16_t>(frame.pixels.size(), 9)).Data(), mask,
        geometry);
    const Frame marks = FrameOfMask(mask);
    const auto isNearCorner = [&](int32_t x, int32_t y) {
        return y >= frame.height - 1 - kRadius && (x <= kRadius || x >= frame.width - 1 - kRadius);
    };
    for (int32_t y = 0; y < frame.height; ++y)
        for (int32_t x = 0; x < frame.width; ++x) {
            const bool isMarked = marks.At(x, y) != 0;
            ASSERT_TRUE(isMarked || frame.At(x, y) != 0) << "a hidden pixel at " << x << ", " << y;
            ASSERT_TRUE(!isMarked || isNearCorner(x, y)) << "a mark at " << x << ", " << y;
        }
}

}  // namespace
}  // namespace vastrelline

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
        writer.WriteTo(folder_.At("profile.ini"));
    }

    // Calls of every processing function, one after the other on the same profile.
    void CallAll() {
        const std::string profile = folder_.Profile();
        const std::string bitmap = folder_.Narrow("picture.bmp");
        Frame output(1300, 1668);
        std::array<int32_t, 6> codes{};
        const auto input = [this] { return (input_ = FrameOfTheSensor()).Data(); };
        codes[0] = ImageProcessing(input(), output.Data(), 1300, 1668, profile.c_str(), "General", 0, 0);
        codes[1] =
            ImageProcessingS(input(), output.Data(), 1300, 1668, profile.c_str(), "General", 0, 0, nullptr);
        codes[2] = ImageProcessing_N(input(), 1300, 1668, profile.c_str(), "General", 0, 0, bitmap.c_str());
        codes[3] = ImageProcessing_NS(input(), 1300, 1668, profile.c_str(), "General", 0, 0, bitmap.c_str(),
                                      nullptr);
        codes[4] =
            ImageProcessing_NE(input(), 1300, 1668, profile.c_str(), "General", 0, 0, bitmap.c_str(), "", 0);
        codes[5] = ImageProcessingCR(input(), output.Data(), 1300, 1668, profile.c_str(), "General");
        EXPECT_EQ(codes, (std::array<int32_t, 6>{}));
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
        const ShownMessages messages;
        CallAll();
        EXPECT_EQ(ShownMessages::Count(), 0U) << "PROCMODE " << mode;
    }
}

TEST_F(SampleSensorTest, GivesNoMessageWithAnUnknownRotationEither) {
    Folder().Sensor().WritePlain("[Settings]\r\nRotation=-10\r\n");
    WriteSection("2");
    const ShownMessages messages;
    CallAll();
    EXPECT_EQ(ShownMessages::Count(), 0U);
}

TEST_F(SampleSensorTest, IsMissedByEveryCallButTheFirstOnAProfile) {
    WriteSection("2");
    const ShownMessages messages;
    CallAll();
    EXPECT_GT(ShownMessages::Count(), 0U);
    for (const ShownMessages::Message& message : ShownMessages::Take())
        EXPECT_EQ(message.text, L"Wrong parameters of round-corner mask");
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

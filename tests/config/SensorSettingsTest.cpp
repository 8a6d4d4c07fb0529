// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "config/CallProfile.h"
#include "config/SensorSettings.h"
#include "support/ProfileNormalForm.h"
#include "support/SensorRoot.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {

namespace {

// The ten values of a geometry in the order of the record:
// Rotation, Flip, RCCutOff, RCCutOffR, FrameWidth, FrameHeight, then the cuts left, top, right, bottom.
using Values = std::array<int32_t, 10>;

Values ValuesOf(const SensorGeometry& g) {
    return {g.Rotation,    g.Flip,       g.RCCutOff,  g.RCCutOffR,   g.FrameWidth,
            g.FrameHeight, g.ImgCutLeft, g.ImgCutTop, g.ImgCutRight, g.ImgCutBottom};
}

constexpr Values kUnknownGeometry = {-10, -10, 150, 170, 0, 0, 0, 0, 0, 0};
constexpr Values kNoSensorProfile = {0, 0, 159, 159, 0, 0, 0, 0, 0, 0};

// A sensor profile whose values are all different, in no order; `first` sets it apart from another one.
std::string SensorProfile(int32_t first) {
    const auto line = [&](const char* key, int32_t step) {
        return std::string(key) + "=" + std::to_string(first + step) + "\r\n";
    };
    return "[Other]\r\nRotation=77\r\n[Settings]\r\n" + line("FrameHeight", 6) + line("FrameWidth", 5) +
           line("RCCutOffR", 4) + line("RCCutOff", 3) + line("Flip", 2) + line("Rotation", 1) +
           line("ImgCutBottom", 10) + line("ImgCutRight", 9) + line("ImgCutTop", 8) + line("ImgCutLeft", 7);
}

constexpr Values GeometryFrom(int32_t first) {
    return {first + 1, first + 2, first + 3, first + 4, first + 5,
            first + 6, first + 7, first + 8, first + 9, first + 10};
}

class SensorSettingsTest : public testing::Test {
protected:
    void WriteProfile(const std::string& text) const { WriteBytes(folder_.Path() / "p.ini", text); }
    std::string ProfileBytes() const { return ReadBytes(folder_.Path() / "p.ini"); }
    std::wstring ProfilePath() const { return folder_.Wide(L"p.ini"); }
    const SensorRoot& Sensor() const { return sensor_; }

    Values Geometry() const {
        SensorGeometry geometry = {1, 1, 1, 1, 1, 1, 1, 1, 1, 1};
        ReadSensorGeometry(ProfilePath(), L"Molar", geometry);
        return ValuesOf(geometry);
    }
    // What counts in the call, and lands in the processing profile.
    Values Synced(const std::wstring& sensorFolder, int32_t sensorMode) const {
        const CallProfile call(ProfilePath());
        SyncSensorSettings(ProfilePath(), sensorFolder, sensorMode);
        const Values inTheCall = Geometry();
        StoreSensorSettings(ProfilePath());
        EXPECT_EQ(Geometry(), inTheCall);
        const CallProfile next(ProfilePath());
        EXPECT_EQ(Geometry(), inTheCall);
        return inTheCall;
    }
    TargetRangeParams TargetRange() const {
        TargetRangeParams params{1, 1, 1.0F, 1.0F};
        ReadTargetRange(ProfilePath(), L"Molar", params);
        return params;
    }

private:
    TemporaryFolder folder_;
    SensorRoot sensor_;
};

TEST_F(SensorSettingsTest, GeometryComesFromSettingsWhateverTheSection) {
    WriteProfile("[Molar]\r\nRotation=55\r\nFrameWidth=55\r\n" + SensorProfile(300));
    EXPECT_EQ(Geometry(), GeometryFrom(300));
}

TEST_F(SensorSettingsTest, GeometryWithoutValuesHasNoOrientation) {
    WriteProfile("[Molar]\r\nRotation=1\r\n");
    EXPECT_EQ(Geometry(), kUnknownGeometry);
    WriteProfile("");
    EXPECT_EQ(Geometry(), kUnknownGeometry);
    SensorGeometry geometry = {};
    ReadSensorGeometry(ProfilePath() + L"x", L"Settings", geometry);
    EXPECT_EQ(ValuesOf(geometry), kUnknownGeometry);
}

TEST_F(SensorSettingsTest, TargetRangeComesFromSettingsWhateverTheSection) {
    WriteProfile(
        "[Molar]\r\nTargetRange=9\r\nMinimumValue=9\r\nMaxCut=9\r\nMinCut=9\r\n"
        "[Settings]\r\nTargetRange=3000\r\nMinimumValue=-50\r\nMaxCut=0.25\r\nMinCut=0.0625\r\n");
    const TargetRangeParams params = TargetRange();
    EXPECT_EQ(params.TargetRange, 3000);
    EXPECT_EQ(params.MinimumValue, -50);
    EXPECT_EQ(params.MaxCut, 0.25F);
    EXPECT_EQ(params.MinCut, 0.0625F);
}

TEST_F(SensorSettingsTest, TargetRangeWithoutValuesIsZero) {
    WriteProfile("[Molar]\r\nTargetRange=9\r\n");
    const TargetRangeParams params = TargetRange();
    EXPECT_EQ(params.TargetRange, 0);
    EXPECT_EQ(params.MinimumValue, 0);
    EXPECT_EQ(params.MaxCut, 0.0F);
    EXPECT_EQ(params.MinCut, 0.0F);
}

// 2^24 + 1 has no 32-bit float; 0.1 has the one below it.
TEST_F(SensorSettingsTest, CutsLosePrecisionWithoutAWord) {
    WriteProfile("[Settings]\r\nMaxCut=16777217\r\nMinCut=0.1\r\n");
    const TargetRangeParams params = TargetRange();
    EXPECT_EQ(params.MaxCut, 16777216.0F);
    EXPECT_EQ(params.MinCut, 0x1.99999ap-4F);
}

TEST_F(SensorSettingsTest, WithoutASensorProfileItsDefaultsAreWritten) {
    WriteProfile("[Molar]\r\nPROCMODE=2\r\n");
    EXPECT_EQ(Geometry(), kUnknownGeometry);
    EXPECT_EQ(Synced(L"", 0), kNoSensorProfile);
}

// On an existing value too: what the sensor's profile lacks does not stay.
TEST_F(SensorSettingsTest, WithoutASensorProfileItsDefaultsReplaceOldValues) {
    WriteProfile(SensorProfile(300));
    EXPECT_EQ(Synced(L"", 0), kNoSensorProfile);
}

TEST_F(SensorSettingsTest, PlainProfileGivesTheValues) {
    WriteProfile("[Molar]\r\n");
    Sensor().WritePlain(SensorProfile(300));
    EXPECT_EQ(Synced(L"", 0), GeometryFrom(300));
}

TEST_F(SensorSettingsTest, SerialIdOfThePlainProfileNamesTheFolder) {
    WriteProfile("[Molar]\r\n");
    Sensor().WritePlain(SensorProfile(300) + "SerialId=A7 42\r\n");
    Sensor().WriteSensor("A7 42", SensorProfile(500));
    EXPECT_EQ(Synced(L"", 0), GeometryFrom(500));
}

TEST_F(SensorSettingsTest, SerialIdCountsInTheSectionSettingsOnly) {
    WriteProfile("[Molar]\r\n");
    Sensor().WritePlain("[Other]\r\nSerialId=A7\r\n" + SensorProfile(300));
    Sensor().WriteSensor("A7", SensorProfile(500));
    EXPECT_EQ(Synced(L"", 0), GeometryFrom(300));
}

TEST_F(SensorSettingsTest, EmptySerialIdMeansThePlainProfile) {
    WriteProfile("[Molar]\r\n");
    Sensor().WritePlain(SensorProfile(300) + "SerialId=  \r\n");
    EXPECT_EQ(Synced(L"", 0), GeometryFrom(300));
}

TEST_F(SensorSettingsTest, SerialIdWithoutAFolderGivesTheDefaultsAndNotThePlainValues) {
    WriteProfile("[Molar]\r\n");
    Sensor().WritePlain(SensorProfile(300) + "SerialId=A7\r\n");
    EXPECT_EQ(Synced(L"", 0), kNoSensorProfile);
}

TEST_F(SensorSettingsTest, FolderOfTheCallerGoesBeforeSerialId) {
    WriteProfile("[Molar]\r\n");
    Sensor().WritePlain(SensorProfile(300) + "SerialId=A7\r\n");
    Sensor().WriteSensor("A7", SensorProfile(500));
    Sensor().WriteSensor("B8", SensorProfile(700));
    EXPECT_EQ(Synced(L"B8", 0), GeometryFrom(700));
    EXPECT_EQ(Synced(L"missing", 0), kNoSensorProfile);
}

TEST_F(SensorSettingsTest, FolderOfTheCallerNeedsNoPlainProfile) {
    WriteProfile("[Molar]\r\n");
    Sensor().WriteSensor("B8", SensorProfile(700));
    EXPECT_EQ(Synced(L"B8", 0), GeometryFrom(700));
}

// Corners become 2 * value - 1 and the frame's sides double; cuts and orientation stay.
TEST_F(SensorSettingsTest, ModeTwoDoublesCornersAndFrame) {
    WriteProfile("[Molar]\r\n");
    Sensor().WritePlain(
        "[Settings]\r\nRotation=1\r\nFlip=2\r\nRCCutOff=159\r\nRCCutOffR=100\r\nFrameWidth=1300\r\n"
        "FrameHeight=1668\r\nImgCutLeft=3\r\nImgCutTop=4\r\nImgCutRight=5\r\nImgCutBottom=6\r\n");
    constexpr Values kDoubled = {1, 2, 317, 199, 2600, 3336, 3, 4, 5, 6};
    EXPECT_EQ(Synced(L"", 2), kDoubled);
    // The source is the sensor's profile, so nothing doubles twice.
    EXPECT_EQ(Synced(L"", 2), kDoubled);
    constexpr Values kPlain = {1, 2, 159, 100, 1300, 1668, 3, 4, 5, 6};
    for (const int32_t mode : {0, 1, 3, -2, INT_MAX, INT_MIN}) EXPECT_EQ(Synced(L"", mode), kPlain) << mode;
}

TEST_F(SensorSettingsTest, ModeTwoDoublesTheDefaults) {
    WriteProfile("[Molar]\r\n");
    constexpr Values kDoubledDefaults = {0, 0, 317, 317, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(Synced(L"", 2), kDoubledDefaults);
}

// 2 * (2^31 - 1) is -2 in 32 bits.
TEST_F(SensorSettingsTest, DoublingWrapsIn32Bits) {
    WriteProfile("[Molar]\r\n");
    Sensor().WritePlain(
        "[Settings]\r\nRCCutOff=2147483647\r\nRCCutOffR=-2147483648\r\nFrameWidth=2147483647\r\n"
        "FrameHeight=-2147483648\r\n");
    constexpr Values kWrapped = {0, 0, -3, -1, -2, 0, 0, 0, 0, 0};
    EXPECT_EQ(Synced(L"", 2), kWrapped);
}

TEST_F(SensorSettingsTest, NewValuesAreWrittenInTheirOrder) {
    WriteProfile("[Molar]\r\nPROCMODE=2\r\n");
    Sensor().WritePlain(SensorProfile(300));
    Synced(L"", 0);
    EXPECT_EQ(ProfileNormalForm(ProfileBytes()),
              "[Molar]\r\nPROCMODE=2\r\n[Settings]\r\nImgCutLeft=307\r\nImgCutTop=308\r\nImgCutRight=309\r\n"
              "ImgCutBottom=310\r\nRotation=301\r\nFlip=302\r\nRCCutOff=303\r\nRCCutOffR=304\r\n"
              "FrameWidth=305\r\nFrameHeight=306\r\n");
}

TEST_F(SensorSettingsTest, MissingProcessingProfileIsMade) { EXPECT_EQ(Synced(L"", 0), kNoSensorProfile); }

TEST_F(SensorSettingsTest, ProfileInAMissingFolderIsNoFailure) {
    const std::wstring path = ProfilePath() + L"\\missing\\p.ini";
    const CallProfile call(path);
    SyncSensorSettings(path, L"", 0);
    StoreSensorSettings(path);
    EXPECT_EQ(Geometry(), kUnknownGeometry);
}

TEST_F(SensorSettingsTest, ValuesCountInTheirCallBeforeTheFileHasThem) {
    WriteProfile("[Molar]\r\n");
    Sensor().WritePlain(SensorProfile(300));
    {
        const CallProfile call(ProfilePath());
        SyncSensorSettings(ProfilePath(), L"", 0);
        EXPECT_EQ(Geometry(), GeometryFrom(300));
        EXPECT_EQ(ProfileBytes(), "[Molar]\r\n");
    }
    EXPECT_EQ(Geometry(), kUnknownGeometry);
}

// Its defaults would be the corners of another sensor.
TEST_F(SensorSettingsTest, SensorProfileThatIsThereAndCannotBeReadThrows) {
    WriteProfile("[Molar]\r\n");
    const CallProfile call(ProfilePath());
    Sensor().WritePlain(SensorProfile(300) + "SerialId=A7\r\n");
    std::filesystem::create_directories(Sensor().SensorFile("A7"));
    EXPECT_THROW(SyncSensorSettings(ProfilePath(), L"", 0), std::runtime_error);
    EXPECT_THROW(SyncSensorSettings(ProfilePath(), L"A7", 0), std::runtime_error);
    SyncSensorSettings(ProfilePath(), L"B8", 0);  // is missing, and has its defaults
    EXPECT_EQ(Geometry(), kNoSensorProfile);
    std::filesystem::remove(Sensor().PlainFile());
    std::filesystem::create_directories(Sensor().PlainFile());
    EXPECT_THROW(SyncSensorSettings(ProfilePath(), L"", 0), std::runtime_error);
}

TEST_F(SensorSettingsTest, ReplacedRootReturns) {
    const std::wstring before = SensorProfileRoot();
    {
        const SensorRoot other;
        EXPECT_NE(SensorProfileRoot(), before);
    }
    EXPECT_EQ(SensorProfileRoot(), before);
}

}  // namespace
}  // namespace vastrelline

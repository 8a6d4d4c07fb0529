// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>

#include "chains/ConfiguredChain.h"
#include "chains/ExtendedChain.h"
#include "config/CRegistryIO.h"
#include "config/CallProfile.h"
#include "config/DoseRecord.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/ProfileFolder.h"
#include "support/StageNames.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;

class ExtendedChainTest : public testing::Test {
protected:
    ExtendedChainTest() {
        folder_.Sensor().WritePlain("[Settings]\r\nSerialId=ours\r\nFrameWidth=1\r\nFrameHeight=1\r\n");
        folder_.Sensor().WriteSensor("ours",
                                     "[Settings]\r\nRCCutOff=159\r\nFrameWidth=10\r\nFrameHeight=20\r\n"
                                     "ImgCutLeft=3\r\n");
        folder_.Sensor().WriteSensor("theirs",
                                     "[Settings]\r\nRCCutOff=7\r\nFrameWidth=30\r\nFrameHeight=40\r\n");
    }

    Frame Run(const Frame& input, const std::wstring& sensorFolder, int32_t sensorMode) const {
        const CallProfile profile(folder_.WideProfile());
        Frame output = Flat(input.width, input.height, 7);
        EXPECT_EQ(RunExtendedChain({input.Data(), output.Data(), input.width, input.height,
                                    folder_.WideProfile(), L"General"},
                                   sensorFolder, sensorMode),
                  kSuccess);
        return output;
    }
    int32_t Setting(const wchar_t* key) const {
        return CRegistryIO(nullptr, folder_.WideProfile().c_str(), 1).ReadProfileInt(L"Settings", key, -1);
    }
    void Write(ProfileWriter writer) const { writer.WriteTo(folder_.At("profile.ini")); }
    const ProfileFolder& Folder() const { return folder_; }

private:
    ProfileFolder folder_;
};

TEST_F(ExtendedChainTest, CallersFolderSelectsTheSensor) {
    Write(ProfileFolder::PlainSection());
    Run(Flat(2, 2, 5), L"theirs", 0);
    EXPECT_EQ(Setting(L"RCCutOff"), 7);
    EXPECT_EQ(Setting(L"FrameWidth"), 30);
}

TEST_F(ExtendedChainTest, ModeTwoDoublesTheSensorFoundByItsSerial) {
    Write(ProfileFolder::PlainSection());
    for (int run = 0; run < 2; ++run) {
        Run(Flat(2, 2, 5), L"", 2);
        EXPECT_EQ(Setting(L"RCCutOff"), 317);
        EXPECT_EQ(Setting(L"FrameWidth"), 20);
        EXPECT_EQ(Setting(L"FrameHeight"), 40);
        EXPECT_EQ(Setting(L"ImgCutLeft"), 3);
    }
}

TEST_F(ExtendedChainTest, OtherModesHaveNoEffect) {
    Write(ProfileFolder::PlainSection());
    for (const int32_t mode : {0, 1, 3, -2, INT32_MAX, INT32_MIN}) {
        Run(Flat(2, 2, 5), L"", mode);
        EXPECT_EQ(Setting(L"RCCutOff"), 159);
        EXPECT_EQ(Setting(L"FrameWidth"), 10);
    }
}

// The HDR stage needs a frame of some size to change anything.
TEST_F(ExtendedChainTest, ListMayHoldTheHdrStageUnlikeInTheConfiguredChain) {
    ProfileWriter writer = ProfileFolder::PlainSection();
    writer.Key("SAVE_LOG", "1").Stage("13", {{"HDR_BLOCK_SIZE", "16"}}).Stage("10");
    Write(writer);
    const Frame input = Noise(40, 40, 4095, 3);
    Run(input, L"", 0);
    EXPECT_THAT(StageNamesIn(Folder().Log()), ElementsAre("HDR", "Gamma Curve"));
    std::filesystem::remove(Folder().At("ExtraOralLog.txt"));
    Frame output = Flat(40, 40, 7);
    const CallProfile profile(Folder().WideProfile());
    EXPECT_EQ(RunConfiguredChain({input.Data(), output.Data(), 40, 40, Folder().WideProfile(), L"General"},
                                 nullptr),
              kSuccess);
    EXPECT_THAT(StageNamesIn(Folder().Log()), ElementsAre("Gamma Curve"));
}

TEST_F(ExtendedChainTest, NothingIsDecidedAboutTheExposure) {
    Write(ProfileFolder::PlainSection());
    const DoseRecord before = SharedDoseRecord();
    SetSharedDoseRecord({.ObjectTotal = 12345});
    Run(Noise(8, 8, 4095, 1), L"", 0);
    EXPECT_EQ(SharedDoseRecord().ObjectTotal, 12345);
    SetSharedDoseRecord(before);
}

TEST_F(ExtendedChainTest, SameListGivesTheSamePictureAsInTheConfiguredChain) {
    ProfileWriter writer = ProfileFolder::PlainSection();
    writer.Stage("8").Stage("10", {{"POST_GAMMA_RATIO", "1.2"}});
    Write(writer);
    const Frame input = Noise(20, 10, 4095, 4);
    Frame expected = Flat(20, 10, 7);
    EXPECT_EQ(RunConfiguredChain({input.Data(), expected.Data(), 20, 10, Folder().WideProfile(), L"General"},
                                 nullptr),
              kSuccess);
    EXPECT_THAT(Run(input, L"", 0), EqualsFrame(expected));
}

TEST_F(ExtendedChainTest, ArgumentTestsAreThoseOfTheConfiguredChain) {
    Write(ProfileFolder::PlainSection());
    Frame frame = Flat(1, 1, 5);
    const std::wstring profile = Folder().WideProfile();
    EXPECT_EQ(RunExtendedChain({nullptr, nullptr, 1, 1, profile + L"x", L""}, L"", 0), kNoProfile);
    EXPECT_EQ(RunExtendedChain({nullptr, nullptr, 1, 1, profile, L""}, L"", 0), kNoInput);
    EXPECT_EQ(RunExtendedChain({frame.Data(), nullptr, 1, 1, profile, L""}, L"", 0), kNoOutput);
    EXPECT_EQ(RunExtendedChain({frame.Data(), frame.Data(), 1, 1, profile, L""}, L"", 0), kNoSection);
}

}  // namespace
}  // namespace vastrelline

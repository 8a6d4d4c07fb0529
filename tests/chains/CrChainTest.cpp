// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <regex>
#include <string>

#include "chains/CrChain.h"
#include "chains/FixedChain.h"
#include "config/FixedState.h"
#include "support/BackupNames.h"
#include "support/BitmapFile.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/ProfileFolder.h"
#include "support/StageNames.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class CrChainTest : public testing::Test {
protected:
    ~CrChainTest() override { SharedFixedState() = before_; }

    static ProfileWriter Plain() {
        ProfileWriter writer;
        writer.Section("Molar").Key("INVERSE_INTENSITY", "0").Key("VERSION", "1.2");
        return writer;
    }
    void Write(ProfileWriter writer) const { writer.WriteTo(folder_.At("profile.ini")); }

    Frame Run(const Frame& input) const {
        Frame output = Flat(input.width, input.height, 7);
        EXPECT_EQ(RunCrChain({input.Data(), output.Data(), input.width, input.height, folder_.WideProfile(),
                              L"Molar"}),
                  kSuccess);
        return output;
    }
    std::string Backup(const std::string& masked) const {
        const auto paths = BackupsNamed(folder_.At("Keep"), masked);
        return paths.size() == 1 ? ReadBytes(paths[0]) : std::to_string(paths.size()) + " backups";
    }
    const ProfileFolder& Folder() const { return folder_; }

private:
    FixedState before_ = SharedFixedState();
    ProfileFolder folder_;
};

// The corner mask would hide the dark left column of this frame.
TEST_F(CrChainTest, CornerMaskHasNoEffect) {
    Write(Plain().Key("INTRAORAL_MASK", "1"));
    EXPECT_THAT(Run(FromRows({{0, 1000, 2000}, {0, 1000, 2000}})),
                EqualsFrame(FromRows({{0, 1000, 2000}, {0, 1000, 2000}})));
}

TEST_F(CrChainTest, PyramidDoesNotExist) {
    Write(Plain()
              .Key("SAVE_LOG", "1")
              .Key("PYRAMID_PROCESSING", "1")
              .Key("CONTRAST_ENHANCE2", "1")
              .Key("PRE_MEDIAN", "1"));
    Run(Noise(20, 20, 4095, 2));
    EXPECT_THAT(StageNamesIn(Folder().Log()), ElementsAre("Pre-Median", "CLAHE", "Linear Curve"));
    EXPECT_THAT(Folder().Log(), HasSubstr("\t: Start Quorla.dll [CR Mode v1.2]\r\n"));
    static const std::regex end("End Post-Processing \\( [0-9]+ ms \\)\r\n=+\r\n$");
    EXPECT_TRUE(std::regex_search(Folder().Log(), end));
}

TEST_F(CrChainTest, OtherStagesGiveThePictureOfTheFixedChain) {
    ProfileWriter writer = Plain();
    writer.Key("INTRAORAL_MASK", "0").Key("PRE_GAUSSIAN", "1").Key("POST_GAMMA_LUT", "1");
    Write(writer.Key("CONTRAST_ENHANCE2", "1").Key("BLOCK_SIZE", "8"));
    const Frame input = Noise(30, 20, 4095, 3);
    Frame expected = Flat(30, 20, 7);
    ASSERT_EQ(RunFixedChain({input.Data(), expected.Data(), 30, 20, Folder().WideProfile(), L"Molar"}),
              kSuccess);
    EXPECT_THAT(Run(input), EqualsFrame(expected));
}

TEST_F(CrChainTest, BackupHoldsAllThatIsNeededToRedoTheFrame) {
    Write(Plain().Key("SAVE_BACKUP", "1").Key("SAVE_BACKUPPATH", Folder().Narrow("Keep")));
    const std::string profile = ReadBytes(Folder().At("profile.ini"));
    const Frame input = FromRows({{1000, 2000, 3000}});
    const Frame output = Run(input);
    EXPECT_THAT(MaskedNames(Folder().At("Keep")),
                ElementsAre("T_Keep_Enhanced.bmp", "T_Keep_Molar.ini", "T_keep_calibrated.raw",
                            "T_keep_enhanced.raw"));
    EXPECT_EQ(Backup("T_keep_calibrated.raw"), RawBytes(input.pixels));
    EXPECT_EQ(Backup("T_keep_enhanced.raw"), RawBytes(output.pixels));
    EXPECT_EQ(Backup("T_Keep_Molar.ini"), profile);
    EXPECT_THAT(ReadGreyBitmap(Backup("T_Keep_Enhanced.bmp")), EqualsFrame(ThroughUsualWindow(output)));
}

TEST_F(CrChainTest, FirstArgumentTestThatFailsGivesTheCode) {
    Write(Plain().Key("SAVE_LOG", "1"));
    Frame frame = Flat(1, 1, 5);
    const std::wstring profile = Folder().WideProfile();
    EXPECT_EQ(RunCrChain({nullptr, nullptr, 1, 1, profile + L"x", L""}), kNoProfile);
    EXPECT_EQ(RunCrChain({nullptr, nullptr, 1, 1, profile, L""}), kNoInput);
    EXPECT_EQ(RunCrChain({frame.Data(), nullptr, 1, 1, profile, L""}), kNoOutput);
    EXPECT_EQ(RunCrChain({frame.Data(), frame.Data(), 1, 0, profile, L"Molar"}), kSuccess);
    EXPECT_THAT(Folder().Files(), IsEmpty());
}

}  // namespace
}  // namespace vastrelline

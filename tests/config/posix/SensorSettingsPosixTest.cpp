// SPDX-License-Identifier: Apache-2.0

// The sensor's values in a processing profile, byte for byte. Windows rewrites profiles in its own way.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <string>

#include "config/CallProfile.h"
#include "config/SensorSettings.h"
#include "support/SensorRoot.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

constexpr const char* kSensor =
    "[Settings]\nRotation=1\nFlip=2\nRCCutOff=149\nRCCutOffR=169\nFrameWidth=1300\nFrameHeight=1668\n"
    "ImgCutLeft=3\nImgCutTop=4\nImgCutRight=5\nImgCutBottom=6\n";

// Odd on purpose: mixed line ends, blanks, comments, a byte that is no UTF-8, no end of the last line.
constexpr const char* kBefore =
    "; made by hand \xE9\r\n\n[General]\nRotation = 8\r\n\r\n[settings]\r\n TargetRange=3000\n"
    "  rotation =0 ;none\r\nFLIP=0\n\nRCCutOff=159\r\nRCCutOffR=159\r\nFrameWidth=0\r\nFrameHeight=0\r\n"
    "ImgCutLeft=0\r\nImgCutTop=0\r\nImgCutRight=0\r\nImgCutBottom=0\r\n;end\n[IP_LOWMODE]\nFunctionCount=0";

class SensorSettingsPosixTest : public testing::Test {
protected:
    SensorSettingsPosixTest() { sensor_.WritePlain(kSensor); }
    ~SensorSettingsPosixTest() override {
        std::filesystem::permissions(folder_.Path(), std::filesystem::perms::owner_all);
    }
    SensorSettingsPosixTest(const SensorSettingsPosixTest&) = delete;
    SensorSettingsPosixTest& operator=(const SensorSettingsPosixTest&) = delete;

    std::filesystem::path Profile() const { return folder_.Path() / "p.ini"; }
    void WriteProfile(const std::string& text) const { WriteBytes(Profile(), text); }
    void Sync() const {
        const CallProfile call(folder_.Wide(L"p.ini"));
        SyncSensorSettings(folder_.Wide(L"p.ini"), L"", 0);
        StoreSensorSettings(folder_.Wide(L"p.ini"));
    }
    const TemporaryFolder& Folder() const { return folder_; }
    const SensorRoot& Sensor() const { return sensor_; }

private:
    TemporaryFolder folder_;
    SensorRoot sensor_;
};

// The lines of a text that are not lines of another, each behind its number.
std::vector<std::string> ChangedLines(const std::string& before, const std::string& after) {
    const auto split = [](const std::string& text) {
        std::vector<std::string> lines(1);
        for (const char c : text) {
            lines.back() += c;
            if (c == '\n') lines.emplace_back();
        }
        return lines;
    };
    const std::vector<std::string> old = split(before);
    const std::vector<std::string> now = split(after);
    EXPECT_EQ(old.size(), now.size());
    std::vector<std::string> changed;
    for (size_t i = 0; i < now.size() && i < old.size(); ++i) {
        if (old[i] != now[i]) changed.push_back(std::to_string(i) + ":" + now[i]);
    }
    return changed;
}

TEST_F(SensorSettingsPosixTest, OtherLinesStayByteForByte) {
    WriteProfile(kBefore);
    Sync();
    // Line 0 is the comment; the values of the sensor stand in 7, 8 and 10 to 17.
    const std::vector<std::string> changed = ChangedLines(kBefore, ReadBytes(Profile()));
    std::vector<std::string> numbers;
    for (const std::string& line : changed) numbers.push_back(line.substr(0, line.find(':')));
    EXPECT_EQ(numbers, (std::vector<std::string>{"7", "8", "10", "11", "12", "13", "14", "15", "16", "17"}));
    SensorGeometry geometry{};
    ReadSensorGeometry(Profile().wstring(), L"", geometry);
    EXPECT_EQ(geometry.Rotation, 1);
    EXPECT_EQ(geometry.Flip, 2);
    EXPECT_EQ(geometry.RCCutOff, 149);
    EXPECT_EQ(geometry.ImgCutBottom, 6);
}

TEST_F(SensorSettingsPosixTest, TidyProfileIsChangedInItsValuesOnly) {
    const std::string head = "[General]\r\nA=1\r\n[Settings]\r\nTargetRange=0\r\n";
    const std::string tail = "\r\nMaxCut=0.1\r\n[Last]\r\n";
    WriteProfile(head +
                 "FrameHeight=0\r\nRotation=0\r\nFlip=0\r\nRCCutOff=159\r\nRCCutOffR=159\r\nFrameWidth=0\r\n"
                 "ImgCutLeft=0\r\nImgCutTop=0\r\nImgCutRight=0\r\nImgCutBottom=0" +
                 tail);
    Sync();
    EXPECT_EQ(ReadBytes(Profile()),
              head +
                  "FrameHeight=1668\r\nRotation=1\r\nFlip=2\r\nRCCutOff=149\r\nRCCutOffR=169\r\n"
                  "FrameWidth=1300\r\nImgCutLeft=3\r\nImgCutTop=4\r\nImgCutRight=5\r\nImgCutBottom=6" +
                  tail);
}

TEST_F(SensorSettingsPosixTest, SameValuesAgainDoNotTouchTheFile) {
    WriteProfile(kBefore);
    Sync();
    const std::string bytes = ReadBytes(Profile());
    struct stat before {};
    ASSERT_EQ(stat(Profile().c_str(), &before), 0);
    std::filesystem::last_write_time(Profile(),
                                     std::filesystem::last_write_time(Profile()) - std::chrono::hours(48));
    const auto longAgo = std::filesystem::last_write_time(Profile());
    Sync();
    EXPECT_EQ(ReadBytes(Profile()), bytes);
    EXPECT_EQ(std::filesystem::last_write_time(Profile()), longAgo);
    struct stat after {};
    ASSERT_EQ(stat(Profile().c_str(), &after), 0);
    EXPECT_EQ(after.st_ino, before.st_ino);  // no new file in its place either
}

TEST_F(SensorSettingsPosixTest, OtherValuesOfTheSensorAreWritten) {
    WriteProfile("[General]\r\n");
    Sync();
    const std::string first = ReadBytes(Profile());
    Sensor().WritePlain("[Settings]\nRotation=2\n");
    Sync();
    const std::string second = ReadBytes(Profile());
    EXPECT_NE(second, first);
    EXPECT_NE(second.find("Rotation=2\r\n"), std::string::npos);
    EXPECT_NE(second.find("FrameWidth=0\r\n"), std::string::npos);
}

TEST_F(SensorSettingsPosixTest, ReadOnlyProfileStaysAsItIs) {
    WriteProfile(kBefore);
    std::filesystem::permissions(Profile(), std::filesystem::perms::owner_read);
    Sync();
    EXPECT_EQ(ReadBytes(Profile()), kBefore);
    EXPECT_EQ(std::filesystem::status(Profile()).permissions(), std::filesystem::perms::owner_read);
}

TEST_F(SensorSettingsPosixTest, FolderThatTakesNoFilesLeavesTheProfileAsItIs) {
    if (geteuid() == 0) GTEST_SKIP() << "the user with all rights writes to any folder";
    WriteProfile(kBefore);
    std::filesystem::permissions(Folder().Path(),
                                 std::filesystem::perms::owner_read | std::filesystem::perms::owner_exec);
    Sync();
    EXPECT_EQ(ReadBytes(Profile()), kBefore);
}

TEST_F(SensorSettingsPosixTest, FolderInThePlaceOfTheProfileIsNoFailure) {
    std::filesystem::create_directory(Profile());
    Sync();
    EXPECT_TRUE(std::filesystem::is_directory(Profile()));
    EXPECT_TRUE(std::filesystem::is_empty(Profile()));
}

TEST_F(SensorSettingsPosixTest, LinkedProfileStaysALink) {
    WriteBytes(Folder().Path() / "real.ini", "[General]\r\n");
    std::filesystem::create_symlink("real.ini", Profile());
    Sync();
    EXPECT_TRUE(std::filesystem::is_symlink(Profile()));
    EXPECT_NE(ReadBytes(Folder().Path() / "real.ini").find("FrameWidth=1300"), std::string::npos);
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0

// The bitmap of the exports without an output, and the backup set that a
// profile asks for.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "support/BackupNames.h"
#include "support/BitmapFile.h"
#include "support/FailingMemory.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/ProcessingExports.h"
#include "support/ProfileFolder.h"
#include "support/ShownMessages.h"
#include "vastrelline.h"

namespace vastrelline {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

// The message of every run without a sensor profile: the only one that may
// be shown here.
auto IsAboutTheCorners() {
    return testing::Field(&ShownMessages::Message::text, L"Wrong parameters of round-corner mask");
}

// The section squares the range 0..100, so this frame becomes {0, 6, 25, 56,
// 100}.
const Frame kInput = FromRows({{0, 25, 50, 75, 100}});

class BitmapExportTest : public testing::TestWithParam<ProcessingExport> {
protected:
    BitmapExportTest() {
        ProfileFolder::PlainSection()
            .Key("OUTPUTRANGE", "100")
            .Stage("10", {{"POST_GAMMA_RATIO", "2"}})
            .WriteTo(folder_.At("profile.ini"));
    }

    int32_t Save(const std::string& bitmapPath, uint8_t applyMapping = 0) {
        Frame input = kInput;
        return GetParam().call(
            {input.Data(), nullptr, 5, 1, profile_.c_str(), "General", applyMapping, bitmapPath.c_str()});
    }
    Frame Saved(const std::string& name) const { return ReadGreyBitmap(ReadBytes(folder_.At(name))); }
    const ProfileFolder& Folder() const { return folder_; }

private:
    ProfileFolder folder_;
    std::string profile_ = folder_.Profile();
};

// By hand: level * 255 / 4096 + 0.5 = 0.5, 0.87, 2.06, 3.99, 6.73.
TEST_P(BitmapExportTest, BitmapShowsTheResult) {
    EXPECT_EQ(Save(Folder().Narrow("Out.BMP")), VASTRELLINE_OK);
    EXPECT_THAT(Saved("Out.BMP"), EqualsFrame(FromRows({{0, 0, 2, 3, 6}})));
    EXPECT_THAT(Folder().Files(), ElementsAre("Out.BMP"));
}

// By hand: the mapping makes 1228, 1230, 1238, 1251 and 1269; * 255 / 4096 +
// 0.5 = 76.95, 77.07, 77.57, 78.38, 79.50.
TEST_P(BitmapExportTest, MappingComesBeforeTheBitmap) {
    EXPECT_EQ(Save(Folder().Narrow("a.bmp"), 1), VASTRELLINE_OK);
    EXPECT_THAT(Saved("a.bmp"), EqualsFrame(FromRows({{76, 77, 77, 78, 79}})));
}

// The plain export hands out the frame that the others render.
TEST_P(BitmapExportTest, BitmapIsTheOutputOfThePlainExportSeenThroughTheWindow) {
    ProfileFolder::PlainSection()
        .Stage("10", {{"POST_GAMMA_RATIO", "1.5"}})
        .WriteTo(Folder().At("profile.ini"));
    const std::string profile = Folder().Profile();
    const std::string bitmap = Folder().Narrow("a.bmp");
    const Frame frame = Noise(37, 23, 4095, 11);
    Frame input = frame;
    Frame output(37, 23);
    ASSERT_EQ(ImageProcessing(input.Data(), output.Data(), 37, 23, profile.c_str(), "General", 0, 0),
              VASTRELLINE_OK);
    input = frame;
    ASSERT_EQ(GetParam().call({input.Data(), nullptr, 37, 23, profile.c_str(), "General", 0, bitmap.c_str()}),
              VASTRELLINE_OK);
    EXPECT_THAT(Saved("a.bmp"), EqualsFrame(ThroughUsualWindow(output)));
}

TEST_P(BitmapExportTest, EveryCallReplacesTheBitmap) {
    WriteBytes(Folder().At("a.bmp"), std::string(3000, 'x'));
    for (int call = 0; call < 2; ++call) {
        EXPECT_EQ(Save(Folder().Narrow("a.bmp")), VASTRELLINE_OK);
        EXPECT_THAT(Saved("a.bmp"), EqualsFrame(FromRows({{0, 0, 2, 3, 6}})));
    }
    EXPECT_THAT(Folder().Files(), ElementsAre("a.bmp"));
}

TEST_P(BitmapExportTest, EmptyPathSavesNothingAndSucceeds) {
    EXPECT_EQ(Save(""), VASTRELLINE_OK);
    EXPECT_THAT(Folder().Files(), IsEmpty());
}

TEST_P(BitmapExportTest, BitmapThatCannotBeSavedIsCode5) {
    std::filesystem::create_directory(Folder().At("folder"));
    WriteBytes(Folder().At("kept.bmp"), "kept");
    std::filesystem::permissions(Folder().At("kept.bmp"), std::filesystem::perms::owner_read);
    EXPECT_EQ(Save(Folder().Narrow("missing") + "\\a.bmp"), VASTRELLINE_NO_BITMAP);
    EXPECT_EQ(Save(Folder().Narrow("folder")), VASTRELLINE_NO_BITMAP);
    EXPECT_EQ(Save(Folder().Narrow("kept.bmp")), VASTRELLINE_NO_BITMAP);
    EXPECT_EQ(ReadBytes(Folder().At("kept.bmp")), "kept");
    EXPECT_TRUE(std::filesystem::is_empty(Folder().At("folder")));
    EXPECT_THAT(Folder().Files(), ElementsAre("folder", "kept.bmp"));
    EXPECT_THAT(ShownMessages::Take(), Each(IsAboutTheCorners()));
}

// Wherever memory runs out, what stands under the name goes with the code.
TEST_P(BitmapExportTest, ShortMemoryForTheBitmapLeavesAnEmptyFileAndAMessage) {
    const std::string path = Folder().Narrow("a.bmp");
    WriteBytes(Folder().At("a.bmp"), "old");
    int32_t code = 0;
    int emptyFiles = 0;
    SweepMemory([&] { code = Save(path); },
                [&](int64_t n, bool hasThrown) {
                    SCOPED_TRACE(n);
                    const bool isEmpty = ReadBytes(Folder().At("a.bmp")).empty();
                    const auto messages = ShownMessages::Take();
                    EXPECT_EQ(std::count_if(messages.begin(), messages.end(),
                                            [](const ShownMessages::Message& message) {
                                                return message.text == L"No Image to Save !";
                                            }),
                              isEmpty ? 1 : 0);
                    if (isEmpty) {
                        ++emptyFiles;
                        EXPECT_EQ(code, VASTRELLINE_NO_BITMAP);
                    }
                    if (hasThrown || code == VASTRELLINE_INTERNAL_FAILURE) {
                        EXPECT_EQ(ReadBytes(Folder().At("a.bmp")), "old");
                    }
                    WriteBytes(Folder().At("a.bmp"), "old");
                });
    EXPECT_GT(emptyFiles, 0);
}

TEST_P(BitmapExportTest, CodeOfAFailedRunStaysAndNoBitmapIsMade) {
    const std::string profile = Folder().Profile();
    const std::string missing = Folder().Narrow("missing.ini");
    const std::string bitmap = Folder().Narrow("a.bmp");
    Frame input = kInput;
    EXPECT_EQ(GetParam().call({input.Data(), nullptr, 5, 1, missing.c_str(), "General", 1, bitmap.c_str()}),
              VASTRELLINE_NO_PROFILE);
    EXPECT_EQ(GetParam().call({nullptr, nullptr, 5, 1, profile.c_str(), "General", 0, bitmap.c_str()}),
              VASTRELLINE_NO_INPUT);
    EXPECT_THAT(Folder().Files(), IsEmpty());
}

std::vector<ProcessingExport> ExportsWithABitmap() {
    std::vector<ProcessingExport> exports = ProcessingExports();
    std::erase_if(exports, [](const ProcessingExport& processing) { return processing.hasOutput; });
    return exports;
}

INSTANTIATE_TEST_SUITE_P(Exports, BitmapExportTest, testing::ValuesIn(ExportsWithABitmap()),
                         [](const auto& test) { return test.param.name; });

class BackupExportTest : public testing::TestWithParam<ProcessingExport> {
protected:
    void WriteProfile(const std::string& range, const std::string& gamma, const std::string& folder,
                      const std::string& isOn = "1") const {
        ProfileFolder::PlainSection()
            .Key("OUTPUTRANGE", range)
            .Key("SAVE_BACKUP", isOn)
            .Key("SAVE_BACKUPPATH", folder)
            .Stage("10", {{"POST_GAMMA_RATIO", gamma}})
            .WriteTo(folder_.At("profile.ini"));
    }

    int32_t Run(Frame input, uint8_t applyMapping = 0) {
        Frame output(input.width, input.height);
        const std::string profile = folder_.Profile();
        return GetParam().call({input.Data(), output.Data(), input.width, input.height, profile.c_str(),
                                "General", applyMapping, nullptr});
    }

    // The one backup of that masked name.
    std::string Backup(const std::string& masked) const {
        const auto paths = BackupsNamed(folder_.At("Keep"), masked);
        return paths.size() == 1 ? ReadBytes(paths[0]) : std::to_string(paths.size()) + " backups";
    }
    const ProfileFolder& Folder() const { return folder_; }

private:
    ProfileFolder folder_;
};

// By hand, over 0..100: (level - 1) * 2.55 + 0.5 = 13.25, 61.7, 140.75 for 6,
// 25 and 56. The mapping comes behind the run and so behind the backup.
TEST_P(BackupExportTest, SetHoldsTheInputAndTheResultThroughTheOutputRange) {
    WriteProfile("100", "2", Folder().Narrow("Keep"));
    EXPECT_EQ(Run(kInput, 1), VASTRELLINE_OK);
    EXPECT_THAT(MaskedNames(Folder().At("Keep")), ElementsAre("T_KeepGeneral.bmp", "T_keepcalibrated.raw"));
    EXPECT_EQ(Backup("T_keepcalibrated.raw"), RawBytes(kInput.pixels));
    EXPECT_THAT(ReadGreyBitmap(Backup("T_KeepGeneral.bmp")), EqualsFrame(FromRows({{0, 13, 61, 140, 255}})));
    EXPECT_THAT(Folder().Files(), ElementsAre("Keep"));
}

// By hand: black is 0 and the clip begins at trunc(2047 * 3800 / 4095) = 1899;
// below 124, 31 is lifted to 57.
TEST_P(BackupExportTest, InputIsTheCorrectedOne) {
    WriteProfile("4095", "1", Folder().Narrow("Keep"));
    EXPECT_EQ(Run(FromRows({{2047, 0, 31, 124}})), VASTRELLINE_OK);
    EXPECT_EQ(Backup("T_keepcalibrated.raw"), RawBytes({1899, 0, 57, 124}));
}

TEST_P(BackupExportTest, WithoutTheSwitchNoFolderIsMade) {
    WriteProfile("100", "2", Folder().Narrow("Keep"), "0");
    EXPECT_EQ(Run(kInput), VASTRELLINE_OK);
    EXPECT_THAT(Folder().Files(), IsEmpty());
}

TEST_P(BackupExportTest, BackupThatCannotBeWrittenIsNoFailure) {
    WriteProfile("100", "2", Folder().Narrow("missing") + "\\Keep", "-1");
    EXPECT_EQ(Run(kInput), VASTRELLINE_OK);
    EXPECT_THAT(Folder().Files(), IsEmpty());
    EXPECT_THAT(ShownMessages::Take(), Each(IsAboutTheCorners()));
}

// The frame without corners has an export with a set of its own.
std::vector<ProcessingExport> ExportsWithABackup() {
    std::vector<ProcessingExport> exports = ProcessingExports();
    std::erase_if(exports,
                  [](const ProcessingExport& processing) { return processing.name == "ImageProcessingCR"; });
    return exports;
}

INSTANTIATE_TEST_SUITE_P(Exports, BackupExportTest, testing::ValuesIn(ExportsWithABackup()),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace vastrelline

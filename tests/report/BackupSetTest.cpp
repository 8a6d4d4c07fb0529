// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>

#include "platform/Clock.h"
#include "platform/TextFormat.h"
#include "report/BackupSet.h"
#include "support/BackupNames.h"
#include "support/BitmapFile.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/ShownMessages.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::wstring StampNow() {
    const CalendarTime t = LocalTime();
    return FormatText(L"%04d%02d%02d_%02d%02d%02d_", {t.year, t.month, t.day, t.hour, t.minute, t.second});
}

class BackupSetTest : public testing::Test {
protected:
    std::filesystem::path At(std::string_view name) const { return folder_.Path() / name; }
    std::wstring Wide(std::wstring_view name) const { return folder_.Wide(name); }
    std::filesystem::path Root() const { return folder_.Path(); }

    // Range 100: the window's centre is 50, its width 101.
    static void Write(const std::wstring& folder, const std::wstring& section = L"Molar") {
        const Frame input = FromRows({{10, 256}, {65535, 0}});
        const Frame output = FromRows({{0, 1}, {6, 25}});
        WriteBackupSet(folder, section, input.Data(), output.Data(), 2, 2, {50, 101});
    }

private:
    TemporaryFolder folder_;
    ShownMessages messages_;
};

TEST_F(BackupSetTest, PrefixIsTheFolderAndTheTime) {
    const std::wstring before = Wide(L"Keep") + L"\\" + StampNow();
    const std::wstring prefix = MakeBackupPrefix(Wide(L"Keep"));
    const std::wstring after = Wide(L"Keep") + L"\\" + StampNow();
    // Of one length, so that their order is that of the times.
    EXPECT_EQ(prefix.size(), before.size());
    EXPECT_LE(before, prefix);
    EXPECT_LE(prefix, after);
    EXPECT_TRUE(std::filesystem::is_directory(At("Keep")));
}

TEST_F(BackupSetTest, PrefixWithoutAFolderBeginsWithTheSeparator) {
    const std::wstring before = L"\\" + StampNow();
    const std::wstring prefix = MakeBackupPrefix(L"");
    const std::wstring after = L"\\" + StampNow();
    EXPECT_EQ(prefix.size(), before.size());
    EXPECT_LE(before, prefix);
    EXPECT_LE(prefix, after);
}

TEST_F(BackupSetTest, FolderIsMadeAtItsLastLevelOnly) {
    MakeBackupPrefix(Wide(L"missing") + L"\\Keep");
    EXPECT_FALSE(std::filesystem::exists(At("missing")));
    Write(Wide(L"missing") + L"\\Keep");
    EXPECT_FALSE(std::filesystem::exists(At("missing")));
    std::filesystem::create_directory(At("there"));
    MakeBackupPrefix(Wide(L"there") + L"\\Keep");
    EXPECT_TRUE(std::filesystem::is_directory(At("there") / "Keep"));
}

// The raw file's name is stored in small letters, like that of every raw file;
// the bitmap's keeps its case.
TEST_F(BackupSetTest, NamesAreTheTimeTheFolderAndWhatTheyHold) {
    std::filesystem::create_directory(At("Up"));
    Write(Wide(L"Up") + L"\\Keep");
    EXPECT_THAT(MaskedNames(At("Up") / "Keep"), ElementsAre("T_KeepMolar.bmp", "T_keepcalibrated.raw"));
    EXPECT_THAT(MaskedNames(At("Up")), ElementsAre("Keep"));
}

TEST_F(BackupSetTest, OneSetHasOneTime) {
    Write(Wide(L"Keep"));
    const auto bitmaps = BackupsNamed(At("Keep"), "T_KeepMolar.bmp");
    const auto raws = BackupsNamed(At("Keep"), "T_keepcalibrated.raw");
    ASSERT_EQ(bitmaps.size(), 1U);
    ASSERT_EQ(raws.size(), 1U);
    EXPECT_EQ(bitmaps[0].filename().string().substr(0, 16), raws[0].filename().string().substr(0, 16));
}

TEST_F(BackupSetTest, InputIsStoredRaw) {
    Write(Wide(L"Keep"));
    const auto raws = BackupsNamed(At("Keep"), "T_keepcalibrated.raw");
    ASSERT_EQ(raws.size(), 1U);
    EXPECT_EQ(ReadBytes(raws[0]), std::string("\x0A\x00\x00\x01\xFF\xFF\x00\x00", 8));
}

// By hand: the window begins at level 50 - 49 = 1, ends at 100 and rises by 255
// / 100 a level: 24 * 2.55 + 0.5 = 61.7.
TEST_F(BackupSetTest, OutputIsStoredAsABitmapThroughItsWindow) {
    Write(Wide(L"Keep"));
    const auto bitmaps = BackupsNamed(At("Keep"), "T_KeepMolar.bmp");
    ASSERT_EQ(bitmaps.size(), 1U);
    EXPECT_THAT(ReadGreyBitmap(ReadBytes(bitmaps[0])), EqualsFrame(FromRows({{0, 0}, {13, 61}})));
}

TEST_F(BackupSetTest, FolderThatIsThereKeepsItsFiles) {
    std::filesystem::create_directory(At("Keep"));
    WriteBytes(At("Keep") / "other", "kept");
    Write(Wide(L"Keep"));
    EXPECT_THAT(MaskedNames(At("Keep")), ElementsAre("T_KeepMolar.bmp", "T_keepcalibrated.raw", "other"));
    EXPECT_EQ(ReadBytes(At("Keep") / "other"), "kept");
}

// Behind the separator at the end there is no name that the files could take.
TEST_F(BackupSetTest, FolderWithASeparatorAtItsEndGivesNoName) {
    std::filesystem::create_directory(At("Keep"));
    Write(Wide(L"Keep") + L"\\");
    EXPECT_THAT(MaskedNames(At("Keep")), ElementsAre("T_Molar.bmp", "T_calibrated.raw"));
}

TEST_F(BackupSetTest, FolderWithoutAnyPathLiesInTheCurrentOne) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(Root());
    Write(L"Keep");
    std::filesystem::current_path(before);
    EXPECT_THAT(MaskedNames(At("Keep")), ElementsAre("T_KeepMolar.bmp", "T_keepcalibrated.raw"));
}

TEST_F(BackupSetTest, FileInThePlaceOfTheFolderStaysAndNothingIsSaid) {
    WriteBytes(At("Keep"), "a file");
    Write(Wide(L"Keep"));
    EXPECT_EQ(ReadBytes(At("Keep")), "a file");
    EXPECT_THAT(MaskedNames(Root()), ElementsAre("Keep"));
    EXPECT_THAT(ShownMessages::Take(), IsEmpty());
}

// A section may have a name that no file can have; the raw file is there all
// the same.
TEST_F(BackupSetTest, SectionThatIsNoFileNameCostsTheBitmapOnly) {
    Write(Wide(L"Keep"), L"a\\b");
    EXPECT_THAT(MaskedNames(At("Keep")), ElementsAre("T_keepcalibrated.raw"));
    EXPECT_THAT(ShownMessages::Take(), IsEmpty());
}

// All that is needed to redo the frame.
TEST_F(BackupSetTest, FolderWithSlashesGivesItsLastLevel) {
    std::wstring folder = Wide(L"Keep");
    std::replace(folder.begin(), folder.end(), L'\\', L'/');
    Write(folder);
    EXPECT_THAT(MaskedNames(At("Keep")), ElementsAre("T_KeepMolar.bmp", "T_keepcalibrated.raw"));
}

TEST_F(BackupSetTest, SetOfACompleteFrameHoldsTheProfileToo) {
    const std::string profile("[Molar]\r\nKEY=\xFF\x00 \n", 18);
    const Frame input = FromRows({{10, 256}, {65535, 0}});
    const Frame output = FromRows({{0, 2047}, {4095, 25}});
    WriteCrBackupSet(Wide(L"Keep"), L"Molar", profile, input.Data(), output.Data(), 2, 2);
    EXPECT_THAT(MaskedNames(At("Keep")), ElementsAre("T_Keep_Enhanced.bmp", "T_Keep_Molar.ini",
                                                     "T_keep_calibrated.raw", "T_keep_enhanced.raw"));
    const auto bytesOf = [&](const char* name) { return ReadBytes(BackupsNamed(At("Keep"), name).at(0)); };
    EXPECT_EQ(bytesOf("T_Keep_Molar.ini"), profile);
    EXPECT_EQ(bytesOf("T_keep_calibrated.raw"), std::string("\x0A\0\0\x01\xFF\xFF\0\0", 8));
    EXPECT_EQ(bytesOf("T_keep_enhanced.raw"), std::string("\0\0\xFF\x07\xFF\x0F\x19\0", 8));
    EXPECT_THAT(ReadGreyBitmap(bytesOf("T_Keep_Enhanced.bmp")), EqualsFrame(ThroughUsualWindow(output)));
}

TEST_F(BackupSetTest, SetOfACompleteFrameInAMissingFolderIsLeftOut) {
    const Frame frame = FromRows({{10, 256}, {65535, 0}});
    WriteCrBackupSet(Wide(L"missing") + L"\\Keep", L"Molar", "[a]\n", frame.Data(), frame.Data(), 2, 2);
    EXPECT_FALSE(std::filesystem::exists(At("missing")));
}

}  // namespace
}  // namespace vastrelline

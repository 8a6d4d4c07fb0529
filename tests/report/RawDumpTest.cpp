// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "platform/Files.h"
#include "report/RawDump.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

constexpr std::array<uint16_t, 6> kPixels = {0x0000, 0x0001, 0x0100, 0x0FFF, 0xABCD, 0xFFFF};
// The same by hand, low byte first.
constexpr std::string_view kBytes("\x00\x00\x01\x00\x00\x01\xFF\x0F\xCD\xAB\xFF\xFF", 12);

class RawDumpTest : public testing::Test {
protected:
    std::filesystem::path At(std::string_view name) const { return folder_.Path() / name; }
    std::wstring Wide(std::wstring_view name) const { return folder_.Wide(name); }
    const TemporaryFolder& Folder() const { return folder_; }

private:
    TemporaryFolder folder_;
};

TEST_F(RawDumpTest, FileIsThePixelsAloneLowByteFirst) {
    DumpRaw(Wide(L"frame.raw"), kPixels.data(), 3, 2);
    EXPECT_EQ(ReadBytes(At("frame.raw")), kBytes);
}

TEST_F(RawDumpTest, NameIsStoredInSmallLetters) {
    DumpRaw(Wide(L"07_OriginalImage.RAW"), kPixels.data(), 3, 2);
    ASSERT_EQ(std::distance(std::filesystem::directory_iterator(Folder().Path()), {}), 1);
    EXPECT_EQ(std::filesystem::directory_iterator(Folder().Path())->path().filename().string(),
              "07_originalimage.raw");
}

TEST_F(RawDumpTest, ExtensionIsAddedToAPathWithoutIt) {
    DumpRaw(Wide(L"Frame"), kPixels.data(), 3, 2);
    EXPECT_EQ(ReadBytes(At("frame.raw")), kBytes);
    DumpRaw(Wide(L"other.txt"), kPixels.data(), 3, 2);
    EXPECT_EQ(ReadBytes(At("other.txt.raw")), kBytes);
}

TEST_F(RawDumpTest, ExtensionAnywhereInTheNameIsEnough) {
    DumpRaw(Wide(L"frame.rawdata"), kPixels.data(), 3, 2);
    EXPECT_EQ(ReadBytes(At("frame.rawdata")), kBytes);
}

TEST_F(RawDumpTest, ExtensionInAFolderNameIsEnough) {
    std::filesystem::create_directory(At("old.raw"));
    DumpRaw(Wide(L"old.raw") + L"\\Frame", kPixels.data(), 3, 2);
    EXPECT_EQ(ReadBytes(At("old.raw") / "frame"), kBytes);
    std::filesystem::create_directory(At("NEW.RAWS"));
    DumpRaw(Wide(L"NEW.RAWS") + L"\\Frame", kPixels.data(), 3, 2);
    EXPECT_EQ(ReadBytes(At("NEW.RAWS") / "frame"), kBytes);
}

TEST_F(RawDumpTest, MissingFolderIsNotMadeAndNotReported) {
    DumpRaw(Wide(L"missing") + L"\\frame.raw", kPixels.data(), 3, 2);
    EXPECT_TRUE(std::filesystem::is_empty(Folder().Path()));
}

TEST_F(RawDumpTest, PathThatIsAFolderIsSilent) {
    std::filesystem::create_directory(At("frame.raw"));
    DumpRaw(Wide(L"frame.raw"), kPixels.data(), 3, 2);
    EXPECT_TRUE(std::filesystem::is_empty(At("frame.raw")));
}

TEST_F(RawDumpTest, LongerFileOfTheSameNameIsReplaced) {
    WriteBytes(At("frame.raw"), std::string(100, 'x'));
    EXPECT_EQ(SaveRawFile(Wide(L"frame.raw"), kPixels.data(), 3, 2, 16), 1);
    EXPECT_EQ(ReadBytes(At("frame.raw")), kBytes);
}

TEST_F(RawDumpTest, BitsGiveTheBytesOfAnElement) {
    EXPECT_EQ(SaveRawFile(Wide(L"a"), kPixels.data(), 3, 2, 8), 1);
    EXPECT_EQ(ReadBytes(At("a")), kBytes.substr(0, 6));
    EXPECT_EQ(SaveRawFile(Wide(L"b"), kPixels.data(), 3, 1, 32), 1);
    EXPECT_EQ(ReadBytes(At("b")), kBytes);
    EXPECT_EQ(SaveRawFile(Wide(L"c"), kPixels.data(), 3, 2, 14), 1);  // whole bytes only
    EXPECT_EQ(ReadBytes(At("c")), kBytes.substr(0, 6));
    EXPECT_EQ(SaveRawFile(Wide(L"d"), kPixels.data(), 3, 2, 7), 1);
    EXPECT_EQ(ReadBytes(At("d")), "");
}

TEST_F(RawDumpTest, SavingKeepsTheCaseOfTheName) {
    EXPECT_EQ(SaveRawFile(Wide(L"Mixed.Name"), kPixels.data(), 3, 2, 16), 1);
    EXPECT_EQ(std::filesystem::directory_iterator(Folder().Path())->path().filename().string(), "Mixed.Name");
}

TEST_F(RawDumpTest, FileThatCannotBeMadeGivesZero) {
    EXPECT_EQ(SaveRawFile(Wide(L"missing") + L"\\frame.raw", kPixels.data(), 3, 2, 16), 0);
    EXPECT_EQ(SaveRawFile(Folder().Path().wstring(), kPixels.data(), 3, 2, 16), 0);
    EXPECT_EQ(SaveRawFile(L"", kPixels.data(), 3, 2, 16), 0);
}

TEST_F(RawDumpTest, FrameWithoutPixelsIsAnEmptyFile) {
    EXPECT_EQ(SaveRawFile(Wide(L"rows"), kPixels.data(), 3, 0, 16), 1);
    EXPECT_EQ(ReadBytes(At("rows")), "");
    EXPECT_EQ(SaveRawFile(Wide(L"columns"), kPixels.data(), 0, 2, 16), 1);
    EXPECT_EQ(ReadBytes(At("columns")), "");
}

TEST_F(RawDumpTest, NegativeSizesGiveZeroAndNoFile) {
    EXPECT_EQ(SaveRawFile(Wide(L"frame.raw"), kPixels.data(), -3, 2, 16), 0);
    EXPECT_EQ(SaveRawFile(Wide(L"frame.raw"), kPixels.data(), 3, -2, 16), 0);
    EXPECT_EQ(SaveRawFile(Wide(L"frame.raw"), kPixels.data(), 3, 2, -16), 0);
    EXPECT_TRUE(std::filesystem::is_empty(Folder().Path()));
}

TEST_F(RawDumpTest, FileThatSomeoneElseWritesIsLeftAlone) {
    OutputFile other(Wide(L"frame.raw"), OpenMode::TruncateExclusive);
    ASSERT_TRUE(other.IsOpen());
    EXPECT_EQ(SaveRawFile(Wide(L"frame.raw"), kPixels.data(), 3, 2, 16), 0);
    ASSERT_TRUE(other.Append("kept", 4));
    other.Close();
    EXPECT_EQ(ReadBytes(At("frame.raw")), "kept");
}

struct DumpPathCase {
    const char* name;
    const wchar_t* writePath;
    int32_t number;
    const wchar_t* expected;
};

class MakeDumpPathTest : public testing::TestWithParam<DumpPathCase> {};

TEST_P(MakeDumpPathTest, JoinsFolderAndNumberedNameDirectly) {
    EXPECT_EQ(MakeDumpPath(GetParam().writePath, L"%02d_OriginalImage.raw", GetParam().number),
              GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Paths, MakeDumpPathTest,
    testing::Values(DumpPathCase{"FirstNumber", L"D:\\out\\", 0, L"D:\\out\\00_OriginalImage.raw"},
                    DumpPathCase{"NoSeparatorGlues", L"D:\\out", 0, L"D:\\out00_OriginalImage.raw"},
                    DumpPathCase{"TwoDigits", L"D:\\out\\", 99, L"D:\\out\\99_OriginalImage.raw"},
                    DumpPathCase{"ThreeDigits", L"D:\\out\\", 100, L"D:\\out\\100_OriginalImage.raw"},
                    DumpPathCase{"PercentInTheFolder", L"D:\\%d\\", 3, L"D:\\%d\\03_OriginalImage.raw"},
                    DumpPathCase{"NoFolder", L"", 7, L"07_OriginalImage.raw"}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(RawDumpTest, EachNumberedDumpStepsTheNumber) {
    int32_t number = 98;
    for (int i = 0; i < 3; ++i) DumpNumbered(Wide(L""), L"%02d_Result.raw", number, kPixels.data(), 3, 2);
    EXPECT_EQ(number, 101);
    EXPECT_EQ(ReadBytes(At("98_result.raw")), kBytes);
    EXPECT_EQ(ReadBytes(At("99_result.raw")), kBytes);
    EXPECT_EQ(ReadBytes(At("100_result.raw")), kBytes);
}

TEST_F(RawDumpTest, DumpThatCannotBeWrittenStepsTheNumberToo) {
    int32_t number = 5;
    DumpNumbered(Wide(L"missing") + L"\\", L"%02d_Result.raw", number, kPixels.data(), 3, 2);
    EXPECT_EQ(number, 6);
}

TEST_F(RawDumpTest, NumberAfterTheLargestIsTheSmallest) {
    int32_t number = INT32_MAX;
    DumpNumbered(Wide(L""), L"%02d_Result.raw", number, kPixels.data(), 3, 2);
    EXPECT_EQ(number, INT32_MIN);
    EXPECT_EQ(ReadBytes(At("2147483647_result.raw")), kBytes);
}

}  // namespace
}  // namespace vastrelline

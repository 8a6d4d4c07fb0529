// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "files/FileKind.h"

namespace vastrelline {
namespace {

using namespace std::string_view_literals;

std::vector<uint8_t> Bytes(std::string_view text) { return {text.begin(), text.end()}; }

struct ContentCase {
    const char* name;
    std::string_view bytes;
    FileKind kind;
    const char* description;
};

class ContentTest : public testing::TestWithParam<ContentCase> {};

TEST_P(ContentTest, IsTold) {
    EXPECT_EQ(FileKindOfContent(Bytes(GetParam().bytes)), GetParam().kind);
    EXPECT_EQ(DescribeContent(Bytes(GetParam().bytes)), GetParam().description);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ContentTest,
    testing::Values(
        ContentCase{"Png", "\x89PNG\r\n\x1A\n\0"sv, FileKind::Png, "a PNG picture"},
        ContentCase{"CutPng", "\x89PNG\r\n\x1A"sv, FileKind::Other, ""},
        ContentCase{"Pgm", "P5\n1 1\n255\n7"sv, FileKind::Pgm, "a PGM picture"},
        ContentCase{"PgmWithComment", "P5#a\n1 1\n255\n7"sv, FileKind::Pgm, "a PGM picture"},
        ContentCase{"LevelsLikeAPgm", "P5\x20\x01\x02\x03"sv, FileKind::Other, ""},
        ContentCase{"LittleTiff", "II*\0\x08\0\0\0"sv, FileKind::Tiff, "a TIFF picture"},
        ContentCase{"BigTiff", "MM\0*\0\0\0\x08"sv, FileKind::Tiff, "a TIFF picture"},
        ContentCase{"LongTiff", "II+\0\x08\0\0\0"sv, FileKind::Tiff, "a TIFF picture"},
        ContentCase{"Bmp", "BM\1\2\3\4\0\0\0\0\x36\4\0\0\x28\0\0\0"sv, FileKind::Bmp, "a bitmap"},
        ContentCase{"LevelsLikeABitmap", "BM\1\2\3\4\0\1\0\0\x36\4\0\0\x28\0\0\0"sv, FileKind::Other, ""},
        ContentCase{"BitmapOfUnknownHead", "BM\1\2\3\4\0\0\0\0\x36\4\0\0\x29\0\0\0"sv, FileKind::Other, ""},
        ContentCase{"Jpeg", "\xFF\xD8\xFF\xE0"sv, FileKind::Other, "a JPEG picture"},
        ContentCase{"Zip", "PK\3\4"sv, FileKind::Other, "a ZIP archive"},
        ContentCase{"ColourMap", "P6\n1 1\n255\nabc"sv, FileKind::Other, "a picture of kind P6"},
        ContentCase{"Text", "[General]\r\nPROCMODE=2\r\n"sv, FileKind::Other, "a text file"},
        ContentCase{"ShortText", "PROCMODE=2"sv, FileKind::Other, ""},
        ContentCase{"Empty", ""sv, FileKind::Other, "an empty file"},
        ContentCase{"Levels", "\x10\x02\x11\x02"sv, FileKind::Other, ""}),
    [](const auto& test) { return test.param.name; });

TEST(FileKind, IsTheEndingOfTiffFilesToo) {
    EXPECT_EQ(FileKindOf("a.tif"), FileKind::Tiff);
    EXPECT_EQ(FileKindOf("a.TIFF"), FileKind::Tiff);
    EXPECT_EQ(FileKindOf("a.ti"), FileKind::Other);
    EXPECT_EQ(FileKindOf("atif"), FileKind::Other);
}

TEST(FileKind, ADicomFileIsKnownByItsMark) {
    std::vector<uint8_t> bytes(128, 0);
    for (const char c : "DICM"sv) bytes.push_back(static_cast<uint8_t>(c));
    EXPECT_EQ(DescribeContent(bytes), "a DICOM file");
}

TEST(FileKind, HasANameAndAnEnding) {
    EXPECT_EQ(FileKindEnding(FileKind::Tiff), "tif");
    EXPECT_EQ(FileKindName(FileKind::Tiff), "TIFF picture");
    EXPECT_EQ(FileKindName(FileKind::Raw), "raw frame");
    EXPECT_EQ(FileKindEnding(FileKind::Other), "");
    EXPECT_EQ(FileKindName(FileKind::Other), "file");
}

}  // namespace
}  // namespace vastrelline

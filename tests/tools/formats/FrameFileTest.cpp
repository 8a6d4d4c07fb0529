#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>

#include "files/FileKind.h"
#include "formats/FrameFile.h"
#include "messages/ToolError.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;

std::string ErrorOf(const std::string& path, const std::optional<FrameSize>& size) {
    try {
        ReadFrameFile(path, size);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "none";
}

TEST(FileKind, IsTheEndingInAnyCase) {
    EXPECT_EQ(FileKindOf("a.raw"), FileKind::Raw);
    EXPECT_EQ(FileKindOf("b/a.PGM"), FileKind::Pgm);
    EXPECT_EQ(FileKindOf("a.b.Png"), FileKind::Png);
    EXPECT_EQ(FileKindOf("a.bmp"), FileKind::Bmp);
    EXPECT_EQ(FileKindOf("a.png.txt"), FileKind::Other);
    EXPECT_EQ(FileKindOf("png"), FileKind::Other);
    EXPECT_EQ(FileKindOf(""), FileKind::Other);
}

TEST(FrameFile, ARawFrameTakesTheSizeItIsGivenOrThatOfItsName) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a_2x1.raw", "\x01\x02\x03\x04");
    const Frame named = ReadFrameFile(folder.Narrow("a_2x1.raw"), std::nullopt);
    EXPECT_EQ(named.width, 2);
    EXPECT_EQ(named.pixels, (std::vector<uint16_t>{0x0201, 0x0403}));
    EXPECT_EQ(ReadFrameFile(folder.Narrow("a_2x1.raw"), FrameSize{1, 2}).width, 1);
}

TEST(FrameFile, ARawFrameOfUnknownSizeIsWrongUse) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a.raw", "1234");
    EXPECT_THROW(ReadFrameFile(folder.Narrow("a.raw"), std::nullopt), UsageError);
}

TEST(FrameFile, ATruncatedRawFrameTellsBothNumbers) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a_2x1.raw", "123");
    const std::string error = ErrorOf(folder.Narrow("a_2x1.raw"), std::nullopt);
    EXPECT_NE(error.find("a_2x1.raw: a raw frame of 2x1 has 4 bytes, the file has 3"), std::string::npos)
        << error;
}

TEST(FrameFile, TheLargestSizeOfASmallFileIsRefusedAtOnce) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a.raw", "1234");
    EXPECT_NE(ErrorOf(folder.Narrow("a.raw"), FrameSize{536870911, 1}).find("has 1073741822 bytes"),
              std::string::npos);
}

TEST(FrameFile, AHugeFileThatHoldsNothingIsRefusedAtOnce) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a.pgm", "P5\n1 1\n255\n7");
    std::filesystem::resize_file(folder.Path() / "a.pgm", uintmax_t{1} << 40);
    EXPECT_NE(ErrorOf(folder.Narrow("a.pgm"), std::nullopt).find("too large"), std::string::npos);
}

TEST(FrameFile, APgmTellsItsSizeItself) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a.pgm", "P5\n2 1\n255\n\x05\x06"s);
    EXPECT_EQ(ReadFrameFile(folder.Narrow("a.pgm"), std::nullopt).pixels, (std::vector<uint16_t>{5, 6}));
    EXPECT_EQ(ReadFrameFile(folder.Narrow("a.pgm"), FrameSize{2, 1}).height, 1);
    const std::string error = ErrorOf(folder.Narrow("a.pgm"), FrameSize{1, 2});
    EXPECT_NE(error.find("a.pgm: the file is 2x1, not 1x2"), std::string::npos) << error;
}

TEST(FrameFile, WhatIsNoFileIsRefused) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.Path() / "a.raw");
    EXPECT_NE(ErrorOf(folder.Narrow("a.raw"), FrameSize{1, 1}).find("is a folder"), std::string::npos);
    EXPECT_NE(ErrorOf(folder.Narrow("b.raw"), FrameSize{1, 1}).find("does not exist"), std::string::npos);
    EXPECT_NE(ErrorOf("/dev/zero", FrameSize{1, 1}).find("not a regular file"), std::string::npos);
    EXPECT_NE(ErrorOf("", FrameSize{1, 1}), "none");
}

}  // namespace
}  // namespace vastrelline

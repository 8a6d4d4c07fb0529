// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>
#include <iostream>
#include <optional>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>

#include "files/FileKind.h"
#include "formats/BmpFormat.h"
#include "formats/FrameFile.h"
#include "formats/TiffFormat.h"
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
    try {
        ReadFrameFile(folder.Narrow("a.raw"), std::nullopt);
        FAIL() << "a size was known";
    } catch (const ToolError& error) {
        EXPECT_EQ(error.Code(), ExitCode::WrongUse);
        EXPECT_EQ(error.what(),
                  folder.Narrow("a.raw") + ": 4 bytes fit 1x2 or 2x1 at 16 bits; say --size WxH");
    }
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

TEST(FrameFile, TheProfilesSizeCountsWhereNothingElseTellsOne) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a.raw", "1234");
    WriteBytes(folder.Path() / "a_2x1.raw", "1234");
    EXPECT_EQ(LoadFrameFile(folder.Narrow("a.raw"), {std::nullopt, FrameSize{1, 2}}).frame.height, 2);
    EXPECT_EQ(LoadFrameFile(folder.Narrow("a_2x1.raw"), {std::nullopt, FrameSize{1, 2}}).frame.height, 1);
    EXPECT_EQ(LoadFrameFile(folder.Narrow("a.raw"), {FrameSize{2, 1}, FrameSize{1, 2}}).frame.height, 1);
    try {
        LoadFrameFile(folder.Narrow("a.raw"), {std::nullopt, FrameSize{3, 3}});
        FAIL() << "another size was taken";
    } catch (const InputError& error) {
        EXPECT_EQ(error.What(),
                  "a raw frame of 3x3 has 18 bytes, the file has 4, which fit 1x2 or 2x1 at 16 bits");
        EXPECT_EQ(error.Remedy(), "that is the profile's size: say --size WxH");
    }
}

TEST(FrameFile, AFileTellsWhereItsLevelsComeFrom) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a_2x1.raw", "1234");
    WriteBytes(folder.Path() / "narrow.pgm", "P5\n2 1\n255\n\x05\x06"s);
    WriteBytes(folder.Path() / "wide.pgm", "P5\n1 1\n256\n\x01\x00"s);
    const std::vector<uint8_t> tiff = EncodeTiff16({1, 1, {7}}, TiffPacking::None);
    WriteBytes(folder.Path() / "a.tif", std::string(tiff.begin(), tiff.end()));
    const std::vector<uint8_t> bitmap = EncodeBmp8({7, 8}, 1, 2);
    WriteBytes(folder.Path() / "a.bmp", std::string(bitmap.begin(), bitmap.end()));
    const auto load = [&](const std::string& leaf) { return LoadFrameFile(folder.Narrow(leaf), {}); };
    EXPECT_EQ(load("a_2x1.raw").kind, FileKind::Raw);
    EXPECT_EQ(load("a_2x1.raw").sourceBits, 16);
    EXPECT_EQ(load("narrow.pgm").kind, FileKind::Pgm);
    EXPECT_EQ(load("narrow.pgm").sourceBits, 8);
    EXPECT_EQ(load("wide.pgm").sourceBits, 16);
    EXPECT_EQ(load("a.tif").kind, FileKind::Tiff);
    EXPECT_EQ(load("a.tif").frame.pixels, std::vector<uint16_t>{7});
    EXPECT_EQ(load("a.bmp").kind, FileKind::Bmp);
    EXPECT_EQ(load("a.bmp").sourceBits, 8);
    EXPECT_EQ(load("a.bmp").frame.pixels, (std::vector<uint16_t>{7, 8}));
}

TEST(FrameFile, TheContentCountsWhereTheEndingSaysNothing) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "picture", "P5\n2 1\n255\n\x05\x06"s);
    EXPECT_EQ(LoadFrameFile(folder.Narrow("picture"), {}).kind, FileKind::Pgm);
    WriteBytes(folder.Path() / "frame.dat", "1234");
    EXPECT_EQ(LoadFrameFile(folder.Narrow("frame.dat"), {FrameSize{2, 1}, std::nullopt}).kind, FileKind::Raw);
}

TEST(FrameFile, AnEndingThatLiesIsRefused) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "a.png", "P5\n2 1\n255\n\x05\x06"s);
    WriteBytes(folder.Path() / "b.tif", "\xFF\xD8\xFF\xE0"s);
    WriteBytes(folder.Path() / "c.bmp", "something");
    WriteBytes(folder.Path() / "d.raw", "P5\n2 1\n255\n\x05\x06"s);
    WriteBytes(folder.Path() / "e.pgm", "");
    WriteBytes(folder.Path() / "f.raw", "\xFF\xD8\xFF\xE0"s);
    const auto error = [&](const std::string& leaf) { return ErrorOf(folder.Narrow(leaf), std::nullopt); };
    EXPECT_EQ(error("a.png"), folder.Narrow("a.png") + ": is a PGM picture, no PNG picture; name it .pgm");
    EXPECT_EQ(error("b.tif"), folder.Narrow("b.tif") + ": is a JPEG picture, no TIFF picture");
    EXPECT_EQ(error("c.bmp"), folder.Narrow("c.bmp") + ": is no bitmap, whatever its name says");
    EXPECT_EQ(error("d.raw"), folder.Narrow("d.raw") + ": is a PGM picture, not raw levels; name it .pgm");
    EXPECT_EQ(error("e.pgm"), folder.Narrow("e.pgm") + ": is an empty file, no PGM picture");
    EXPECT_EQ(error("f.raw"), folder.Narrow("f.raw") + ": is a JPEG picture, no frame that can be read");
    // Levels may be anything: bytes that fit the size are levels.
    EXPECT_EQ(LoadFrameFile(folder.Narrow("f.raw"), {FrameSize{2, 1}, std::nullopt}).frame.pixels,
              (std::vector<uint16_t>{0xD8FF, 0xE0FF}));
}

// Puts bytes in the place of standard input for a while.
class StandardInput {
public:
    explicit StandardInput(const std::string& bytes) : bytes_(bytes), old_(std::cin.rdbuf(bytes_.rdbuf())) {
        std::cin.clear();
    }
    ~StandardInput() {
        std::cin.rdbuf(old_);
        std::cin.clear();
    }
    StandardInput(const StandardInput&) = delete;
    StandardInput& operator=(const StandardInput&) = delete;

private:
    std::istringstream bytes_;
    std::streambuf* old_;
};

TEST(FrameFile, ALineIsStandardInput) {
    {
        const StandardInput input("P5\n2 1\n255\n\x05\x06"s);
        EXPECT_EQ(LoadFrameFile("-", {}).frame.pixels, (std::vector<uint16_t>{5, 6}));
    }
    {
        const StandardInput input("\x01\x02\x03\x04"s);
        EXPECT_EQ(LoadFrameFile("-", {FrameSize{1, 2}, std::nullopt}).frame.pixels,
                  (std::vector<uint16_t>{0x0201, 0x0403}));
    }
    const StandardInput input("1234");
    EXPECT_EQ(ErrorOf("-", std::nullopt),
              "standard input: 4 bytes fit 1x2 or 2x1 at 16 bits; say --size WxH");
}

// Whatever follows the bytes by which a kind is known: a frame, or an error of the input.
TEST(FrameFile, RandomBytesAreReadOrRefused) {
    const std::vector<std::string> starts{"\x89PNG\r\n\x1A\n\0\0\0\rIHDR"s,
                                          "II*\0\x08\0\0\0"s,
                                          "MM\0*\0\0\0\x08"s,
                                          "P5 2 2 255 "s,
                                          "BM\0\0\0\0\0\0\0\0\x36\x04\0\0\x28\0\0\0"s,
                                          ""s};
    std::mt19937 random(20240501);
    size_t refused = 0;
    for (int round = 0; round < 6000; ++round) {
        std::string bytes = starts[static_cast<size_t>(round) % starts.size()];
        const size_t length = bytes.size() + random() % 200;
        // Small numbers make heads that go far.
        while (bytes.size() < length)
            bytes += static_cast<char>(random() % 3 == 0 ? random() % 256 : random() % 4);
        const StandardInput input(bytes);
        try {
            const LoadedFrame loaded = LoadFrameFile("-", {FrameSize{2, 2}, std::nullopt});
            EXPECT_EQ(loaded.frame.pixels.size(), 4U);
        } catch (const InputError&) {
            ++refused;
        }
    }
    EXPECT_GT(refused, 3000U);
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

// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "ToolRun.h"
#include "formats/FrameFile.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;
using testing::HasSubstr;
using Json = nlohmann::json;

const std::string kLevels = "\x00\x00\x01\x02\xFF\xFF\x34\x12\xFF\x0F\x07\x00"s;
const std::vector<uint16_t> kPixels{0, 0x0201, 0xFFFF, 0x1234, 0x0FFF, 7};

class ConvertCommandTest : public testing::Test {
protected:
    ConvertCommandTest() { WriteBytes(folder_.Path() / "a_3x2.raw", kLevels); }

    std::string Path(const std::string& leaf) const { return folder_.Narrow(leaf); }
    ToolRun Convert(const std::string& from, const std::string& to,
                    const std::vector<std::string>& more = {}) const {
        std::vector<std::string> words{"convert", Path(from), Path(to)};
        words.insert(words.end(), more.begin(), more.end());
        return RunTool(words, MustNotBeCalled);
    }

    // Every test of the fixture is a class derived from it.
    // NOLINTNEXTLINE(misc-non-private-member-variables-in-classes)
    TemporaryFolder folder_;
};

TEST_F(ConvertCommandTest, EveryWayKeepsEveryLevel) {
    const std::vector<std::string> endings{".raw", ".pgm", ".png", ".tif", ".tiff"};
    for (const std::string& middle : endings)
        for (const std::string& last : endings) {
            SCOPED_TRACE(middle + last);
            ASSERT_EQ(Convert("a_3x2.raw", "b_3x2" + middle, {"--force"}).exitCode, 0);
            const ToolRun run = Convert("b_3x2" + middle, "c_3x2" + last, {"--force"});
            EXPECT_EQ(run.exitCode, 0);
            EXPECT_EQ(run.errors, "");
            EXPECT_THAT(run.report, HasSubstr("no level lost"));
            const LoadedFrame loaded = LoadFrameFile(Path("c_3x2" + last), {});
            EXPECT_EQ(loaded.frame.pixels, kPixels);
            EXPECT_EQ(loaded.frame.width, 3);
            EXPECT_EQ(loaded.sourceBits, 16);
        }
    EXPECT_EQ(ReadBytes(folder_.Path() / "c_3x2.raw"), kLevels);
}

TEST_F(ConvertCommandTest, ADeflatedTiffHoldsTheSame) {
    EXPECT_EQ(Convert("a_3x2.raw", "b.tif", {"--deflate"}).exitCode, 0);
    EXPECT_EQ(ReadFrameFile(Path("b.tif"), std::nullopt).pixels, kPixels);
}

TEST_F(ConvertCommandTest, LostLevelsAreSaid) {
    const ToolRun bitmap = Convert("a_3x2.raw", "b.bmp");
    EXPECT_EQ(bitmap.exitCode, 0);
    EXPECT_EQ(bitmap.errors,
              Path("b.bmp") +
                  ": warning: 8 bits through the window 0:65535: levels are lost; .tif and .png "
                  "without --window keep all\n");
    // 0x1234 / 65535 * 255 = 18.1..., 0x0FFF gives 15.9
    EXPECT_EQ(ReadFrameFile(Path("b.bmp"), std::nullopt).pixels,
              (std::vector<uint16_t>{0, 2, 255, 18, 16, 0}));

    const ToolRun png = Convert("a_3x2.raw", "b.png", {"--window", "0:510"});
    EXPECT_THAT(png.errors, HasSubstr("levels are lost"));
    const LoadedFrame loaded = LoadFrameFile(Path("b.png"), {});
    EXPECT_EQ(loaded.sourceBits, 8);
    EXPECT_EQ(loaded.frame.pixels, (std::vector<uint16_t>{0, 255, 255, 255, 255, 4}));
}

TEST_F(ConvertCommandTest, EightBitsGoIntoABitmapAndBackAsTheyAre) {
    WriteBytes(folder_.Path() / "narrow.pgm", "P5\n3 1\n255\n\x00\x80\xFF"s);
    const ToolRun run = Convert("narrow.pgm", "b.bmp");
    EXPECT_EQ(run.errors, "");
    EXPECT_THAT(run.report, HasSubstr("(bitmap, 8 bits, window 0:255, no level lost)"));
    EXPECT_EQ(Convert("b.bmp", "c.png", {"--png16"}).exitCode, 0);
    EXPECT_EQ(ReadFrameFile(Path("c.png"), std::nullopt).pixels, (std::vector<uint16_t>{0, 128, 255}));
}

TEST_F(ConvertCommandTest, ARawNameWithoutSizeIsSaid) {
    const ToolRun run = Convert("a_3x2.raw", "b.raw");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(
        run.errors,
        Path("b.raw") + ": warning: the name does not tell the size: to read it again say --size 3x2\n");
    EXPECT_THAT(Convert("a_3x2.raw", "b_2x3.raw").errors, HasSubstr("--size 3x2"));
}

TEST_F(ConvertCommandTest, NothingIsReplacedWithoutForce) {
    WriteBytes(folder_.Path() / "b.png", "old");
    EXPECT_EQ(Convert("a_3x2.raw", "b.png").exitCode, 5);
    EXPECT_EQ(ReadBytes(folder_.Path() / "b.png"), "old");
    EXPECT_EQ(Convert("a_3x2.raw", "b.png", {"--force"}).exitCode, 0);
    EXPECT_EQ(ReadFrameFile(Path("b.png"), std::nullopt).pixels, kPixels);
    EXPECT_EQ(Convert("missing.png", "c.png").exitCode, 3);
    EXPECT_FALSE(std::filesystem::exists(folder_.Path() / "c.png"));
}

TEST_F(ConvertCommandTest, WhatCannotBeIsWrongUse) {
    EXPECT_EQ(Convert("a_3x2.raw", "b.jpg").exitCode, 2);
    EXPECT_EQ(Convert("a_3x2.raw", "b.pgm", {"--window", "0:9"}).exitCode, 2);
    EXPECT_EQ(Convert("a_3x2.raw", "b.png", {"--window", "9:9"}).exitCode, 2);
    EXPECT_EQ(Convert("a_3x2.raw", "b.png", {"--window", "0:9", "--png16"}).exitCode, 2);
    EXPECT_EQ(Convert("a_3x2.raw", "b.tif", {"--png16"}).exitCode, 2);
    EXPECT_EQ(Convert("a_3x2.raw", "b.png", {"--deflate"}).exitCode, 2);
    EXPECT_EQ(Convert("a_3x2.raw", "a_3x2.raw", {"--force"}).exitCode, 2);
    EXPECT_EQ(ReadBytes(folder_.Path() / "a_3x2.raw"), kLevels);
}

TEST_F(ConvertCommandTest, JsonTellsTheWindow) {
    const Json object = Json::parse(Convert("a_3x2.raw", "b.bmp", {"--json"}).report);
    EXPECT_EQ(object["exit"], 0);
    EXPECT_EQ(object["window"], (Json{0, 65535}));
    EXPECT_EQ(object["keepsAllLevels"], false);
    EXPECT_EQ(object["bits"], 8);
    const Json plain = Json::parse(Convert("a_3x2.raw", "b.tif", {"--json"}).report);
    EXPECT_TRUE(plain["window"].is_null());
    EXPECT_EQ(plain["keepsAllLevels"], true);
}

}  // namespace
}  // namespace vastrelline

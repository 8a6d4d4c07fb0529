// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <string>
#include <vector>

#include "report/Bitmap.h"
#include "support/BitmapFile.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/ShownMessages.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;  // texts with zeros within

class BitmapTest : public testing::Test {
protected:
    std::filesystem::path At(std::string_view name) const { return folder_.Path() / name; }
    std::wstring Wide(std::wstring_view name) const { return folder_.Wide(name); }
    std::string Saved() const { return ReadBytes(At("a.bmp")); }
    std::ptrdiff_t CountFiles() const {
        return std::distance(std::filesystem::directory_iterator(folder_.Path()), {});
    }
    static bool IsSilent() { return ShownMessages::Count() == 0; }

private:
    TemporaryFolder folder_;
    ShownMessages messages_;
};

// Three pixels and a byte behind each row that is no pixel.
const std::vector<uint8_t> kPixels = {1, 2, 3, 77, 254, 255, 0, 88};

TEST_F(BitmapTest, HeadersAreByteForByteInTheirOrder) {
    EXPECT_EQ(SaveBitmap8(Wide(L"a.bmp"), 4, 3, 2, kPixels.data()), 1);
    const std::string expected =
        "BM"
        "\x3E\x04\x00\x00"  // 1078 + 4 * 2 = 1086
        "\x00\x00\x00\x00"
        "\x36\x04\x00\x00"  // 1078
        "\x28\x00\x00\x00"  // 40
        "\x03\x00\x00\x00"
        "\x02\x00\x00\x00"
        "\x01\x00\x08\x00"
        "\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00\x00"
        "\x00\x01\x00\x00"  // 256
        "\x00\x00\x00\x00"s;
    EXPECT_EQ(Saved().substr(0, 54), expected);
}

TEST_F(BitmapTest, PaletteIs256GreysFromBlackToWhite) {
    EXPECT_EQ(SaveBitmap8(Wide(L"a.bmp"), 4, 3, 2, kPixels.data()), 1);
    EXPECT_EQ(Saved().substr(54, 12), "\0\0\0\0\1\1\1\0\2\2\2\0"s);
    EXPECT_EQ(Saved().substr(1070, 8), "\xFE\xFE\xFE\0\xFF\xFF\xFF\0"s);
}

TEST_F(BitmapTest, BottomRowComesFirstAndZerosFillTheRows) {
    EXPECT_EQ(SaveBitmap8(Wide(L"a.bmp"), 4, 3, 2, kPixels.data()), 1);
    EXPECT_EQ(Saved().substr(1078), "\xFE\xFF\0\0\1\2\3\0"s);
    EXPECT_THAT(ReadGreyBitmap(Saved()), EqualsFrame(FromRows({{1, 2, 3}, {254, 255, 0}})));
    EXPECT_TRUE(IsSilent());
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(BitmapTest, RowsOfAFrameTakeAMultipleOfFourBytes) {
    struct WidthCase {
        int32_t width;
        size_t rowBytes;
    };
    for (const WidthCase& c : {WidthCase{1, 4}, {3, 4}, {4, 4}, {5, 8}, {10, 12}, {13, 16}, {1300, 1300}})
        for (const int32_t height : {1, 7}) {
            SCOPED_TRACE(testing::Message() << c.width << " x " << height);
            const Frame frame = Noise(c.width, height, 4095, 7);
            ASSERT_EQ(SaveFrameBitmap(frame.Data(), c.width, height, Wide(L"a.bmp")), 1);
            EXPECT_EQ(Saved().size(), 1078 + c.rowBytes * static_cast<size_t>(height));
            EXPECT_THAT(ReadGreyBitmap(Saved()), EqualsFrame(ThroughUsualWindow(frame)));
        }
}

// By hand: level * 255 / 4096 + 0.5, truncated: 8.5 levels make the first grey, 4087.5 the last.
TEST_F(BitmapTest, FrameIsSeenThroughTheWindowOf4096Levels) {
    const Frame frame = FromRows({{0, 8, 9, 2047, 2048}, {4087, 4088, 4095, 4096, 65535}});
    EXPECT_EQ(SaveFrameBitmap(frame.Data(), 5, 2, Wide(L"a.bmp")), 1);
    EXPECT_THAT(ReadGreyBitmap(Saved()),
                EqualsFrame(FromRows({{0, 0, 1, 127, 128}, {254, 255, 255, 255, 255}})));
}

TEST_F(BitmapTest, OldFileIsReplacedAndNothingOfItStays) {
    WriteBytes(At("a.bmp"), std::string(5000, 'x'));
    EXPECT_EQ(SaveBitmap8(Wide(L"a.bmp"), 4, 3, 2, kPixels.data()), 1);
    EXPECT_THAT(ReadGreyBitmap(Saved()), EqualsFrame(FromRows({{1, 2, 3}, {254, 255, 0}})));
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(BitmapTest, NoPixelsLeaveAnEmptyFileAndAMessage) {
    WriteBytes(At("a.bmp"), "old");
    for (const wchar_t* name : {L"a.bmp", L"b.bmp"}) {
        EXPECT_EQ(SaveBitmap8(Wide(name), 4, 3, 2, nullptr), 0);
        EXPECT_TRUE(ShownMessages::AreOnly(L"No Image to Save !", MessageIcon::None));
        ShownMessages::Take();
    }
    EXPECT_EQ(Saved(), "");
    EXPECT_EQ(ReadBytes(At("b.bmp")), "");
    EXPECT_EQ(CountFiles(), 2);
}

// The file is opened before anything else.
TEST_F(BitmapTest, NoPixelsAndNoFileAreNoMessage) {
    EXPECT_EQ(SaveBitmap8(Wide(L"missing") + L"\\a.bmp", 4, 3, 2, nullptr), 0);
    EXPECT_TRUE(IsSilent());
    EXPECT_EQ(CountFiles(), 0);
}

TEST_F(BitmapTest, MissingFolderIsNotMade) {
    EXPECT_EQ(SaveBitmap8(Wide(L"missing") + L"\\a.bmp", 4, 3, 2, kPixels.data()), 0);
    EXPECT_TRUE(IsSilent());
    EXPECT_EQ(CountFiles(), 0);
}

TEST_F(BitmapTest, FolderAsThePathStays) {
    std::filesystem::create_directory(At("a.bmp"));
    WriteBytes(At("a.bmp") / "inside", "kept");
    EXPECT_EQ(SaveBitmap8(Wide(L"a.bmp"), 4, 3, 2, kPixels.data()), 0);
    EXPECT_EQ(SaveBitmap8(Wide(L""), 4, 3, 2, kPixels.data()), 0);
    EXPECT_EQ(SaveBitmap8(L"", 4, 3, 2, kPixels.data()), 0);
    EXPECT_EQ(ReadBytes(At("a.bmp") / "inside"), "kept");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(BitmapTest, FileThatMayNotBeWrittenStays) {
    WriteBytes(At("a.bmp"), "old");
    std::filesystem::permissions(At("a.bmp"), std::filesystem::perms::owner_read);
    EXPECT_EQ(SaveBitmap8(Wide(L"a.bmp"), 4, 3, 2, kPixels.data()), 0);
    EXPECT_EQ(SaveBitmap8(Wide(L"a.bmp"), 4, 3, 2, nullptr), 0);
    EXPECT_TRUE(IsSilent());
    EXPECT_EQ(Saved(), "old");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(BitmapTest, SizesThatNoBitmapHasAreRefused) {
    EXPECT_EQ(SaveBitmap8(Wide(L"a.bmp"), 4, -1, 2, kPixels.data()), 0);
    EXPECT_EQ(SaveBitmap8(Wide(L"a.bmp"), 4, 3, -1, kPixels.data()), 0);
    EXPECT_EQ(SaveBitmap8(Wide(L"a.bmp"), 2, 3, 2, kPixels.data()), 0);
    // 2^31 - 1 rows of 4 bytes: the file's size takes more than 32 bits.
    EXPECT_EQ(SaveBitmap8(Wide(L"a.bmp"), 4, 3, INT32_MAX, kPixels.data()), 0);
    EXPECT_EQ(CountFiles(), 0);
}

TEST_F(BitmapTest, BitmapWithoutPixelsIsHeadersAlone) {
    EXPECT_EQ(SaveBitmap8(Wide(L"a.bmp"), 4, 3, 0, kPixels.data()), 1);
    EXPECT_EQ(Saved().size(), 1078U);
    EXPECT_THAT(ReadGreyBitmap(Saved()), EqualsFrame(Frame(3, 0)));
}

}  // namespace
}  // namespace vastrelline

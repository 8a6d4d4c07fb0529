// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "formats/FrameFile.h"
#include "formats/PictureFile.h"
#include "messages/ToolError.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

const Frame kFrame{3, 1, {0, 300, 65535}};

TEST(PictureFile, EveryKindOf16BitsKeepsAllLevels) {
    const TemporaryFolder folder;
    for (const std::string leaf : {"a_3x1.raw", "a.pgm", "a.png", "a.tif", "b.tiff"}) {
        WritePictureFile(folder.Narrow(leaf), kFrame, {});
        EXPECT_EQ(ReadFrameFile(folder.Narrow(leaf), std::nullopt).pixels, kFrame.pixels) << leaf;
    }
}

TEST(PictureFile, AWindowMakes8Bits) {
    const TemporaryFolder folder;
    PictureStyle style;
    style.window = GreyWindow{0, 600};
    for (const std::string leaf : {"a.png", "a.tif", "a.bmp"}) {
        WritePictureFile(folder.Narrow(leaf), kFrame, style);
        const LoadedFrame loaded = LoadFrameFile(folder.Narrow(leaf), {});
        EXPECT_EQ(loaded.sourceBits, 8) << leaf;
        EXPECT_EQ(loaded.frame.pixels, (std::vector<uint16_t>{0, 128, 255})) << leaf;
    }
}

TEST(PictureFile, ABitmapNeedsAWindow) {
    const TemporaryFolder folder;
    EXPECT_THROW(WritePictureFile(folder.Narrow("a.bmp"), kFrame, {}), UsageError);
    EXPECT_THROW(WritePictureFile(folder.Narrow("a.jpg"), kFrame, {}), UsageError);
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

}  // namespace
}  // namespace vastrelline

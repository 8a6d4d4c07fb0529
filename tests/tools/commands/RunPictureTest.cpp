// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "commands/RunPicture.h"
#include "messages/ToolError.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

TEST(RunPicture, ShowsAWindowInAPngUnlessAllLevelsAreWanted) {
    RunOptions options;
    options.picture = "a.png";
    EXPECT_EQ(DescribeStyle(MakeStyle(options, 1023)), "8 bits, window 0 to 1023");
    options.window = "5:90";
    EXPECT_EQ(DescribeStyle(MakeStyle(options, 1023)), "8 bits, window 5 to 90");
    options.isPng16 = true;
    EXPECT_EQ(DescribeStyle(MakeStyle(options, 1023)), "16-bit levels");
    options.picture = "a.tif";
    EXPECT_EQ(DescribeStyle(MakeStyle(options, 1023)), "16-bit levels");
    EXPECT_EQ(MakeStyle(options, 1023).topLevel, 1023);
}

TEST(RunPicture, OfAnExportThatSavedNoBitmapIsAnError) {
    const TemporaryFolder folder;
    const ExportTraits& traits = TraitsOf(ExportKind::N);
    EXPECT_THROW(ReadBitmap(folder.Narrow("missing.bmp"), traits), ProcessingError);
    WriteBytes(folder.Path() / "empty.bmp", "");
    EXPECT_THROW(ReadBitmap(folder.Narrow("empty.bmp"), traits), ProcessingError);
    WriteBytes(folder.Path() / "a.bmp", "BM");
    EXPECT_EQ(ReadBitmap(folder.Narrow("a.bmp"), traits), (std::vector<uint8_t>{'B', 'M'}));
}

}  // namespace
}  // namespace vastrelline

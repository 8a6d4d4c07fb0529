// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>

#include "batch/FrameList.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

// Names whose letters differ in their case alone are one name here.

TEST(FrameListWindows, TellsResultsApartThatTheSystemTakesForOne) {
    const TemporaryFolder folder;
    fs::create_directory(folder.Path() / "in");
    WriteBytes(folder.Path() / "in" / "Tooth.png", "");
    WriteBytes(folder.Path() / "in" / "tooth.pgm", "");
    const std::vector<ListedFrame> frames = ListFrames({folder.Narrow("in")}, folder.Narrow("out"), "png");
    ASSERT_EQ(frames.size(), 2U);
    EXPECT_EQ(frames[0].result, "Tooth.png.png");
    EXPECT_EQ(frames[1].result, "tooth.pgm.png");
}

TEST(FrameListWindows, KnowsItsOutputFolderInAnyCase) {
    const TemporaryFolder folder;
    fs::create_directories(folder.Path() / "scans" / "out");
    WriteBytes(folder.Path() / "scans" / "a.raw", "");
    WriteBytes(folder.Path() / "scans" / "out" / "a.png", "");
    EXPECT_EQ(ListFrames({folder.Narrow("scans")}, folder.Narrow("Scans") + "\\OUT", "png").size(), 1U);
    EXPECT_THROW(ListFrames({folder.Narrow("scans")}, folder.Narrow("SCANS"), "png"), std::runtime_error);
}

}  // namespace
}  // namespace vastrelline

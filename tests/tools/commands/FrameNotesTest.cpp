// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <sstream>

#include "commands/FrameNotes.h"

namespace vastrelline {
namespace {

TEST(FrameNotes, AreWarningsAtTheFile) {
    LoadedFrame loaded;
    loaded.notes = {"one", "two"};
    std::ostringstream stream;
    Messages messages(stream, false);
    ShowFrameNotes("a.tif", loaded, messages);
    EXPECT_EQ(stream.str(), "a.tif: warning: one\na.tif: warning: two\n");
}

TEST(FrameNotes, AFrameIsOneLine) {
    LoadedFrame loaded;
    loaded.kind = FileKind::Tiff;
    loaded.frame = {2, 1, {9, 7}};
    EXPECT_EQ(DescribeFrame(loaded), "TIFF picture, 2x1 pixels, levels 7 to 9");
}

}  // namespace
}  // namespace vastrelline

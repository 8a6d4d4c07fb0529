// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "report/Bitmap.h"
#include "support/BitmapFile.h"
#include "support/FrameMatcher.h"
#include "support/Frames.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

// The pixels of a binary grey picture of 8 bits, as the program writes it: the head and one byte a pixel.
Frame ReadPgm(const std::string& bytes, int32_t width, int32_t height) {
    const std::string head = "P5\n" + std::to_string(width) + " " + std::to_string(height) + "\n255\n";
    EXPECT_EQ(bytes.substr(0, head.size()), head);
    Frame frame = Flat(width, height, 0);
    EXPECT_EQ(bytes.size(), head.size() + frame.pixels.size());
    if (bytes.size() != head.size() + frame.pixels.size()) return frame;
    for (size_t i = 0; i < frame.pixels.size(); ++i)
        frame.pixels[i] = static_cast<unsigned char>(bytes[head.size() + i]);
    return frame;
}

TEST(BitmapReader, AnotherProgramSeesTheSamePixels) {
#ifdef VASTRELLINE_BMPTOPNM
    const TemporaryFolder folder;
    for (const int32_t width : {1, 2, 3, 4, 10, 61}) {
        SCOPED_TRACE(width);
        const Frame frame = Noise(width, 7, 4095, 12);
        ASSERT_EQ(SaveFrameBitmap(frame.pixels.data(), width, 7, folder.Wide(L"a.bmp")), 1);
        std::string command = VASTRELLINE_BMPTOPNM " -quiet '";
        command.append(folder.Narrow("a.bmp")).append("' >'").append(folder.Narrow("a.pgm")).append("'");
        ASSERT_EQ(std::system(command.c_str()), 0);
        EXPECT_THAT(ReadPgm(ReadBytes(folder.Path() / "a.pgm"), width, 7),
                    EqualsFrame(ThroughUsualWindow(frame)));
    }
#else
    GTEST_SKIP() << "there was no bmptopnm when this was configured";
#endif
}

}  // namespace
}  // namespace vastrelline

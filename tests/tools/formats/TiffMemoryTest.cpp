// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "formats/TiffMemory.h"

namespace vastrelline {
namespace {

TEST(TiffMemory, WhatIsNoTiffIsTold) {
    const std::vector<uint8_t> bytes{'n', 'o', 'n', 'e', 0, 0, 0, 0};
    testing::internal::CaptureStderr();
    TiffMemory memory(bytes);
    EXPECT_EQ(memory.File(), nullptr);
    EXPECT_NE(memory.Message(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(TiffMemory, AFileCannotBeWrittenWhileItIsRead) {
    TiffMemory made;
    ASSERT_NE(made.File(), nullptr);
    TIFFSetField(made.File(), TIFFTAG_IMAGEWIDTH, 1);
    TIFFSetField(made.File(), TIFFTAG_IMAGELENGTH, 1);
    TIFFSetField(made.File(), TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(made.File(), TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
    uint8_t level = 7;
    ASSERT_EQ(TIFFWriteScanline(made.File(), &level, 0, 0), 1);
    made.Close();
    const std::vector<uint8_t> before = made.Written();
    ASSERT_GT(before.size(), 9U);

    TiffMemory memory(before);
    ASSERT_NE(memory.File(), nullptr);
    EXPECT_NE(TIFFWriteScanline(memory.File(), &level, 0, 0), 1);
    memory.Close();
    EXPECT_EQ(before, made.Written());
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "commands/FrameInfo.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

LoadedFrame Loaded(std::vector<uint16_t> pixels, int bits = 16) {
    LoadedFrame loaded;
    loaded.frame = {static_cast<int32_t>(pixels.size()), 1, std::move(pixels)};
    loaded.sourceBits = bits;
    return loaded;
}

TEST(FrameInfo, AFrameOf12BitsNeedsNoAdvice) {
    const FrameInfo info = DescribeLoadedFrame("a_3x1.raw", Loaded({1, 2, 4095}));
    EXPECT_EQ(info.size, (FrameSize{3, 1}));
    EXPECT_EQ(info.levels.bitsUsed, 12);
    EXPECT_THAT(info.advice, IsEmpty());
    EXPECT_EQ(info.next, "vastrelline run a_3x1.raw --profile P.ini --section General --out picture.png");
    EXPECT_EQ(
        FormatFrameInfo(info),
        "a_3x1.raw\n"
        "  format      raw frame\n"
        "  size        3x1 pixels\n"
        "  bits        16 a pixel, 12 used: fits 12 bits (0 to 4095)\n"
        "  levels      1 to 4095, mean 1366.0, 3 different\n"
        "  percentiles 1 % 1, 5 % 1, 25 % 1, 50 % 2, 75 % 4095, 95 % 4095, 99 % 4095\n"
        "  at 0        0.00 % of the pixels\n"
        "  at 4095     33.33 % of the pixels\n"
        "  corners     none is flat\n"
        "  next        vastrelline run a_3x1.raw --profile P.ini --section General --out picture.png\n");
}

TEST(FrameInfo, WhatARunWouldTakeWronglyIsSaid) {
    EXPECT_THAT(
        DescribeLoadedFrame("a", Loaded({1, 4096})).advice,
        ElementsAre("the brightest level needs 13 bits: a profile with BITSTORED=12 expects 0 to 4095"));
    EXPECT_THAT(DescribeLoadedFrame("a", Loaded({16, 65520})).advice,
                ElementsAre(HasSubstr("multiples of 16: they seem moved up by 4 bits")));
    EXPECT_THAT(DescribeLoadedFrame("a", Loaded({1, 255}, 8)).advice,
                ElementsAre(HasSubstr("8 bits a pixel")));
    EXPECT_THAT(DescribeLoadedFrame("a", Loaded({7, 7})).advice, ElementsAre(HasSubstr("of level 7")));
}

TEST(FrameInfo, TheNextCommandCanBeCopied) {
    EXPECT_THAT(DescribeLoadedFrame("it's mine.raw", Loaded({1, 2})).next,
                HasSubstr("run 'it'\\''s mine.raw' --size 2x1 --profile"));
}

TEST(FrameInfo, FlatCornersAreListed) {
    LoadedFrame loaded = Loaded({});
    loaded.frame = {6, 6, std::vector<uint16_t>(36)};
    for (size_t i = 0; i < 36; ++i) loaded.frame.pixels[i] = static_cast<uint16_t>(50 + i);
    for (const size_t i : {34U, 35U, 29U}) loaded.frame.pixels[i] = 0;
    EXPECT_THAT(FormatFrameInfo(DescribeLoadedFrame("a", loaded)),
                HasSubstr("  corners     bottom right 2x2 at level 0\n"));
}

TEST(ShellWord, QuotesWhatAShellWouldReadOtherwise) {
    EXPECT_EQ(ShellWord("a/b-c_1.raw"), "a/b-c_1.raw");
    EXPECT_EQ(ShellWord("a b"), "'a b'");
    EXPECT_EQ(ShellWord("$x"), "'$x'");
    EXPECT_EQ(ShellWord("'"), "''\\'''");
    EXPECT_EQ(ShellWord(""), "''");
}

}  // namespace
}  // namespace vastrelline

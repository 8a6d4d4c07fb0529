// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>

#include "pictures/DotLetters.h"

namespace vastrelline {
namespace {

std::string Drawn(char letter) {
    std::string drawing;
    for (int32_t row = 0; row < kDotRows; ++row) {
        for (int32_t column = 0; column < kDotColumns; ++column)
            drawing += DotsOf(letter).HasDot(column, row) ? '#' : '.';
        drawing += '\n';
    }
    return drawing;
}

TEST(DotLetters, LookLikeLetters) {
    EXPECT_EQ(Drawn('L'), "#....\n#....\n#....\n#....\n#....\n#....\n#####\n");
    EXPECT_EQ(Drawn('-'), ".....\n.....\n.....\n#####\n.....\n.....\n.....\n");
    EXPECT_EQ(Drawn(' '), ".....\n.....\n.....\n.....\n.....\n.....\n.....\n");
}

TEST(DotLetters, OfOtherBytesAreBoxes) {
    const std::string box = "#####\n#...#\n#...#\n#...#\n#...#\n#...#\n#####\n";
    for (const char letter : {'\x1F', '\x7F', '\x80', '\xFF', '\0'}) EXPECT_EQ(Drawn(letter), box);
    EXPECT_NE(Drawn('~'), box);
}

TEST(DotLetters, DifferFromEachOther) {
    for (char a = ' '; a < '~'; ++a)
        for (char b = static_cast<char>(a + 1); b <= '~'; ++b) EXPECT_NE(Drawn(a), Drawn(b)) << a << b;
}

}  // namespace
}  // namespace vastrelline

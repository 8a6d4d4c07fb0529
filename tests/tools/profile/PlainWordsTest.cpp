// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "profile/PlainWords.h"

namespace vastrelline {
namespace {

TEST(PlainWords, LosesLinksAndCodeQuotes) {
    EXPECT_EQ(PlainWords("A `KEY` of the [fixed chain](fixed.md)."), "A KEY of the fixed chain.");
    EXPECT_EQ(PlainWords("[`a`](b) and [c](d)"), "a and c");
    EXPECT_EQ(PlainWords("0 [to] 5, [open"), "0 [to] 5, [open");
    EXPECT_EQ(PlainWords("[a](b"), "[a](b");
}

TEST(WrapWords, FillsLinesUpToTheWidth) {
    EXPECT_EQ(WrapWords("one two three", "", 7), "one two\nthree\n");
    EXPECT_EQ(WrapWords("one two", "; ", 8), "; one\n; two\n");
    EXPECT_EQ(WrapWords("a\nb", "", 80), "a b\n");
    EXPECT_EQ(WrapWords("extraordinary x", "", 5), "extraordinary\nx\n");
    EXPECT_EQ(WrapWords("", "; ", 8), "");
    // A character of several bytes is one.
    EXPECT_EQ(WrapWords("\xC3\xA4\xC3\xA4 \xC3\xA4", "", 4), "\xC3\xA4\xC3\xA4 \xC3\xA4\n");
}

TEST(WrapWords, KeepsParagraphsListsAndTables) {
    EXPECT_EQ(WrapWords("a\n\nb", "", 80), "a\n\nb\n");
    EXPECT_EQ(WrapWords("- a\n- b\nc", "", 80), "- a\n- b c\n");
    EXPECT_EQ(WrapWords("a\n| b | c |\n|---|---|", "", 5), "a\n| b | c |\n|---|---|\n");
}

TEST(ShownText, LetsNothingMoveTheCursor) {
    EXPECT_EQ(ShownText("a\x1B[31m\x07"), "a?[31m?");
    EXPECT_EQ(ShownText("\xC2\x9B"
                        "31m"),
              "?31m");  // a control of the upper half
    EXPECT_EQ(ShownText("\xE2\x80\xAE"
                        "abc"),
              "?abc");                    // turns the direction of writing
    EXPECT_EQ(ShownText("\xFFz"), "?z");  // no UTF-8
    EXPECT_EQ(ShownText("\xC3\xA4"), "\xC3\xA4");
}

TEST(ShortText, EndsWithPointsWhereItIsCut) {
    EXPECT_EQ(ShortText("abcdef", 6), "abcdef");
    EXPECT_EQ(ShortText("abcdefg", 6), "abc...");
    EXPECT_EQ(ShortText("\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4", 4), "\xC3\xA4...");
}

TEST(PaddedText, CountsCharacters) {
    EXPECT_EQ(PaddedText("\xC3\xA4", 3), "\xC3\xA4  ");
    EXPECT_EQ(PaddedText("abcd", 3), "abcd");
    EXPECT_EQ(CountCharacters("\xC3\xA4"
                              "b"),
              2U);
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <random>

#include "messages/ToolError.h"
#include "profile/TextMerge.h"
#include "profile_text/ProfileText.h"
#include "profile_text/Utf8.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;

std::string Merge(const std::string& bytes, const std::string& text) {
    return MergeText("p.ini", bytes, text);
}

TEST(TextMerge, ShowsEveryLineEndAsOne) {
    EXPECT_EQ(EditorText("a\r\nb\rc\nd"), "a\nb\nc\nd");
    EXPECT_EQ(EditorText("\xEF\xBB\xBF"
                         "a\r\n"),
              "a\n");
    EXPECT_EQ(EditorText("\xFF\xFE"
                         "a\0\r\0\n\0\xE4\0"s),
              "a\n\xC3\xA4");
    EXPECT_EQ(EditorText(""), "");
    EXPECT_EQ(EditorText("a\xE4z"), "a\xEF\xBF\xBDz");
}

TEST(TextMerge, KeepsTheBytesOfLinesThatStay) {
    const std::string bytes = "; \xE4\r\nA=1\nB=2\rC=3\r\n";
    EXPECT_EQ(Merge(bytes, EditorText(bytes)), bytes);
    EXPECT_EQ(Merge(bytes, "; \xEF\xBF\xBD\nA=1\nB=5\nC=3\n"), "; \xE4\r\nA=1\nB=5\nC=3\r\n");
    EXPECT_EQ(Merge(bytes, "; \xEF\xBF\xBD\nA=1\nB=2\nX=9\nC=3\n"), "; \xE4\r\nA=1\nB=2\rX=9\rC=3\r\n");
    EXPECT_EQ(Merge(bytes, "first\n; \xEF\xBF\xBD\nC=3\n"), "first\r\n; \xE4\r\nC=3\r\n");
}

TEST(TextMerge, EncodesNewLinesAsTheFileIs) {
    EXPECT_EQ(Merge("\xFE\xFF\0a\0\n"s, "a\n\xC3\xA4\n"), "\xFE\xFF\0a\0\n\0\xE4\0\n"s);
    EXPECT_EQ(Merge("\xEF\xBB\xBF", "\xC3\xA4"), "\xEF\xBB\xBF\xC3\xA4");
    // Half of a unit at the end belongs to no line, and stays.
    EXPECT_EQ(Merge("\xFF\xFE"
                    "a\0z"s,
                    "b"),
              "\xFF\xFE"
              "b\0z"s);
}

TEST(TextMerge, EndsLinesAsTheOneBefore) {
    EXPECT_EQ(Merge("", "a\nb"), "a\r\nb");
    EXPECT_EQ(Merge("a", "a\nb\n"), "a\r\nb\r\n");
    EXPECT_EQ(Merge("a\nb", "a\nb\n"), "a\nb\n");
    EXPECT_EQ(Merge("a\nb\r\n", "a\nb"), "a\nb");
    EXPECT_EQ(Merge("a\r\n", ""), "");
    // The blank line's own end would make one line end of two.
    EXPECT_EQ(Merge("a\rb\r\n\n", "a\n\n"), "a\r\r\n");
}

TEST(TextMerge, TakesACarriageReturnForALineEnd) { EXPECT_EQ(Merge("a\n", "a\r\nb\rc\r"), "a\nb\nc\n"); }

TEST(TextMerge, RefusesAMarkThatWouldChangeTheReading) {
    EXPECT_THROW(Merge("a\n",
                       "\xEF\xBB\xBF"
                       "a\n"),
                 InputError);
}

TEST(TextMerge, GivesBackWhatWasTypedForRandomTexts) {
    std::mt19937 random(2);
    constexpr const char* kPieces[] = {"A=1", "\n", "\n", "[B]", " ", "\xC3\xA4", "\xF0\x9F\xA6\xB7", ";"};
    constexpr const char* kEnds[] = {"\n", "\r\n", "\r"};
    constexpr const char* kMarks[] = {"", "\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF"};
    for (int round = 0; round < 2000; ++round) {
        const std::string mark = kMarks[random() % std::size(kMarks)];
        const ProfileEncoding encoding(mark, kUtf8Codec);
        std::string bytes = mark;
        for (size_t count = random() % 20; count > 0; --count) {
            std::string piece = kPieces[random() % std::size(kPieces)];
            if (piece == "\n") piece = kEnds[random() % std::size(kEnds)];
            bytes += encoding.Encode(DecodeUtf8(piece));
        }
        ASSERT_EQ(Merge(bytes, EditorText(bytes)), bytes);
        std::string text;
        for (size_t count = random() % 20; count > 0; --count) text += kPieces[random() % std::size(kPieces)];
        ASSERT_EQ(EditorText(Merge(bytes, text)), text);
    }
}

}  // namespace
}  // namespace vastrelline

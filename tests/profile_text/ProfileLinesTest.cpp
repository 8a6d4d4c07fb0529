// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "profile_text/ProfileEncoding.h"
#include "profile_text/ProfileLines.h"

namespace vastrelline {
namespace {

std::vector<ProfileLine> LinesOf(std::string_view bytes) {
    const ProfileEncoding encoding(bytes, kUtf8Codec);
    ProfileLineReader reader(bytes, {encoding.MarkSize(), bytes.size()}, encoding);
    std::vector<ProfileLine> lines;
    while (const std::optional<ProfileLine> line = reader.Next()) lines.push_back(*line);
    return lines;
}

std::string_view Cut(std::string_view bytes, ByteRange range) {
    return bytes.substr(range.begin, range.Size());
}

TEST(ProfileLines, EveryKindOfLineIsToldApart) {
    const std::vector<ProfileLine> lines = LinesOf("[a]\r\n;k=1\n \t\nk=1\rbare");
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines[0].kind, LineKind::Head);
    EXPECT_EQ(lines[1].kind, LineKind::Comment);
    EXPECT_EQ(lines[2].kind, LineKind::Blank);
    EXPECT_EQ(lines[3].kind, LineKind::Entry);
    EXPECT_TRUE(lines[3].hasValue);
    EXPECT_EQ(lines[4].kind, LineKind::Entry);
    EXPECT_FALSE(lines[4].hasValue);
}

TEST(ProfileLines, PartsOfAnEntryLieWhereTheyStand) {
    constexpr std::string_view kBytes = "  key = a = b \r\n";
    const std::vector<ProfileLine> lines = LinesOf(kBytes);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(Cut(kBytes, lines[0].whole), kBytes);
    EXPECT_EQ(Cut(kBytes, lines[0].content), "  key = a = b ");
    EXPECT_EQ(Cut(kBytes, lines[0].name), "key");
    EXPECT_EQ(Cut(kBytes, lines[0].rawValue), " a = b ");
    EXPECT_EQ(Cut(kBytes, lines[0].value), "a = b");
}

TEST(ProfileLines, HeadEndsAtItsLastBracket) {
    constexpr std::string_view kBytes = " [ a]b ] rest";
    const std::vector<ProfileLine> lines = LinesOf(kBytes);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].kind, LineKind::Head);
    EXPECT_EQ(Cut(kBytes, lines[0].name), "a]b");
}

TEST(ProfileLines, EmptyTextHasNoLine) { EXPECT_TRUE(LinesOf("").empty()); }

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "profile_text/ProfileEncoding.h"

namespace vastrelline {
namespace {

using namespace std::string_view_literals;

TEST(ProfileEncoding, WithoutAMarkItIsTheCodecs) {
    const ProfileEncoding encoding("a=1", kUtf8Codec);
    EXPECT_EQ(encoding.MarkSize(), 0U);
    EXPECT_EQ(encoding.UnitSize(), 1U);
    EXPECT_EQ(encoding.UnitAt("a=1", 1), uint32_t{'='});
    EXPECT_EQ(encoding.Decode("\xC3\xA9"), L"\u00E9");
    EXPECT_EQ(encoding.Encode(L"\u00E9"), "\xC3\xA9");
}

TEST(ProfileEncoding, MarkOfUtf8IsNoText) {
    const ProfileEncoding encoding("\xEF\xBB\xBF[a]", kUtf8Codec);
    EXPECT_EQ(encoding.MarkSize(), 3U);
    EXPECT_EQ(encoding.UnitSize(), 1U);
}

TEST(ProfileEncoding, MarkTellsTheOrderOfBytes) {
    const ProfileEncoding little("\xFF\xFE"sv, kUtf8Codec);
    EXPECT_EQ(little.MarkSize(), 2U);
    EXPECT_EQ(little.UnitSize(), 2U);
    EXPECT_EQ(little.UnitAt("\x16\x04"sv, 0), 0x0416U);
    EXPECT_EQ(little.Encode(L"\u0416"), "\x16\x04");
    const ProfileEncoding big("\xFE\xFF"sv, kUtf8Codec);
    EXPECT_EQ(big.UnitAt("\x04\x16"sv, 0), 0x0416U);
    EXPECT_EQ(big.Decode("\x04\x16"sv), L"\u0416");
}

// U+1F9B7 is the pair D83E DDB7: one wide character, or two where they have 16 bits.
TEST(ProfileEncoding, PairOfSurrogatesIsTheCharacterItStandsFor) {
    const ProfileEncoding encoding("\xFF\xFE"sv, kUtf8Codec);
    EXPECT_EQ(encoding.Decode("\x3E\xD8\xB7\xDD"sv), L"\U0001F9B7");
    EXPECT_EQ(encoding.Encode(L"\U0001F9B7"), "\x3E\xD8\xB7\xDD");
}

}  // namespace
}  // namespace vastrelline

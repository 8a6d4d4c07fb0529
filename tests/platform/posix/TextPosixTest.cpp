// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>

#include "platform/Text.h"

namespace vastrelline {
namespace {

TEST(WidenThreadTextPosix, Utf8WithEscapesForOtherBytes) {
    EXPECT_EQ(WidenThreadText("\xC3\xA9\xF0\x9F\x98\x80"), L"\u00E9\U0001F600");
    EXPECT_EQ(WidenThreadText("a\xE9"), (std::wstring{L'a', 0xDCE9}));
}

TEST(WidenUtf8TextPosix, AnInvalidByteCountsAsOneUnit) {
    EXPECT_EQ(WidenUtf8Text(std::string(260, '\xE9').c_str()), std::wstring(260, 0xDCE9));
    EXPECT_EQ(WidenUtf8Text(std::string(261, '\xE9').c_str()), L"");
}

TEST(NarrowLogTextPosix, AllOfItHoweverManyBytesACharacterTakes) {
    EXPECT_EQ(NarrowLogText(L"ab\u00E9d"),
              "ab\xC3\xA9"
              "d");
    EXPECT_EQ(NarrowLogText(L"\u6F22\u6F22x"), "\xE6\xBC\xA2\xE6\xBC\xA2x");
    EXPECT_EQ(NarrowLogText(L"\U0001F600"), "\xF0\x9F\x98\x80");
}

TEST(NarrowLogTextPosix, EscapedBytesAreThemselves) {
    EXPECT_EQ(NarrowLogText(std::wstring{L'a', 0xDCE9, L'b'}),
              "a\xE9"
              "b");
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>

#include "platform/Text.h"

namespace vastrelline {
namespace {

TEST(WidenThreadText, NullAndEmptyGiveTheEmptyText) {
    EXPECT_EQ(WidenThreadText(nullptr), L"");
    EXPECT_EQ(WidenThreadText(""), L"");
}

TEST(WidenThreadText, AsciiStaysAsItIs) { EXPECT_EQ(WidenThreadText("C:\\x/y z.ini"), L"C:\\x/y z.ini"); }

TEST(WidenUtf8Text, NullAndEmptyGiveTheEmptyText) {
    EXPECT_EQ(WidenUtf8Text(nullptr), L"");
    EXPECT_EQ(WidenUtf8Text(""), L"");
}

TEST(WidenUtf8Text, CharactersOfUpToFourBytes) {
    EXPECT_EQ(WidenUtf8Text("a\xC3\xA9\xE6\xBC\xA2\xF0\x9F\x98\x80"), L"a\u00E9\u6F22\U0001F600");
}

TEST(WidenUtf8Text, TwoHundredSixtyUnitsFitAndOneMoreGivesNothing) {
    EXPECT_EQ(WidenUtf8Text(std::string(260, 'x').c_str()), std::wstring(260, L'x'));
    EXPECT_EQ(WidenUtf8Text(std::string(261, 'x').c_str()), L"");
}

TEST(WidenUtf8Text, TheLimitCountsUnitsAndNotBytes) {
    std::string bytes;
    std::wstring text;
    for (int i = 0; i < 260; ++i) {
        bytes += "\xC3\xA9";
        text += L"\u00E9";
    }
    EXPECT_EQ(WidenUtf8Text(bytes.c_str()), text);
    EXPECT_EQ(WidenUtf8Text((bytes + "x").c_str()), L"");
}

TEST(WidenUtf8Text, ACharacterOutsideTheFirstPlaneCountsTwice) {
    std::string bytes;
    std::wstring text;
    for (int i = 0; i < 130; ++i) {
        bytes += "\xF0\x9F\x98\x80";
        text += L"\U0001F600";
    }
    EXPECT_EQ(WidenUtf8Text(bytes.c_str()), text);
    EXPECT_EQ(WidenUtf8Text((bytes + "x").c_str()), L"");
}

TEST(NarrowLogText, AsciiKeepsItsBytes) {
    EXPECT_EQ(NarrowLogText(L""), "");
    EXPECT_EQ(NarrowLogText(L"\t\t\t Section Name [a]\r\n"), "\t\t\t Section Name [a]\r\n");
}

TEST(LowerCaseAscii, OnlyTheLettersAToZChange) {
    EXPECT_EQ(LowerCaseAscii(L"@AZ[`az{ 09_\u00C4\u0130"), L"@az[`az{ 09_\u00C4\u0130");
    EXPECT_EQ(LowerCaseAscii(L""), L"");
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <random>
#include <string>

#include "profile_text/Utf8.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;  // texts with zeros within

struct Utf8Case {
    const char* name;
    std::string bytes;
    std::wstring text;
};

class Utf8BothWaysTest : public testing::TestWithParam<Utf8Case> {};

TEST_P(Utf8BothWaysTest, DecodesAndEncodesBack) {
    EXPECT_EQ(DecodeUtf8(GetParam().bytes), GetParam().text);
    EXPECT_EQ(EncodeUtf8(GetParam().text), GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(Characters, Utf8BothWaysTest,
                         testing::Values(Utf8Case{"Empty", "", L""}, Utf8Case{"Ascii", "a\x7F", L"a\x7F"},
                                         Utf8Case{"ZeroByte", "a\0b"s, L"a\0b"s},
                                         Utf8Case{"FirstOfTwoBytes", "\xC2\x80", L"\u0080"},
                                         Utf8Case{"LastOfTwoBytes", "\xDF\xBF", L"\u07FF"},
                                         Utf8Case{"FirstOfThreeBytes", "\xE0\xA0\x80", L"\u0800"},
                                         Utf8Case{"LastBeforeSurrogates", "\xED\x9F\xBF", L"\uD7FF"},
                                         Utf8Case{"FirstBehindSurrogates", "\xEE\x80\x80", L"\uE000"},
                                         Utf8Case{"LastOfThreeBytes", "\xEF\xBF\xBF", L"\uFFFF"},
                                         Utf8Case{"FirstOfFourBytes", "\xF0\x90\x80\x80", L"\U00010000"},
                                         Utf8Case{"LastOfAll", "\xF4\x8F\xBF\xBF", L"\U0010FFFF"}),
                         [](const auto& test) { return test.param.name; });

// The escapes of bytes, written out: U+DC00 + byte.
INSTANTIATE_TEST_SUITE_P(
    InvalidBytes, Utf8BothWaysTest,
    testing::Values(Utf8Case{"StrayContinuation", "a\x80", {L'a', 0xDC80}},
                    Utf8Case{"LatinOneWord", "\xC4rm", {0xDCC4, L'r', L'm'}},
                    Utf8Case{"CutOffTwo", "\xC3", {0xDCC3}},
                    Utf8Case{"CutOffThree", "\xE2\x82", {0xDCE2, 0xDC82}},
                    Utf8Case{"CutOffFour", "\xF0\x9F\x98", {0xDCF0, 0xDC9F, 0xDC98}},
                    Utf8Case{"BrokenByLetter", "\xE2\x82z", {0xDCE2, 0xDC82, L'z'}},
                    Utf8Case{"OverlongTwo", "\xC1\xBF", {0xDCC1, 0xDCBF}},
                    Utf8Case{"OverlongThree", "\xE0\x9F\xBF", {0xDCE0, 0xDC9F, 0xDCBF}},
                    Utf8Case{"OverlongFour", "\xF0\x8F\xBF\xBF", {0xDCF0, 0xDC8F, 0xDCBF, 0xDCBF}},
                    Utf8Case{"EncodedSurrogate", "\xED\xB2\x80", {0xDCED, 0xDCB2, 0xDC80}},
                    Utf8Case{"AboveLast", "\xF4\x90\x80\x80", {0xDCF4, 0xDC90, 0xDC80, 0xDC80}},
                    Utf8Case{"NeverUsed", "\xF8\xFE\xFF", {0xDCF8, 0xDCFE, 0xDCFF}}),
    [](const auto& test) { return test.param.name; });

TEST(Utf8, AnyBytesComeBackUnchanged) {
    std::mt19937 random(20240501);
    // Bytes that make and break sequences come up more often than in plain noise.
    const std::string alphabet = "a\x7F\x80\xBF\xC2\xC3\xE0\xE2\xED\xA0\xEF\xF0\x90\xF4\x8F\xFF";
    for (int round = 0; round < 2000; ++round) {
        std::string bytes(random() % 12, '\0');
        for (char& byte : bytes) byte = alphabet[random() % alphabet.size()];
        ASSERT_EQ(EncodeUtf8(DecodeUtf8(bytes)), bytes);
    }
}

TEST(Utf8, LoneSurrogatesThatAreNoByteBecomeQuestionMarks) {
    EXPECT_EQ(EncodeUtf8(std::wstring{L'a', 0xD800, L'b', 0xDC7F, L'c', 0xDD00}), "a?b?c?");
}

}  // namespace
}  // namespace vastrelline

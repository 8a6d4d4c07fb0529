// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>

#include "messages/Markup.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;

TEST(EscapeMarkup, LeavesPlainTextAndOtherScriptsAlone) {
    EXPECT_EQ(EscapeMarkup("tooth 36, 0:4095 (a/b.raw)"), "tooth 36, 0:4095 (a/b.raw)");
    EXPECT_EQ(EscapeMarkup("Zähne \xE6\xAD\xAF \xF0\x9F\xA6\xB7"), "Zähne \xE6\xAD\xAF \xF0\x9F\xA6\xB7");
    EXPECT_EQ(EscapeMarkup(""), "");
}

TEST(EscapeMarkup, KeepsMarkupText) {
    EXPECT_EQ(EscapeMarkup("<script>\"a\" & 'b'</script>"),
              "&lt;script&gt;&quot;a&quot; &amp; &#39;b&#39;&lt;/script&gt;");
    EXPECT_EQ(EscapeMarkup("]]>-->"), "]]&gt;--&gt;");
}

TEST(EscapeMarkup, ShowsControlsAsSigns) {
    EXPECT_EQ(EscapeMarkup("a\nb\tc\0d\x7F"s), "a\u240Ab\u2409c\u2400d\u2421");
    EXPECT_EQ(EscapeMarkup("\x1B[31m"), "\u241B[31m");
}

struct BrokenCase {
    const char* name;
    const char* bytes;
    size_t replaced;
};

class EscapeMarkupTest : public testing::TestWithParam<BrokenCase> {};

TEST_P(EscapeMarkupTest, ReplacesWhatIsNoText) {
    std::string expected = "a";
    for (size_t i = 0; i < GetParam().replaced; ++i) expected += "\uFFFD";
    EXPECT_EQ(EscapeMarkup("a" + std::string(GetParam().bytes) + "b"), expected + "b");
}

INSTANTIATE_TEST_SUITE_P(
    Broken, EscapeMarkupTest,
    testing::Values(BrokenCase{"LoneContinuation", "\x80", 1}, BrokenCase{"Latin1", "\xE4", 1},
                    BrokenCase{"CutCharacter", "\xE6\xAD", 2}, BrokenCase{"LongFormOfASlash", "\xC0\xAF", 2},
                    BrokenCase{"LongFormOfALessThan", "\xE0\x80\xBC", 3},
                    BrokenCase{"Surrogate", "\xED\xA0\x80", 3}, BrokenCase{"NoCharacter", "\xEF\xBF\xBE", 3},
                    BrokenCase{"BeyondUnicode", "\xF4\x90\x80\x80", 4},
                    BrokenCase{"NeverAByte", "\xFE\xFF", 2}, BrokenCase{"UpperControl", "\xC2\x9B", 2}),
    [](const auto& test) { return test.param.name; });

TEST(EscapeMarkup, CutAtItsEndIsReplaced) { EXPECT_EQ(EscapeMarkup("\xF0\x9F"), "\uFFFD\uFFFD"); }

}  // namespace
}  // namespace vastrelline

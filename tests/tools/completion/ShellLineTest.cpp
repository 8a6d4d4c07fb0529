// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "completion/ShellLine.h"

namespace vastrelline {
namespace {

struct LineCase {
    const char* name;
    std::string line;
    std::vector<std::string> words;
    std::string current;
    char openQuote;
    size_t kept;
};

class ReadShellLineTest : public testing::TestWithParam<LineCase> {};

TEST_P(ReadShellLineTest, ReadsAsAShellDoes) {
    const ShellLine line = ReadShellLine(GetParam().line);
    EXPECT_EQ(line.words, GetParam().words);
    EXPECT_EQ(line.current, GetParam().current);
    EXPECT_EQ(line.openQuote, GetParam().openQuote);
    EXPECT_EQ(line.kept, GetParam().kept);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ReadShellLineTest,
    testing::Values(LineCase{"Empty", "", {}, "", '\0', 0}, LineCase{"OneWord", "run", {}, "run", '\0', 0},
                    LineCase{"BlankAtTheEnd", "run ", {"run"}, "", '\0', 0},
                    LineCase{"ManyBlanks", "  a \t b", {"a"}, "b", '\0', 0},
                    LineCase{"Backslash", "a my\\ f", {"a"}, "my f", '\0', 0},
                    LineCase{"BackslashAtTheEnd", "my\\", {}, "my", '\0', 0},
                    LineCase{"OpenDoubleQuote", "a \"my f", {"a"}, "my f", '"', 0},
                    LineCase{"OpenSingleQuote", "a 'my f", {"a"}, "my f", '\'', 0},
                    LineCase{"ClosedQuotes", "'a b' \"c d\" e", {"a b", "c d"}, "e", '\0', 0},
                    LineCase{"EmptyQuotesAreAWord", "'' a", {""}, "a", '\0', 0},
                    LineCase{"HiddenInDoubleQuotes", R"("a\"b\\c\d" )", {R"(a"b\c\d)"}, "", '\0', 0},
                    LineCase{"NothingIsHiddenInSingleQuotes", R"('a\b' )", {R"(a\b)"}, "", '\0', 0},
                    LineCase{"Equals", "--profile=de", {}, "--profile=de", '\0', 10},
                    LineCase{"EqualsAndQuote", "--profile=\"my d", {}, "--profile=my d", '"', 10},
                    LineCase{"QuoteInTheMiddle", "\"my d\"/f", {}, "my d/f", '\0', 4},
                    LineCase{"HiddenEquals", "a\\=b", {}, "a=b", '\0', 0}),
    [](const auto& test) { return test.param.name; });

TEST(QuoteForBash, MakesWhatIsReadBack) {
    const std::string text = R"(a b'c"d\e$f`g&h;i(j)k*l~m)";
    EXPECT_EQ(ReadShellLine(QuoteForBash(text, '\0')).current, text);
    EXPECT_EQ(ReadShellLine("'" + QuoteForBash(text, '\'')).current, text);
    EXPECT_EQ(ReadShellLine("\"" + QuoteForBash(text, '"')).current, text);
    EXPECT_EQ(QuoteForBash("General_1", '\0'), "General_1");
}

}  // namespace
}  // namespace vastrelline

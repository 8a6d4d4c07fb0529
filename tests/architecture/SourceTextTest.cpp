// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "SourceText.h"

namespace vastrelline {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string Joined(std::string_view text) {
    std::string joined;
    for (const Token& token : ReadSourceText(text).tokens) joined += (joined.empty() ? "" : " ") + token.text;
    return joined;
}

}  // namespace

TEST(SourceText, SplitsWordsNumbersAndSigns) {
    EXPECT_EQ(Joined("a1->b_ ::c(0x1F, 1'000, 1.5F) << d>>e"),
              "a1 -> b_ :: c ( 0x1F , 1'000 , 1.5F ) << d > > e");
    EXPECT_TRUE(ReadSourceText("_a").tokens.at(0).isWord);
    EXPECT_FALSE(ReadSourceText("1a").tokens.at(0).isWord);
}

TEST(SourceText, LeavesOutComments) { EXPECT_EQ(Joined("a // b \" c\n/* d\n*/ e / f"), "a e / f"); }

TEST(SourceText, ALiteralIsOneSign) {
    EXPECT_EQ(Joined("a(\"b // c \\\" d\", L\"e\", 'f', '\\'', u8\"g\") h"),
              "a ( \" , \" , \" , \" , \" ) h");
    EXPECT_EQ(Joined("a R\"(b \" c)\" d R\"x()\" )x\" e"), "a \" d \" e");
}

TEST(SourceText, ALostQuoteEndsWithTheText) { EXPECT_EQ(Joined("a \"b\\"), "a \""); }

TEST(SourceText, ListsIncludesOfLinesOnly) {
    const SourceText text = ReadSourceText(
        "#include \"a/A.h\"\n  #  include <vector>  // why\n// #include \"b/B.h\"\n/*\n#include "
        "\"c/C.h\"\n*/\n"
        "const char* d = \"#include \\\"d/D.h\\\"\";\n#if X\n#include \"e/E.h\"\n#endif\n#include \"f/F.h\"");
    EXPECT_THAT(text.quotedIncludes, ElementsAre("a/A.h", "e/E.h", "f/F.h"));
    EXPECT_THAT(text.systemIncludes, ElementsAre("vector"));
}

TEST(SourceText, KeepsTheWordsOfMacrosApart) {
    const SourceText text =
        ReadSourceText("#define CALL(x) \\\n    F(x)\nG();\n#undef CALL\n#error don't\nH();");
    EXPECT_THAT(text.macroWords, testing::IsSupersetOf({"CALL", "F"}));
    EXPECT_THAT(text.macroWords, testing::Not(testing::Contains("G")));
    EXPECT_EQ(text.tokens.at(0).text, "G");
    EXPECT_EQ(text.tokens.size(), 8U);
}

TEST(SourceText, OfNothingIsEmpty) { EXPECT_THAT(ReadSourceText("").tokens, IsEmpty()); }

}  // namespace vastrelline

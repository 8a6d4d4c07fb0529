// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "lint/FindingSink.h"

namespace vastrelline {
namespace {

TEST(FindingSink, GivesFindingsTheirPlaceAndRule) {
    const ProfileFile file("P.ini", "[A]\nkey=1\n");
    std::vector<LintFinding> findings;
    FindingSink sink(file, "some-rule", Severity::Warning, findings);
    sink.Add(8, "odd");
    sink.Add(Severity::Note, 4, "small", LintFix{{4, 7}, "k", "write k"});
    sink.AddForFile("all of it");
    ASSERT_EQ(findings.size(), 3U);
    EXPECT_EQ(FormatFinding(findings[0].finding), "P.ini:2:5: warning: odd [some-rule]");
    EXPECT_EQ(FormatFinding(findings[1].finding), "P.ini:2: note: small [some-rule]");
    EXPECT_EQ(findings[1].fix->text, "write k");
    EXPECT_EQ(FormatFinding(findings[2].finding), "P.ini: warning: all of it [some-rule]");
}

TEST(ShownText, IsShortAndQuotedWhereItMustBe) {
    EXPECT_EQ(ShownText("1.5"), "1.5");
    EXPECT_EQ(ShownText(""), "''");
    EXPECT_EQ(ShownText("two words"), "'two words'");
    EXPECT_EQ(ShownText("1;2"), "'1;2'");
    std::string shown = ShownText(std::string(100, 'a'));
    EXPECT_EQ(shown.size(), 63U);
    EXPECT_EQ(shown.find("..."), 60U);
    // A letter of two bytes stays whole.
    std::string text(59, 'a');
    text.append("\xC3\xA4\xC3\xA4");
    shown = ShownText(text);
    EXPECT_EQ(shown.find("..."), 59U);
    EXPECT_EQ(shown.size(), 62U);
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "reports/ReportAssets.h"
#include "reports/ReportPage.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string TextOf(const ReportPage& page) {
    const std::vector<uint8_t> bytes = page.Bytes();
    return {bytes.begin(), bytes.end()};
}

TEST(ReportPage, SaysTheVerdictBeforeEverythingElse) {
    ReportPage page("Self test");
    page.BeginSection("Files");
    page.AddParagraph("All files.");
    page.SetVerdict(ReportVerdict::Findings, "Different", "One file has changed.");
    const std::string text = TextOf(page);
    EXPECT_TRUE(text.starts_with("<!DOCTYPE html>\n<html lang=\"en\">"));
    const size_t verdict = text.find(
        "<div class=\"verdict findings\"><p class=\"headline\">Different</p><p>One file has "
        "changed.</p></div>");
    ASSERT_NE(verdict, std::string::npos);
    EXPECT_LT(text.find("<h1>Self test</h1>"), verdict);
    EXPECT_LT(verdict, text.find("<section><h2>Files</h2>\n<p>All files.</p>\n</section>"));
    EXPECT_THAT(text, HasSubstr("<title>Self test</title>"));
}

TEST(ReportPage, PutsTextsIntoTablesAsTheyAre) {
    ReportPage page("T");
    page.BeginSection("S", "s-1");
    page.AddTable("Some <files>", {{"File", CellKind::Code}, {"Bytes", CellKind::Number}, {"State"}},
                  {{{"a<b>.raw", "12", "\"x\""}, ReportVerdict::Failed}, {{"c", "3", "y"}}});
    const std::string text = TextOf(page);
    EXPECT_THAT(text, HasSubstr("<section id=\"s-1\">"));
    EXPECT_THAT(text, HasSubstr("<caption>Some &lt;files&gt;</caption>"));
    EXPECT_THAT(text,
                HasSubstr("<thead><tr><th>File</th><th class=\"number\">Bytes</th><th>State</th></tr>"));
    EXPECT_THAT(text, HasSubstr("<tr class=\"failed\"><td><code>a&lt;b&gt;.raw</code></td><td "
                                "class=\"number\">12</td><td>&quot;x&quot;</td></tr>\n"
                                "<tr><td><code>c</code></td><td class=\"number\">3</td><td>y</td></tr>"));
}

TEST(ReportPage, HasFactsAndLinesToFillIn) {
    ReportPage page("T");
    page.AddFacts("What ran", {{{"Tool", "1.0"}}, {{"Machine & system", "a", "b"}, ReportVerdict::Well}});
    page.AddBlankLines({"Name", "Date"});
    const std::string text = TextOf(page);
    EXPECT_THAT(text, HasSubstr("<tr><th scope=\"row\">Tool</th><td>1.0</td></tr>\n"
                                "<tr class=\"well\"><th scope=\"row\">Machine &amp; system</th><td>a</td>"
                                "<td>b</td></tr>"));
    EXPECT_THAT(text, HasSubstr("<p class=\"blank\">Name</p>\n<p class=\"blank\">Date</p>"));
}

TEST(ReportPage, LoadsNothingAndRunsNothingButItsOwn) {
    ReportPage page("T");
    const std::string plain = TextOf(page);
    EXPECT_THAT(plain, HasSubstr("content=\"default-src 'none'; img-src data:; style-src 'sha256-"));
    EXPECT_THAT(plain, HasSubstr("; script-src 'none'; base-uri 'none'; form-action 'none'\">"));
    EXPECT_THAT(plain, Not(HasSubstr("<script")));
    page.UseViewer();
    const std::string viewing = TextOf(page);
    EXPECT_THAT(viewing, HasSubstr("; script-src 'sha256-"));
    EXPECT_THAT(viewing, HasSubstr("<script>" + std::string(ViewerScript()) + "</script>"));
    EXPECT_THAT(viewing, Not(HasSubstr("unsafe")));
}

TEST(ReportPage, TitleStaysText) {
    const std::string text = TextOf(ReportPage("</title><script>alert(1)</script>"));
    EXPECT_THAT(text, Not(HasSubstr("<script")));
    EXPECT_THAT(text, HasSubstr("<h1>&lt;/title&gt;&lt;script&gt;alert(1)&lt;/script&gt;</h1>"));
}

// Within its element an asset must not end it, and a line end of another system would change its hash.
TEST(ReportAssets, FitIntoTheirElements) {
    for (const std::string_view asset : {ReportStyle(), ViewerStyle(), ViewerScript()}) {
        EXPECT_EQ(asset.find("</"), std::string_view::npos);
        EXPECT_EQ(asset.find("<!--"), std::string_view::npos);
        EXPECT_EQ(asset.find('\r'), std::string_view::npos);
        EXPECT_EQ(asset.find("://"), std::string_view::npos) << "a report needs nothing from elsewhere";
        EXPECT_TRUE(asset.ends_with('\n'));
    }
}

}  // namespace
}  // namespace vastrelline

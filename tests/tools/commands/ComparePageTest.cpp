// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "commands/ComparePage.h"
#include "files/Sha256.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;
using testing::Not;
using namespace std::string_literals;

class ComparePageTest : public testing::Test {
protected:
    std::string Put(const std::string& leaf, const std::string& bytes) const {
        WriteBytes(folder_.Path() / leaf, bytes);
        return folder_.Narrow(leaf);
    }

    static std::string Page(const CompareOptions& options, const std::vector<PairOutcome>& outcomes) {
        ComparePageInput input{&options,
                               &outcomes,
                               !outcomes.front().name.empty(),
                               "vastrelline compare 'a <b>'",
                               "2026-01-02 03:04 UTC",
                               {}};
        input.load = [](const PairOutcome& outcome) { return LoadPair(outcome.first, outcome.second, {}); };
        const std::vector<uint8_t> bytes = MakeComparePage(input);
        return {bytes.begin(), bytes.end()};
    }

    PairOutcome Compared(const std::string& name, const std::string& first, const std::string& second) const {
        return CompareFolderPair({name, first.empty() ? "" : Put("1" + name, first),
                                  second.empty() ? "" : Put("2" + name, second)},
                                 {});
    }

private:
    TemporaryFolder folder_;
};

constexpr const char* kFrame = "\x01\x02\x03\x04";

TEST_F(ComparePageTest, OfTwoFramesTellsEverything) {
    CompareOptions options;
    options.first = Put("a_2x1.raw", "\x01\x00\x02\x00"s);
    options.second = Put("b_2x1.raw", "\x01\x00\x07\x00"s);
    const FramePair frames = LoadPair(options.first, options.second, {});
    const std::string page = Page(options, {ComparePair(options.first, options.second, frames, {})});
    EXPECT_THAT(page, HasSubstr("<h1>Comparison of a_2x1.raw and b_2x1.raw</h1>\n<div class=\"verdict "
                                "findings\"><p class=\"headline\">Different</p><p>1 of 2 pixels (50.0000 %), "
                                "largest difference 5.</p></div>"));
    EXPECT_THAT(page, HasSubstr("<td>5 at (1, 0): 2 and 7</td>"));
    EXPECT_THAT(page, HasSubstr("data-viewer=\"viewer-1\" data-x=\"1\" data-y=\"0\""));
    EXPECT_THAT(page, HasSubstr(Sha256OfFile(options.first)));
    EXPECT_THAT(page, HasSubstr(Sha256OfFile(options.second)));
    EXPECT_THAT(page, HasSubstr("<td>vastrelline compare &#39;a &lt;b&gt;&#39;</td>"));
    EXPECT_THAT(page, HasSubstr("<td>2026-01-02 03:04 UTC</td>"));
}

TEST_F(ComparePageTest, SaysThatEqualFramesAre) {
    CompareOptions options;
    options.first = options.second = Put("a_2x1.raw", kFrame);
    const FramePair frames = LoadPair(options.first, options.second, {});
    const std::string page = Page(options, {ComparePair(options.first, options.second, frames, {})});
    EXPECT_THAT(
        page, HasSubstr("<p class=\"headline\">Equal</p><p>All of the 2x1 pixels have the same levels.</p>"));
    EXPECT_THAT(page, Not(HasSubstr("<table class=\"places\">")));
}

TEST_F(ComparePageTest, OfFoldersHasTheFramesOfTheWorst) {
    std::vector<PairOutcome> outcomes{Compared("e_2x1.raw", kFrame, kFrame),
                                      Compared("l_2x1.raw", kFrame, ""), Compared("u_2x1.raw", kFrame, "x")};
    for (const char* const name : {"a", "b", "c", "d", "e", "f", "g"})
        outcomes.push_back(Compared(std::string(name) + "<_2x1.raw", kFrame, "\x01\x02\x09\x04"));
    SortWorstFirst(outcomes);
    CompareOptions options;
    options.first = "one";
    options.second = "two";
    const std::string page = Page(options, outcomes);
    EXPECT_THAT(page, HasSubstr("<p class=\"headline\">Unreadable</p><p>10 names: 1 equal, 1 only in A, 7 "
                                "different, 1 unreadable.</p>"));
    EXPECT_THAT(page, HasSubstr("The frames of the 5 worst of 7 unequal pairs follow."));
    EXPECT_THAT(page, HasSubstr("<a href=\"#pair-1\"><code>a&lt;_2x1.raw</code></a>"));
    EXPECT_THAT(page, HasSubstr("<section id=\"pair-5\"><h2>e&lt;_2x1.raw</h2>"));
    EXPECT_THAT(page, Not(HasSubstr("pair-6")));
    EXPECT_LT(page.find("<td>unreadable</td>"), page.find("<td>different</td>"));
    EXPECT_LT(page.find("<td>only in A</td>"), page.find("<td>equal</td>"));
}

TEST_F(ComparePageTest, SaysWhatChangedMeanwhile) {
    std::vector<PairOutcome> outcomes{Compared("a_2x1.raw", kFrame, "\x01\x02\x09\x04")};
    outcomes.front().second += ".gone";
    CompareOptions options;
    const std::string page = Page(options, outcomes);
    EXPECT_THAT(page, HasSubstr("The files have changed meanwhile: "));
}

// A wish to end is no damage of a file: no half report comes of it.
TEST_F(ComparePageTest, EndsWhenItIsAskedTo) {
    const std::vector<PairOutcome> outcomes{Compared("a_2x1.raw", kFrame, "\x01\x02\x09\x04")};
    const CompareOptions options;
    const ComparePageInput input{
        &options, &outcomes, true, "", "", [](const PairOutcome&) -> FramePair { throw CancelledError(); }};
    EXPECT_THROW(MakeComparePage(input), CancelledError);
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "formats/PngFormat.h"
#include "reports/Base64.h"
#include "reports/PairViewer.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;
using testing::Not;

const Frame kFirst{2, 1, {100, 4000}};
const Frame kSecond{2, 1, {103, 3999}};
const Frame kOther{1, 2, {5, 5}};

TEST(PairViewerMarkup, HoldsBothFramesWithAllTheirLevels) {
    const std::string markup = PairViewerMarkup({3, "a.raw", &kFirst, "b.raw", &kSecond, 3});
    EXPECT_THAT(markup, HasSubstr("<div class=\"viewer\" id=\"viewer-3\" data-first=\"A: a.raw\" "
                                  "data-second=\"B: b.raw\" data-top=\"4095\" data-largest=\"3\""));
    EXPECT_THAT(markup, HasSubstr("data-windows=\"100:4000=range of the frames;"));
    EXPECT_THAT(markup, HasSubstr(";0:4095=all levels\""));
    EXPECT_THAT(markup, HasSubstr("class=\"frame\">" + EncodeBase64(EncodePng16(kFirst)) + "</script>"));
    EXPECT_THAT(markup, HasSubstr("class=\"frame\">" + EncodeBase64(EncodePng16(kSecond)) + "</script>"));
    EXPECT_THAT(markup, HasSubstr("name=\"mode-3\""));
    EXPECT_THAT(markup, Not(HasSubstr("@id@")));
}

TEST(PairViewerMarkup, HasStillsForPaperWithTheirWindow) {
    const std::string markup = PairViewerMarkup({1, "a.raw", &kFirst, "b.raw", &kSecond, 3});
    EXPECT_THAT(markup, HasSubstr("alt=\"A: a.raw, levels 100 to 4000\""));
    EXPECT_THAT(markup, HasSubstr("alt=\"Difference: black is none, white one of 3\""));
    EXPECT_THAT(PairViewerMarkup({1, "a", &kFirst, "b", &kFirst, 0}), Not(HasSubstr("Difference:")));
    EXPECT_THAT(PairViewerMarkup({1, "a", &kFirst, "b", &kOther, 0}), Not(HasSubstr("Difference:")));
}

TEST(PairViewerMarkup, StillOnlyHasNoFrames) {
    ViewedPair pair{1, "a.raw", &kFirst, "b.raw", &kSecond, 3};
    pair.isLive = false;
    const std::string markup = PairViewerMarkup(pair);
    EXPECT_THAT(markup, Not(HasSubstr("<script")));
    EXPECT_THAT(markup, HasSubstr("<div class=\"still\">"));
}

TEST(PairViewerMarkup, NamesStayNames) {
    const std::string markup =
        PairViewerMarkup({1, "\"><script>alert(1)</script>", &kFirst, "b", &kSecond, 3});
    EXPECT_THAT(markup, Not(HasSubstr("<script>alert")));
    EXPECT_THAT(markup, HasSubstr("data-first=\"A: &quot;&gt;&lt;script&gt;alert(1)"));
}

// A window has two levels, whatever the frames hold.
TEST(PairViewerMarkup, TakesFramesOfOneLevel) {
    const Frame dark{1, 1, {0}};
    const Frame bright{1, 1, {65535}};
    EXPECT_THAT(PairViewerMarkup({1, "a", &dark, "b", &dark, 0}), HasSubstr("data-windows=\"0:1=range"));
    EXPECT_THAT(PairViewerMarkup({1, "a", &bright, "b", &bright, 0}),
                HasSubstr("data-windows=\"65534:65535=range"));
}

}  // namespace
}  // namespace vastrelline

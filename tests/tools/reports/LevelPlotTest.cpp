// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "reports/LevelPlot.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;

// Levels 0 to 127 have a bar each; 540 units wide in all. Half of A is 0, half 127; all of B is 127. The
// highest bar is B's, 170 units; A's are sqrt(0.5) * 170 = 120.2 high.
TEST(LevelPlotMarkup, DrawsSharesAsRoots) {
    const std::string markup = LevelPlotMarkup({2, 1, {0, 127}}, {1, 1, {127}});
    EXPECT_THAT(markup, HasSubstr("<path class=\"first-bars\" d=\"M10 200V80H14V200H18"));
    EXPECT_THAT(markup, HasSubstr("V200H545V80H550V200Z\"/>"));
    EXPECT_THAT(markup, HasSubstr("V200H545V30H550V200\"/>"));
    EXPECT_THAT(markup, HasSubstr("text-anchor=\"end\">127</text>"));
    EXPECT_THAT(markup, HasSubstr("role=\"img\" aria-label="));
}

TEST(LevelPlotMarkup, TakesBlackFrames) {
    EXPECT_THAT(LevelPlotMarkup({1, 1, {0}}, {1, 1, {0}}), HasSubstr("d=\"M10 200V30H14V200"));
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <vector>

#include "messages/Suggestion.h"

namespace vastrelline {
namespace {

TEST(EditDistance, CountsLettersPutInTakenOutReplacedAndSwapped) {
    EXPECT_EQ(EditDistance("", ""), 0U);
    EXPECT_EQ(EditDistance("", "abc"), 3U);
    EXPECT_EQ(EditDistance("abc", ""), 3U);
    EXPECT_EQ(EditDistance("runn", "run"), 1U);
    EXPECT_EQ(EditDistance("rnu", "run"), 1U);
    EXPECT_EQ(EditDistance("rum", "run"), 1U);
    EXPECT_EQ(EditDistance("MAX_SLOPE", "max_slope"), 0U);
    EXPECT_EQ(EditDistance("kitten", "sitting"), 3U);
}

TEST(FindNearest, TakesTheNearestAndOfEqualsTheFirst) {
    const std::vector<std::string> names{"General", "Endodontic", "Periodontal"};
    EXPECT_EQ(FindNearest("Generl", names), "General");
    EXPECT_EQ(FindNearest("endodontik", names), "Endodontic");
    EXPECT_EQ(FindNearest("ax", std::vector<std::string>{"ab", "ac"}), "ab");
}

TEST(FindNearest, NamesNothingThatIsFar) {
    const std::vector<std::string> names{"General", "a", ""};
    EXPECT_EQ(FindNearest("Surgery", names), "");
    EXPECT_EQ(FindNearest("", names), "");
    EXPECT_EQ(FindNearest("b", names), "") << "nothing of the name is left";
    EXPECT_EQ(FindNearest(std::string(1000, 'G'), names), "");
    EXPECT_EQ(FindNearest("x", {}), "");
}

TEST(DidYouMean, AsksOrSaysSomethingElse) {
    const std::vector<std::string> names{"run"};
    EXPECT_EQ(DidYouMean("runn", names), "did you mean 'run'?");
    EXPECT_EQ(DidYouMean("walk", names, "see --help"), "see --help");
    EXPECT_EQ(DidYouMean("walk", names), "");
}

}  // namespace
}  // namespace vastrelline

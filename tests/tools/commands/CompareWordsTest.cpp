// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "commands/CompareWords.h"

namespace vastrelline {
namespace {

PairOutcome Compared(const std::vector<uint16_t>& first, const std::vector<uint16_t>& second,
                     int32_t tolerance) {
    const auto frame = [](const std::vector<uint16_t>& pixels) {
        LoadedFrame loaded;
        loaded.frame = {static_cast<int32_t>(pixels.size()), 1, pixels};
        return loaded;
    };
    return ComparePair("a", "b", {frame(first), frame(second)}, {std::nullopt, tolerance});
}

PairOutcome Unreadable() {
    PairOutcome outcome;
    outcome.state = PairState::Unreadable;
    outcome.error = InputError("a.raw", "does not exist");
    return outcome;
}

TEST(DescribePair, TellsHowMuchInWords) {
    EXPECT_EQ(DescribePair(Compared({1, 2}, {1, 2}, 0), 0), "2x1 pixels");
    EXPECT_EQ(DescribePair(Compared({1, 2}, {1, 5}, 0), 0),
              "1 of 2 pixels (50.0000 %), largest difference 3");
    EXPECT_EQ(DescribePair(Compared({1, 2, 3}, {9, 5, 3}, 3), 3),
              "2 of 3 pixels (66.6667 %), largest difference 8; 1 of them by more than the tolerance of 3");
    EXPECT_EQ(DescribePair(Compared({1, 2}, {1, 5}, 4), 4),
              "1 of 2 pixels (50.0000 %) differ, by at most 3; the tolerance is 4");
    EXPECT_EQ(DescribePair(Compared({1, 2}, {1}, 0), 0), "the sizes are 2x1 and 1x1");
    EXPECT_EQ(DescribePair(Unreadable(), 0), "a.raw: does not exist");
}

TEST(DescribePairs, CountsStates) {
    EXPECT_EQ(DescribePairs({Compared({1}, {1}, 0)}), "1 name: 1 equal");
    EXPECT_EQ(
        DescribePairs({Unreadable(), Compared({1}, {1}, 0), Compared({1}, {2}, 1), Compared({3}, {3}, 0)}),
        "4 names: 2 equal, 1 within tolerance, 1 unreadable");
}

TEST(HeadlineOf, IsTheWorst) {
    const PairOutcome equal = Compared({1}, {1}, 0);
    const PairOutcome within = Compared({1}, {2}, 1);
    const PairOutcome different = Compared({1}, {2}, 0);
    EXPECT_EQ(HeadlineOf({equal, equal}), "equal");
    EXPECT_EQ(HeadlineOf({equal, within}), "within tolerance");
    EXPECT_EQ(HeadlineOf({within, different}), "different");
    EXPECT_EQ(HeadlineOf({Compared({1}, {1, 1}, 0)}), "different");
    EXPECT_EQ(HeadlineOf({different, Unreadable()}), "unreadable");
}

TEST(DescribeNoise, TellsThePeak) {
    // 10 log10(255^2 / 1) = 48.1308
    EXPECT_EQ(DescribeNoise(*Compared({1}, {2}, 0).figures), "48.13 dB at peak 255");
    EXPECT_EQ(DescribeNoise(*Compared({1}, {1}, 0).figures), "infinite");
}

TEST(DescribeClass, IsOneNumberOrTwo) {
    EXPECT_EQ(DescribeClass({1, 1, 9}), "1");
    EXPECT_EQ(DescribeClass({3, 4, 9}), "3 to 4");
}

TEST(StateWords, AreThoseOfTheCommandLine) {
    EXPECT_EQ(StateWords(PairState::OnlyFirst), "only in A");
    EXPECT_EQ(StateWords(PairState::OnlySecond), "only in B");
    EXPECT_EQ(StateWords(PairState::OtherSize), "different sizes");
}

}  // namespace
}  // namespace vastrelline

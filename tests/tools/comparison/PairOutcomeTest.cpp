// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "comparison/PairOutcome.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using namespace std::string_literals;

class PairOutcomeTest : public testing::Test {
protected:
    std::string Write(const std::string& leaf, const std::string& bytes) const {
        WriteBytes(folder_.Path() / leaf, bytes);
        return folder_.Narrow(leaf);
    }

    std::string Missing() const { return folder_.Narrow("missing_2x1.raw"); }

private:
    TemporaryFolder folder_;
};

PairState StateOf(const std::string& first, const std::string& second, int32_t tolerance = 0) {
    return CompareFolderPair({"n", first, second}, {std::nullopt, tolerance}).state;
}

TEST_F(PairOutcomeTest, TellsWhatCameOfTwoFiles) {
    const std::string a = Write("a_2x1.raw", "\x01\x00\x02\x01"s);
    const std::string b = Write("b_2x1.raw", "\x01\x00\x05\x01"s);
    const std::string turned = Write("c_1x2.raw", "\x01\x00\x02\x01"s);
    const std::string cut = Write("d_2x1.raw", "\x01\x00\x02"s);
    EXPECT_EQ(StateOf(a, a), PairState::Equal);
    EXPECT_EQ(StateOf(a, b), PairState::Different);
    EXPECT_EQ(StateOf(a, b, 2), PairState::Different);
    EXPECT_EQ(StateOf(a, b, 3), PairState::WithinTolerance);
    EXPECT_EQ(StateOf(a, turned), PairState::OtherSize);
    EXPECT_EQ(StateOf(a, ""), PairState::OnlyFirst);
    EXPECT_EQ(StateOf("", a), PairState::OnlySecond);
    EXPECT_EQ(StateOf(a, cut), PairState::Unreadable);
    EXPECT_EQ(StateOf(Missing(), a), PairState::Unreadable);
    EXPECT_EQ(StateOf("", cut), PairState::Unreadable) << "a lone file is read, too";
}

TEST_F(PairOutcomeTest, KeepsNamesSizesAndTheError) {
    const std::string a = Write("a_2x1.raw", "\x01\x00\x02\x01"s);
    const std::string turned = Write("c_1x2.raw", "\x01\x00\x02\x01"s);
    const PairOutcome sizes = CompareFolderPair({"n", a, turned}, {});
    EXPECT_EQ(sizes.name, "n");
    EXPECT_EQ(sizes.firstSize, (FrameSize{2, 1}));
    EXPECT_EQ(sizes.secondSize, (FrameSize{1, 2}));
    EXPECT_FALSE(sizes.figures.has_value());
    const PairOutcome missing = CompareFolderPair({"n", a, Missing()}, {});
    ASSERT_TRUE(missing.error.has_value());
    EXPECT_EQ(missing.error->Where(), Missing());
    EXPECT_EQ(missing.second, Missing());
    EXPECT_FALSE(missing.firstSize.has_value());
}

TEST_F(PairOutcomeTest, SaysThatBitsDiffer) {
    const std::string words = Write("a_2x1.raw", "\x01\x00\x02\x00"s);
    const std::string bytes = Write("b.pgm", "P5\n2 1\n255\n\x01\x02"s);
    const PairOutcome outcome = CompareFolderPair({"n", words, bytes}, {});
    EXPECT_EQ(outcome.state, PairState::Equal);
    EXPECT_THAT(outcome.notes, SizeIs(1));
    EXPECT_THAT(CompareFolderPair({"n", bytes, bytes}, {}).notes, IsEmpty());
}

PairOutcome Make(PairState state, const std::string& name, std::optional<double> psnr = {}) {
    PairOutcome outcome;
    outcome.state = state;
    outcome.name = name;
    if (psnr) {
        outcome.figures.emplace();
        outcome.figures->psnr = psnr;
    }
    return outcome;
}

TEST(SortWorstFirst, GoesByStateThenByNoiseThenByName) {
    std::vector<PairOutcome> outcomes{Make(PairState::Equal, "b"),
                                      Make(PairState::Equal, "a"),
                                      Make(PairState::Different, "mild", 60),
                                      Make(PairState::WithinTolerance, "near", 10),
                                      Make(PairState::OnlyFirst, "lone"),
                                      Make(PairState::Different, "bad", 20),
                                      Make(PairState::Unreadable, "broken"),
                                      Make(PairState::OtherSize, "size")};
    SortWorstFirst(outcomes);
    std::vector<std::string> names;
    for (const PairOutcome& outcome : outcomes) names.push_back(outcome.name);
    EXPECT_THAT(names, ElementsAre("broken", "size", "bad", "mild", "lone", "near", "a", "b"));
    EXPECT_THAT(CountStates(outcomes), ElementsAre(2, 1, 1, 0, 2, 1, 1));
}

TEST(CodeOf, IsDifferentOnlyIfAllWasRead) {
    EXPECT_EQ(CodeOf({}), ExitCode::Well);
    EXPECT_EQ(CodeOf({Make(PairState::Equal, "a"), Make(PairState::WithinTolerance, "b")}), ExitCode::Well);
    for (const PairState state :
         {PairState::Different, PairState::OtherSize, PairState::OnlyFirst, PairState::OnlySecond}) {
        EXPECT_EQ(CodeOf({Make(PairState::Equal, "a"), Make(state, "b")}), ExitCode::Findings);
        EXPECT_EQ(CodeOf({Make(PairState::Unreadable, "a"), Make(state, "b")}), ExitCode::Input);
        EXPECT_EQ(CodeOf({Make(state, "a"), Make(PairState::Unreadable, "b")}), ExitCode::Input);
    }
}

TEST(PairStateName, IsOneForEach) {
    EXPECT_EQ(PairStateName(PairState::Equal), "equal");
    EXPECT_EQ(PairStateName(PairState::WithinTolerance), "within-tolerance");
    EXPECT_EQ(PairStateName(PairState::OnlyFirst), "only-first");
    EXPECT_EQ(PairStateName(PairState::OnlySecond), "only-second");
    EXPECT_EQ(PairStateName(PairState::Different), "different");
    EXPECT_EQ(PairStateName(PairState::OtherSize), "different-sizes");
    EXPECT_EQ(PairStateName(PairState::Unreadable), "unreadable");
}

}  // namespace
}  // namespace vastrelline

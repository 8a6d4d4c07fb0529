// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "proof/ProofVerdict.h"

namespace vastrelline {
namespace {

ProofFacts MakeFacts() {
    return {"f",
            "p",
            {{"input", std::nullopt, "input", "", "0"},
             {"stage", 7, "Gaussian", "", "1"},
             {"stage", 12, "CLAHE", "", "2"},
             {"result", std::nullopt, "result", "", "3"}}};
}

ProofVerdict Judge(const ProofFacts& got) {
    ProofEntry entry;
    entry.facts = MakeFacts();
    return JudgeProof(entry, got);
}

TEST(ProofVerdict, IsEqualWhereEveryPointIs) {
    EXPECT_EQ(Judge(MakeFacts()).state, ProofState::Equal);
    EXPECT_EQ(JudgeProof({}, MakeFacts()).state, ProofState::New);
}

TEST(ProofVerdict, NamesTheFirstStageThatDiffers) {
    ProofFacts got = MakeFacts();
    got.points[2].hash = got.points[3].hash = "9";
    const ProofVerdict verdict = Judge(got);
    EXPECT_EQ(verdict.state, ProofState::Different);
    EXPECT_EQ(verdict.firstPoint, 2U);
    EXPECT_EQ(verdict.differentPoints, 2U);
    EXPECT_EQ(verdict.text, "differs first at stage 2 (CLAHE, position 12); 2 of 4 points differ");
    got = MakeFacts();
    got.points[3].hash = "9";
    EXPECT_EQ(Judge(got).text, "differs first at the result; 1 of 4 points differ");
}

TEST(ProofVerdict, TellsAChangedFrameOrProfileApart) {
    ProofFacts got = MakeFacts();
    got.profileHash = "x";
    EXPECT_EQ(Judge(got).state, ProofState::ProfileChanged);
    EXPECT_EQ(Judge(got).text, "the profile is not the one of the manifest");
    got.frameHash = "x";
    EXPECT_EQ(Judge(got).state, ProofState::FrameChanged);
    EXPECT_EQ(Judge(got).text, "the frame is not the one of the manifest");
    ProofEntry phantom;
    phantom.facts = MakeFacts();
    phantom.frame.phantom = PhantomRecipe{{1, 1}, 1.0, 1};
    EXPECT_EQ(JudgeProof(phantom, got).text, "the phantom is not the one of the manifest");
}

TEST(ProofVerdict, TellsAnotherChain) {
    ProofFacts got = MakeFacts();
    got.points[1].title = "Median";
    EXPECT_EQ(Judge(got).text,
              "another chain ran: the manifest has stage 1 (Gaussian, position 07) where the run has stage 1 "
              "(Median, position 07)");
    got = MakeFacts();
    got.points.pop_back();
    EXPECT_EQ(Judge(got).text,
              "another chain ran: the manifest has the result where the run has the end of the run");
    got = MakeFacts();
    got.points.push_back({"bitmap", std::nullopt, "bitmap", "", "1"});
    EXPECT_EQ(Judge(got).differentPoints, 1U);
    EXPECT_EQ(Judge(got).firstPoint, 4U);
}

TEST(ProofState, HasANameForPrograms) {
    EXPECT_EQ(ProofStateName(ProofState::Equal), "equal");
    EXPECT_EQ(ProofStateName(ProofState::FrameChanged), "frame-changed");
    EXPECT_EQ(ProofStateName(ProofState::Failed), "failed");
}

}  // namespace
}  // namespace vastrelline

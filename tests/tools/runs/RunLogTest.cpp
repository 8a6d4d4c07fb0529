// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "runs/RunLog.h"

namespace vastrelline {
namespace {

constexpr const char* kConfigured =
    "\r\n\r\n=====\r\n====== Vastrelline Log 2024.05.01 ======\r\n=====\r\n"
    "#### 13:42:23 \t: Start Vastrelline.dll [v1.0]\r\n"
    "\t\t\t Section Name [General]\r\n"
    "#### 13:42:23 \t: Gaussian ( 0.001 sec )\r\n"
    "\t\t\t MaskSize   : 0.90\r\n"
    "\t\t\t RepaetCnt  : 1\r\n"
    "#### 13:42:23 \t: pyramid ( 0.012 sec )\r\n"
    "\t\t\t Layer          : 4\r\n"
    "#### 13:42:23 \t: End Post-Processing ( 0.020 sec )\r\n"
    "=====\r\n";

TEST(RunLog, TellsStagesWithTheirTimesAndValues) {
    const std::optional<RunLog> log = ReadLastRun(kConfigured);
    ASSERT_TRUE(log.has_value());
    EXPECT_EQ(log->chain, LoggedChain::Configured);
    EXPECT_EQ(log->version, "1.0");
    EXPECT_EQ(log->section, "General");
    EXPECT_EQ(log->totalMs, 20.0);
    EXPECT_EQ(log->stages,
              (std::vector<LoggedStage>{{"Gaussian", 1.0, {{"MaskSize", "0.90"}, {"RepaetCnt", "1"}}},
                                        {"pyramid", 12.0, {{"Layer", "4"}}}}));
}

TEST(RunLog, OfTheFixedFamilyCountsMilliseconds) {
    const std::optional<RunLog> fixed = ReadLastRun(
        "#### 13:42:24 \t: Start Quorla.dll [v]\r\n\t\t\t Section Name [F]\r\n"
        "#### 13:42:24 \t: Pre-Median ( 3 ms )\r\n#### 13:42:24 \t: End Post-Processing ( 44 ms )\r\n");
    ASSERT_TRUE(fixed.has_value());
    EXPECT_EQ(fixed->chain, LoggedChain::Fixed);
    EXPECT_EQ(fixed->version, "");
    EXPECT_EQ(fixed->stages, (std::vector<LoggedStage>{{"Pre-Median", 3.0, {}}}));
    EXPECT_EQ(fixed->totalMs, 44.0);
    const std::optional<RunLog> cr = ReadLastRun("#### 13:42:24 \t: Start Quorla.dll [CR Mode v2.1]\r\n");
    ASSERT_TRUE(cr.has_value());
    EXPECT_EQ(cr->chain, LoggedChain::Cr);
    EXPECT_EQ(cr->version, "2.1");
    EXPECT_FALSE(cr->totalMs.has_value());
}

TEST(RunLog, IsTheLastOfSeveral) {
    const auto text =
        std::string(kConfigured)
            .append("#### 13:42:25 \t: Start Vastrelline.dll [v2]\r\n\t\t\t Section Name [Other]\r\n");
    const std::optional<RunLog> log = ReadLastRun(text);
    ASSERT_TRUE(log.has_value());
    EXPECT_EQ(log->section, "Other");
    EXPECT_TRUE(log->stages.empty());
}

TEST(RunLog, TakesNamesWithBracketsAsTheyAre) {
    const std::optional<RunLog> log =
        ReadLastRun("#### 1 \t: Start Vastrelline.dll [va]b]\r\n\t\t\t Section Name [a]b[c]\r\n");
    ASSERT_TRUE(log.has_value());
    EXPECT_EQ(log->version, "a]b");
    EXPECT_EQ(log->section, "a]b[c");
}

TEST(RunLog, OfOtherTextIsNone) {
    for (const char* text : {"", "\n\n", "hello", "#### 1 \t: CLAHE ( 1 ms )\r\n", "#### ", "####  \t: "})
        EXPECT_FALSE(ReadLastRun(text).has_value()) << text;
}

TEST(RunLog, PassesOverLinesThatAreNoTime) {
    const std::optional<RunLog> log = ReadLastRun(
        "#### 1 \t: Start Vastrelline.dll [v1]\n#### 1 \t: A ( x sec )\n#### 1 \t: B ( 1 h )\n#### 1 \t: C\n"
        "#### 1 \t: D )(\n#### 1 \t: E ( 2 ms )\n");
    ASSERT_TRUE(log.has_value());
    EXPECT_EQ(log->stages, (std::vector<LoggedStage>{{"E", 2.0, {}}}));
}

}  // namespace
}  // namespace vastrelline

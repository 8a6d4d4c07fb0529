// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <memory>

#include "workbench/HistoryLines.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;
using testing::Not;

// Its SHA-256 is that of sha256sum, its base64 that of base64.
constexpr const char* kProfile = "[A]\n";
const std::string kProfileHash = "66afb5820bf09e3d81adec661c4cb8d98fbe89ff5f0ed46bc7a8241513e4d125";

PastRun MakeRun(uint64_t id, const std::string& profile = kProfile) {
    PastRun run;
    run.row.id = id;
    run.row.when = "2026-11-23 10:00 UTC";
    run.row.change = "first";
    run.row.hash = "ab12";
    run.row.elapsedMs = 38.5;
    run.row.desk.bytes = profile;
    run.row.desk.section = "A";
    run.row.desk.offKeys.insert("00_Function_Number");
    run.row.stages = {{"CLAHE", 11.0}, {"Median", std::nullopt}};
    run.frameName = "tooth.raw";
    return run;
}

TEST(HistoryLines, HoldARun) {
    PastRun run = MakeRun(7);
    run.row.picture = std::make_shared<const SmallPicture>(SmallPicture{2, 1, {0, 255}});
    EXPECT_EQ(
        RunLine(run, true),
        R"({"kind":"run","id":7,"when":"2026-11-23 10:00 UTC","frame":"tooth.raw","section":"A","change":"first",)"
        R"("sha256":"ab12","elapsedMs":38.5,"off":["00_Function_Number"],"stages":[["CLAHE",11.0],["Median",null]],)"
        R"("profileSha256":")" +
            kProfileHash +
            R"(","profile":"W0FdCg==","picture":{"width":2,"height":1,"grey":"AP8="}})"
            "\n");
    const PastRuns past = ReadHistoryLines(RunLine(run, true));
    ASSERT_EQ(past.runs.size(), 1U);
    const HistoryRow& row = past.runs[0].row;
    EXPECT_EQ(row.id, 7U);
    EXPECT_EQ(row.when, "2026-11-23 10:00 UTC");
    EXPECT_EQ(row.change, "first");
    EXPECT_EQ(row.hash, "ab12");
    EXPECT_EQ(row.elapsedMs, 38.5);
    EXPECT_EQ(row.desk, run.row.desk);
    EXPECT_EQ(row.stages, run.row.stages);
    EXPECT_EQ(past.runs[0].frameName, "tooth.raw");
    ASSERT_NE(row.picture, nullptr);
    EXPECT_EQ(row.picture->grey, (std::vector<uint8_t>{0, 255}));
}

TEST(HistoryLines, HoldWhatPeopleSayOfRuns) {
    EXPECT_EQ(NameLine(7, "sharper"), "{\"kind\":\"name\",\"id\":7,\"name\":\"sharper\"}\n");
    EXPECT_EQ(PinLine(std::nullopt, true), "{\"kind\":\"pin\",\"side\":\"A\",\"id\":null}\n");
    const PastRuns past =
        ReadHistoryLines(RunLine(MakeRun(7), true) + RunLine(MakeRun(8), false) + NameLine(7, "sharp") +
                         NameLine(7, "sharper") + PinLine(8, true) + PinLine(7, false) +
                         ChoiceLine({7, 8}, {1, 0, 0}) + ChoiceLine({7, 8}, {1, 0, 2}));
    ASSERT_EQ(past.runs.size(), 2U);
    EXPECT_EQ(past.runs[0].row.name, "sharper");
    EXPECT_EQ(past.runs[1].row.desk.bytes, kProfile);
    EXPECT_EQ(past.pinnedA, 8U);
    EXPECT_EQ(past.pinnedB, 7U);
    EXPECT_EQ(past.choices, (ChoiceCounts{{{7, 8}, {2, 0, 2}}}));
    EXPECT_FALSE(
        ReadHistoryLines(RunLine(MakeRun(7), true) + PinLine(7, true) + PinLine(std::nullopt, true)).pinnedA);
}

TEST(HistoryLines, AreReadPastWhatIsNoneOfThem) {
    const std::string good = RunLine(MakeRun(1), true);
    const std::string torn = RunLine(MakeRun(2), false);
    for (const std::string& line :
         {std::string("no JSON\n"), std::string("[1]\n"), std::string("\n"), std::string("\xFF\xFE\n"),
          std::string("{\"kind\":\"dream\",\"id\":1}\n"), std::string("{\"kind\":7}\n"),
          std::string("{\"id\":7}\n"), std::string("{\"kind\":\"run\",\"id\":2}\n"),
          std::string("{\"kind\":\"run\",\"id\":-2}\n"),
          std::string("{\"kind\":\"name\",\"id\":9,\"name\":\"x\"}\n"),
          std::string("{\"kind\":\"name\",\"id\":1}\n"),
          std::string("{\"kind\":\"pin\",\"side\":\"A\",\"id\":9}\n"), ChoiceLine({1, 9}, {1, 1, 1}), good,
          torn.substr(0, torn.size() / 2) + "\n"}) {
        const PastRuns past = ReadHistoryLines(good + line);
        ASSERT_EQ(past.runs.size(), 1U) << line;
        EXPECT_EQ(past.runs[0].row.name, "");
        EXPECT_FALSE(past.pinnedA) << line;
        EXPECT_TRUE(past.choices.empty()) << line;
        EXPECT_EQ(ReadHistoryLines(line + good).runs.size(), 1U) << line;
    }
    // A last line without its end is one that nobody finished.
    EXPECT_EQ(ReadHistoryLines(good + torn.substr(0, torn.size() - 1)).runs.size(), 1U);
}

TEST(HistoryLines, GiveNoRunTheProfileOfAnother) {
    // The line with the second profile is lost: the run behind it must not take the first one for its own.
    const std::string text =
        RunLine(MakeRun(1), true) + RunLine(MakeRun(3, "[B]\n"), false) + RunLine(MakeRun(4), false);
    const PastRuns past = ReadHistoryLines(text);
    ASSERT_EQ(past.runs.size(), 2U);
    EXPECT_EQ(past.runs[1].row.id, 4U);
    std::string bent = RunLine(MakeRun(1), true);
    bent.replace(bent.find("W0FdCg=="), 8, "W0JdCg==");
    EXPECT_TRUE(ReadHistoryLines(bent).runs.empty());
}

TEST(HistoryLines, PassOverABrokenPicture) {
    PastRun run = MakeRun(7);
    run.row.picture = std::make_shared<const SmallPicture>(SmallPicture{2, 1, {0, 255}});
    std::string line = RunLine(run, true);
    line.replace(line.find("\"width\":2"), 9, "\"width\":3");
    const PastRuns past = ReadHistoryLines(line);
    ASSERT_EQ(past.runs.size(), 1U);
    EXPECT_EQ(past.runs[0].row.picture, nullptr);
}

TEST(HistoryLines, AreWrittenAnewWithTheNewestRuns) {
    PastRuns past =
        ReadHistoryLines(RunLine(MakeRun(1), true) + RunLine(MakeRun(2), false) + RunLine(MakeRun(3), false) +
                         NameLine(1, "old") + NameLine(3, "new") + PinLine(1, true) + PinLine(2, false) +
                         ChoiceLine({2, 3}, {1, 0, 0}) + ChoiceLine({1, 3}, {1, 0, 0}));
    const std::string text = WriteHistoryLines(past, 2);
    EXPECT_THAT(text, Not(HasSubstr("old")));
    past = ReadHistoryLines(text);
    ASSERT_EQ(past.runs.size(), 2U);
    EXPECT_EQ(past.runs[0].row.id, 2U);
    EXPECT_EQ(past.runs[1].row.name, "new");
    EXPECT_EQ(past.runs[1].row.desk.bytes, kProfile);
    EXPECT_FALSE(past.pinnedA);
    EXPECT_EQ(past.pinnedB, 2U);
    EXPECT_EQ(past.choices, (ChoiceCounts{{{2, 3}, {1, 0, 0}}}));
    EXPECT_EQ(WriteHistoryLines(past, 9), text);
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "workbench/BenchFixture.h"
#include "workbench/CompareJobs.h"
#include "workbench/DeskEdits.h"

namespace vastrelline {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class CompareJobsTest : public BenchFixture {
protected:
    AsideRuns Runs() {
        return {[this](DeskState desk, std::string change) {
                    KeptRun run;
                    run.id = ++lastRun_;
                    run.desk = std::move(desk);
                    run.change = std::move(change);
                    return run;
                },
                [this](KeptRun run) {
                    published_.push_back(std::to_string(run.id) + " " + std::string(RunStateName(run.state)));
                },
                [this](std::vector<uint64_t> ids) { held_ = std::move(ids); },
                [this](const DeskState&) {
                    return DeskRunInput{
                        folder_.Narrow("p.ini"), std::make_shared<Frame>(Frame{2, 2, {0, 1, 2, 3}}), {}};
                }};
    }

    CompareOrder Order(const std::string& ratio) const {
        const std::string path = folder_.Narrow("p.ini");
        return {{"mine", {kProfile, "A", 0, {}}, path, {}},
                {"theirs",
                 {SetKey(path, kProfile, "A", "00_POST_GAMMA_RATIO", ratio), "A", 0, {}},
                 path,
                 "other.so"},
                {}};
    }

    // NOLINTBEGIN(misc-non-private-member-variables-in-classes): every test is a class derived from it
    uint64_t lastRun_ = 20;
    std::vector<std::string> published_;
    std::vector<uint64_t> held_;
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

TEST_F(CompareJobsTest, RunBothSidesAndSayWhereTheyPart) {
    std::vector<std::string> libraries;
    CompareJobs jobs(
        Runs(),
        [&](ExportRequest& request) {
            libraries.push_back(request.library);
            return TimesRatio(request);
        },
        events_);
    jobs.Begin(4, Order("20"));
    const auto found = AwaitEnd(jobs, 4);
    jobs.End();
    EXPECT_EQ(found->job.state, JobState::Done);
    EXPECT_EQ(found->job.done, 2U);
    EXPECT_THAT(held_, ElementsAre(21, 22));
    EXPECT_THAT(libraries, ElementsAre("other.so", "other.so", "", ""));
    EXPECT_THAT(published_, ElementsAre("22 running", "22 picture", "22 complete", "21 running", "21 picture",
                                        "21 complete"));
    const nlohmann::ordered_json json = ComparisonToJson(*found);
    EXPECT_EQ(json["leftRun"], 21);
    EXPECT_EQ(json["rightRun"], 22);
    EXPECT_EQ(json["left"], "mine");
    // 0 1 2 3 by 10 and by 20: three pixels differ, at most by 30.
    EXPECT_EQ(json["points"][0]["equal"], true);
    EXPECT_EQ(
        json["points"][1].dump(),
        R"({"title":"Gamma curve","leftPoint":1,"rightPoint":1,"moved":false,"shown":true,"equal":false,)"
        R"("differing":3,"largest":30})");
    EXPECT_EQ(json["points"].size(), 3U);
    EXPECT_EQ(json["firstDifference"], 1);
}

TEST_F(CompareJobsTest, FindNoDifferenceInTheSame) {
    CompareJobs jobs(Runs(), TimesRatio, events_);
    jobs.Begin(1, Order("10"));
    EXPECT_TRUE(ComparisonToJson(*AwaitEnd(jobs, 1))["firstDifference"].is_null());
}

TEST_F(CompareJobsTest, FailWithTheSideThatFails) {
    CompareJobs jobs(
        Runs(), [](ExportRequest&) { return -1; }, events_);
    jobs.Begin(1, Order("10"));
    const auto found = AwaitEnd(jobs, 1);
    jobs.End();
    EXPECT_EQ(found->job.state, JobState::Failed);
    EXPECT_THAT(found->job.error->What(), HasSubstr("returned -1"));
    EXPECT_TRUE(found->points.empty());
    EXPECT_THAT(published_, ElementsAre("22 running", "22 failed"));
}

TEST_F(CompareJobsTest, EndForANewerOneAndWhenTheyAreCancelled) {
    std::atomic<int> isAtWork{0};
    CompareJobs jobs(
        Runs(),
        [&](ExportRequest& request) {
            ++isAtWork;
            for (;;) request.onWait();
            return 0;
        },
        events_);
    const auto awaitWork = [&](int count) {
        for (int i = 0; i < 3000 && isAtWork < count; ++i)
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
    };
    jobs.Begin(1, Order("10"));
    awaitWork(1);
    jobs.Begin(2, Order("10"));
    EXPECT_EQ(jobs.Find(1), nullptr);
    awaitWork(2);
    jobs.Cancel(1);
    EXPECT_EQ(jobs.Find(2)->job.state, JobState::Running);
    jobs.Cancel(2);
    EXPECT_EQ(jobs.Find(2)->job.state, JobState::Cancelled);
    jobs.End();
    EXPECT_EQ(published_.back(), "24 ended");
}

}  // namespace
}  // namespace vastrelline

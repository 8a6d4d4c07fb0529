// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "api/ApiRoutes.h"
#include "workbench/BenchFixture.h"
#include "workbench/DeskEdits.h"

namespace vastrelline {
namespace {

using testing::AllOf;
using testing::HasSubstr;

class ReportRoutesTest : public BenchFixture {};

TEST_F(ReportRoutesTest, MakeAReportOfRuns) {
    Workbench bench(Setup(), TimesRatio, events_);
    const auto get = [&](std::map<std::string, std::string> query) {
        return AnswerApi(bench, {"GET", "api/report", std::move(query), {}});
    };
    EXPECT_EQ(get({}).status, 400U);
    bench.Start();
    const uint64_t first = AwaitRun(bench)->id;
    const HttpAnswer one = get({});
    EXPECT_EQ(one.status, 200U);
    EXPECT_EQ(one.type, "text/html; charset=utf-8");
    EXPECT_EQ(one.download, "report-" + std::to_string(first) + ".html");
    EXPECT_THAT(one.body, HasSubstr("Against the saved profile: no setting differs."));
    bench.Change(
        [](const Desk& desk) {
            DeskState next = desk.Now();
            next.bytes = SetKey("p.ini", next.bytes, "A", "00_POST_GAMMA_RATIO", "20");
            return next;
        },
        {});
    const uint64_t second = AwaitRun(bench, first)->id;
    // Side A is the first run. Levels 0 to 3 by 10 and by 20: three of four pixels.
    for (const std::string& runs : {std::string(), std::to_string(second) + "," + std::to_string(first)}) {
        const HttpAnswer both = get({{"runs", runs}});
        EXPECT_EQ(both.download, "report-" + std::to_string(first) + "-" + std::to_string(second) + ".html");
        EXPECT_THAT(both.body, AllOf(HasSubstr("75.0 % of the pixels changed"), HasSubstr("1 value differs"),
                                     HasSubstr("POST_GAMMA_RATIO"), HasSubstr("+00_POST_GAMMA_RATIO=20")));
    }
    for (const char* const runs : {"99", "x", "1,,2", "1;2", "-1"})
        EXPECT_EQ(get({{"runs", runs}}).status, 400U) << runs;
}

}  // namespace
}  // namespace vastrelline

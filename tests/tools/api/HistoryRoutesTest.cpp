// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "api/ApiRoutes.h"
#include "workbench/BenchFixture.h"

namespace vastrelline {
namespace {

class HistoryRoutesTest : public BenchFixture {};

TEST_F(HistoryRoutesTest, ShowRowsAndTheirPictures) {
    Workbench bench(Setup(), TimesRatio, events_);
    const auto get = [&](const std::string& path, const std::string& before) {
        return AnswerApi(bench, {"GET", path, {{"before", before}}, {}});
    };
    bench.Start();
    const uint64_t run = AwaitRun(bench)->id;
    const std::string number = std::to_string(run);
    // The levels 0, 10, 20 and 30 as bytes: 00 0A 14 1E.
    EXPECT_EQ(get("api/history/" + number + "/picture", {}).body,
              R"({"width":2,"height":2,"grey":"AAoUHg=="})");
    EXPECT_EQ(get("api/history/99/picture", {}).status, 400U);
    EXPECT_EQ(get("api/history/x/picture", {}).status, 400U);
    const auto rows = nlohmann::json::parse(get("api/history", std::to_string(run + 1)).body);
    EXPECT_EQ(rows["history"][0]["hasPicture"], true);
    EXPECT_EQ(get("api/history", number).body, R"({"history":[]})");
    EXPECT_EQ(get("api/history", "").status, 400U);
}

}  // namespace
}  // namespace vastrelline

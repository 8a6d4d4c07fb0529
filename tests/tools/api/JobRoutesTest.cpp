// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "api/RouteFixture.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;

class JobRoutesTest : public RouteFixture {};

TEST_F(JobRoutesTest, MakeASheetOfValuesAndShowIt) {
    const HttpAnswer answer =
        Post("api/sheet",
             {{"kind", "values"}, {"section", ""}, {"key", "00_POST_GAMMA_RATIO"}, {"values", {"1", "85"}}});
    EXPECT_EQ(answer.body, R"({"job":1})");
    const Json job = AwaitJob("api/jobs/1");
    EXPECT_EQ(job["state"], "done");
    EXPECT_EQ(job["cells"][1]["label"], "POST_GAMMA_RATIO=85");
    const std::map<std::string, std::string> view{{"x", "0"},  {"y", "0"},  {"w", "2"},   {"h", "2"},
                                                  {"pw", "2"}, {"ph", "2"}, {"low", "0"}, {"high", "255"}};
    const auto look = [&](const char* cell, const char* which) {
        std::map<std::string, std::string> query = view;
        query["which"] = which;
        return Get(std::string("api/jobs/1/cells/") + cell + "/view", query);
    };
    EXPECT_EQ(look("1", "after").body, std::string("\0\x55\xAA\xFF", 4));
    EXPECT_EQ(look("1", "before").body, std::string("\0\1\2\3", 4));
    EXPECT_EQ(look("0", "after").body, std::string("\0\1\2\3", 4));
    EXPECT_EQ(look("2", "after").status, 400U);
    EXPECT_EQ(look("x", "after").status, 400U);
    EXPECT_EQ(look("1", "between").status, 400U);
    EXPECT_EQ(Get("api/jobs/2").status, 400U);
}

TEST_F(JobRoutesTest, MakeASheetOfFrames) {
    Post("api/sheet", {{"kind", "frames"}, {"frames", {1}}});
    const Json one = AwaitJob("api/jobs/1");
    ASSERT_EQ(one["cells"].size(), 1U);
    EXPECT_EQ(one["cells"][0]["label"], "b_2x2.raw");
    EXPECT_EQ(one["cells"][0]["after"]["median"], 100);
    EXPECT_EQ(Post("api/sheet", {{"kind", "frames"}}).body, R"({"job":2})");
    EXPECT_EQ(AwaitJob("api/jobs/2")["cells"].size(), 2U);
}

TEST_F(JobRoutesTest, RefuseSheetsThatMakeNoSense) {
    const auto values = [&](const Json& list) {
        return Post("api/sheet", {{"kind", "values"}, {"section", ""}, {"key", "K"}, {"values", list}});
    };
    EXPECT_EQ(values(Json::array()).status, 400U);
    EXPECT_EQ(values("1").status, 400U);
    EXPECT_EQ(values({1}).status, 400U);
    EXPECT_EQ(values({"1\n[B]"}).status, 400U);
    EXPECT_EQ(Post("api/sheet", {{"kind", "frames"}, {"frames", {2}}}).status, 400U);
    EXPECT_EQ(Post("api/sheet", {{"kind", "frames"}, {"frames", {-1}}}).status, 400U);
    EXPECT_EQ(Post("api/sheet", {{"kind", "frames"}, {"frames", 1}}).status, 400U);
    EXPECT_EQ(Post("api/sheet", {{"kind", "days"}}).status, 400U);
    const HttpAnswer many = values(std::vector<std::string>(1001, "1"));
    EXPECT_EQ(many.status, 400U);
    EXPECT_THAT(many.body, HasSubstr("at most 1000 cells"));
    // Counted before the first of them is looked at.
    EXPECT_THAT(values(std::vector<int>(1001, 1)).body, HasSubstr("at most 1000 cells"));
    EXPECT_THAT(Post("api/sheet", {{"kind", "frames"}, {"frames", std::vector<int>(1001, 9)}}).body,
                HasSubstr("at most 1000 cells"));
}

TEST_F(JobRoutesTest, CancelASheet) {
    Post("api/sheet", {{"kind", "values"},
                       {"section", ""},
                       {"key", "00_POST_GAMMA_RATIO"},
                       {"values", std::vector<std::string>(1000, "1")}});
    EXPECT_EQ(Post("api/jobs/1/cancel", Json::object()).status, 200U);
    const Json job = AwaitJob("api/jobs/1");
    EXPECT_EQ(job["state"], "cancelled");
    EXPECT_LT(job["done"], 1000);
    EXPECT_EQ(Post("api/jobs/x/cancel", Json::object()).status, 400U);
}

}  // namespace
}  // namespace vastrelline

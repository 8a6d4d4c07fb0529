// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "api/RouteFixture.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;

class CompareRoutesTest : public RouteFixture {
protected:
    WorkbenchSetup BenchSetup() const override {
        std::string other = kProfile;
        other.replace(other.find("RATIO=10"), 8, "RATIO=30");
        WriteBytes(folder_.Path() / "other.ini", other);
        WriteBytes(folder_.Path() / "secret.ini", other);
        WorkbenchSetup setup = Setup();
        setup.against = {{folder_.Narrow("other.ini"), false}, {folder_.Narrow("other.so"), true}};
        return setup;
    }
};

TEST_F(CompareRoutesTest, SetTheDeskBesideAnotherProfile) {
    bench_->Start();
    const uint64_t shown = AwaitRun(*bench_)->id;
    EXPECT_EQ(bench_->State()["against"][1]["kind"], "library");
    EXPECT_EQ(Post("api/compare", {{"profile", folder_.Narrow("other.ini")}, {"section", nullptr}}).body,
              R"({"job":1})");
    const Json found = AwaitJob("api/compare/1");
    EXPECT_EQ(found["state"], "done");
    EXPECT_EQ(found["left"], "p.ini [A], configured chain");
    EXPECT_EQ(found["right"], "other.ini [A], configured chain");
    EXPECT_EQ(found["summary"], "1 value differs");
    EXPECT_EQ(found["keys"].dump(),
              R"(["  key               A   B","","00 Gamma curve","  POST_GAMMA_RATIO  10  30"])");
    EXPECT_EQ(found["places"][0]["values"][0]["b"]["value"], 30.0);
    EXPECT_EQ(found["points"][2]["largest"], 60);  // 3 by 10 and 3 by 30
    EXPECT_EQ(found["firstDifference"], 1);
    // Its runs are there to be looked at, and the desk shows what it showed.
    const Json right = Json::parse(Get("api/runs/" + found["rightRun"].dump()).body);
    EXPECT_EQ(right["aside"], true);
    EXPECT_EQ(right["points"].back()["greatest"], 90);
    EXPECT_EQ(bench_->State()["run"], shown);
    EXPECT_EQ(bench_->State()["history"].size(), 1U);
    EXPECT_EQ(bench_->State()["pinned"]["A"], shown);
    EXPECT_EQ(Json::parse(Get("api/jobs/1").body)["kind"], "compare");
    EXPECT_EQ(Get("api/compare/2").status, 400U);
}

TEST_F(CompareRoutesTest, SetOneSectionBesideAnother) {
    Post("api/compare", {{"section", "B"}});
    const Json found = AwaitJob("api/compare/1");
    EXPECT_THAT(found["right"].get<std::string>(), HasSubstr("p.ini [B], "));
    // Section B has no gamma curve in its list: only the left run goes through it.
    EXPECT_THAT(found["summary"].get<std::string>(), HasSubstr("only in A"));
    EXPECT_EQ(Post("api/compare", {{"section", "Missing"}}).status, 400U);
}

TEST_F(CompareRoutesTest, RefuseFilesThatTheCommandLineDoesNotName) {
    EXPECT_EQ(Post("api/compare", Json::object()).status, 400U);
    const HttpAnswer secret = Post("api/compare", {{"profile", folder_.Narrow("secret.ini")}});
    EXPECT_EQ(secret.status, 400U);
    EXPECT_THAT(secret.body, HasSubstr("is no profile of this workbench"));
    EXPECT_EQ(Post("api/compare", {{"library", folder_.Narrow("other.ini")}}).status, 400U);
    EXPECT_EQ(Post("api/compare", {{"profile", folder_.Narrow("other.so")}}).status, 400U);
    EXPECT_EQ(Post("api/compare", {{"profile", 1}}).status, 400U);
}

}  // namespace
}  // namespace vastrelline

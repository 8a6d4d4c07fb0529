// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include <set>
#include <stop_token>
#include <thread>

#include "api/RouteFixture.h"

namespace vastrelline {
namespace {

using testing::HasSubstr;

class ApiRoutesTest : public RouteFixture {
protected:
    Json GetJson(const std::string& path, std::map<std::string, std::string> query = {}) {
        const HttpAnswer answer = Get(path, std::move(query));
        EXPECT_EQ(answer.status, 200U) << path << answer.body;
        return Json::parse(answer.body);
    }
    void Do(const std::string& path, const Json& body) {
        const HttpAnswer answer = Post(path, body);
        EXPECT_EQ(answer.status, 200U) << path << answer.body;
    }
};

TEST_F(ApiRoutesTest, KnowEachAddressOnce) {
    std::set<std::pair<std::string_view, std::string_view>> known;
    for (const std::span<const ApiRoute> table : {DeskRoutes(), LookRoutes(), HelpRoutes(), JobRoutes(),
                                                  CompareRoutes(), HistoryRoutes(), ReportRoutes()})
        for (const ApiRoute& route : table)
            EXPECT_TRUE(known.emplace(route.method, route.pattern).second) << route.pattern;
}

TEST_F(ApiRoutesTest, TellOthersThatThereIsNoSuchAddress) {
    for (const char* const path :
         {"api/", "api/nothing", "api/state/", "api//state", "api/runs/1/points", "api/runs//probe"})
        EXPECT_EQ(Get(path).status, 404U) << path;
    EXPECT_EQ(Get("api/set").status, 405U);
    EXPECT_EQ(Post("api/state", {}).status, 405U);
}

// With another page's revision it would write over what that page has changed meanwhile.
TEST_F(ApiRoutesTest, TellAPageTheRevisionOfItsOwnText) {
    std::jthread other([&](const std::stop_token& end) {
        for (int i = 0; !end.stop_requested(); ++i)
            Do("api/set", {{"section", "A"}, {"key", "OUTPUTRANGE"}, {"value", std::to_string(i % 1000)}});
    });
    for (int i = 0; i < 100; ++i) {
        const Json before = GetJson("api/text");
        const std::string text = "; " + std::to_string(i) + "\n" + before["text"].get<std::string>();
        const HttpAnswer answer =
            Post("api/text", {{"textRevision", before["textRevision"]}, {"text", text}});
        if (answer.status != 200U) continue;
        const Json now = GetJson("api/text");
        ASSERT_TRUE(now["textRevision"] != Json::parse(answer.body)["textRevision"] || now["text"] == text);
    }
}

TEST_F(ApiRoutesTest, RefuseBodiesOfMillionsOfParts) {
    std::string wide = R"({"kind":"frames","frames":[0)";
    for (int i = 0; i < 20'000; ++i) wide += ",0";
    const std::string deep = R"({"kind":)" + std::string(100, '[') + std::string(100, ']') + "}";
    for (const std::string& body : {wide + "]}", deep}) {
        const HttpAnswer answer = AnswerApi(*bench_, {"POST", "api/sheet", {}, body});
        EXPECT_EQ(answer.status, 400U);
        EXPECT_THAT(answer.body, HasSubstr("more parts than any request needs"));
    }
}

TEST_F(ApiRoutesTest, ShowARunFromAllSides) {
    bench_->Start();
    const std::string run = "api/runs/" + std::to_string(AwaitRun(*bench_)->id);
    const Json whole = GetJson(run);
    EXPECT_EQ(whole["state"], "complete");
    EXPECT_EQ(whole["points"][1]["title"], "Gamma curve");
    EXPECT_EQ(whole["points"][1]["hasCurve"], true);
    EXPECT_EQ(whole["points"][1]["median"], 10);
    EXPECT_EQ(GetJson("api/runs/latest"), whole);
    const std::map<std::string, std::string> view{{"x", "0"},  {"y", "0"},  {"w", "2"},   {"h", "2"},
                                                  {"pw", "2"}, {"ph", "2"}, {"low", "0"}, {"high", "255"}};
    EXPECT_EQ(Get(run + "/points/result/view", view).body, std::string("\0\x0A\x14\x1E", 4));
    EXPECT_EQ(Get(run + "/points/result/view", view).type, "application/octet-stream");
    std::map<std::string, std::string> difference = view;
    difference.insert({{"a", "latest/frame"}, {"b", "latest/result"}, {"gain", "2"}});
    EXPECT_EQ(Get("api/difference", difference).body, std::string("\x80\x92\xA4\xB6", 4));
    EXPECT_EQ(
        GetJson(run + "/points/1/histogram").dump(),
        R"({"first":0,"counts":[1,0,0,0,0,0,0,0,0,0,1,0,0,0,0,0,0,0,0,0,1,0,0,0,0,0,0,0,0,0,1],"total":4})");
    EXPECT_EQ(GetJson(run + "/points/1/curve").dump(), R"({"curve":[[0,0],[3,30]]})");
    EXPECT_EQ(GetJson(run + "/probe", {{"x", "1"}, {"y", "1"}})["values"].dump(), "[3,30,30]");
    EXPECT_EQ(GetJson(run + "/probe", {{"x", "2"}, {"y", "1"}})["values"].dump(), "[null,null,null]");
    EXPECT_EQ(
        GetJson(run + "/points/result/line", {{"x0", "0.5"}, {"y0", "0.5"}, {"x1", "1.5"}, {"y1", "0.5"}})
            .dump(),
        R"({"values":[[0.0,0],[1.0,10]]})");
    const std::map<std::string, std::string> area{{"x", "1"}, {"y", "0"}, {"w", "1"}, {"h", "2"}};
    EXPECT_EQ(Get(run + "/points/result/pixels", area).body, std::string("\x0A\0\x1E\0", 4));
    EXPECT_EQ(GetJson("api/timings")["runs"][0]["stages"][0]["title"], "Gamma curve");
}

TEST_F(ApiRoutesTest, RefuseWhatMakesNoSense) {
    bench_->Start();
    AwaitRun(*bench_);
    const std::map<std::string, std::string> view{{"x", "0"},  {"y", "0"},  {"w", "2"},   {"h", "2"},
                                                  {"pw", "2"}, {"ph", "2"}, {"low", "0"}, {"high", "255"}};
    const auto with = [&](const char* field, const char* value) {
        std::map<std::string, std::string> changed = view;
        changed[field] = value;
        return changed;
    };
    constexpr const char* kView = "api/runs/latest/points/result/view";
    for (const auto& [field, value] : std::vector<std::pair<const char*, const char*>>{{"x", "nan"},
                                                                                       {"x", "inf"},
                                                                                       {"x", ""},
                                                                                       {"w", "0"},
                                                                                       {"w", "-1"},
                                                                                       {"pw", "0"},
                                                                                       {"pw", "-5"},
                                                                                       {"pw", "8193"},
                                                                                       {"pw", "99999999999"},
                                                                                       {"ph", "1.5"},
                                                                                       {"low", "255"},
                                                                                       {"low", "x"},
                                                                                       {"high", ""}})
        EXPECT_EQ(Get(kView, with(field, value)).status, 400U) << field << value;
    for (const char* const path :
         {"api/runs/99/points/0/view", "api/runs/x/points/0/view", "api/runs/latest/points/9/view",
          "api/runs/latest/points/x/histogram", "api/runs/18446744073709551616"})
        EXPECT_EQ(Get(path, view).status, 400U) << path;
    const auto area = [&](const char* x, const char* w) {
        return Get("api/runs/latest/points/result/pixels", {{"x", x}, {"y", "0"}, {"w", w}, {"h", "1"}})
            .status;
    };
    EXPECT_EQ(area("0", "2"), 200U);
    for (const auto& [x, w] : {std::pair{"-1", "1"}, {"1", "2"}, {"2147483647", "2147483647"}, {"0", "0"}})
        EXPECT_EQ(area(x, w), 400U) << x << w;
    const HttpAnswer noise =
        Get("api/runs/latest/points/result/noise", {{"x", "0"}, {"y", "0"}, {"w", "2"}, {"h", "2"}});
    EXPECT_EQ(noise.status, 400U);
    EXPECT_THAT(noise.body,
                AllOf(HasSubstr("too small"), HasSubstr("drag over another"), Not(HasSubstr("--area"))));
    EXPECT_EQ(AnswerApi(*bench_, {"POST", "api/set", {}, "{"}).status, 400U);
    EXPECT_EQ(AnswerApi(*bench_, {"POST", "api/set", {}, "[1]"}).status, 400U);
    EXPECT_EQ(AnswerApi(*bench_, {"POST", "api/set", {}, ""}).status, 400U);
    EXPECT_EQ(Post("api/set", {{"section", ""}, {"key", 1}, {"value", "2"}}).status, 400U);
    EXPECT_EQ(Post("api/set", {{"section", ""}, {"key", "A"}, {"value", "1\n2"}}).status, 400U);
    EXPECT_EQ(Post("api/frame", {{"id", 2}}).status, 400U);
    EXPECT_EQ(Post("api/frame", {{"id", -1}}).status, 400U);
    EXPECT_EQ(Post("api/section", {{"name", "Missing"}}).status, 400U);
    EXPECT_EQ(Post("api/stage", {{"place", 0}, {"off", true}}).status, 400U);
    EXPECT_EQ(Post("api/stage", {{"place", 99}, {"off", true}}).status, 400U);
    EXPECT_EQ(Post("api/reload", {{"keep", "both"}}).status, 400U);
    EXPECT_EQ(Post("api/pin", {{"run", nullptr}, {"as", "C"}}).status, 400U);
    EXPECT_EQ(Post("api/save", {{"textRevision", 99}}).status, 409U);
    EXPECT_EQ(ReadBytes(folder_.Path() / "p.ini"), kProfile);
}

TEST_F(ApiRoutesTest, EditTheProfile) {
    Do("api/set", {{"section", ""}, {"key", "00_POST_GAMMA_RATIO"}, {"value", "2"}});
    Do("api/set", {{"section", "B"}, {"key", "NEW"}, {"value", "1"}});
    Json text = GetJson("api/text");
    EXPECT_THAT(text["text"].get<std::string>(), HasSubstr("RATIO=2\n[B]\nPROCMODE=1\nNEW=1\n"));
    EXPECT_EQ(text["saved"], kProfile);
    const Json diff = GetJson("api/diff");
    EXPECT_EQ(
        diff["changes"].dump(),
        R"([{"line":7,"old":"00_POST_GAMMA_RATIO=10","new":"00_POST_GAMMA_RATIO=2"},{"line":10,"old":null,"new":"NEW=1"}])");
    EXPECT_THAT(diff["unified"].get<std::string>(), HasSubstr("+NEW=1"));
    Do("api/unset", {{"section", "B"}, {"key", "NEW"}});
    Do("api/unset", {{"section", ""}, {"key", "00_POST_GAMMA_RATIO"}});
    EXPECT_EQ(GetJson("api/text")["text"], kProfile);
    text = GetJson("api/text");
    Do("api/text", {{"textRevision", text["textRevision"]}, {"text", "[A]\nPROCMODE=1\n"}});
    EXPECT_EQ(Post("api/text", {{"textRevision", text["textRevision"]}, {"text", ""}}).status, 409U);
    Do("api/undo", Json::object());
    Do("api/redo", Json::object());
    Do("api/save", {{"textRevision", GetJson("api/text")["textRevision"]}});
    EXPECT_EQ(ReadBytes(folder_.Path() / "p.ini"), "[A]\nPROCMODE=1\n");
}

TEST_F(ApiRoutesTest, SwitchStagesAndChooseSectionAndFrame) {
    const size_t last = bench_->State()["places"].size() - 1;
    Do("api/stage", {{"place", last}, {"off", true}});
    EXPECT_EQ(bench_->State()["places"].back()["off"], true);
    EXPECT_EQ(bench_->State()["profile"]["unsaved"], 0);
    Do("api/stage", {{"place", last}, {"off", false}});
    EXPECT_EQ(bench_->State()["places"].back()["off"], false);
    Do("api/solo", {{"place", last}});
    EXPECT_EQ(bench_->State()["places"].back()["off"], false);
    Do("api/section", {{"name", "B"}});
    const Json places = bench_->State()["places"];
    size_t place = 0;
    while (!places[place]["canSwitch"]) ++place;
    Do("api/solo", {{"place", place}});
    const Json alone = bench_->State()["places"];
    for (const Json& each : alone)
        EXPECT_EQ(each["off"].get<bool>(), each["canSwitch"].get<bool>() && each["place"] != place)
            << each["title"];
    Do("api/solo", {{"place", nullptr}});
    const Json all = bench_->State()["places"];
    for (const Json& each : all) EXPECT_EQ(each["off"], false);
    Do("api/frame", {{"id", 1}});
    EXPECT_EQ(bench_->State()["frame"], 1);
}

TEST_F(ApiRoutesTest, HelpWithKeysAndSections) {
    const Json keys = GetJson("api/complete", {{"text", "00_post_gamma"}});
    EXPECT_EQ(keys["items"][0]["label"], "00_POST_GAMMA_RATIO");
    EXPECT_EQ(GetJson("api/complete", {{"text", "[e"}})["items"].dump(),
              R"([{"label":"[Empty]","detail":"section","info":""}])");
    EXPECT_EQ(GetJson("api/complete", {{"text", "17_MAX_SLO"}})["items"][0]["label"], "17_MAX_SLOPE");
    EXPECT_TRUE(GetJson("api/complete", {{"text", "no such key"}})["items"].empty());
    EXPECT_THAT(GetJson("api/explain", {{"key", "MAX_SLOPE"}})["text"].get<std::string>(),
                HasSubstr("CLAHE"));
    EXPECT_EQ(GetJson("api/explain", {{"key", "MAX_SLOP"}}).dump(), R"({"text":null,"nearest":"MAX_SLOPE"})");
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
//
// The built tool as a server, from its address to Ctrl-C.
#include <gmock/gmock.h>

#include <chrono>
#include <functional>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <thread>

#include "ToolProgram.h"
#include "server/AskServer.h"
#include "support/SetVariable.h"

namespace vastrelline {
namespace {

namespace http = boost::beast::http;

#ifdef _WIN32
constexpr const char* kTemporaryVariable = "TMP";
constexpr const char* kStateVariable = "LOCALAPPDATA";
constexpr const char* kStateLeaf = "Vastrelline";
#else
constexpr const char* kTemporaryVariable = "TMPDIR";
constexpr const char* kStateVariable = "XDG_STATE_HOME";
constexpr const char* kStateLeaf = "vastrelline";
#endif

void Await(const std::function<bool()>& hasCome) {
    for (int i = 0; i < 6000; ++i) {
        if (hasCome()) return;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    throw std::runtime_error("what was waited for has not come");
}

class TuneProgramTest : public ToolProgram {
protected:
    TuneProgramTest() {
        std::filesystem::create_directory(temporary_);
        std::filesystem::create_directory(states_);
    }

    // The tool at work; its address is known.
    ToolProcess Tune(const std::string& profile) {
        const SetVariable temporary(kTemporaryVariable, temporary_.string());
        const SetVariable states(kStateVariable, states_.string());
        ToolProcess tool(folder_, {"tune", frame_, "--profile", folder_.Narrow(profile), "--no-browser"});
        std::string said;
        Await([&] { return (said = ReadBytes(folder_.Path() / "report.txt")).ends_with('\n'); });
        const size_t begin = std::string("http://").size();
        const size_t slash = said.find('/', begin);
        host_ = said.substr(begin, slash - begin);
        path_ = said.substr(slash, said.size() - slash - 1);
        return tool;
    }

    TextResponse Ask(http::verb verb, const std::string& path, const std::string& body = {}) {
        const auto port = static_cast<uint16_t>(std::stoi(host_.substr(host_.find(':') + 1)));
        TextRequest request{verb, path_ + path, 11};
        request.set(http::field::host, host_);
        request.body() = body;
        return AskServer(port, std::move(request));
    }

    nlohmann::json Get(const std::string& path) {
        return nlohmann::json::parse(Ask(http::verb::get, path).body());
    }

    // The number of the newest run, once it is another and has all its points.
    uint64_t AwaitRun(uint64_t after) {
        uint64_t run = 0;
        Await([&] {
            const nlohmann::json newest = Get("api/state")["run"];
            if (newest.is_null() || newest == after) return false;
            run = newest;
            return Get("api/runs/" + std::to_string(run))["state"] == "complete";
        });
        return run;
    }

    // All levels of the newest result, two bytes each.
    std::string Levels() {
        return Ask(http::verb::get, "api/runs/latest/points/result/pixels?x=0&y=0&w=130&h=167").body();
    }

    // Every test of the fixture is a class derived from it.
    // NOLINTBEGIN(misc-non-private-member-variables-in-classes)
    std::filesystem::path temporary_ = folder_.Path() / "temporary";
    std::filesystem::path states_ = folder_.Path() / "states";
    std::string host_;
    std::string path_;
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

TEST_F(TuneProgramTest, ServesItsPageAndARunForEachEdit) {
    ToolProcess tool = Tune("p.ini");
    const TextResponse page = Ask(http::verb::get, "");
    EXPECT_EQ(page.result_int(), 200U);
    EXPECT_EQ(page["Content-Type"], "text/html; charset=utf-8");
    EXPECT_THAT(page.body(), testing::HasSubstr("app.js"));
    EXPECT_EQ(Ask(http::verb::get, "app.js").result_int(), 200U);

    const uint64_t first = AwaitRun(0);
    const std::string before = Levels();
    EXPECT_EQ(Ask(http::verb::post, "api/set", R"({"section":"","key":"00_POST_GAMMA_RATIO","value":"1.5"})")
                  .result_int(),
              200U);
    AwaitRun(first);
    const std::string after = Levels();
    EXPECT_NE(after, before);
    const std::string save = R"({"textRevision":)" + Get("api/text")["textRevision"].dump() + "}";
    EXPECT_EQ(Ask(http::verb::post, "api/save", save).result_int(), 200U);

    tool.Interrupt();
    const ToolRun end = tool.Await();
    EXPECT_EQ(end.exitCode, 0) << end.errors;
    EXPECT_EQ(LeavesOf(temporary_), std::vector<std::string>{});
    EXPECT_EQ(LeavesOf(states_ / kStateLeaf / "tune").size(), 1U);

    // What was saved gives the same picture without a workbench.
    EXPECT_EQ(ReadBytes(folder_.Path() / "p.ini"), kGammaProfile + std::string("00_POST_GAMMA_RATIO=1.5\n"));
    ASSERT_EQ(Process("ImageProcessing", "out_130x167.raw", "p.ini").exitCode, 0);
    EXPECT_EQ(ReadBytes(folder_.Path() / "out_130x167.raw"), after);
}

TEST_F(TuneProgramTest, EndsWithARunAtWork) {
    // A median that takes more than a minute.
    WriteBytes(folder_.Path() / "slow.ini",
               "[General]\nPROCMODE=2\nINTRAORAL_MASK=0\nFunctionCount=1\n00_Function_Number=7\n"
               "00_MEDIAN_SIZE=101\n00_MEDIAN_REPEAT=2000000000\n");
    ToolProcess tool = Tune("slow.ini");
    Await([&] { return !LeavesOf(temporary_).empty(); });  // the worker's folder
    EXPECT_TRUE(Get("api/state")["run"].is_null());
    tool.Interrupt();
    const ToolRun end = tool.Await();
    EXPECT_EQ(end.exitCode, 0) << end.errors;
    // Windows takes no file away that a process still has.
    EXPECT_EQ(LeavesOf(temporary_), std::vector<std::string>{});
}

}  // namespace
}  // namespace vastrelline

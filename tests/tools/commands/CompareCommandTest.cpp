#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "ToolRun.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;
using Json = nlohmann::json;

class CompareCommandTest : public testing::Test {
protected:
    CompareCommandTest() {
        WriteBytes(folder_.Path() / "a_2x1.raw", "\x01\x00\x02\x01"s);
        WriteBytes(folder_.Path() / "b.pgm", "P5\n2 1\n999\n\x00\x01\x01\x02"s);
        WriteBytes(folder_.Path() / "c_2x1.raw", "\x01\x00\x05\x00"s);
        WriteBytes(folder_.Path() / "d_1x2.raw", "\x01\x00\x05\x00"s);
        WriteBytes(folder_.Path() / "cut.png", "\x89PNG\r\n\x1A\n"s);
    }

    ToolRun Compare(const std::string& first, const std::string& second,
                    const std::vector<std::string>& more = {}) const {
        std::vector<std::string> words{"compare", folder_.Narrow(first), folder_.Narrow(second)};
        words.insert(words.end(), more.begin(), more.end());
        return RunTool(words, MustNotBeCalled);
    }

    // Every test of the fixture is a class derived from it.
    // NOLINTNEXTLINE(misc-non-private-member-variables-in-classes)
    TemporaryFolder folder_;
};

TEST_F(CompareCommandTest, TheCodeTellsDifferentFromUnreadable) {
    for (const std::vector<std::string>& more : {std::vector<std::string>{}, {"--json"}}) {
        EXPECT_EQ(Compare("a_2x1.raw", "b.pgm", more).exitCode, 0);
        EXPECT_EQ(Compare("a_2x1.raw", "c_2x1.raw", more).exitCode, 1);
        EXPECT_EQ(Compare("c_2x1.raw", "d_1x2.raw", more).exitCode, 1);
        EXPECT_EQ(Compare("a_2x1.raw", "missing.raw", more).exitCode, 3);
        EXPECT_EQ(Compare("a_2x1.raw", "cut.png", more).exitCode, 3);
    }
    EXPECT_EQ(RunTool({"compare", "-", "-"}, MustNotBeCalled).exitCode, 2);
}

// The fields that compare itself prints, behind those of every object.
Json OwnFields(const ToolRun& run) {
    Json object = Json::parse(run.report);
    for (const char* name : {"tool", "version", "command"}) object.erase(name);
    return object;
}

TEST_F(CompareCommandTest, JsonHoldsWhatTheTextSays) {
    const Json equal = OwnFields(Compare("a_2x1.raw", "b.pgm", {"--json"}));
    EXPECT_EQ(equal, Json::parse(R"({"exit": 0, "equal": true, "firstSize": [2, 1], "secondSize": [2, 1],
                                     "pixels": {"count": 0, "largest": 0, "firstPlaces": []}})"));
    const Json different = OwnFields(Compare("a_2x1.raw", "c_2x1.raw", {"--json"}));
    EXPECT_EQ(different, Json::parse(R"({"exit": 1, "equal": false, "firstSize": [2, 1], "secondSize": [2, 1],
        "pixels": {"count": 1, "largest": 253,
                   "firstPlaces": [{"x": 1, "y": 0, "first": 258, "second": 5}]}})"));
    const Json sizes = OwnFields(Compare("c_2x1.raw", "d_1x2.raw", {"--json"}));
    EXPECT_EQ(sizes, Json::parse(R"({"exit": 1, "equal": false, "firstSize": [2, 1], "secondSize": [1, 2],
                                     "pixels": null})"));
}

}  // namespace
}  // namespace vastrelline

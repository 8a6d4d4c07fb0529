// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Findings.h"
#include "Rooms.h"

namespace vastrelline {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

const HouseRules& OwnRules() {
    static const HouseRules rules{
        .rooms =
            {
                {.folder = "platform", .rank = 0, .inner = {"memory", "posix", "windows"}},
                {.folder = "profile_text", .rank = 0},
                {.folder = "pixels", .rank = 1},
                {.folder = "elementary", .rank = 1},
                {.folder = "operators", .rank = 2, .isCorridor = true},
                {.folder = "config", .rank = 2},
                {.folder = "report", .rank = 3},
                {.folder = "sensor", .rank = 3},
                {.folder = "stages", .rank = 4, .isCorridor = true},
                {.folder = "chains", .rank = 5},
                {.folder = "exports", .rank = 6},
            },
        .arrowsOnOneFloor =
            {
                {"platform", "profile_text"},
                {"operators/box_mean", "operators/histogram"},
                {"operators/curves", "operators/histogram"},
                {"operators/resample", "operators/separable"},
                {"operators/tile_equalise", "operators/histogram"},
            },
        // The sensor's geometry is a record of hosts and of the settings alike.
        .guests = {{"vastrelline.h", "config"}},
    };
    return rules;
}

const std::vector<std::string> kTopFiles{"CMakeLists.txt", "Vastrelline.def", "vastrelline.map"};

const Graph& OwnIncludes() {
    static const Graph includes = MakeIncludeGraph(OwnParsedTree("src"));
    return includes;
}

Graph GraphOf(const std::string& from, const std::string& to) { return {{from, {to}}, {to, {}}}; }

}  // namespace

TEST(House, IsRead) { EXPECT_GT(OwnIncludes().size(), 20U); }

TEST(House, HasNoFileOutsideItsRooms) {
    EXPECT_TRUE(IsKept(FindHomelessFiles(OwnTree("src"), OwnRules(), kTopFiles)));
}

TEST(House, IncludesPointDownTheRanks) { EXPECT_TRUE(IsKept(FindWrongIncludes(OwnIncludes(), OwnRules()))); }

TEST(House, NeedsEveryArrowOnOneFloor) { EXPECT_TRUE(IsKept(FindIdleArrows(OwnIncludes(), OwnRules()))); }

TEST(House, FilesFormNoCycle) { EXPECT_TRUE(IsKept(FindCycles(OwnIncludes()))); }

TEST(House, RoomsFormNoCycle) {
    const auto roomOf = [](const std::string& path) { return RoomOf(OwnRules(), path); };
    EXPECT_TRUE(IsKept(FindCycles(GroupGraph(OwnIncludes(), roomOf))));
}

TEST(House, HasEachBaseNameOnce) { EXPECT_TRUE(IsKept(FindRepeatedBaseNames(OwnTree("src")))); }

TEST(House, MeetsTheOperatingSystemInPlatformOnly) {
    EXPECT_TRUE(IsKept(FindSystemHeadersOutside(OwnParsedTree("src"), OwnRules(), "platform")));
}

struct ArrowCase {
    const char* name;
    const char* from;
    const char* to;
    bool isAllowed;
};

class Arrow : public testing::TestWithParam<ArrowCase> {};

TEST_P(Arrow, IsHeld) {
    const auto [name, from, to, isAllowed] = GetParam();
    EXPECT_THAT(FindWrongIncludes(GraphOf(from, to), OwnRules()), SizeIs(isAllowed ? 0 : 1));
}

INSTANTIATE_TEST_SUITE_P(
    Rules, Arrow,
    testing::Values(
        ArrowCase{"ExportsToChains", "exports/A.cpp", "chains/B.h", true},
        ArrowCase{"ExportsToPlatform", "exports/A.cpp", "platform/B.h", true},
        ArrowCase{"ChainsToExports", "chains/A.cpp", "exports/B.h", false},
        ArrowCase{"ChainsToStage", "chains/A.cpp", "stages/gamma/B.h", true},
        ArrowCase{"StageToChains", "stages/gamma/A.cpp", "chains/B.h", false},
        ArrowCase{"StageToItself", "stages/gamma/A.cpp", "stages/gamma/B.h", true},
        ArrowCase{"StageToStage", "stages/gamma/A.cpp", "stages/linear/B.h", false},
        ArrowCase{"StageToReport", "stages/gamma/A.cpp", "report/B.h", true},
        ArrowCase{"StageToSensor", "stages/hdr/A.cpp", "sensor/B.h", true},
        ArrowCase{"StageToOperator", "stages/gamma/A.cpp", "operators/curves/B.h", true},
        ArrowCase{"ReportToSensor", "report/A.cpp", "sensor/B.h", false},
        ArrowCase{"SensorToReport", "sensor/A.cpp", "report/B.h", false},
        ArrowCase{"ReportToConfig", "report/A.cpp", "config/B.h", true},
        ArrowCase{"ReportToOperator", "report/A.cpp", "operators/resample/B.h", true},
        ArrowCase{"OperatorToConfig", "operators/curves/A.cpp", "config/B.h", false},
        ArrowCase{"ConfigToOperator", "config/A.cpp", "operators/curves/B.h", false},
        ArrowCase{"OperatorToReport", "operators/curves/A.cpp", "report/B.h", false},
        ArrowCase{"OperatorToPixels", "operators/curves/A.cpp", "pixels/B.h", true},
        ArrowCase{"OperatorToListedOperator", "operators/curves/A.cpp", "operators/histogram/B.h", true},
        ArrowCase{"ListedOperatorBack", "operators/histogram/A.cpp", "operators/curves/B.h", false},
        ArrowCase{"OperatorToOtherOperator", "operators/curves/A.cpp", "operators/median/B.h", false},
        ArrowCase{"ConfigToPixels", "config/A.cpp", "pixels/B.h", true},
        ArrowCase{"ConfigToPublicHeader", "config/A.cpp", "vastrelline.h", true},
        ArrowCase{"SensorToPublicHeader", "sensor/A.cpp", "vastrelline.h", true},
        ArrowCase{"OperatorToPublicHeader", "operators/curves/A.cpp", "vastrelline.h", false},
        ArrowCase{"PixelsToPublicHeader", "pixels/A.cpp", "vastrelline.h", false},
        ArrowCase{"PixelsToPlatform", "pixels/A.cpp", "platform/B.h", true},
        ArrowCase{"PixelsToPosix", "pixels/A.cpp", "platform/posix/B.h", false},
        ArrowCase{"PlatformToPosix", "platform/A.cpp", "platform/posix/B.h", true},
        ArrowCase{"PosixToPlatform", "platform/posix/A.cpp", "platform/B.h", true},
        ArrowCase{"PosixToPixels", "platform/posix/A.cpp", "pixels/B.h", false},
        ArrowCase{"PlatformToProfileText", "platform/A.cpp", "profile_text/B.h", true},
        ArrowCase{"PosixToProfileText", "platform/posix/A.cpp", "profile_text/B.h", true},
        ArrowCase{"ProfileTextToPlatform", "profile_text/A.cpp", "platform/B.h", false}),
    [](const auto& test) { return test.param.name; });

TEST(FindWrongIncludes, NamesTheArrowAndTheWayOut) {
    EXPECT_THAT(FindWrongIncludes(GraphOf("sensor/A.cpp", "report/B.h"), OwnRules()),
                ElementsAre("sensor/A.cpp includes report/B.h: sensor (rank 3) sees lower ranks only, and "
                            "report has 3: pass in what it needs, or move what both need to a room below"));
}

TEST(FindWrongIncludes, APathIsWholeFromTheTopFolder) {
    const Graph beside{{"config/A.cpp", {"B.h"}}, {"config/B.h", {}}};
    EXPECT_THAT(FindWrongIncludes(beside, OwnRules()), ElementsAre(HasSubstr("config/A.cpp includes B.h")));
}

TEST(FindIdleArrows, AnArrowThatNoIncludeTakesIsIdle) {
    HouseRules rules{.rooms = {{.folder = "a", .rank = 0}, {.folder = "b", .rank = 0}},
                     .arrowsOnOneFloor = {{"a", "b"}},
                     .guests = {}};
    EXPECT_THAT(FindIdleArrows(GraphOf("a/A.h", "b/B.h"), rules), IsEmpty());
    EXPECT_THAT(FindIdleArrows(GraphOf("b/B.h", "a/A.h"), rules), ElementsAre(HasSubstr("a -> b")));
}

TEST(FindHomelessFiles, ARoomHoldsFilesAndACorridorRooms) {
    const SourceTree atHome{
        {"CMakeLists.txt", ""}, {"config/A.h", ""}, {"platform/posix/A.cpp", ""}, {"stages/gamma/A.h", ""}};
    EXPECT_THAT(FindHomelessFiles(atHome, OwnRules(), kTopFiles), IsEmpty());
    const SourceTree homeless{{"A.h", ""},
                              {"configs/A.h", ""},
                              {"config/inner/A.h", ""},
                              {"stages/A.h", ""},
                              {"stages/gamma/inner/A.h", ""}};
    EXPECT_THAT(FindHomelessFiles(homeless, OwnRules(), kTopFiles), SizeIs(homeless.size()));
}

TEST(FindRepeatedBaseNames, ANameInTwoFoldersIsFound) {
    EXPECT_THAT(FindRepeatedBaseNames({{"a/A.h", ""}, {"a/A.cpp", ""}, {"b/B.h", ""}}), IsEmpty());
    EXPECT_THAT(FindRepeatedBaseNames({{"a/Tile.h", ""}, {"b/TILE.cpp", ""}}),
                ElementsAre("tile stands in a b: rename all but one"));
}

TEST(FindSystemHeaders, AreAllowedInPlatformOnly) {
    const auto find = [](const std::string& path, const std::string& line) {
        return FindSystemHeadersOutside(ParseTree({{path, line}}), OwnRules(), "platform");
    };
    EXPECT_THAT(find("platform/posix/A.cpp", "#include <unistd.h>\n"), IsEmpty());
    EXPECT_THAT(find("config/A.cpp", "#include <vector>\n"), IsEmpty());
    EXPECT_THAT(find("config/A.cpp", "#include <sys/stat.h>\n"), SizeIs(1));
}

}  // namespace vastrelline

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "IncludeRules.h"
#include "TreeFiles.h"
#include "support/SourceTree.h"

namespace vastrelline {

namespace {

using testing::IsEmpty;
using testing::SizeIs;

const SourceTree& OwnTree() {
    static const SourceTree tree = ReadTreeFiles(SourceTreeFolder() / "src");
    return tree;
}

struct ArrowCase {
    const char* name;
    const char* from;
    const char* to;
    bool isAllowed;
};

class Arrow : public testing::TestWithParam<ArrowCase> {};

}  // namespace

TEST(OwnTree, IsRead) { EXPECT_GT(OwnTree().size(), 20U); }
TEST(OwnTree, IncludesPointOneWay) { EXPECT_THAT(FindWrongIncludes(OwnTree()), IsEmpty()); }
TEST(OwnTree, IncludesFormNoCircle) { EXPECT_THAT(FindIncludeCircles(OwnTree()), IsEmpty()); }
TEST(OwnTree, HasEachBaseNameOnce) { EXPECT_THAT(FindRepeatedBaseNames(OwnTree()), IsEmpty()); }
TEST(OwnTree, MeetsTheOperatingSystemInPlatformOnly) {
    EXPECT_THAT(FindSystemHeadersOutsidePlatform(OwnTree()), IsEmpty());
}

TEST_P(Arrow, IsHeld) {
    const std::string line = std::string("#include \"") + GetParam().to + "\"\n";
    const SourceTree tree{{GetParam().from, line}, {GetParam().to, ""}};
    EXPECT_THAT(FindWrongIncludes(tree), SizeIs(GetParam().isAllowed ? 0 : 1));
}

INSTANTIATE_TEST_SUITE_P(
    Rules, Arrow,
    testing::Values(ArrowCase{"ExportToChain", "exports/A.cpp", "chains/B.h", true},
                    ArrowCase{"ExportToPlatform", "exports/A.cpp", "platform/B.h", true},
                    ArrowCase{"ExportToPublicHeader", "exports/A.cpp", "vastrelline.h", true},
                    ArrowCase{"ChainToStage", "chains/A.cpp", "stages/gamma/B.h", true},
                    ArrowCase{"ChainToExport", "chains/A.cpp", "exports/B.h", false},
                    ArrowCase{"StageToChain", "stages/gamma/A.cpp", "chains/B.h", false},
                    ArrowCase{"StageToItself", "stages/gamma/A.cpp", "stages/gamma/B.h", true},
                    ArrowCase{"StageToStage", "stages/gamma/A.cpp", "stages/linear/B.h", false},
                    ArrowCase{"StageToReport", "stages/gamma/A.cpp", "report/B.h", true},
                    ArrowCase{"StageToSensor", "stages/gamma/A.cpp", "sensor/B.h", true},
                    ArrowCase{"StageToOperator", "stages/gamma/A.cpp", "operators/curves/B.h", true},
                    ArrowCase{"SensorToReport", "sensor/A.cpp", "report/B.h", false},
                    ArrowCase{"SensorToConfig", "sensor/A.cpp", "config/B.h", true},
                    ArrowCase{"ReportToOperator", "report/A.cpp", "operators/curves/B.h", true},
                    ArrowCase{"OperatorToConfig", "operators/curves/A.cpp", "config/B.h", false},
                    ArrowCase{"OperatorToReport", "operators/median/A.cpp", "report/B.h", false},
                    ArrowCase{"OperatorToPixels", "operators/median/A.cpp", "pixels/B.h", true},
                    ArrowCase{"OperatorToListed", "operators/curves/A.cpp", "operators/histogram/B.h", true},
                    ArrowCase{"OperatorToOther", "operators/curves/A.cpp", "operators/median/B.h", false},
                    ArrowCase{"OperatorToPublicHeader", "operators/curves/A.cpp", "vastrelline.h", false},
                    ArrowCase{"ConfigToPixels", "config/A.cpp", "pixels/B.h", true},
                    ArrowCase{"ConfigToReport", "config/A.cpp", "report/B.h", false},
                    ArrowCase{"PixelsToPublicHeader", "pixels/A.cpp", "vastrelline.h", false},
                    ArrowCase{"PixelsToOperator", "pixels/A.cpp", "operators/median/B.h", false},
                    ArrowCase{"PlatformToProfileText", "platform/posix/A.cpp", "profile_text/B.h", true},
                    ArrowCase{"ProfileTextToPlatform", "profile_text/A.cpp", "platform/B.h", false},
                    ArrowCase{"PlatformToPixels", "platform/A.cpp", "pixels/B.h", false}),
    [](const auto& test) { return test.param.name; });

TEST(IncludeRules, AnIncludeOutsideTheTreeIsWrong) {
    EXPECT_THAT(FindWrongIncludes({{"stages/gamma/A.cpp", "#include \"B.h\"\n"}, {"stages/gamma/B.h", ""}}),
                SizeIs(1));
}

TEST(IncludeRules, ACircleIsFoundOnce) {
    const SourceTree tree{{"pixels/A.h", "#include \"pixels/B.h\"\n"},
                          {"pixels/B.h", "#include <cmath>\n#include \"pixels/C.h\"\n"},
                          {"pixels/C.h", "#include \"pixels/B.h\"\n"}};
    EXPECT_THAT(FindIncludeCircles(tree), testing::ElementsAre("pixels/B.h -> pixels/C.h -> pixels/B.h"));
}

TEST(IncludeRules, ABaseNameInTwoFoldersIsFound) {
    EXPECT_THAT(FindRepeatedBaseNames(
                    {{"stages/gamma/A.h", ""}, {"stages/gamma/A.cpp", ""}, {"stages/median/B.h", ""}}),
                IsEmpty());
    EXPECT_THAT(FindRepeatedBaseNames({{"stages/gamma/A.h", ""}, {"stages/median/A.cpp", ""}}), SizeIs(1));
}

TEST(IncludeRules, ASystemHeaderIsAllowedInPlatformOnly) {
    EXPECT_THAT(FindSystemHeadersOutsidePlatform({{"platform/posix/A.cpp", "#include <unistd.h>\n"}}),
                IsEmpty());
    EXPECT_THAT(FindSystemHeadersOutsidePlatform({{"stages/gamma/A.cpp", "#include <sys/stat.h>\n"}}),
                SizeIs(1));
}

}  // namespace vastrelline

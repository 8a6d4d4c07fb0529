#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "IncludeRules.h"
#include "TreeFiles.h"

namespace vastrelline {

namespace {

using testing::IsEmpty;
using testing::SizeIs;

const SourceTree& OwnTree() {
    static const SourceTree tree = ReadTreeFiles(std::string(VASTRELLINE_SOURCE_DIR) + "/src");
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
    testing::Values(ArrowCase{"EntryToStage", "entry/A.cpp", "tone/BStage.h", true},
                    ArrowCase{"EntryToPlatform", "entry/A.cpp", "platform/B.h", true},
                    ArrowCase{"EntryToPublicHeader", "entry/A.cpp", "vastrelline.h", true},
                    ArrowCase{"StageToEntry", "tone/A.cpp", "entry/B.h", false},
                    ArrowCase{"StageToOwnWrapper", "tone/A.cpp", "tone/BStage.h", true},
                    ArrowCase{"StageToForeignCore", "detail/A.cpp", "tone/Histogram.h", true},
                    ArrowCase{"StageToForeignWrapper", "detail/A.cpp", "tone/BStage.h", false},
                    ArrowCase{"StageToForeignParams", "detail/A.cpp", "tone/BParams.h", false},
                    ArrowCase{"StageToDiagnostics", "noise/A.cpp", "diagnostics/B.h", true},
                    ArrowCase{"StageToConfig", "contrast/A.cpp", "config/B.h", true},
                    ArrowCase{"StageToImage", "prepare/A.cpp", "image/B.h", true},
                    ArrowCase{"ImageToPlatform", "image/A.cpp", "platform/B.h", true},
                    ArrowCase{"ImageToStage", "image/A.cpp", "tone/B.h", false},
                    ArrowCase{"ImageToConfig", "image/A.cpp", "config/B.h", false},
                    ArrowCase{"ImageToDiagnostics", "image/A.cpp", "diagnostics/B.h", false},
                    ArrowCase{"ImageToPublicHeader", "image/A.cpp", "vastrelline.h", false},
                    ArrowCase{"ConfigToPlatform", "config/A.cpp", "platform/B.h", true},
                    ArrowCase{"ConfigToImage", "config/A.cpp", "image/B.h", false},
                    ArrowCase{"ConfigToDiagnostics", "config/A.cpp", "diagnostics/B.h", false},
                    ArrowCase{"DiagnosticsToConfig", "diagnostics/A.cpp", "config/B.h", true},
                    ArrowCase{"DiagnosticsToCore", "diagnostics/A.cpp", "detail/B.h", true},
                    ArrowCase{"DiagnosticsToWrapper", "diagnostics/A.cpp", "detail/BStage.h", false},
                    ArrowCase{"DiagnosticsToEntry", "diagnostics/A.cpp", "entry/B.h", false},
                    ArrowCase{"PlatformToImage", "platform/A.cpp", "image/B.h", false},
                    ArrowCase{"PlatformToConfig", "platform/posix/A.cpp", "config/B.h", false}),
    [](const auto& test) { return test.param.name; });

TEST(IncludeRules, AnIncludeOutsideTheTreeIsWrong) {
    EXPECT_THAT(FindWrongIncludes({{"tone/A.cpp", "#include \"B.h\"\n"}, {"tone/B.h", ""}}), SizeIs(1));
}

TEST(IncludeRules, ACircleIsFoundOnce) {
    const SourceTree tree{{"image/A.h", "#include \"image/B.h\"\n"},
                          {"image/B.h", "#include <cmath>\n#include \"image/C.h\"\n"},
                          {"image/C.h", "#include \"image/B.h\"\n"}};
    EXPECT_THAT(FindIncludeCircles(tree), testing::ElementsAre("image/B.h -> image/C.h -> image/B.h"));
}

TEST(IncludeRules, ABaseNameInTwoFoldersIsFound) {
    EXPECT_THAT(FindRepeatedBaseNames({{"tone/A.h", ""}, {"tone/A.cpp", ""}, {"noise/B.h", ""}}), IsEmpty());
    EXPECT_THAT(FindRepeatedBaseNames({{"tone/A.h", ""}, {"noise/A.cpp", ""}}), SizeIs(1));
}

TEST(IncludeRules, ASystemHeaderIsAllowedInPlatformOnly) {
    EXPECT_THAT(FindSystemHeadersOutsidePlatform({{"platform/posix/A.cpp", "#include <unistd.h>\n"}}),
                IsEmpty());
    EXPECT_THAT(FindSystemHeadersOutsidePlatform({{"tone/A.cpp", "#include <sys/stat.h>\n"}}), SizeIs(1));
}

}  // namespace vastrelline

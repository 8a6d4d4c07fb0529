// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Modules.h"

namespace vastrelline {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Key;
using testing::UnorderedElementsAre;

// Modules without a test of their name, and the tests that exercise them.
const Coverings kCoveredElsewhere{
    {"chains/ConfiguredFamily",
     {"chains/ConfiguredChainTest.cpp", "chains/ExtendedChainTest.cpp", "chains/LowExposureChainTest.cpp"}},
    {"chains/FixedFamily", {"chains/CrChainTest.cpp", "chains/FixedChainTest.cpp"}},
    {"chains/FixedStageTable", {"chains/CrChainTest.cpp", "chains/FixedChainTest.cpp"}},
    {"chains/StageFrame", {"chains/StageTableTest.cpp"}},
    {"chains/StageListDriver", {"chains/ConfiguredChainTest.cpp", "chains/ExtendedChainTest.cpp"}},
    {"operators/median/MedianFilterColumns", {"operators/median/MedianFilterTest.cpp"}},
    {"operators/median/MedianFilterHistogram", {"operators/median/MedianFilterTest.cpp"}},
    {"operators/median/MedianPlan", {"operators/median/MedianFilterTest.cpp"}},
    {"operators/median/MedianSchedule", {"operators/median/MedianFilterTest.cpp"}},
    {"operators/separable/FilterSchedule", {"operators/separable/FilterVariantsTest.cpp"}},
    {"operators/separable/HalvingSchedule", {"operators/separable/HalvingFilterTest.cpp"}},
    {"operators/tile_equalise/ClaheSchedule", {"operators/tile_equalise/ClaheTilesTest.cpp"}},
    {"platform/HeldCancellation", {"platform/posix/HeldCancellationPosixTest.cpp"}},
    {"sensor/CornerOutline", {"sensor/RoundCornerMaskTest.cpp"}},
    {"stages/adaptive_unsharp/BandDifferenceUnsharp",
     {"stages/adaptive_unsharp/EdgeWeightedUnsharpTest.cpp"}},
    {"stages/adaptive_unsharp/HistogramShapedUnsharp", {"stages/adaptive_unsharp/ShapeDetailTest.cpp"}},
    {"stages/adaptive_unsharp/SobelRow", {"stages/adaptive_unsharp/SobelMagnitudeTest.cpp"}},
    {"stages/hdr/CoarseBlur", {"stages/hdr/BlurStepTest.cpp"}},
    {"stages/hdr/FineBlur", {"stages/hdr/BlurStepTest.cpp"}},
    {"stages/hdr/HdrFrame", {"stages/hdr/HdrStageTest.cpp"}},
    {"stages/hdr/HdrParams", {"stages/hdr/HdrStageTest.cpp"}},
    {"stages/hdr/SpectrumEdges", {"stages/hdr/LayerFusionTest.cpp"}},
    {"stages/median/MedianParams", {"stages/median/MedianStageTest.cpp"}},
    {"stages/median/MedianPasses", {"stages/median/MedianStageTest.cpp"}},
    {"stages/stretch/StretchSegments", {"stages/stretch/StretchStageTest.cpp"}},
};

const Mirror kTests{"Test.cpp",
                    {"architecture", "bindings", "digest", "examples", "faults", "one_reading", "package",
                     "public_header", "support", "tools"},
                    {"chains", "exports"}};
const Mirror kBenches{"Bench.cpp", {"rival", "support"}, {"chains", "exports"}};

// Tests that mirror no module, and what they are for.
const Exceptions kTestsOfNoModule{
    {"chains/FixedToneStagesTest.cpp", "the fixed chains' gamma and sigmoid are tried alike"},
    {"stages/hdr/TransformFusionTest.cpp", "tries the model that LayerFusionTest sets beside the fusion"},
};

const Modules& OwnModules() {
    static const Modules modules = ListModules(OwnParsedTree("src"));
    return modules;
}

Modules ModulesIn(const SourceTree& tree) { return ListModules(ParseTree(tree)); }

Findings StrayTests(const SourceTree& sources, const SourceTree& tests) {
    return FindStrayFiles(ModulesIn(sources), ParseTree(tests), {"Test.cpp", {"support"}, {"exports"}});
}

}  // namespace

TEST(House, TestsEachModule) {
    EXPECT_TRUE(IsKept(FindUntestedModules(OwnModules(), OwnParsedTree("tests"), kCoveredElsewhere)));
}

TEST(House, KeepsTestsWhereTheirModulesAre) {
    EXPECT_TRUE(IsKept(
        CompareFindings(FindStrayFiles(OwnModules(), OwnParsedTree("tests"), kTests), kTestsOfNoModule)));
}

TEST(House, KeepsBenchmarksWhereTheirModulesAre) {
    EXPECT_TRUE(IsKept(CompareFindings(FindStrayFiles(OwnModules(), OwnParsedTree("bench"), kBenches), {})));
}

TEST(ListModules, FormsBelongToTheirModule) {
    EXPECT_THAT(ModulesIn({{"a/Row.h", ""},
                           {"a/Row.cpp", ""},
                           {"a/RowAvx2.cpp", ""},
                           {"a/RowSchedule.h", ""},
                           {"a/RowVector.inl", ""},
                           {"a/Loops.inl", ""},
                           {"a/LoneSchedule.h", ""},
                           {"a/ColumnScalar.cpp", ""},
                           {"a/ColumnAvx2.cpp", ""},
                           {"platform/Clock.h", ""},
                           {"platform/posix/ClockPosix.cpp", ""},
                           {"platform/windows/ClockWindows.cpp", ""},
                           {"platform/posix/Lone.h", ""}}),
                ElementsAre(Key("a/Column"), Key("a/LoneSchedule"), Key("a/Row"), Key("platform/Clock"),
                            Key("platform/posix/Lone")));
}

TEST(ListModules, RecordsAndConstantsAreNoCode) {
    EXPECT_FALSE(ModulesIn({{"a/A.h", "struct A { int x = 1; };\nvoid F();"}}).at("a/A").hasCode);
    EXPECT_TRUE(ModulesIn({{"a/A.h", "inline int F() { return 1; }"}}).at("a/A").hasCode);
    EXPECT_TRUE(ModulesIn({{"a/A.h", "void F();"}, {"a/AAvx2.cpp", "void F() {}"}}).at("a/A").hasCode);
}

class UntestedModules : public testing::Test {
protected:
    std::vector<std::string> Find(const SourceTree& tests, const Coverings& covered = {}) const {
        return FindUntestedModules(modules_, ParseTree(tests), covered);
    }

private:
    Modules modules_ = ModulesIn({{"a/A.h", "void Apply();"},
                                  {"a/A.cpp", "static void Inner() {}\nvoid Apply() { Inner(); }"},
                                  {"a/User.h", "void Use();"},
                                  {"a/User.cpp", "#include \"a/A.h\"\n"},
                                  {"a/UserOfUser.h", "#include \"a/User.h\"\n"},
                                  {"b/Stranger.h", "#include \"a/A.h\"\n"},
                                  {"a/Record.h", "struct Record { int x; };"}});
};

TEST_F(UntestedModules, AreThoseWithCodeAndWithoutTest) {
    EXPECT_THAT(Find({{"a/ATest.cpp", ""}}), IsEmpty());
    EXPECT_THAT(Find({}), ElementsAre("a/A has no test: write tests/a/ATest.cpp"));
    EXPECT_THAT(Find({{"b/ATest.cpp", ""}}), ElementsAre(HasSubstr("a/A has no test")));
}

TEST_F(UntestedModules, AreCoveredByATestThatUsesThem) {
    const Coverings covered{{"a/A", {"a/BTest.cpp"}}};
    EXPECT_THAT(Find({{"a/BTest.cpp", "#include \"a/A.h\"\n"}}, covered), IsEmpty());
    EXPECT_THAT(Find({{"a/BTest.cpp", "TEST(B, C) { Apply(); }"}}, covered), IsEmpty());
    EXPECT_THAT(Find({{"a/BTest.cpp", "// Apply, a/A.h"}}, covered),
                ElementsAre(HasSubstr("does not exercise it")));
    EXPECT_THAT(Find({{"a/BTest.cpp", "#include \"a/User.h\""}}, covered), IsEmpty());
    EXPECT_THAT(Find({{"a/BTest.cpp", "#include \"a/UserOfUser.h\""}}, covered), IsEmpty());
    EXPECT_THAT(Find({{"a/BTest.cpp", "#include \"a/Record.h\""}}, covered),
                ElementsAre(HasSubstr("does not exercise it")));
    EXPECT_THAT(Find({{"a/BTest.cpp", "TEST(B, C) { Inner(); }"}}, covered),
                ElementsAre(HasSubstr("does not exercise it")));
    EXPECT_THAT(Find({{"a/BTest.cpp", "#include \"b/Stranger.h\""}}, covered),
                ElementsAre(HasSubstr("does not exercise it")));
    EXPECT_THAT(Find({}, covered), ElementsAre(HasSubstr("is not there")));
}

TEST_F(UntestedModules, AreStruckFromTheListWithATestOfTheirOwn) {
    EXPECT_THAT(
        Find({{"a/ATest.cpp", ""}, {"a/BTest.cpp", "#include \"a/A.h\""}}, {{"a/A", {"a/BTest.cpp"}}}),
        ElementsAre("strike a/A from the list: it needs no exception"));
    EXPECT_THAT(Find({{"a/ATest.cpp", ""}}, {{"a/Gone", {"a/ATest.cpp"}}, {"a/Record", {"a/ATest.cpp"}}}),
                UnorderedElementsAre(HasSubstr("strike a/Gone"), HasSubstr("strike a/Record"),
                                     HasSubstr("listed for a/Record, does not exercise it")));
}

TEST(StrayFiles, AFileLiesWithTheModuleThatItIsNamedFor) {
    const SourceTree sources{{"a/Row.h", ""}, {"b/RowFilter.h", ""}};
    EXPECT_THAT(StrayTests(sources, {{"a/RowTest.cpp", ""},
                                     {"a/RowEdgesTest.cpp", ""},
                                     {"a/posix/RowTest.cpp", ""},
                                     {"b/RowFilterTest.cpp", ""},
                                     {"support/RowFilterTest.cpp", ""}}),
                IsEmpty());
    EXPECT_THAT(
        StrayTests(sources, {{"b/RowTest.cpp", ""}, {"a/RowFilterEdgesTest.cpp", ""}, {"c/RowTest.cpp", ""}}),
        ElementsAre(Key("a/RowFilterEdgesTest.cpp"), Key("b/RowTest.cpp"), Key("c/RowTest.cpp")));
}

TEST(StrayFiles, AFileNamedForNoModuleUsesItsFolder) {
    const SourceTree sources{{"a/Row.h", ""}};
    EXPECT_THAT(StrayTests(sources, {{"a/RowsOfNoiseTest.cpp", "#include \"a/Row.h\""},
                                     {"a/posix/ManyTest.cpp", "#include \"a/Row.h\""},
                                     {"exports/MatrixTest.cpp", "#include \"vastrelline.h\""},
                                     {"a/Helper.h", ""}}),
                IsEmpty());
    EXPECT_THAT(StrayTests(sources, {{"a/MatrixTest.cpp", "#include \"vastrelline.h\""},
                                     {"b/RowsOfNoiseTest.cpp", "#include \"a/Row.h\""}}),
                ElementsAre(Key("a/MatrixTest.cpp"), Key("b/RowsOfNoiseTest.cpp")));
}

TEST(StrayFiles, ATestOfASystemLiesInThatFolderOfTheModule) {
    const SourceTree sources{
        {"platform/Clock.h", ""}, {"platform/posix/ClockPosix.cpp", ""}, {"platform/posix/NativePath.h", ""}};
    EXPECT_THAT(StrayTests(sources, {{"platform/ClockTest.cpp", ""},
                                     {"platform/posix/ClockPosixTest.cpp", ""},
                                     {"platform/posix/NativePathTest.cpp", ""}}),
                IsEmpty());
    EXPECT_THAT(StrayTests(sources, {{"platform/NativePathTest.cpp", ""}}),
                ElementsAre(Key("platform/NativePathTest.cpp")));
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Callers.h"

namespace vastrelline {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;

// Functions that the library itself does not call, and what they are for.
const Exceptions kCalledFromElsewhere{
    {"ApplyLogTable", "maps pixels through the table of a logarithmic curve, as its levels are mapped"},
    {"BuildGammaCurve", "the table of a gamma curve, whose shape alone the stages need"},
    {"BuildLogCurve", "the table of a logarithmic curve, likewise"},
    {"BuildMaskFromProfile", "BuildMaskFromGeometry with the profile's, on pixels that wait for no curve"},
    {"BuildSigmoidCurve", "the table of a sigmoid curve, likewise"},
    {"BuildStretchCurve", "the table of a stretch curve, likewise"},
    {"BuildWindowCurve", "the table of a window, likewise"},
    {"CImageM::BottomUp", "tells in which order the rows of the caller's raster lay"},
    {"CImageM::SetEqualize", "the only way to an equalised rendering, which no file asks for"},
    {"ClaheEqualize", "RunClaheTiles with its refusals told apart, as tests equalise"},
    {"EditProfile", "one change to a profile as the profile functions of Windows make it, as recorded"},
    {"DrawRoundCorners", "the plain form, which defines what MarkRoundCorners marks"},
    {"LocalDeviationMap", "the weights of DeviationWeightedSmooth, which has them by level only"},
    {"MapDetailPower",
     "the map of the AUM keys, left out of the stage because its start there makes it do nothing"},
    {"ReadProfileTextSection",
     "a section's lines as the profile functions of Windows list them, as recorded"},
    {"MemoryFiles::Clear", "a fuzz target begins each run with nothing"},
    {"ScratchAllocator::allocate", "a vector's allocator"},
    {"ScratchAllocator::construct", "a vector's allocator"},
    {"ScratchAllocator::deallocate", "a vector's allocator"},
    {"ScratchArena::MappedBytes", "tests see what is kept between calls"},
    {"SetMessageHandler", "tests read what would be shown"},
    {"SetPickObserver", "a test counts which forms are picked"},
    {"SetSensorProfileRoot", "tests bring a folder of profiles of their own"},
    {"SquareBoxMean", "the means of ApplySpotCorrection, which has a few rows of them at a time"},
};

Findings FindIn(const SourceTree& tree) { return FindUncalledFunctions(ParseTree(tree)); }

}  // namespace

TEST(House, CallsWhatItsHeadersDeclare) {
    EXPECT_TRUE(IsKept(CompareFindings(FindUncalledFunctions(OwnParsedTree("src")), kCalledFromElsewhere)));
}

TEST(FindUncalledFunctions, ADefinitionIsNoCaller) {
    EXPECT_THAT(FindIn({{"A.h", "void F(int x);\nvoid G();"},
                        {"A.cpp", "#include \"A.h\"\nvoid F(int x) { G(); }\nvoid G() {}"}}),
                ElementsAre(Key("F")));
}

TEST(FindUncalledFunctions, AFunctionInATableIsCalled) {
    EXPECT_THAT(
        FindIn({{"A.h", "void F();"}, {"A.cpp", "#include \"A.h\"\nconst Row kRows[] = {{\"f\", F}};"}}),
        IsEmpty());
}

TEST(FindUncalledFunctions, ItsOwnBodyIsNoCaller) {
    EXPECT_THAT(
        FindIn({{"A.h", "int F(int x);"}, {"A.cpp", "#include \"A.h\"\nint F(int x) { return F(x - 1); }"}}),
        ElementsAre(Key("F")));
}

TEST(FindUncalledFunctions, CommentsAndTextsAreNoCallers) {
    EXPECT_THAT(
        FindIn({{"A.h", "// F does\nvoid F();"}, {"A.cpp", "#include \"A.h\"\n/* F(); */ auto x = \"F\";"}}),
        ElementsAre(Key("F")));
}

TEST(FindUncalledFunctions, AMacroIsACaller) {
    EXPECT_THAT(FindIn({{"A.h", "void F();"}, {"A.cpp", "#include \"A.h\"\n#define CALL \\\n    F()\n"}}),
                IsEmpty());
}

TEST(FindUncalledFunctions, AFileThatDoesNotSeeTheHeaderMeansAnotherFunction) {
    const std::string other = "namespace { void F() {} }\nvoid Use() { F(); }";
    EXPECT_THAT(FindIn({{"A.h", "void F();"}, {"B.cpp", other}}), ElementsAre(Key("F")));
}

TEST(FindUncalledFunctions, AHeaderIsSeenThroughOthersAndInFragmentsOfWhatSeesIt) {
    EXPECT_THAT(FindIn({{"A.h", "void F();\nvoid G();"},
                        {"B.h", "#include \"A.h\""},
                        {"B.cpp", "#include \"B.h\"\n#include \"B.inl\"\nstatic void Use() { F(); }"},
                        {"B.inl", "static void UseToo() { G(); }"}}),
                IsEmpty());
}

TEST(FindUncalledFunctions, AMemberOfAnotherObjectIsNoFreeFunction) {
    EXPECT_THAT(
        FindIn({{"A.h", "void Run();"}, {"A.cpp", "#include \"A.h\"\nvoid Use() { a.Run(); b->Run(); }"}}),
        ElementsAre(Key("Run")));
}

TEST(FindUncalledFunctions, AMemberIsCalledFromItsNamesakeInAnotherRecord) {
    EXPECT_THAT(
        FindIn(
            {{"A.h", "class Inner { public: void Close(); };\nclass Outer { public: void Close(); };"},
             {"A.cpp",
              "#include \"A.h\"\nvoid Outer::Close() { inner_.Close(); }\nvoid Use() { outer.Close(); }"}}),
        IsEmpty());
}

TEST(FindUncalledFunctions, AQualifiedNameCallsItsOwnRecordOnly) {
    EXPECT_THAT(FindIn({{"A.h", "struct A { static int F(); };\nstruct B { static int F(); };"},
                        {"A.cpp", "#include \"A.h\"\nint Use() { return A::F(); }"}}),
                ElementsAre(Key("B::F")));
}

TEST(FindUncalledFunctions, ConstructorsAndOperatorsAreNotAskedFor) {
    EXPECT_THAT(
        FindIn({{"A.h", "struct A { A(); ~A(); A& operator=(const A&); bool operator()() const; };"}}),
        IsEmpty());
}

}  // namespace vastrelline

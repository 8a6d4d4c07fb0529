// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "IncludeGraph.h"

namespace vastrelline {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

TEST(IncludeGraph, HoldsQuotedIncludesAsWritten) {
    const ParsedTree tree =
        ParseTree({{"a/A.cpp", "#include \"a/A.h\"\n#include <cmath>\n#include \"b/B.h\"\n"},
                   {"notes.txt", "#include \"a/A.h\"\n"}});
    EXPECT_THAT(MakeIncludeGraph(tree), ElementsAre(Pair("a/A.cpp", ElementsAre("a/A.h", "b/B.h"))));
}

TEST(GroupGraph, LeavesOutArrowsWithinAGroup) {
    const Graph files{{"a/A.h", {"a/B.h", "b/C.h"}}, {"b/C.h", {"b/D.h"}}};
    EXPECT_THAT(GroupGraph(files, FolderOf), ElementsAre(Pair("a", ElementsAre("b"))));
}

TEST(FindReached, FollowsArrowsRoundACycle) {
    const Graph graph{{"a", {"b"}}, {"b", {"c", "a"}}, {"d", {"a"}}};
    EXPECT_THAT(FindReached(graph, "a"), ElementsAre("a", "b", "c"));
    EXPECT_THAT(FindReached(graph, "c"), ElementsAre("c"));
}

TEST(FindCycles, ATreeWithTwoWaysToOneLeafHasNone) {
    EXPECT_THAT(FindCycles({{"a", {"b", "c"}}, {"b", {"d"}}, {"c", {"d"}}, {"d", {}}}), IsEmpty());
}

TEST(FindCycles, ACycleIsNamedOnceFromItsFirstName) {
    EXPECT_THAT(FindCycles({{"a", {"b"}}, {"b", {"c"}}, {"c", {"b"}}}), ElementsAre("b -> c -> b"));
}

TEST(FindCycles, EveryCycleIsNamed) {
    EXPECT_THAT(FindCycles({{"a", {"a", "b"}}, {"b", {"a"}}, {"c", {"d"}}, {"d", {"c"}}}),
                ElementsAre("a -> a", "a -> b -> a", "c -> d -> c"));
}

}  // namespace vastrelline

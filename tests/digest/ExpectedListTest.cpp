// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "ExpectedList.h"

namespace vastrelline::digest {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

GroupHash Group(const char* name, char digit, size_t runCount = 3) {
    return {name, std::string(64, digit), runCount};
}

TEST(ExpectedList, IsReadAsItWasWritten) {
    const std::vector<GroupHash> groups{Group("gamma", '0'),
                                        Group("a_name_that_is_longer_than_the_column", 'f', 1)};
    EXPECT_EQ(ReadList(WriteList(groups)), groups);
}

TEST(ExpectedList, CommentsAndBlankLinesArePassedOver) {
    EXPECT_EQ(ReadList("# why\r\n\r\n" + WriteList({Group("gamma", '0')})),
              std::vector<GroupHash>{Group("gamma", '0')});
}

TEST(ExpectedList, OtherLinesAreRefused) {
    const std::string hash(64, '0');
    for (const std::string& line :
         std::vector<std::string>{"gamma", "gamma 12 3", "gamma " + hash, "gamma " + hash + " x",
                                  "gamma " + hash + " 3 4", "gamma " + hash + " 3x"})
        EXPECT_THROW(ReadList(line), std::runtime_error) << line;
}

TEST(ExpectedList, EqualListsHaveNoFindings) {
    EXPECT_THAT(CompareLists({Group("a", '0'), Group("b", '1')}, {Group("b", '1'), Group("a", '0')}),
                IsEmpty());
}

TEST(ExpectedList, EveryDifferenceIsAFinding) {
    EXPECT_THAT(CompareLists({Group("a", '0'), Group("b", '1'), Group("c", '2')},
                             {Group("a", '1'), Group("c", '2', 4), Group("d", '3')}),
                ElementsAre("a differs", "b is missing", "c differs", "d is not expected"));
}

TEST(ExpectedList, TheHashOfAllFollowsEachOfThem) {
    const GroupHash all = HashOfAll({Group("a", '0'), Group("b", '1')});
    EXPECT_EQ(all.name, "all");
    EXPECT_EQ(all.runCount, 6U);
    EXPECT_NE(HashOfAll({Group("a", '0'), Group("b", '2')}).hash, all.hash);
}

}  // namespace
}  // namespace vastrelline::digest

// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "commands/CommandTree.h"

namespace vastrelline {
namespace {

TEST(CommandTree, HasABranchForEachRowOfTheTable) {
    const CommandTree tree;
    ASSERT_EQ(tree.Branches().size(), CommandTable().size());
    for (size_t i = 0; i < tree.Branches().size(); ++i) {
        EXPECT_EQ(tree.Branches()[i].entry, &CommandTable()[i]);
        EXPECT_NE(tree.Branches()[i].command, nullptr);
        EXPECT_NE(tree.Branches()[i].app, nullptr);
    }
    EXPECT_EQ(tree.Parsed(), nullptr);
    EXPECT_FALSE(tree.IsQuiet());
    EXPECT_FALSE(tree.WantsJson());
}

TEST(CommandTree, ListsNamesOfAGroup) {
    EXPECT_THAT(CommandTree::NamesIn(""), testing::IsSupersetOf({"run", "compare", "phantom"}));
    EXPECT_THAT(CommandTree::NamesIn("no group"), testing::IsEmpty());
}

}  // namespace
}  // namespace vastrelline

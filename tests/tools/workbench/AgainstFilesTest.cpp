// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "messages/ToolError.h"
#include "support/TemporaryFolder.h"
#include "workbench/AgainstFiles.h"

namespace vastrelline {
namespace {

TEST(AgainstFiles, AreToldApartByTheirFirstBytes) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "old.ini", "[A]\nPROCMODE=2\n");
    WriteBytes(folder.Path() / "old.so", std::string("\x7F"
                                                     "ELF\2\1\1",
                                                     7) +
                                             std::string(64, '\0'));
    const std::vector<std::string> paths{folder.Narrow("old.ini"), folder.Narrow("old.so")};
    const std::vector<AgainstFile> files = ListAgainstFiles(paths);
    ASSERT_EQ(files.size(), 2U);
    EXPECT_EQ(files[0].path, paths[0]);
    EXPECT_FALSE(files[0].isLibrary);
    EXPECT_TRUE(files[1].isLibrary);
}

TEST(AgainstFiles, HaveToBeThere) {
    const TemporaryFolder folder;
    for (const std::string& path : {folder.Narrow("none.ini"), folder.Path().string()})
        EXPECT_THROW(ListAgainstFiles({&path, 1}), InputError) << path;
}

}  // namespace
}  // namespace vastrelline

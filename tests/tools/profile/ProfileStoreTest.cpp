// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <string>

#include "messages/ToolError.h"
#include "profile/ProfileStore.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

TEST(ProfileStore, WritesAllBytesAndReplacesIfItMay) {
    const TemporaryFolder folder;
    const std::string path = folder.Narrow("a.ini");
    const std::string bytes("[A]\r\n\0\xFF", 7);
    StoreProfileFile(path, bytes, false);
    EXPECT_EQ(ReadBytes(path), bytes);
    EXPECT_THROW(StoreProfileFile(path, "other", false), OutputError);
    EXPECT_EQ(ReadBytes(path), bytes);
    StoreProfileFile(path, "", true);
    EXPECT_EQ(ReadBytes(path), "");
    EXPECT_THROW(StoreProfileFile(folder.Narrow("none") + "/a.ini", "x", true), OutputError);
}

TEST(ProfileStore, LeavesWhatSomebodyElseHasSavedMeanwhile) {
    const TemporaryFolder folder;
    const std::string path = folder.Narrow("a.ini");
    StoreProfileFile(path, "[A]\nx=1\n", false);
    ReplaceProfileFile(path, "[A]\nx=1\n", "[A]\nx=2\n");
    EXPECT_EQ(ReadBytes(path), "[A]\nx=2\n");
    EXPECT_THROW(ReplaceProfileFile(path, "[A]\nx=1\n", "[A]\nx=3\n"), OutputError);
    EXPECT_EQ(ReadBytes(path), "[A]\nx=2\n");
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>

#include "platform/StateFolder.h"
#include "support/SetVariable.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

TEST(StateFolderPosix, IsInTheHomeFolderWithoutAnAbsolutePathInTheVariable) {
    const TemporaryFolder folder;
    const SetVariable home("HOME", folder.Path().string());
    for (const char* const named : {"", "relative"}) {
        const SetVariable state("XDG_STATE_HOME", named);
        EXPECT_EQ(StateFolder(), (folder.Path() / ".local/state/vastrelline").string());
    }
}

TEST(StateFolderPosix, IsForTheUserAlone) {
    const TemporaryFolder folder;
    fs::create_directory(folder.Path() / "state");
    fs::permissions(folder.Path() / "state", fs::perms(0755));
    const SetVariable state("XDG_STATE_HOME", folder.Narrow("state"));
    const fs::path made = StateFolder();
    EXPECT_EQ(fs::status(made).permissions(), fs::perms(0700));
    EXPECT_EQ(fs::status(folder.Path() / "state").permissions(), fs::perms(0755));
}

TEST(StateFolderPosix, IsNoneWithoutAHomeFolder) {
    const SetVariable home("HOME", "");
    const SetVariable state("XDG_STATE_HOME", "");
    EXPECT_EQ(StateFolder(), "");
}

}  // namespace
}  // namespace vastrelline

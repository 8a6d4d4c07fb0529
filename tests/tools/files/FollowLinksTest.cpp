// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "files/FollowLinks.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

TEST(FollowLinks, LeadToTheEnd) {
    const TemporaryFolder folder;
    const fs::path root = fs::canonical(folder.Path());
    fs::create_symlink("second", root / "first");
    fs::create_symlink("file", root / "second");
    EXPECT_EQ(FollowLinks((root / "first").string()), (root / "file").string()) << "which is not there yet";
    WriteBytes(root / "file", "x");
    EXPECT_EQ(FollowLinks((root / "first").string()), (root / "file").string());
}

TEST(FollowLinks, KeepWhatIsNoLink) {
    const TemporaryFolder folder;
    const std::string path = folder.Narrow("./file");
    EXPECT_EQ(FollowLinks(path), path);
    WriteBytes(path, "x");
    EXPECT_EQ(FollowLinks(path), path);
    fs::create_symlink("loop", folder.Path() / "loop");
    EXPECT_EQ(FollowLinks(folder.Narrow("loop")), folder.Narrow("loop"));
    EXPECT_EQ(FollowLinks(""), "");
}

}  // namespace
}  // namespace vastrelline

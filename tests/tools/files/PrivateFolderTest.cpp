// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "files/PrivateFolder.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

namespace fs = std::filesystem;

TEST(PrivateFolder, IsForItsOwnerOnlyAndGoesWithAllThatIsInIt) {
    fs::path path;
    {
        const PrivateFolder folder;
        path = folder.Path();
        EXPECT_TRUE(fs::is_empty(path));
#ifndef _WIN32  // there its user's folder for such things keeps others out
        EXPECT_EQ(fs::status(path).permissions(), fs::perms::owner_all);
#endif
        fs::create_directory(folder.Inside("sub"));
        WriteBytes(path / "sub" / "file", "x");
    }
    EXPECT_FALSE(fs::exists(path));
}

TEST(PrivateFolder, IsANewOneEachTime) {
    const PrivateFolder one;
    const PrivateFolder other;
    EXPECT_NE(one.Path(), other.Path());
    EXPECT_EQ(one.Inside("leaf"), (one.Path() / "leaf").string());
}

}  // namespace
}  // namespace vastrelline

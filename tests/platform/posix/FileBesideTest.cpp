// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <optional>
#include <string>

#include "platform/NameBeside.h"
#include "platform/posix/FileBeside.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::chrono_literals;

class FileBesideTest : public testing::Test {
protected:
    const FilePlace& Place() const { return place_; }
    std::filesystem::path At(std::string_view name) const { return folder_.Path() / name; }
    std::filesystem::path Beside() const { return At(NameBeside(HashName(place_.name), 4)); }
    std::string Narrow(std::string_view name) const { return folder_.Narrow(name); }

private:
    TemporaryFolder folder_;
    FilePlace place_ = FindPlace(folder_.Narrow("file"));
};

TEST_F(FileBesideTest, GoesAwayUnlessItIsUsed) {
    WaitBudget wait(0ms);
    {
        FileBeside beside(Place(), 0600, wait);
        ASSERT_TRUE(beside.IsThere());
        EXPECT_TRUE(beside.Fill("new"));
        EXPECT_EQ(ReadBytes(Beside()), "new");
    }
    EXPECT_FALSE(exists(Beside()));
}

TEST_F(FileBesideTest, TakesTheOldOnesPlace) {
    WriteBytes(At("file"), "old");
    WaitBudget wait(0ms);
    {
        FileBeside beside(Place(), 0600, wait);
        EXPECT_TRUE(beside.Fill("new"));
        EXPECT_TRUE(beside.Replace());
    }
    EXPECT_EQ(ReadBytes(At("file")), "new");
    EXPECT_FALSE(exists(Beside()));
}

TEST_F(FileBesideTest, TakesAPlaceOnlyIfItIsFree) {
    WaitBudget wait(0ms);
    for (const bool isFree : {true, false}) {
        FileBeside beside(Place(), 0600, wait);
        EXPECT_TRUE(beside.Fill(isFree ? "first" : "second"));
        EXPECT_EQ(beside.TakeFreePlace(), isFree);
        if (!isFree) {
            EXPECT_EQ(errno, EEXIST);
        }
    }
    EXPECT_EQ(ReadBytes(At("file")), "first");
    EXPECT_FALSE(exists(Beside()));
}

TEST_F(FileBesideTest, AnExchangeKeepsBoth) {
    WriteBytes(At("file"), "old");
    WaitBudget wait(0ms);
    FileBeside beside(Place(), 0600, wait);
    EXPECT_TRUE(beside.Fill("new"));
    const std::optional<FileVersion> own = beside.Version();
    EXPECT_EQ(beside.VersionAtName(), own);
    if (!beside.Exchange()) GTEST_SKIP() << "not on this file system";
    EXPECT_EQ(ReadBytes(At("file")), "new");
    EXPECT_EQ(ReadBytes(Beside()), "old");
    EXPECT_EQ(beside.Version(), own);
    EXPECT_NE(beside.VersionAtName(), own);
}

TEST_F(FileBesideTest, WhatIsLeftIsReplaced) {
    WriteBytes(Beside(), "left");
    WaitBudget wait(0ms);
    FileBeside beside(Place(), 0600, wait);
    EXPECT_TRUE(beside.IsThere());
    EXPECT_EQ(ReadBytes(Beside()), "");
}

TEST_F(FileBesideTest, AnotherLiveWriterIsNotDisturbed) {
    WaitBudget wait(0ms);
    FileBeside first(Place(), 0600, wait);
    ASSERT_TRUE(first.Fill("first"));
    WaitBudget some(5ms);
    const FileBeside second(Place(), 0600, some);
    EXPECT_FALSE(second.IsThere());
    EXPECT_FALSE(some.Wait(1ms));  // it was waited for
    RemoveFileBeside(Place());
    EXPECT_EQ(ReadBytes(Beside()), "first");
}

TEST_F(FileBesideTest, RemovesWhatIsLeftOnly) {
    RemoveFileBeside(Place());
    WriteBytes(At("file"), "file");
    WriteBytes(Beside(), "left");
    RemoveFileBeside(Place());
    EXPECT_FALSE(exists(Beside()));
    EXPECT_EQ(ReadBytes(At("file")), "file");
}

TEST_F(FileBesideTest, ALeftoverThatHasJustGotItsSecondNameLosesTheFirst) {
    WriteBytes(At("file"), "file");
    std::filesystem::create_hard_link(At("file"), Beside());
    RemoveFileBeside(Place());
    EXPECT_FALSE(exists(Beside()));
    EXPECT_EQ(ReadBytes(At("file")), "file");
}

TEST_F(FileBesideTest, WhatIsNoLeftoverStays) {
    // Two names, a link, a folder: nothing that a save makes.
    WriteBytes(At("kept"), "kept");
    std::filesystem::create_hard_link(At("kept"), Beside());
    RemoveFileBeside(Place());
    EXPECT_TRUE(exists(Beside()));
    std::filesystem::remove(Beside());
    std::filesystem::create_symlink("kept", Beside());
    RemoveFileBeside(Place());
    EXPECT_TRUE(is_symlink(Beside()));
    std::filesystem::remove(Beside());
    std::filesystem::create_directory(Beside());
    RemoveFileBeside(Place());
    EXPECT_TRUE(is_directory(Beside()));
    WaitBudget wait(0ms);
    EXPECT_FALSE(FileBeside(Place(), 0600, wait).IsThere());
    EXPECT_EQ(ReadBytes(At("kept")), "kept");
}

TEST_F(FileBesideTest, LeftoversBelongToTheUserOrToTheFilesOwner) {
    if (geteuid() != 0) GTEST_SKIP() << "gives files away, which only root can";
    WriteBytes(Beside(), "left");
    ASSERT_EQ(chown(Beside().c_str(), 1234, 1234), 0);
    RemoveFileBeside(Place());
    EXPECT_TRUE(exists(Beside()));
    WriteBytes(At("file"), "file");
    ASSERT_EQ(chown(At("file").c_str(), 1234, 1234), 0);
    RemoveFileBeside(Place());
    EXPECT_FALSE(exists(Beside()));
}

TEST_F(FileBesideTest, ModeAndOwnerAreTakenOver) {
    WriteBytes(At("file"), "file");
    ASSERT_EQ(chmod(Narrow("file").c_str(), 0664), 0);
    const bool isRoot = geteuid() == 0;
    if (isRoot) {
        ASSERT_EQ(chown(Narrow("file").c_str(), 1234, 2345), 0);
    }
    WaitBudget wait(0ms);
    FileBeside beside(Place(), 0600, wait);
    ASSERT_TRUE(beside.TakeOver(*StatusAt(Place().folder, "file")));
    struct stat status {};
    ASSERT_EQ(stat(Beside().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0664U);
    if (isRoot) {
        EXPECT_EQ(status.st_uid, 1234U);
        EXPECT_EQ(status.st_gid, 2345U);
    }
}

}  // namespace
}  // namespace vastrelline

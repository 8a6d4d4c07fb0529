// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "platform/FileSteps.h"
#include "platform/PathText.h"
#include "platform/Reason.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

class FileSteps : public testing::Test {
protected:
    std::string At(const std::string& leaf) const { return folder_.Narrow(leaf); }
    std::string Content(const std::string& leaf) const { return ReadBytes(folder_.Path() / leaf); }
    void Put(const std::string& leaf, const std::string& bytes) const {
        WriteBytes(folder_.Path() / leaf, bytes);
    }

    TemporaryFolder folder_;  // NOLINT(misc-non-private-member-variables-in-classes): each test derives
};

TEST_F(FileSteps, MakeAFileOnce) {
    EXPECT_FALSE(MakeNewFile(At("a")));
    EXPECT_EQ(Content("a"), "");
    EXPECT_EQ(MakeNewFile(At("a")), std::errc::file_exists);
    EXPECT_EQ(MakeNewFile(At("missing") + "/a"), std::errc::no_such_file_or_directory);
}

TEST_F(FileSteps, ReplaceAContent) {
    Put("a", "much longer");
    EXPECT_FALSE(WriteContent(At("a"), std::vector<uint8_t>{'x', 'y'}));
    EXPECT_EQ(Content("a"), "xy");
    EXPECT_FALSE(FlushToDisk(At("a")));
    EXPECT_EQ(WriteContent(At("b"), {}), std::errc::no_such_file_or_directory);
    EXPECT_FALSE(std::filesystem::exists(At("b")));
}

TEST_F(FileSteps, TakeAFreeNameOnly) {
    Put("a", "new");
    Put("b", "old");
    const std::error_code taken = MoveToFreeName(At("a"), At("b"));
    if (taken == std::errc::not_supported) GTEST_SKIP() << "this file system cannot do it in one step";
    EXPECT_EQ(taken, std::errc::file_exists);
    EXPECT_EQ(Content("a"), "new");
    EXPECT_EQ(Content("b"), "old");
    EXPECT_FALSE(MoveToFreeName(At("a"), At("c")));
    EXPECT_EQ(Content("c"), "new");
    EXPECT_FALSE(std::filesystem::exists(At("a")));
}

TEST_F(FileSteps, MoveAFolderToAFreeNameOnly) {
    std::filesystem::create_directory(folder_.Path() / "a");
    std::filesystem::create_directory(folder_.Path() / "b");
    Put("a/x", "x");
    const std::error_code taken = MoveToFreeName(At("a"), At("b"));
    if (taken == std::errc::not_supported) GTEST_SKIP() << "this file system cannot do it in one step";
    EXPECT_EQ(taken, std::errc::file_exists);
    EXPECT_FALSE(MoveToFreeName(At("a"), At("c")));
    EXPECT_EQ(Content("c/x"), "x");
}

TEST_F(FileSteps, MoveOverWhatIsThere) {
    Put("a", "new");
    Put("b", "old");
    EXPECT_FALSE(MoveOver(At("a"), At("b")));
    EXPECT_EQ(Content("b"), "new");
    EXPECT_EQ(MoveOver(At("a"), At("b")), std::errc::no_such_file_or_directory);
}

TEST_F(FileSteps, ExchangeFoldersOrSayThatItCannotBe) {
    std::filesystem::create_directory(folder_.Path() / "a");
    std::filesystem::create_directory(folder_.Path() / "b");
    Put("a/x", "x");
    const std::error_code reason = ExchangeNames(At("a"), At("b"));
    EXPECT_TRUE(!reason || reason == std::errc::not_supported) << DescribeReason(reason);
    EXPECT_EQ(Content(reason ? "a/x" : "b/x"), "x");
}

TEST_F(FileSteps, MakePrivateFoldersOfNewNames) {
    std::string first;
    std::string second;
    ASSERT_FALSE(MakePrivateFolder(folder_.Path().string(), "mine-", first));
    ASSERT_FALSE(MakePrivateFolder(folder_.Path().string(), "mine-", second));
    EXPECT_NE(first, second);
    EXPECT_TRUE(std::filesystem::is_directory(first));
    EXPECT_TRUE(std::filesystem::path(second).filename().string().starts_with("mine-"));
    EXPECT_EQ(MakePrivateFolder(At("missing"), "mine-", first), std::errc::no_such_file_or_directory);
}

TEST_F(FileSteps, NamesMayHaveAnyCharacter) {
    const std::string leaf = "Z\xC3\xA4hne \xE6\xAD\xAF";
    EXPECT_FALSE(MakeNewFile(At(leaf)));
    EXPECT_FALSE(MoveOver(At(leaf), At(leaf + "2")));
    EXPECT_TRUE(std::filesystem::exists(PathOf(At(leaf + "2"))));
}

TEST_F(FileSteps, MakePrivateFoldersOfManyThreadsAtOnce) {
    constexpr int kThreads = 64;
    std::vector<std::string> paths(kThreads * 3);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([&, i] {
            for (int each = 3 * i; each < 3 * i + 3; ++each)
                EXPECT_FALSE(MakePrivateFolder(At(""), "v-", paths[static_cast<size_t>(each)]));
        });
    for (std::thread& thread : threads) thread.join();
    const std::set<std::string> names(paths.begin(), paths.end());
    EXPECT_EQ(names.size(), paths.size());
    for (const std::string& name : names) EXPECT_TRUE(std::filesystem::is_directory(PathOf(name)));
}

}  // namespace
}  // namespace vastrelline

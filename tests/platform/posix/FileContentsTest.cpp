#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <functional>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "platform/posix/FileContents.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::string_literals;  // texts with zeros within

std::function<ContentsEdit(std::string&)> SetTo(const std::string& wanted) {
    return [wanted](std::string& bytes) {
        bytes = wanted;
        return ContentsEdit::Replace;
    };
}

struct stat StatusOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
    return status;
}

size_t CountFiles(const TemporaryFolder& folder) {
    const std::filesystem::directory_iterator files(folder.Path());
    return static_cast<size_t>(std::distance(begin(files), end(files)));
}

TEST(ReadFileContents, RegularFilesOnly) {
    const TemporaryFolder folder;
    const std::string bytes = "a\0\xFF\n"s;
    WriteBytes(folder.Path() / "file", bytes);
    WriteBytes(folder.Path() / "empty", "");
    ASSERT_EQ(mkfifo(folder.Narrow("pipe").c_str(), 0600), 0);
    EXPECT_EQ(ReadFileContents(folder.Narrow("file")), bytes);
    EXPECT_EQ(ReadFileContents(folder.Narrow("empty")), "");
    EXPECT_EQ(ReadFileContents(folder.Narrow("none")), std::nullopt);
    EXPECT_EQ(ReadFileContents(folder.Narrow("pipe")), std::nullopt);
    EXPECT_EQ(ReadFileContents(folder.Path().string()), std::nullopt);
    EXPECT_EQ(ReadFileContents(""), std::nullopt);
}

TEST(ReadFileContents, AFileThatTellsNoSizeIsReadToItsEnd) {
    const std::optional<std::string> bytes = ReadFileContents("/proc/self/status");
    if (!bytes) GTEST_SKIP() << "no such file system here";
    EXPECT_NE(bytes->find("Pid:"), std::string::npos);
}

TEST(UpdateFileContents, MakesAFileWithTheUsualMode) {
    const TemporaryFolder folder;
    const mode_t before = umask(027);
    EXPECT_TRUE(UpdateFileContents(folder.Narrow("file"), SetTo("new")));
    umask(before);
    EXPECT_EQ(ReadBytes(folder.Path() / "file"), "new");
    EXPECT_EQ(StatusOf(folder.Narrow("file")).st_mode & 07777U, 0640U);
    EXPECT_EQ(StatusOf(folder.Narrow("file")).st_nlink, 1U);
    EXPECT_EQ(CountFiles(folder), 1U);
}

TEST(UpdateFileContents, TheEditSeesTheFile) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "file", "one");
    EXPECT_TRUE(UpdateFileContents(folder.Narrow("file"), [](std::string& bytes) {
        bytes += "two";
        return ContentsEdit::Replace;
    }));
    EXPECT_EQ(ReadBytes(folder.Path() / "file"), "onetwo");
    EXPECT_EQ(CountFiles(folder), 1U);
}

TEST(UpdateFileContents, KeptAndRefusedEditsDoNotTouchTheFile) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "file", "one");
    const struct stat before = StatusOf(folder.Narrow("file"));
    for (const ContentsEdit wish : {ContentsEdit::Keep, ContentsEdit::Refuse}) {
        const auto edit = [wish](std::string& bytes) {
            bytes = "other";
            return wish;
        };
        EXPECT_EQ(UpdateFileContents(folder.Narrow("file"), edit), wish == ContentsEdit::Keep);
        EXPECT_EQ(UpdateFileContents(folder.Narrow("none"), edit), wish == ContentsEdit::Keep);
    }
    const struct stat after = StatusOf(folder.Narrow("file"));
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_mtim.tv_sec, before.st_mtim.tv_sec);
    EXPECT_EQ(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
    EXPECT_EQ(CountFiles(folder), 1U);
}

TEST(UpdateFileContents, ModeAndOwnerStay) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "file", "one");
    ASSERT_EQ(chmod(folder.Narrow("file").c_str(), 0664), 0);
    const bool isRoot = geteuid() == 0;
    if (isRoot) {
        ASSERT_EQ(chown(folder.Narrow("file").c_str(), 1234, 2345), 0);
    }
    const struct stat before = StatusOf(folder.Narrow("file"));
    EXPECT_TRUE(UpdateFileContents(folder.Narrow("file"), SetTo("two")));
    const struct stat after = StatusOf(folder.Narrow("file"));
    EXPECT_EQ(after.st_mode & 07777U, 0664U);
    EXPECT_EQ(after.st_uid, before.st_uid);
    EXPECT_EQ(after.st_gid, before.st_gid);
    if (isRoot) {
        EXPECT_EQ(after.st_uid, 1234U);
    }
}

TEST(UpdateFileContents, LinksStayAndTheirEndChanges) {
    const TemporaryFolder folder;
    ASSERT_TRUE(std::filesystem::create_directory(folder.Path() / "real"));
    WriteBytes(folder.Path() / "real" / "file", "one");
    std::filesystem::create_symlink("real/file", folder.Path() / "link");
    std::filesystem::create_symlink(folder.Path() / "link", folder.Path() / "link2");
    EXPECT_TRUE(UpdateFileContents(folder.Narrow("link2"), SetTo("two")));
    EXPECT_EQ(ReadBytes(folder.Path() / "real" / "file"), "two");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path() / "link"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path() / "link2"));
    EXPECT_TRUE(
        std::filesystem::is_regular_file(std::filesystem::symlink_status(folder.Path() / "real" / "file")));
}

TEST(UpdateFileContents, ALinkToAFileThatIsMissingMakesThatFile) {
    const TemporaryFolder folder;
    std::filesystem::create_symlink("target", folder.Path() / "link");
    EXPECT_TRUE(UpdateFileContents(folder.Narrow("link"), SetTo("new")));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path() / "link"));
    EXPECT_EQ(ReadBytes(folder.Path() / "target"), "new");
}

TEST(UpdateFileContents, WhatCannotBeWrittenStays) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "file", "kept");
    ASSERT_EQ(chmod(folder.Narrow("file").c_str(), 0444), 0);
    EXPECT_FALSE(UpdateFileContents(folder.Narrow("file"), SetTo("other")));
    EXPECT_EQ(ReadBytes(folder.Path() / "file"), "kept");
    EXPECT_FALSE(UpdateFileContents(folder.Narrow("none/file"), SetTo("other")));
    EXPECT_FALSE(UpdateFileContents(folder.Narrow("file/file"), SetTo("other")));
    EXPECT_FALSE(UpdateFileContents(folder.Path().string(), SetTo("other")));
    EXPECT_FALSE(UpdateFileContents("", SetTo("other")));
    std::filesystem::create_symlink("circle", folder.Path() / "circle");
    EXPECT_FALSE(UpdateFileContents(folder.Narrow("circle"), SetTo("other")));
    EXPECT_EQ(CountFiles(folder), 2U);
}

TEST(UpdateFileContents, AFolderThatTakesNoFileKeepsTheOldOne) {
    if (geteuid() != 0) GTEST_SKIP() << "becomes another user, which only root can";
    const TemporaryFolder folder;
    std::filesystem::permissions(folder.Path(), static_cast<std::filesystem::perms>(0755));
    WriteBytes(folder.Path() / "file", "kept");
    ASSERT_EQ(chmod(folder.Narrow("file").c_str(), 0666), 0);
    constexpr uid_t kNobody = 65534;
    ASSERT_EQ(seteuid(kNobody), 0);
    const bool isWritten = UpdateFileContents(folder.Narrow("file"), SetTo("other"));
    ASSERT_EQ(seteuid(0), 0);
    EXPECT_FALSE(isWritten);
    EXPECT_EQ(ReadBytes(folder.Path() / "file"), "kept");
}

TEST(UpdateFileContents, AFullDiskKeepsTheOldFile) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "file", "kept");
    // A limit on the size of files stands in for a disk without room.
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small = {1000, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const bool isWritten = UpdateFileContents(folder.Narrow("file"), SetTo(std::string(5000, 'x')));
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, oldHandler);
    EXPECT_FALSE(isWritten);
    EXPECT_EQ(ReadBytes(folder.Path() / "file"), "kept");
    EXPECT_EQ(CountFiles(folder), 1U);
}

TEST(UpdateFileContents, AnEditThatThrowsLeavesTheFile) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "file", "kept");
    const auto edit = [](std::string& /*bytes*/) -> ContentsEdit { throw std::runtime_error("no memory"); };
    EXPECT_THROW(static_cast<void>(UpdateFileContents(folder.Narrow("file"), edit)), std::runtime_error);
    EXPECT_TRUE(UpdateFileContents(folder.Narrow("file"), SetTo("free again")));  // no lock was left
    EXPECT_EQ(CountFiles(folder), 1U);
}

TEST(UpdateFileContents, WaitsForTheOtherWriter) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "file", "one");
    const int other = open(folder.Narrow("file").c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_GE(other, 0);
    ASSERT_EQ(flock(other, LOCK_EX), 0);
    std::atomic<bool> isReleased{false};
    std::thread releaser([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        isReleased = true;
        close(other);
    });
    EXPECT_TRUE(UpdateFileContents(folder.Narrow("file"), [&](std::string& bytes) {
        EXPECT_TRUE(isReleased);
        bytes = "two";
        return ContentsEdit::Replace;
    }));
    releaser.join();
    EXPECT_EQ(ReadBytes(folder.Path() / "file"), "two");
}

TEST(UpdateFileContents, NoChangeOfManyWritersIsLost) {
    const TemporaryFolder folder;
    constexpr int kThreads = 4;
    constexpr int kChanges = 25;
    std::atomic<int> failures{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([&] {
            for (int change = 0; change < kChanges; ++change) {
                const bool isWritten = UpdateFileContents(folder.Narrow("file"), [](std::string& bytes) {
                    bytes.push_back('x');
                    return ContentsEdit::Replace;
                });
                if (!isWritten) ++failures;
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(ReadBytes(folder.Path() / "file"), std::string(kThreads * kChanges, 'x'));
    EXPECT_EQ(CountFiles(folder), 1U);
}

}  // namespace
}  // namespace vastrelline

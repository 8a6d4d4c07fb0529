// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <iterator>
#include <random>
#include <string>
#include <thread>

#include "platform/posix/FileBeside.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/FileSaving.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

class FileSavingTest : public testing::Test {
protected:
    std::filesystem::path At(std::string_view name) const { return folder_.Path() / name; }
    std::string Narrow(std::string_view name) const { return folder_.Narrow(name); }
    std::filesystem::path Folder() const { return folder_.Path(); }
    std::ptrdiff_t CountFiles() const {
        return std::distance(std::filesystem::directory_iterator(folder_.Path()), {});
    }
    struct stat StatusOf(std::string_view name) const {
        struct stat status {};
        EXPECT_EQ(lstat(Narrow(name).c_str(), &status), 0);
        return status;
    }

private:
    TemporaryFolder folder_;
};

// As long as it lives, no file grows beyond `bytes`: what a disk does that is nearly full. The usual handler
// of the signal stands, which ends the process.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &before_); }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit before_{};
};

// As long as it lives, this process has no rights but those of anybody. Only root can become one.
class AsNobody {
public:
    AsNobody() { EXPECT_EQ(seteuid(65534), 0); }
    ~AsNobody() { EXPECT_EQ(seteuid(0), 0); }
    AsNobody(const AsNobody&) = delete;
    AsNobody& operator=(const AsNobody&) = delete;
};

TEST_F(FileSavingTest, ANewFileHasTheUsualMode) {
    const mode_t before = umask(027);
    EXPECT_TRUE(SaveFile(Narrow("file"), "new"));
    umask(before);
    EXPECT_EQ(ReadBytes(At("file")), "new");
    EXPECT_EQ(StatusOf("file").st_mode & 07777U, 0640U);
    EXPECT_EQ(StatusOf("file").st_nlink, 1U);
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(FileSavingTest, ModeAndOwnerStay) {
    WriteBytes(At("file"), "one");
    ASSERT_EQ(chmod(Narrow("file").c_str(), 0664), 0);
    const bool isRoot = geteuid() == 0;
    if (isRoot) {
        ASSERT_EQ(chown(Narrow("file").c_str(), 1234, 2345), 0);
    }
    EXPECT_TRUE(SaveFile(Narrow("file"), "two"));
    EXPECT_EQ(StatusOf("file").st_mode & 07777U, 0664U);
    if (isRoot) {
        EXPECT_EQ(StatusOf("file").st_uid, 1234U);
        EXPECT_EQ(StatusOf("file").st_gid, 2345U);
    }
}

TEST_F(FileSavingTest, LinksStayAndTheirEndIsMadeOrReplaced) {
    std::filesystem::create_symlink("target", At("link"));
    for (const char* const bytes : {"new", "next"}) {
        EXPECT_TRUE(SaveFile(Narrow("link"), bytes));
        EXPECT_TRUE(is_symlink(At("link")));
        EXPECT_EQ(ReadBytes(At("target")), bytes);
    }
    std::filesystem::create_symlink("circle", At("circle"));
    EXPECT_FALSE(SaveFile(Narrow("circle"), "x"));
    EXPECT_EQ(CountFiles(), 3);
}

TEST_F(FileSavingTest, BothNamesOfAFileShowTheNewOne) {
    WriteBytes(At("file"), "a longer old text");
    std::filesystem::create_hard_link(At("file"), At("other"));
    EXPECT_TRUE(SaveFile(Narrow("file"), "new"));
    EXPECT_EQ(ReadBytes(At("file")), "new");
    EXPECT_EQ(ReadBytes(At("other")), "new");
    EXPECT_EQ(StatusOf("file").st_nlink, 2U);
    EXPECT_TRUE(SaveFile(Narrow("other"), "longer than before"));
    EXPECT_EQ(ReadBytes(At("file")), "longer than before");
    EXPECT_EQ(CountFiles(), 2);
}

TEST_F(FileSavingTest, AWritableFileInAFolderThatTakesNoNewOneIsWrittenAsItStands) {
    if (geteuid() != 0) GTEST_SKIP() << "becomes another user, which only root can";
    std::filesystem::permissions(Folder(), static_cast<std::filesystem::perms>(0755));
    WriteBytes(At("file"), "a longer old text");
    ASSERT_EQ(chmod(Narrow("file").c_str(), 0666), 0);
    WriteBytes(At("marked"), "kept");
    ASSERT_EQ(chmod(Narrow("marked").c_str(), 0644), 0);
    {
        const AsNobody nobody;
        EXPECT_TRUE(SaveFile(Narrow("file"), "new"));
        EXPECT_FALSE(SaveFile(Narrow("marked"), "new"));
        EXPECT_FALSE(SaveFile(Narrow("none"), "new"));
    }
    EXPECT_EQ(ReadBytes(At("file")), "new");
    EXPECT_EQ(ReadBytes(At("marked")), "kept");
    EXPECT_EQ(CountFiles(), 2);
}

TEST_F(FileSavingTest, AnOwnerWhoCannotBeKeptStaysToo) {
    if (geteuid() != 0) GTEST_SKIP() << "becomes another user, which only root can";
    std::filesystem::permissions(Folder(), static_cast<std::filesystem::perms>(0777));
    WriteBytes(At("file"), "old");
    ASSERT_EQ(chmod(Narrow("file").c_str(), 0666), 0);
    ASSERT_EQ(chown(Narrow("file").c_str(), 1234, 2345), 0);
    {
        const AsNobody nobody;
        EXPECT_TRUE(SaveFile(Narrow("file"), "new"));
    }
    EXPECT_EQ(ReadBytes(At("file")), "new");
    EXPECT_EQ(StatusOf("file").st_uid, 1234U);
    EXPECT_EQ(StatusOf("file").st_gid, 2345U);
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(FileSavingTest, WhatIsMarkedReadOnlyStays) {
    WriteBytes(At("file"), "kept");
    ASSERT_EQ(chmod(Narrow("file").c_str(), 0444), 0);
    EXPECT_FALSE(SaveFile(Narrow("file"), "other"));
    std::filesystem::create_hard_link(At("file"), At("name"));
    EXPECT_FALSE(SaveFile(Narrow("file"), "other"));
    EXPECT_EQ(ReadBytes(At("file")), "kept");
    EXPECT_EQ(CountFiles(), 2);
}

TEST_F(FileSavingTest, WithoutRoomTheOldFileStays) {
    const std::string bytes(50000, 'x');
    WriteBytes(At("file"), "kept");
    WriteBytes(At("first"), "both kept");
    std::filesystem::create_hard_link(At("first"), At("second"));
    {
        const FileSizeLimit limit(1000);
        EXPECT_FALSE(SaveFile(Narrow("file"), bytes));
        EXPECT_FALSE(SaveFile(Narrow("new"), bytes));
        EXPECT_FALSE(SaveFile(Narrow("first"), bytes));
    }
    EXPECT_EQ(ReadBytes(At("file")), "kept");
    // Where room cannot be had in advance the file is left empty, but never half.
    const std::string second = ReadBytes(At("second"));
    EXPECT_TRUE(second == "both kept" || second.empty()) << second.size();
    EXPECT_EQ(CountFiles(), 3);
}

TEST_F(FileSavingTest, DevicesTakeTheBytes) {
    EXPECT_TRUE(SaveFile("/dev/null", "gone"));
    std::filesystem::create_symlink("/dev/null", At("link"));
    EXPECT_TRUE(SaveFile(Narrow("link"), "gone"));
    if (std::filesystem::exists("/dev/full")) {
        EXPECT_FALSE(SaveFile("/dev/full", "no room"));
    }
}

TEST_F(FileSavingTest, APipeTakesTheBytesIfItHasAReader) {
    ASSERT_EQ(mkfifo(Narrow("pipe").c_str(), 0600), 0);
    EXPECT_FALSE(SaveFile(Narrow("pipe"), "nobody reads"));
    const FileDescriptor end = OpenFile(Narrow("pipe"), O_RDONLY);
    ASSERT_TRUE(end.IsOpen());
    EXPECT_TRUE(SaveFile(Narrow("pipe"), "read"));
    char read[8] = {};
    EXPECT_EQ(ReadSome(end.Get(), read, sizeof(read)), 4);
    EXPECT_STREQ(read, "read");
}

// It keeps writers apart that write in place. A file that is replaced is whole for everybody.
TEST_F(FileSavingTest, AForeignLockKeepsAFileFromBeingWrittenInPlace) {
    WriteBytes(At("file"), "old");
    WriteBytes(At("first"), "old");
    std::filesystem::create_hard_link(At("first"), At("second"));
    const FileDescriptor one = OpenFile(Narrow("file"), O_RDONLY);
    const FileDescriptor other = OpenFile(Narrow("first"), O_RDONLY);
    ASSERT_EQ(flock(one.Get(), LOCK_EX), 0);
    ASSERT_EQ(flock(other.Get(), LOCK_EX), 0);
    EXPECT_TRUE(SaveFile(Narrow("file"), "new"));
    EXPECT_FALSE(SaveFile(Narrow("first"), "new"));
    EXPECT_EQ(ReadBytes(At("file")), "new");
    EXPECT_EQ(ReadBytes(At("second")), "old");
    ASSERT_EQ(flock(other.Get(), LOCK_UN), 0);
    EXPECT_TRUE(SaveFile(Narrow("first"), "new"));
    EXPECT_EQ(ReadBytes(At("second")), "new");
}

TEST_F(FileSavingTest, AnotherRunThatSavesTheSameFileIsNotDisturbed) {
    WriteBytes(At("file"), "old");
    const FilePlace place = FindPlace(Narrow("file"));
    WaitBudget none(std::chrono::milliseconds(0));
    FileBeside beside(place, 0600, none);
    ASSERT_TRUE(beside.Fill("its"));
    EXPECT_FALSE(SaveFile(Narrow("file"), "ours"));
    EXPECT_TRUE(beside.Replace());
    EXPECT_TRUE(SaveFile(Narrow("file"), "ours"));
    EXPECT_EQ(ReadBytes(At("file")), "ours");
    EXPECT_EQ(CountFiles(), 1);
}

TEST_F(FileSavingTest, AKilledProcessLeavesWholeFilesOnly) {
    const std::string bytes(100000, 'x');
    std::mt19937 random(1);
    for (int round = 0; round < 10; ++round) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0)
            for (int i = 0;; ++i)
                static_cast<void>(SaveFile(Narrow(std::to_string(round) + "-" + std::to_string(i)), bytes));
        std::this_thread::sleep_for(std::chrono::microseconds(random() % 20000));
        ASSERT_EQ(kill(child, SIGKILL), 0);
        ASSERT_EQ(waitpid(child, nullptr, 0), child);
    }
    // Where every file has a name from the start, a killed process leaves one, with a point in front.
    for (const auto& entry : std::filesystem::directory_iterator(Folder()))
        if (!entry.path().filename().string().starts_with('.')) {
            EXPECT_EQ(ReadBytes(entry.path()), bytes) << entry.path();
        }
}

}  // namespace
}  // namespace vastrelline

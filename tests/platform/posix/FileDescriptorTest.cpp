// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <string>
#include <thread>
#include <utility>

#include "platform/posix/FileDescriptor.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

TEST(FileDescriptor, MovedOneIsClosedOnce) {
    const TemporaryFolder folder;
    FileDescriptor first = OpenFile(folder.Narrow("a"), O_WRONLY | O_CREAT, 0600);
    ASSERT_TRUE(first.IsOpen());
    const int number = first.Get();
    {
        const FileDescriptor second = std::move(first);
        EXPECT_EQ(second.Get(), number);
        EXPECT_NE(fcntl(number, F_GETFD), -1);
    }
    EXPECT_EQ(fcntl(number, F_GETFD), -1);
}

TEST(FileDescriptor, ReleasedOneStaysOpen) {
    const TemporaryFolder folder;
    int number = -1;
    {
        FileDescriptor file = OpenFile(folder.Narrow("a"), O_WRONLY | O_CREAT, 0600);
        number = file.Release();
        EXPECT_FALSE(file.IsOpen());
    }
    EXPECT_NE(fcntl(number, F_GETFD), -1);
    EXPECT_EQ(close(number), 0);
}

TEST(FileDescriptor, MissingFileIsNotOpen) {
    const TemporaryFolder folder;
    EXPECT_FALSE(OpenFile(folder.Narrow("missing"), O_RDONLY).IsOpen());
}

TEST(FileDescriptor, AllBytesAreWrittenAndLockIsExclusive) {
    const TemporaryFolder folder;
    const FileDescriptor file = OpenFile(folder.Narrow("a"), O_WRONLY | O_CREAT, 0600);
    EXPECT_TRUE(WriteAll(file.Get(), "bytes", 5));
    EXPECT_EQ(ReadBytes(folder.Path() / "a"), "bytes");
    const FileDescriptor other = OpenFile(folder.Narrow("a"), O_RDONLY);
    EXPECT_EQ(TryLock(file.Get()), LockResult::Locked);
    EXPECT_EQ(TryLock(other.Get()), LockResult::HeldByOther);
}

// The two ends of a pipe; what is written does not wait.
struct Pipe {
    FileDescriptor reader;
    FileDescriptor writer;
};

Pipe MakePipe() {
    std::array<int, 2> ends{-1, -1};
    EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    EXPECT_EQ(fcntl(ends[1], F_SETFL, O_NONBLOCK), 0);
    return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

// The usual handlers stand, under which each of these signals ends the process: were one let through, no
// later line of the test would run.
TEST(WriteAll, APipeWhoseReaderHasLeftIsAFailedWrite) {
    ASSERT_EQ(std::signal(SIGPIPE, SIG_DFL), SIG_DFL);
    Pipe ends = MakePipe();
    ends.reader = FileDescriptor();
    EXPECT_FALSE(WriteAll(ends.writer.Get(), "x", 1));
    sigset_t waiting;
    ASSERT_EQ(sigpending(&waiting), 0);
    EXPECT_EQ(sigismember(&waiting, SIGPIPE), 0);
}

TEST(WriteAll, ALimitOnTheSizeOfFilesIsAFailedWrite) {
    ASSERT_EQ(std::signal(SIGXFSZ, SIG_DFL), SIG_DFL);
    const TemporaryFolder folder;
    const FileDescriptor file = OpenFile(folder.Narrow("a"), O_WRONLY | O_CREAT, 0600);
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit small = {1000, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const std::string bytes(5000, 'x');
    const bool isWritten = WriteAll(file.Get(), bytes.data(), bytes.size());
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    EXPECT_FALSE(isWritten);
    EXPECT_EQ(ReadBytes(folder.Path() / "a"), std::string(1000, 'x'));
}

TEST(WriteAll, ASlowReaderOfAPipeGetsAllBytes) {
    Pipe ends = MakePipe();
    const std::string bytes(1000000, 'x');  // far more than a pipe holds
    std::string seen;
    std::thread reader([&] {
        std::array<char, 5000> chunk{};
        ssize_t count = 0;
        while ((count = ReadSome(ends.reader.Get(), chunk.data(), chunk.size())) > 0)
            seen.append(chunk.data(), static_cast<size_t>(count));
    });
    EXPECT_TRUE(WriteAll(ends.writer.Get(), bytes.data(), bytes.size()));
    ends.writer = FileDescriptor();
    reader.join();
    EXPECT_EQ(seen, bytes);
}

TEST(WriteAll, AReaderWhoTakesNothingIsAFailedWrite) {
    const Pipe ends = MakePipe();
    const std::string bytes(1000000, 'x');
    EXPECT_FALSE(WriteAll(ends.writer.Get(), bytes.data(), bytes.size()));
}

// As standard error is: nobody but its host decides how it is open.
TEST(WriteAll, AReaderWhoTakesNothingDoesNotHoldUpAFileThatWaits) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    const FileDescriptor reader(ends[0]);
    const FileDescriptor writer(ends[1]);
    EXPECT_FALSE(WriteAll(writer.Get(), std::string(200'000, 'x').data(), 200'000));
    EXPECT_FALSE(WriteAll(writer.Get(), "x", 1));
}

// Each signal starts the wait anew, but not the time that it may take.
TEST(WriteAll, ATimerOfTheHostDoesNotMakeTheWaitEndless) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe2(ends.data(), O_NONBLOCK), 0);
    const FileDescriptor reader(ends[0]);
    const FileDescriptor writer(ends[1]);
    struct sigaction before {};
    struct sigaction counting {};
    counting.sa_handler = [](int) {};
    ASSERT_EQ(sigaction(SIGALRM, &counting, &before), 0);
    const itimerval often{{0, 20'000}, {0, 20'000}};
    ASSERT_EQ(setitimer(ITIMER_REAL, &often, nullptr), 0);
    EXPECT_FALSE(WriteAll(writer.Get(), std::string(200'000, 'x').data(), 200'000));
    const itimerval never{};
    setitimer(ITIMER_REAL, &never, nullptr);
    sigaction(SIGALRM, &before, nullptr);
}

TEST(FileDescriptor, ClosingLetsGoOfTheLockAlsoOfAForkedChild) {
    const TemporaryFolder folder;
    WriteBytes(folder.Path() / "file", "");
    pid_t child = -1;
    {
        const FileDescriptor file = OpenFile(folder.Narrow("file"), O_RDONLY);
        ASSERT_EQ(TryLock(file.Get()), LockResult::Locked);
        child = fork();
        if (child == 0) {
            pause();  // with the file open
            _exit(0);
        }
        ASSERT_GT(child, 0);
    }
    const FileDescriptor again = OpenFile(folder.Narrow("file"), O_RDONLY);
    EXPECT_EQ(TryLock(again.Get()), LockResult::Locked);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
}

}  // namespace
}  // namespace vastrelline

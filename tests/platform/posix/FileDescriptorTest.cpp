#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
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

}  // namespace
}  // namespace vastrelline

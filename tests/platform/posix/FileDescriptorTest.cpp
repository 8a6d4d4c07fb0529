#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
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

}  // namespace
}  // namespace vastrelline

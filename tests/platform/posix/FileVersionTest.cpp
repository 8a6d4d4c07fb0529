// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <chrono>
#include <string>

#include "platform/posix/FileVersion.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

using namespace std::chrono_literals;

class FileVersionTest : public testing::Test {
protected:
    // The file with a stamp that lies so far in the past; negative: in the future.
    FileVersion Aged(std::string_view bytes, std::chrono::nanoseconds age) {
        WriteBytes(folder_.Path() / "file", bytes);
        file_ = OpenFile(folder_.Narrow("file"), O_RDONLY);
        const std::chrono::nanoseconds stamp = std::chrono::system_clock::now().time_since_epoch() - age;
        timespec times[2]{};
        times[0].tv_nsec = UTIME_OMIT;
        times[1].tv_sec = static_cast<time_t>(stamp / 1s);
        times[1].tv_nsec = static_cast<long>((stamp % 1s).count());
        EXPECT_EQ(futimens(file_.Get(), times), 0);
        return VersionOf(file_).value_or(FileVersion{});
    }
    const FileDescriptor& File() const { return file_; }
    std::string Path() const { return folder_.Narrow("file"); }

private:
    TemporaryFolder folder_;
    FileDescriptor file_;
};

TEST_F(FileVersionTest, OldOnesAreWhole) {
    EXPECT_EQ(TimeUntilWhole(File(), Aged("x", 1h)), 0ns);
    EXPECT_EQ(TimeUntilWhole(File(), Aged("", 1h)), 0ns);
}

TEST_F(FileVersionTest, StampsFromTheFutureTellNothing) {
    EXPECT_EQ(TimeUntilWhole(File(), Aged("x", -1h)), 0ns);
}

TEST_F(FileVersionTest, FreshOnesNeedTime) {
    // On a busy machine one look may come too late, but not all of them.
    FileVersion version = Aged("x", 0ns);
    bool isFresh = false;
    for (int i = 0; i < 1000 && !isFresh; ++i) {
        version.changed = std::chrono::system_clock::now().time_since_epoch();
        const std::chrono::nanoseconds time = TimeUntilWhole(File(), version);
        EXPECT_LE(time, 20ms);
        isFresh = time > 0ns;
    }
    EXPECT_TRUE(isFresh);
}

TEST_F(FileVersionTest, OwnOnesAreWholeAtOnce) {
    const FileVersion version = Aged("x", -5ms);
    EXPECT_FALSE(IsOwn(version));
    RememberAsOwn(version);
    EXPECT_TRUE(IsOwn(version));
    EXPECT_EQ(TimeUntilWhole(File(), version), 0ns);
    FileVersion later = version;
    later.changed += 1ns;
    EXPECT_FALSE(IsOwn(later));
    FileVersion longer = version;
    ++longer.size;
    EXPECT_FALSE(IsOwn(longer));
}

TEST_F(FileVersionTest, OnlyTheLastOwnOnesAreKept) {
    FileVersion version = Aged("x", 1h);
    RememberAsOwn(version);
    const FileVersion first = version;
    for (int i = 0; i < 100; ++i) {
        ++version.number;
        RememberAsOwn(version);
    }
    EXPECT_TRUE(IsOwn(version));
    EXPECT_FALSE(IsOwn(first));
}

TEST_F(FileVersionTest, OneThatIsJustKeptOpenIsWhole) {
    const FileVersion version = Aged("x", 1h);
    const FileDescriptor writer = OpenFile(Path(), O_WRONLY);
    EXPECT_EQ(TimeUntilWhole(File(), version), 0ns);
}

TEST(HoldsBytes, JustThese) {
    const TemporaryFolder folder;
    const std::string bytes(100000, 'x');
    WriteBytes(folder.Path() / "file", bytes);
    const FileDescriptor file = OpenFile(folder.Narrow("file"), O_RDONLY);
    EXPECT_TRUE(HoldsBytes(file, bytes));
    EXPECT_TRUE(HoldsBytes(file, bytes));  // wherever the file is read next
    EXPECT_FALSE(HoldsBytes(file, bytes + "x"));
    EXPECT_FALSE(HoldsBytes(file, bytes.substr(1)));
    EXPECT_FALSE(HoldsBytes(file, ""));
    EXPECT_FALSE(HoldsBytes(file, bytes.substr(1) + "y"));
    EXPECT_FALSE(HoldsBytes(FileDescriptor(), ""));
}

}  // namespace
}  // namespace vastrelline

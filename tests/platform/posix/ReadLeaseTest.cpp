// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <fstream>
#include <thread>

#include "platform/posix/ReadLease.h"
#include "support/TemporaryFolder.h"

namespace vastrelline {
namespace {

class ReadLeaseTest : public testing::Test {
protected:
    void SetUp() override {
        WriteBytes(folder_.Path() / "file", "bytes");
        file_ = OpenFile(Path(), O_RDONLY);
        ASSERT_TRUE(file_.IsOpen());
        if (ReadLease(file_).Get() != ReadLease::State::Taken)
            GTEST_SKIP() << "no leases on this file system";
    }
    std::string Path() const { return folder_.Narrow("file"); }
    const FileDescriptor& File() const { return file_; }

private:
    TemporaryFolder folder_;
    FileDescriptor file_;
};

TEST_F(ReadLeaseTest, SeesWhoHasTheFileOpenForWriting) {
    const FileDescriptor reader = OpenFile(Path(), O_RDONLY);
    EXPECT_EQ(ReadLease(File()).Get(), ReadLease::State::Taken);
    FileDescriptor writer = OpenFile(Path(), O_WRONLY);
    EXPECT_EQ(ReadLease(File()).Get(), ReadLease::State::HasWriters);
    writer = FileDescriptor();
    EXPECT_EQ(ReadLease(File()).Get(), ReadLease::State::Taken);
}

TEST_F(ReadLeaseTest, HoldsOffAWriterAndTellsTheHostNothing) {
    static std::atomic<int> signals{0};
    signals = 0;
    const auto before = std::signal(SIGWINCH, [](int) { ++signals; });
    std::atomic<bool> isOver{false};
    std::thread writer;
    {
        const ReadLease lease(File());
        ASSERT_EQ(lease.Get(), ReadLease::State::Taken);
        EXPECT_FALSE(lease.IsAwaited());
        writer = std::thread([&] {
            const std::ofstream file(Path(), std::ios::trunc);
            EXPECT_TRUE(isOver);
        });
        while (!lease.IsAwaited()) std::this_thread::yield();
        EXPECT_EQ(ReadBytes(Path()), "bytes");
        isOver = true;
    }
    writer.join();
    std::signal(SIGWINCH, before);
    EXPECT_EQ(ReadBytes(Path()), "");
    EXPECT_EQ(signals, 0);
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <csignal>

#include "platform/MessageDialog.h"

namespace vastrelline {
namespace {

TEST(ShowMessagePosix, GoesToStandardErrorAsUtf8) {
    testing::internal::CaptureStderr();
    ShowMessage(L"overexposed \u00E9", MessageIcon::Error);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "overexposed \xC3\xA9\n");
}

TEST(ShowMessagePosix, NobodyReadsStandardErrorAnyMore) {
    ASSERT_EQ(std::signal(SIGPIPE, SIG_DFL), SIG_DFL);  // which ends the process
    std::array<int, 2> ends{-1, -1};
    ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    const int before = dup(STDERR_FILENO);
    ASSERT_GE(dup2(ends[1], STDERR_FILENO), 0);
    close(ends[0]);
    close(ends[1]);
    ShowMessage(L"nobody is there", MessageIcon::Error);
    ASSERT_GE(dup2(before, STDERR_FILENO), 0);
    close(before);
}

}  // namespace
}  // namespace vastrelline

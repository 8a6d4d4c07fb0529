// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <new>
#include <vector>

#include "platform/MemoryLimit.h"

namespace vastrelline {
namespace {

constexpr uint64_t kMebibyte = uint64_t{1} << 20;

// The exit code of a process that limits itself twice and asks for so much: 0 if it got it.
int AskFor(uint64_t bytes) {
    const pid_t child = fork();
    if (child == 0) {
        LimitMemory(512 * kMebibyte);
        LimitMemory(4096 * kMebibyte);  // takes no limit away
        try {
            std::vector<char> memory(bytes, 'x');
            _exit(memory.back() == 'x' ? 0 : 2);
        } catch (const std::bad_alloc&) {
            _exit(1);
        }
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(MemoryLimit, LetsLargerWishesFail) {
    if (!CanLimitMemory()) GTEST_SKIP() << "this build watches memory";
    EXPECT_EQ(AskFor(64 * kMebibyte), 0);
    EXPECT_EQ(AskFor(1024 * kMebibyte), 1);
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>
#include <pthread.h>

#include <atomic>
#include <csignal>

#include "platform/posix/SilencedSignals.h"

namespace vastrelline {
namespace {

std::atomic<int> seen{0};

// Counts the signals that reach the host, as long as it lives.
class CountedSignal {
public:
    explicit CountedSignal(int signal) : signal_(signal) {
        seen = 0;
        before_ = std::signal(signal, [](int) { ++seen; });
    }
    ~CountedSignal() { std::signal(signal_, before_); }

private:
    int signal_;
    void (*before_)(int);
};

TEST(SilencedSignals, OwnOneNeverReachesTheHost) {
    const CountedSignal host(SIGUSR1);
    {
        const SilencedSignals silenced{SIGUSR1, SIGUSR2};
        pthread_kill(pthread_self(), SIGUSR1);
    }
    EXPECT_EQ(seen, 0);
    pthread_kill(pthread_self(), SIGUSR1);  // from now on it does
    EXPECT_EQ(seen, 1);
}

TEST(SilencedSignals, OneThatWaitedBeforeStaysTheHosts) {
    const CountedSignal host(SIGUSR1);
    sigset_t set;
    sigset_t before;
    sigemptyset(&set);
    sigaddset(&set, SIGUSR1);
    ASSERT_EQ(pthread_sigmask(SIG_BLOCK, &set, &before), 0);
    pthread_kill(pthread_self(), SIGUSR1);
    {
        const SilencedSignals silenced{SIGUSR1};
        pthread_kill(pthread_self(), SIGUSR1);
    }
    EXPECT_EQ(seen, 0);
    ASSERT_EQ(pthread_sigmask(SIG_SETMASK, &before, nullptr), 0);
    EXPECT_EQ(seen, 1);
}

TEST(SilencedSignals, OtherSignalsPass) {
    const CountedSignal host(SIGUSR2);
    const SilencedSignals silenced{SIGUSR1};
    pthread_kill(pthread_self(), SIGUSR2);
    EXPECT_EQ(seen, 1);
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "platform/posix/SilencedSignals.h"

#include <cerrno>
#include <ctime>

namespace vastrelline {

SilencedSignals::SilencedSignals(std::initializer_list<int> signals) {
    sigset_t waiting{};
    sigset_t all{};
    sigemptyset(&own_);
    sigemptyset(&all);
    if (sigpending(&waiting) != 0) return;
    for (const int signal : signals) {
        sigaddset(&all, signal);
        if (sigismember(&waiting, signal) == 0) sigaddset(&own_, signal);
    }
    isBlocking_ = pthread_sigmask(SIG_BLOCK, &all, &before_) == 0;
}

SilencedSignals::~SilencedSignals() {
    if (!isBlocking_) return;
    const int error = errno;  // of the call that was silenced
    constexpr timespec kNoWait{};
    while (sigtimedwait(&own_, nullptr, &kNoWait) > 0 || errno == EINTR) {
    }
    pthread_sigmask(SIG_SETMASK, &before_, nullptr);
    errno = error;
}

}  // namespace vastrelline

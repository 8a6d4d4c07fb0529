// SPDX-License-Identifier: Apache-2.0
#include <signal.h>  // sigaction is no part of <csignal>

#include <atomic>
#include <initializer_list>

#include "platform/Cancellation.h"

namespace vastrelline {
namespace {

// Set by whichever thread the signal meets.
std::atomic<bool> isCancelled{false};
std::atomic<bool> isReaderGone{false};
static_assert(std::atomic<bool>::is_always_lock_free, "only such may be set by a signal's handler");

void Remember(int /*number*/) { isCancelled = true; }

void RememberReader(int /*number*/) { isReaderGone = true; }

bool IsIgnored(int number) {
    struct sigaction inherited = {};
    return sigaction(number, nullptr, &inherited) == 0 && inherited.sa_handler == SIG_IGN;
}

}  // namespace

void CatchCancellation() {
    struct sigaction action = {};
    action.sa_handler = Remember;
    action.sa_flags = static_cast<int>(SA_RESETHAND);  // the second time the system's own way
    sigemptyset(&action.sa_mask);
    // Who started the tool by nohup or in the background does not want it ended that way.
    for (const int number : {SIGINT, SIGTERM, SIGHUP})
        if (!IsIgnored(number)) sigaction(number, &action, nullptr);

    action.sa_handler = RememberReader;
    action.sa_flags = 0;
    if (!IsIgnored(SIGPIPE)) sigaction(SIGPIPE, &action, nullptr);
}

bool IsCancelled() { return isCancelled; }

bool IsReaderGone() { return isReaderGone; }

}  // namespace vastrelline

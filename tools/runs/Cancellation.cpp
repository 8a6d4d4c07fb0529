#include "runs/Cancellation.h"

#include <signal.h>  // sigaction is no part of <csignal>

#include <initializer_list>

namespace vastrelline {
namespace {

volatile sig_atomic_t isCancelled = 0;

void Remember(int /*number*/) { isCancelled = 1; }

volatile sig_atomic_t isReaderGone = 0;

void RememberReader(int /*number*/) { isReaderGone = 1; }

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

bool IsCancelled() { return isCancelled != 0; }

bool IsReaderGone() { return isReaderGone != 0; }

}  // namespace vastrelline

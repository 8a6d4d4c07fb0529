#include "runs/Cancellation.h"

#include <signal.h>  // sigaction is no part of <csignal>

#include <initializer_list>

namespace vastrelline {
namespace {

volatile sig_atomic_t isCancelled = 0;

void Remember(int /*number*/) { isCancelled = 1; }

}  // namespace

void CatchCancellation() {
    struct sigaction action = {};
    action.sa_handler = Remember;
    action.sa_flags = static_cast<int>(SA_RESETHAND);  // the second time the system's own way
    sigemptyset(&action.sa_mask);
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) sigaction(number, &action, nullptr);
}

bool IsCancelled() { return isCancelled != 0; }

}  // namespace vastrelline

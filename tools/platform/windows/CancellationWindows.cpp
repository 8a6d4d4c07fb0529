// SPDX-License-Identifier: Apache-2.0
#include <windows.h>

#include <atomic>
#include <csignal>

#include "platform/Cancellation.h"

namespace vastrelline {
namespace {

std::atomic<bool> isCancelled{false};  // set by a thread of the system's

// The run-time library falls back to the system's own way by itself.
void RememberSignal(int /*number*/) { isCancelled = true; }

BOOL WINAPI RememberEvent(DWORD event) {
    if (isCancelled.exchange(true)) return FALSE;  // the second time the system's own way
    if (event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT) return TRUE;
    // A terminal that closes, or a session that ends, takes the process with it when this function returns.
    constexpr DWORD kTimeToClearAwayMs = 4500;
    Sleep(kTimeToClearAwayMs);
    return TRUE;
}

}  // namespace

void CatchCancellation() {
    for (const int number : {SIGINT, SIGTERM}) std::signal(number, RememberSignal);
    SetConsoleCtrlHandler(RememberEvent, TRUE);  // before the run-time library's, as the later one
}

bool IsCancelled() { return isCancelled; }

// A write to a pipe that nobody reads fails here like any other, and nothing says why.
bool IsReaderGone() { return false; }

}  // namespace vastrelline

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
    // The second time the process ends at once. To hand it on would not do: the run-time library's own
    // handler comes next, and calls ours for signals once more.
    if (isCancelled.exchange(true)) TerminateProcess(GetCurrentProcess(), STATUS_CONTROL_C_EXIT);
    if (event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT) return TRUE;
    // A terminal that closes takes the process with it when this function returns. Of a session that ends the
    // system tells no process that has windows' library in it, as this one has by the library's message
    // boxes.
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

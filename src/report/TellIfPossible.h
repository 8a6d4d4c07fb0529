// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace vastrelline {

// Runs what only tells something to people: a line of the log, a dump, a curve, a backup. If it fails, by
// memory that runs out or by whatever else is thrown, that is all: the frame is processed all the same, and
// the code must not tell otherwise.
//
// tell   changes no pixel, and nothing that decides one
template <typename Tell>
void TellIfPossible(Tell&& tell) noexcept {
    try {
        tell();
    } catch (...) {  // NOLINT(bugprone-empty-catch): nobody is left to be told
    }
}

}  // namespace vastrelline

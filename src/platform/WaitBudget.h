// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>

namespace vastrelline {

// How long one call may wait, in all, for other programs: a writer that has not ended, or a lock. A host
// waits for a picture, so what takes longer is left to the next call.
class WaitBudget {
public:
    explicit WaitBudget(std::chrono::milliseconds all = std::chrono::milliseconds(200)) : left_(all) {}

    // Sleeps as long as wished, but no longer than what is left, to a millisecond. False, without sleeping:
    // nothing was left.
    [[nodiscard]] bool Wait(std::chrono::nanoseconds wish);

private:
    std::chrono::nanoseconds left_;
};

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "platform/WaitBudget.h"

#include <algorithm>
#include <thread>

namespace vastrelline {

bool WaitBudget::Wait(std::chrono::nanoseconds wish) {
    if (left_ <= std::chrono::nanoseconds::zero()) return false;
    const auto start = std::chrono::steady_clock::now();
    // Less than a millisecond is no sleep at all on some systems.
    constexpr std::chrono::nanoseconds kShortest = std::chrono::milliseconds(1);
    std::this_thread::sleep_for(std::max(std::min(wish, left_), kShortest));
    // What a busy machine sleeps longer counts as well.
    left_ -= std::chrono::steady_clock::now() - start;
    return true;
}

}  // namespace vastrelline

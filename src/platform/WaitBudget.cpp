#include "platform/WaitBudget.h"

#include <algorithm>
#include <thread>

namespace vastrelline {

bool WaitBudget::Wait(std::chrono::nanoseconds wish) {
    if (left_ <= std::chrono::nanoseconds::zero()) return false;
    const auto start = std::chrono::steady_clock::now();
    std::this_thread::sleep_for(std::min(wish, left_));
    // What a busy machine sleeps longer counts as well.
    left_ -= std::chrono::steady_clock::now() - start;
    return true;
}

}  // namespace vastrelline

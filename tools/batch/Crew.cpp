// SPDX-License-Identifier: Apache-2.0
#include "batch/Crew.h"

#include <atomic>
#include <exception>
#include <mutex>
#include <system_error>
#include <thread>
#include <vector>

namespace vastrelline {

void ShareOut(size_t threads, size_t count, const std::function<bool(size_t part)>& work) {
    std::atomic<size_t> next{0};
    std::atomic<bool> goesOn{true};
    std::mutex mutex;
    std::exception_ptr failure;
    const auto takeParts = [&] {
        try {
            for (size_t part = 0; goesOn && (part = next++) < count;)
                if (!work(part)) goesOn = false;
        } catch (...) {
            goesOn = false;
            const std::lock_guard lock(mutex);
            if (!failure) failure = std::current_exception();
        }
    };
    {
        std::vector<std::jthread> others;
        try {
            for (size_t i = 1; i < threads && i < count; ++i) others.emplace_back(takeParts);
        } catch (const std::system_error&) {  // no more threads: those that are there do all
        }
        takeParts();
    }
    if (failure) std::rethrow_exception(failure);
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <new>
#include <stdexcept>

namespace vastrelline {

// While it lives, one request for memory fails in the program: the n-th from its making on, counted from 1,
// on whatever thread. A program has it by being built with FailingMemory.cpp, which replaces the operators
// new and delete. One at a time.
class FailingMemory {
public:
    explicit FailingMemory(int64_t n);
    ~FailingMemory();
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;

    // Whether there were so many requests.
    bool HasFailed() const;
};

// Runs `run` again and again, each time with a later request for memory failing, until none fails any more.
// Calls check(n, hasThrown) after each run in which one did, where hasThrown tells of a std::bad_alloc that
// came out. Gives the number of such runs.
template <typename Run, typename Check>
int64_t SweepMemory(Run&& run, Check&& check) {
    constexpr int64_t kEndless = 100000;
    for (int64_t n = 1; n < kEndless; ++n) {
        bool hasFailed = false;
        bool hasThrown = false;
        {
            const FailingMemory memory(n);
            try {
                run();
            } catch (const std::bad_alloc&) {
                hasThrown = true;
            }
            hasFailed = memory.HasFailed();
        }
        if (!hasFailed) return n - 1;
        check(n, hasThrown);
    }
    throw std::logic_error("a run that asks for memory without end");
}

}  // namespace vastrelline

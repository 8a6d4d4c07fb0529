// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// Rounding to nearest, subnormal numbers kept, no exception trapped, as long as it lives; then the thread has
// its own state again, flags included. Hosts change these for themselves: a library that flushes subnormal
// numbers to zero does so for all that runs on its thread, and the run-time systems of some languages trap
// divisions by zero.
class FloatingPointScope {
public:
    FloatingPointScope();
    ~FloatingPointScope();
    FloatingPointScope(const FloatingPointScope&) = delete;
    FloatingPointScope& operator=(const FloatingPointScope&) = delete;

private:
    // Of the x87 unit, where there is one to care for: else both are 0.
    struct X87State {
        uint16_t control;
        uint16_t status;
    };

    uint64_t controlBefore_;
    uint64_t flagsBefore_;
    X87State x87Before_;
};

}  // namespace vastrelline

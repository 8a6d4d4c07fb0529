// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gmock/gmock.h>

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <utility>

#include "support/Frames.h"

namespace vastrelline {

// Matches a frame of the same size and pixels: EXPECT_THAT(frame, EqualsFrame(expected)). A failure shows
// the number of unequal pixels and the first of them as (x, y) expected, actual.
class EqualsFrame {
public:
    using is_gtest_matcher = void;

    explicit EqualsFrame(Frame expected) : expected_(std::move(expected)) {}

    bool MatchAndExplain(const Frame& actual, std::ostream* explanation) const {
        if (actual == expected_) return true;
        if (explanation != nullptr) Explain(actual, *explanation);
        return false;
    }

    void DescribeTo(std::ostream* out) const { Describe("is a ", out); }
    void DescribeNegationTo(std::ostream* out) const { Describe("is not a ", out); }

private:
    void Describe(const char* verb, std::ostream* out) const {
        *out << verb;
        PrintTo(expected_, out);
    }

    void Explain(const Frame& actual, std::ostream& out) const {
        if (actual.width != expected_.width || actual.height != expected_.height) {
            out << "whose size is " << actual.width << " x " << actual.height;
            return;
        }
        constexpr size_t kMostPixelsShown = 8;
        size_t unequal = 0;
        for (int32_t y = 0; y < actual.height; ++y)
            for (int32_t x = 0; x < actual.width; ++x) {
                if (actual.At(x, y) == expected_.At(x, y) || ++unequal > kMostPixelsShown) continue;
                out << (unequal == 1 ? "with " : "; ") << '(' << x << ", " << y << ") expected "
                    << expected_.At(x, y) << ", actual " << actual.At(x, y);
            }
        out << "; unequal pixels: " << unequal << " of " << actual.pixels.size();
    }

    Frame expected_;
};

}  // namespace vastrelline

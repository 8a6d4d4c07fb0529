// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <vector>

#include "batch/Crew.h"

namespace vastrelline {
namespace {

TEST(Crew, DoesEveryPartOnce) {
    for (const size_t threads : {size_t{1}, size_t{3}, size_t{200}}) {
        std::vector<std::atomic<int>> times(100);
        ShareOut(threads, times.size(), [&](size_t part) {
            ++times[part];
            return true;
        });
        for (const std::atomic<int>& count : times) EXPECT_EQ(count, 1) << threads;
    }
    ShareOut(2, 0, [](size_t) -> bool { throw std::logic_error("there is none"); });
}

TEST(Crew, BeginsNothingMoreWhenAPartSaysSo) {
    std::vector<size_t> parts;
    ShareOut(1, 10, [&](size_t part) {
        parts.push_back(part);
        return part < 2;
    });
    EXPECT_EQ(parts, (std::vector<size_t>{0, 1, 2}));
}

TEST(Crew, ThrowsWhatAPartHasThrown) {
    std::atomic<size_t> count{0};
    EXPECT_THROW(ShareOut(2, 1000000,
                          [&](size_t) -> bool {
                              ++count;
                              throw std::runtime_error("no");
                          }),
                 std::runtime_error);
    EXPECT_LE(count, 2U);
}

}  // namespace
}  // namespace vastrelline

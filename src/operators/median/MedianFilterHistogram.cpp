// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstddef>
#include <vector>

#include "operators/median/MedianFilter.h"

namespace vastrelline {

namespace {

// Counts of the values in a window, from which the value of a rank is found by steps from the last one found:
// windows that follow one another have medians near to each other.
class MovingHistogram {
public:
    explicit MovingHistogram(uint32_t rank) : rank_(rank), blocks_(kLevels / kBlock), levels_(kLevels) {}

    void Add(uint16_t value) { Count(value, 1); }
    void Remove(uint16_t value) { Count(value, ~uint32_t{0}); }

    // The window must hold more values than the rank.
    uint16_t FindRank() {
        while (below_ > rank_) below_ -= blocks_[--block_];
        while (below_ + blocks_[block_] <= rank_) below_ += blocks_[block_++];
        size_t level = block_ * kBlock;
        for (uint32_t upTo = below_ + levels_[level]; upTo <= rank_; upTo += levels_[level]) ++level;
        return static_cast<uint16_t>(level);
    }

private:
    static constexpr size_t kLevels = 65536;
    static constexpr size_t kBlock = 32;  // levels in a block: some dozen steps for either search

    // Adds to the counts, modulo 2^32, so that the largest value takes one away.
    void Count(uint16_t value, uint32_t change) {
        const size_t block = value / kBlock;
        levels_[value] += change;
        blocks_[block] += change;
        below_ += block < block_ ? change : 0;
    }

    uint32_t rank_;
    size_t block_ = 0;    // the block of the last value found
    uint32_t below_ = 0;  // values in the blocks below it
    std::vector<uint32_t> blocks_;
    std::vector<uint32_t> levels_;
};

// The window and its way: lines of places that follow one another along the frame, each line at right angles
// to the last one's neighbour. All distances are in pixels of memory.
struct Way {
    int32_t lines;          // of places
    int32_t places;         // in a line
    int32_t windowAcross;   // the window's size along its edge that a step adds
    int32_t windowAlong;    // the window's size in the direction of a step
    std::ptrdiff_t across;  // from line to line
    std::ptrdiff_t along;   // from place to place
};

class MovingWindow {
public:
    MovingWindow(const Way& way, const uint16_t* corner, uint16_t* out)
        : way_(way),
          corner_(corner),
          out_(out),
          histogram_(static_cast<uint32_t>(way.windowAcross) * static_cast<uint32_t>(way.windowAlong) / 2) {
        for (int32_t i = 0; i < way_.windowAlong; ++i) AddEdge(corner_ + i * way_.along);
    }

    // Goes up one line and down the next, so that the window is never filled anew.
    void Run() {
        std::ptrdiff_t step = way_.along;
        for (int32_t line = 0;; ++line) {
            for (int32_t place = 0;; ++place) {
                *out_ = histogram_.FindRank();
                if (place == way_.places - 1) break;
                Step(step);
            }
            if (line == way_.lines - 1) break;
            StepAcross();
            step = -step;
        }
    }

private:
    void AddEdge(const uint16_t* first) {
        for (int32_t i = 0; i < way_.windowAcross; ++i) histogram_.Add(first[i * way_.across]);
    }

    void Step(std::ptrdiff_t step) {
        const std::ptrdiff_t far = (way_.windowAlong - 1) * way_.along;
        const uint16_t* leaving = step > 0 ? corner_ : corner_ + far;
        const uint16_t* entering = (step > 0 ? corner_ + far : corner_) + step;
        for (int32_t i = 0; i < way_.windowAcross; ++i) {
            histogram_.Remove(leaving[i * way_.across]);
            histogram_.Add(entering[i * way_.across]);
        }
        corner_ += step;
        out_ += step;
    }

    void StepAcross() {
        const uint16_t* entering = corner_ + way_.windowAcross * way_.across;
        for (int32_t i = 0; i < way_.windowAlong; ++i) {
            histogram_.Remove(corner_[i * way_.along]);
            histogram_.Add(entering[i * way_.along]);
        }
        corner_ += way_.across;
        out_ += way_.across;
    }

    Way way_;
    const uint16_t* corner_;  // the window's first pixel
    uint16_t* out_;           // the pixel that it gives
    MovingHistogram histogram_;
};

}  // namespace

void FilterMedianHistogram(const MedianCall& call) {
    const int32_t halfWidth = call.windowWidth / 2;
    const int32_t halfHeight = call.windowHeight / 2;
    const int32_t columns = call.width - 2 * halfWidth;
    const int32_t rows = call.lastRow - call.firstRow + 1;
    const auto stride = static_cast<std::ptrdiff_t>(call.width);
    // A step exchanges one edge of the window: it goes where that is the short one, down for a square, as
    // rows of pixels are read faster than columns.
    const bool goesDown = call.windowWidth <= call.windowHeight;
    const Way way = goesDown ? Way{columns, rows, call.windowWidth, call.windowHeight, 1, stride}
                             : Way{rows, columns, call.windowHeight, call.windowWidth, stride, 1};
    MovingWindow(way, call.source + (call.firstRow - halfHeight) * stride,
                 call.destination + call.firstRow * stride + halfWidth)
        .Run();
}

}  // namespace vastrelline

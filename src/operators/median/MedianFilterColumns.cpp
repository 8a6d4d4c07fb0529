// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <limits>
#include <span>
#include <vector>

#include "operators/median/MedianFilter.h"
#include "pixels/ScratchVector.h"

namespace vastrelline {

namespace {

// After Perreault and Hebert, Median Filtering in Constant Time (2007): each column of the frame keeps a
// histogram of its part of the window, which takes one pixel in and lets one go per row, and a step along the
// row takes one column in and lets one go. As there, levels stand in groups, and the levels inside a group
// are counted for the group of the median only, and only when that moves there.
//
// Two things differ. The groups are not the high bits of a level but of about as many pixels each, so that
// neither a narrow range of levels nor one of 16 bits makes them useless. And what a column keeps of the
// levels inside a group is no histogram, which would take 65536 counts a column, but the list of its pixels
// in that group, by rows: those of the window lie side by side there.
//
// Of the other groups the column keeps how many pixels lie below them, so that a step costs the same whatever
// the number of groups.

constexpr size_t kLevels = 65536;

// The pixels that the windows of a strip see.
struct SeenPixels {
    const uint16_t* pixels;
    size_t stride;
    size_t width;
    size_t height;

    const uint16_t* Row(size_t y) const { return pixels + y * stride; }
};

// The levels that occur, numbered from 0 without gaps (their rank), and in groups of neighbours.
class LevelGroups {
public:
    // About `wanted` groups, at most 2 * wanted + 1. Only a group of a single level holds more than its
    // share.
    LevelGroups(const SeenPixels& pixels, size_t wanted) : ranks_(kLevels), groups_(kLevels) {
        std::vector<uint32_t> counts(kLevels);
        for (size_t y = 0; y < pixels.height; ++y) {
            const uint16_t* row = pixels.Row(y);
            for (size_t x = 0; x < pixels.width; ++x) ++counts[row[x]];
        }
        const size_t share = pixels.width * pixels.height / wanted + 1;
        size_t inGroup = 0;
        for (size_t level = 0; level < kLevels; ++level) {
            if (counts[level] == 0) continue;
            if (firstRanks_.empty() || inGroup + counts[level] > share) {
                firstRanks_.push_back(levels_.size());
                inGroup = 0;
            }
            inGroup += counts[level];
            ranks_[level] = static_cast<uint16_t>(levels_.size());
            groups_[level] = static_cast<uint16_t>(firstRanks_.size() - 1);
            levels_.push_back(static_cast<uint16_t>(level));
        }
        firstRanks_.push_back(levels_.size());
    }

    size_t Count() const { return firstRanks_.size() - 1; }
    size_t LevelCount() const { return levels_.size(); }
    size_t GroupOf(uint16_t level) const { return groups_[level]; }
    uint16_t RankOf(uint16_t level) const { return ranks_[level]; }
    uint16_t LevelAt(size_t rank) const { return levels_[rank]; }
    size_t FirstRank(size_t group) const { return firstRanks_[group]; }
    size_t EndRank(size_t group) const { return firstRanks_[group + 1]; }

private:
    std::vector<uint16_t> ranks_;   // by level
    std::vector<uint16_t> groups_;  // by level
    std::vector<uint16_t> levels_;  // by rank
    std::vector<size_t> firstRanks_;
};

// What every column holds of the windows that begin at one row: first at row 0, then a row further down with
// each step.
class WindowColumns {
public:
    WindowColumns(const SeenPixels& seen, size_t windowHeight, const LevelGroups& groups)
        : seen_(seen),
          windowHeight_(windowHeight),
          groups_(groups),
          below_(seen.width * (groups.Count() + 1), 0),
          first_(seen.width * groups.Count(), 0),
          sorted_(seen.width * seen.height) {
        // So many columns at once that a line of the cache is read whole, and their lists stay in it.
        constexpr size_t kColumnsAtOnce = 32;
        for (size_t c = 0; c < seen.width; c += kColumnsAtOnce)
            Sort(c, std::min(c + kColumnsAtOnce, seen.width));
    }

    // Pixels of the column's part of the window in groups below, and in the group.
    uint32_t Below(size_t column, size_t group) const { return BelowOf(column)[group]; }
    std::span<const uint16_t> RanksIn(size_t column, size_t group) const {
        const uint16_t* below = BelowOf(column) + group;
        return {sorted_.data() + column * seen_.height + first_[column * groups_.Count() + group],
                static_cast<size_t>(below[1] - below[0])};
    }

    void StepDown() {
        const uint16_t* leaving = seen_.Row(top_);
        const uint16_t* entering = seen_.Row(top_ + windowHeight_);
        ++top_;
        uint16_t* below = below_.data() + 1;
        for (size_t c = 0; c < seen_.width; ++c, below += groups_.Count() + 1) {
            const size_t from = groups_.GroupOf(leaving[c]);
            const size_t to = groups_.GroupOf(entering[c]);
            for (size_t g = to; g < from; ++g) ++below[g];
            for (size_t g = from; g < to; ++g) --below[g];
            ++first_[c * groups_.Count() + from];
        }
    }

private:
    const uint16_t* BelowOf(size_t column) const { return below_.data() + column * (groups_.Count() + 1); }

    void Sort(size_t columnBegin, size_t columnEnd) {
        const size_t groups = groups_.Count();
        for (size_t y = 0; y < seen_.height; ++y) {
            for (size_t c = columnBegin; c < columnEnd; ++c) {
                const size_t group = groups_.GroupOf(seen_.Row(y)[c]);
                ++first_[c * groups + group];
                if (y < windowHeight_) ++below_[c * (groups + 1) + group + 1];
            }
        }
        std::vector<uint32_t> next((columnEnd - columnBegin) * groups);
        for (size_t c = columnBegin; c < columnEnd; ++c) {
            uint32_t first = 0;
            for (size_t g = 0; g < groups; ++g) {
                const uint32_t count = first_[c * groups + g];
                first_[c * groups + g] = next[(c - columnBegin) * groups + g] = first;
                first += count;
                uint16_t* below = &below_[c * (groups + 1) + g];
                below[1] = static_cast<uint16_t>(below[0] + below[1]);
            }
        }
        for (size_t y = 0; y < seen_.height; ++y) {
            for (size_t c = columnBegin; c < columnEnd; ++c) {
                const uint16_t level = seen_.Row(y)[c];
                uint32_t& place = next[(c - columnBegin) * groups + groups_.GroupOf(level)];
                sorted_[c * seen_.height + place++] = groups_.RankOf(level);
            }
        }
    }

    SeenPixels seen_;
    size_t windowHeight_;
    const LevelGroups& groups_;
    size_t top_ = 0;
    ScratchVector<uint16_t> below_;   // by column and group, one group more; a window has below 2^16 rows
    ScratchVector<uint32_t> first_;   // likewise, without the one more: where the list in the window begins
    ScratchVector<uint16_t> sorted_;  // the ranks of each column by group, inside it by row
};

// The window that moves over a strip, and what is known of each group in it.
class StripWindow {
public:
    StripWindow(const MedianCall& call, const SeenPixels& seen)
        : seen_(seen),
          windowWidth_(static_cast<size_t>(call.windowWidth)),
          windowHeight_(static_cast<size_t>(call.windowHeight)),
          rank_(static_cast<uint32_t>(windowWidth_ * windowHeight_ / 2)),
          groups_(seen, std::clamp<size_t>(seen.height / 2, 1, kWantedGroups)),
          columns_(seen, windowHeight_, groups_),
          counts_(groups_.LevelCount()),
          known_(groups_.Count()) {}

    void StepDown() {
        columns_.StepDown();
        ++top_;
    }

    // The median of the window whose first column is `left`.
    uint16_t FindMedian(size_t left) {
        for (;;) {
            Known& known = known_[group_];
            Bring(known, left);
            if (rank_ < known.below) {
                --group_;
            } else if (rank_ - known.below >= known.inside) {
                ++group_;
            } else {
                return FindInside(known);
            }
        }
    }

private:
    static constexpr size_t kWantedGroups = 32;
    static constexpr size_t kNowhere = std::numeric_limits<size_t>::max();

    // A group in the window as it stood when the median last was near it.
    struct Known {
        size_t top = kNowhere;
        size_t left = 0;
        uint32_t below = 0;   // pixels in groups below
        uint32_t inside = 0;  // pixels in the group
        uint16_t rank = 0;    // where the last search ended
        uint32_t upTo = 0;    // pixels in the group with a lower rank
    };

    bool HasOneLevel() const { return groups_.EndRank(group_) - groups_.FirstRank(group_) == 1; }

    uint16_t FindInside(Known& known) {
        if (HasOneLevel()) return groups_.LevelAt(groups_.FirstRank(group_));
        const uint32_t wanted = rank_ - known.below;
        while (known.upTo > wanted) known.upTo -= counts_[--known.rank];
        while (known.upTo + counts_[known.rank] <= wanted) known.upTo += counts_[known.rank++];
        return groups_.LevelAt(known.rank);
    }

    // Brings what is known of the group to the window as it stands now, by the shorter way.
    void Bring(Known& known, size_t left) {
        // Anew, each column costs a jump in memory. A row costs two pixels a column, which lie side by side;
        // a step costs two columns.
        constexpr size_t kMostRows = 4;
        const size_t steps = known.left > left ? known.left - left : left - known.left;
        if (known.top == kNowhere || top_ - known.top > kMostRows || steps > windowWidth_) {
            CountAnew(known, left);
            return;
        }
        for (; known.top < top_; ++known.top) MoveDown(known);
        for (; known.left < left; ++known.left) {
            Count(known, known.left, ~uint32_t{0});
            Count(known, known.left + windowWidth_, 1);
        }
        for (; known.left > left; --known.left) {
            Count(known, known.left - 1 + windowWidth_, ~uint32_t{0});
            Count(known, known.left - 1, 1);
        }
    }

    void CountAnew(Known& known, size_t left) {
        const size_t first = groups_.FirstRank(group_);
        std::fill(counts_.begin() + static_cast<std::ptrdiff_t>(first),
                  counts_.begin() + static_cast<std::ptrdiff_t>(groups_.EndRank(group_)), 0);
        known = {top_, left, 0, 0, static_cast<uint16_t>(first), 0};
        for (size_t c = left; c < left + windowWidth_; ++c) Count(known, c, 1);
    }

    // Adds a column to the counts, modulo 2^32, so that the largest factor takes it away.
    void Count(Known& known, size_t column, uint32_t factor) {
        const std::span<const uint16_t> ranks = columns_.RanksIn(column, group_);
        known.below += columns_.Below(column, group_) * factor;
        known.inside += static_cast<uint32_t>(ranks.size()) * factor;
        if (HasOneLevel()) return;
        uint32_t upTo = 0;
        for (const uint16_t rank : ranks) upTo += rank < known.rank ? 1 : 0;
        known.upTo += upTo * factor;
        uint32_t* const counts = counts_.data();
        for (const uint16_t rank : ranks) counts[rank] += factor;
    }

    void CountRank(Known& known, uint16_t rank, uint32_t change) {
        counts_[rank] += change;
        known.upTo += rank < known.rank ? change : 0;
    }

    void MoveDown(Known& known) {
        CountRow(known, seen_.Row(known.top) + known.left, ~uint32_t{0});
        CountRow(known, seen_.Row(known.top + windowHeight_) + known.left, 1);
    }

    void CountRow(Known& known, const uint16_t* pixels, uint32_t change) {
        const uint16_t lowest = groups_.LevelAt(groups_.FirstRank(group_));
        const uint16_t highest = groups_.LevelAt(groups_.EndRank(group_) - 1);
        const bool hasOneLevel = HasOneLevel();
        constexpr size_t kPiece = 16;  // few pieces of a row hold a pixel of the group
        for (size_t i = 0; i < windowWidth_; i += kPiece) {
            const size_t end = std::min(i + kPiece, windowWidth_);
            uint16_t below = 0;
            uint16_t upTo = 0;
            for (size_t k = i; k < end; ++k) {
                below = static_cast<uint16_t>(below + (pixels[k] < lowest ? 1 : 0));
                upTo = static_cast<uint16_t>(upTo + (pixels[k] <= highest ? 1 : 0));
            }
            known.below += below * change;
            known.inside += static_cast<uint32_t>(upTo - below) * change;
            if (upTo == below || hasOneLevel) continue;
            for (size_t k = i; k < end; ++k) {
                if (lowest <= pixels[k] && pixels[k] <= highest)
                    CountRank(known, groups_.RankOf(pixels[k]), change);
            }
        }
    }

    SeenPixels seen_;
    size_t windowWidth_;
    size_t windowHeight_;
    uint32_t rank_;
    LevelGroups groups_;
    WindowColumns columns_;
    size_t top_ = 0;                // the window's first row
    size_t group_ = 0;              // the median's
    std::vector<uint32_t> counts_;  // by rank; true for a group as far as it is known
    std::vector<Known> known_;      // by group
};

}  // namespace

void FilterMedianColumns(const MedianCall& call) {
    constexpr int32_t kMostWindowRows = 65535;  // a column counts them in 16 bits
    constexpr size_t kLeastPlaces = 192;
    if (call.windowHeight > kMostWindowRows) {
        FilterMedianHistogram(call);
        return;
    }
    const auto width = static_cast<size_t>(call.width);
    const auto windowWidth = static_cast<size_t>(call.windowWidth);
    const auto windowHeight = static_cast<size_t>(call.windowHeight);
    const size_t halfWidth = windowWidth / 2;
    const size_t places = width - 2 * halfWidth;
    const auto rows = static_cast<size_t>(call.lastRow) - static_cast<size_t>(call.firstRow) + 1;
    const uint16_t* seen = call.source + (static_cast<size_t>(call.firstRow) - windowHeight / 2) * width;
    uint16_t* out = call.destination + static_cast<size_t>(call.firstRow) * width + halfWidth;
    // Strips so narrow that a group is hardly ever counted anew, and not so narrow that each column is sorted
    // more than about twice.
    const size_t placesInStrip = std::max(windowWidth, kLeastPlaces);
    for (size_t x = 0; x < places; x += placesInStrip) {
        const size_t count = std::min(placesInStrip, places - x);
        StripWindow window(call, {seen + x, width, count - 1 + windowWidth, rows - 1 + windowHeight});
        for (size_t y = 0; y < rows; ++y) {
            if (y != 0) window.StepDown();
            uint16_t* const row = out + y * width + x;
            // To and fro, so that the window never jumps.
            for (size_t i = 0; i < count; ++i) {
                const size_t left = y % 2 == 0 ? i : count - 1 - i;
                row[left] = window.FindMedian(left);
            }
        }
    }
}

}  // namespace vastrelline

#include "stages/stretch/PlannedCurves.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

#include "operators/curves/LookupTable.h"
#include "operators/histogram/Histogram.h"
#include "pixels/FrameLimits.h"

namespace vastrelline {

namespace {

uint16_t EntryOf(std::span<const uint16_t> table, size_t level) {
    return table[std::min(level, table.size() - 1)];
}

}  // namespace

PlannedCurves::PlannedCurves(const FrameView<uint16_t>& frame)
    : frame_(frame),
      counts_(BuildUnclampedHistogram(frame.begin(), frame.Width(), frame.Height(), kTopPixel)) {}

int32_t PlannedCurves::MinLevel() const {
    const auto isOccupied = [](uint32_t count) { return count != 0; };
    return static_cast<int32_t>(std::find_if(counts_.begin(), counts_.end(), isOccupied) - counts_.begin());
}

int32_t PlannedCurves::MaxLevel() const {
    int32_t level = kTopPixel;
    while (level > 0 && counts_[static_cast<size_t>(level)] == 0) --level;
    return level;
}

std::vector<uint32_t> PlannedCurves::Histogram(int32_t maxValue) const {
    std::vector<uint32_t> histogram = UnclampedHistogram(maxValue);
    if (histogram.size() < counts_.size() && !histogram.empty()) {
        const auto above = counts_.begin() + static_cast<std::ptrdiff_t>(histogram.size());
        histogram.back() = std::accumulate(above, counts_.end(), histogram.back());
    }
    return histogram;
}

std::vector<uint32_t> PlannedCurves::UnclampedHistogram(int32_t maxValue) const {
    if (maxValue < 0) return {};
    std::vector<uint32_t> histogram(static_cast<size_t>(maxValue) + 1);
    std::copy_n(counts_.begin(), std::min(counts_.size(), histogram.size()), histogram.begin());
    return histogram;
}

void PlannedCurves::Add(std::span<const uint16_t> table) {
    if (table.empty()) return;
    // No pixel lies above the highest level, so no curve is needed there.
    const size_t levels = static_cast<size_t>(MaxLevel()) + 1;
    if (unapplied_.empty()) {
        unapplied_.resize(levels);
        std::iota(unapplied_.begin(), unapplied_.end(), uint16_t{0});
    }
    for (uint16_t& level : unapplied_) level = EntryOf(table, level);
    std::vector<uint32_t> mapped(counts_.size());
    for (size_t level = 0; level < levels; ++level) mapped[EntryOf(table, level)] += counts_[level];
    counts_ = std::move(mapped);
}

void PlannedCurves::Apply() {
    ApplyLookupTable(frame_.begin(), frame_.Width(), frame_.Height(), unapplied_);
    unapplied_.clear();
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "operators/curves/TonedFrame.h"

#include <algorithm>
#include <cassert>
#include <numeric>
#include <utility>

#include "operators/curves/ClippedRamp.h"
#include "operators/curves/LookupTable.h"
#include "operators/histogram/Histogram.h"
#include "pixels/FrameLimits.h"

namespace vastrelline {

namespace {

uint16_t EntryOf(std::span<const uint16_t> table, size_t level) {
    return table[std::min(level, table.size() - 1)];
}

bool IsOccupied(uint32_t count) { return count != 0; }

// Counts of all levels from 0 to the highest one at least.
std::vector<uint32_t> CountLevels(const FrameView<const uint16_t>& frame) {
    // Nearly all frames have 12 bits, and a short table is cheap. Its last bin shows whether this one has
    // more.
    constexpr int32_t kBeyond12Bits = 4096;
    std::vector<uint32_t> counts =
        BuildHistogram(frame.begin(), frame.Width(), frame.Height(), kBeyond12Bits);
    if (counts.back() == 0) return counts;
    return BuildHistogram(frame.begin(), frame.Width(), frame.Height(),
                          MaxPixel(frame.begin(), frame.Width(), frame.Height()));
}

std::vector<uint32_t> MapCounts(const std::vector<uint32_t>& counts, std::span<const uint16_t> table) {
    // To look which levels are occupied would take longer than to map all of them.
    const auto reached = table.first(std::min(counts.size(), table.size()));
    std::vector<uint32_t> mapped(size_t{*std::ranges::max_element(reached)} + 1);
    for (size_t level = 0; level < reached.size(); ++level) mapped[reached[level]] += counts[level];
    for (size_t level = reached.size(); level < counts.size(); ++level) mapped[table.back()] += counts[level];
    return mapped;
}

PixelRange RangeOfCounts(const std::vector<uint32_t>& counts) {
    constexpr int32_t kAboveAnyPixel = kTopPixel + 1;
    const auto first = std::find_if(counts.begin(), counts.end(), IsOccupied);
    if (first == counts.end()) return {kAboveAnyPixel, 0};
    const auto last = std::find_if(counts.rbegin(), counts.rend(), IsOccupied);
    return {static_cast<int32_t>(first - counts.begin()), static_cast<int32_t>(counts.rend() - last) - 1};
}

// Where the ends of a range go, if the curve rises or falls all the way and keeps them the ends.
std::optional<PixelRange> MapRange(const PixelRange& range, std::span<const uint16_t> table) {
    if (range.smallest > range.largest) return range;
    const auto first = static_cast<size_t>(range.smallest);
    const auto last = static_cast<size_t>(range.largest);
    const auto reached = table.first(std::min(last + 1, table.size()));
    const auto between = reached.subspan(std::min(first, reached.size() - 1));
    const PixelRange mapped{EntryOf(table, first), EntryOf(table, last)};
    if (std::ranges::is_sorted(between)) return mapped;
    if (std::ranges::is_sorted(between, std::ranges::greater()))
        return PixelRange{mapped.largest, mapped.smallest};
    return std::nullopt;
}

// A table, and how it is applied to pixels.
class Mapping {
public:
    explicit Mapping(std::span<const uint16_t> table) : table_(table), ramp_(FindClippedRamp(table)) {
        if (!ramp_) above_ = FindRampAbove(table);
    }

    void Apply(uint16_t* pixels, size_t count) const {
        // So short that dark pixels, which lie together, leave most of them to the ramp.
        constexpr size_t kBlock = 1024;
        if (ramp_)
            ApplyClippedRamp({pixels, count}, *ramp_);
        else if (!above_)
            LookUp(pixels, count);
        else
            for (size_t start = 0; start < count; start += kBlock)
                ApplyToBlock(pixels + start, std::min(count - start, kBlock));
    }

private:
    void LookUp(uint16_t* pixels, size_t count) const {
        ApplyLookupTable(pixels, static_cast<int32_t>(count), 1, table_);
    }

    void ApplyToBlock(uint16_t* pixels, size_t count) const {
        if (MinPixel(pixels, static_cast<int32_t>(count), 1) >= above_->head)
            ApplyClippedRamp({pixels, count}, above_->ramp);
        else
            LookUp(pixels, count);
    }

    std::span<const uint16_t> table_;
    std::optional<ClippedRamp> ramp_;
    std::optional<RampAbove> above_;
};

}  // namespace

TonedFrame::TonedFrame(const FrameView<uint16_t>& pixels) : pixels_(pixels) {}

TonedFrame::TonedFrame(TonedFrame& source, const FrameView<uint16_t>& pixels)
    : pixels_(pixels),
      source_(&source),
      curve_(source.curve_),
      counts_(source.counts_),
      range_(source.range_) {
    assert(pixels.Width() == source.Width() && pixels.Height() == source.Height());
    assert(source.source_ == nullptr);
}

int32_t TonedFrame::MinLevel() { return Range().smallest; }

int32_t TonedFrame::MaxLevel() { return Range().largest; }

std::vector<uint32_t> TonedFrame::Histogram(int32_t maxValue) {
    std::vector<uint32_t> histogram = UnclampedHistogram(maxValue);
    if (histogram.size() < Counts().size() && !histogram.empty()) {
        const auto above = Counts().begin() + static_cast<std::ptrdiff_t>(histogram.size());
        histogram.back() = std::accumulate(above, Counts().end(), histogram.back());
    }
    return histogram;
}

std::vector<uint32_t> TonedFrame::UnclampedHistogram(int32_t maxValue) {
    if (maxValue < 0) return {};
    std::vector<uint32_t> histogram(static_cast<size_t>(maxValue) + 1);
    std::copy_n(Counts().begin(), std::min(Counts().size(), histogram.size()), histogram.begin());
    return histogram;
}

void TonedFrame::Map(std::span<const uint16_t> table) {
    if (table.empty()) return;
    mappedCounts_.reset();
    if (range_) range_ = MapRange(*range_, table);
    if (curve_.empty()) {
        curve_.assign(table.begin(), table.end());
    } else {
        for (uint16_t& level : curve_) level = EntryOf(table, level);
    }
}

void TonedFrame::Rearrange(std::vector<int32_t> rows, std::function<void(uint16_t* row, int32_t y)> edit) {
    if (rearrangement_) Read();
    mappedCounts_.reset();
    range_.reset();
    std::vector<uint16_t> row(static_cast<size_t>(Width()));
    for (const int32_t y : rows) {
        const uint16_t* stored = Stored().Row(y);
        std::copy_n(stored, row.size(), row.begin());
        edit(row.data(), y);
        for (size_t x = 0; counts_ && x < row.size(); ++x) {
            --(*counts_)[stored[x]];
            ++(*counts_)[row[x]];
        }
        if (source_ == nullptr) std::copy(row.begin(), row.end(), pixels_.Row(y));
    }
    if (source_ == nullptr) return;
    rearrangedRows_ = std::move(rows);
    rearrangement_ = std::move(edit);
}

FrameView<const uint16_t> TonedFrame::Read() {
    if (counts_) counts_ = Counts();
    mappedCounts_.reset();
    Apply();
    return Stored();
}

FrameView<uint16_t> TonedFrame::Change() {
    ForgetLevels();
    Apply();
    return pixels_;
}

void TonedFrame::CopyTo(uint16_t* rows, size_t stride) {
    if (source_ != nullptr) Apply();
    const Mapping own(curve_);
    for (int32_t y = 0; y < Height(); ++y, rows += stride) {
        std::copy_n(pixels_.Row(y), Width(), rows);
        own.Apply(rows, static_cast<size_t>(Width()));
    }
}

FrameView<uint16_t> TonedFrame::Replace() {
    if (source_ != nullptr) Apply();
    curve_.clear();
    return Change();
}

FrameView<const uint16_t> TonedFrame::Stored() const {
    const FrameView<uint16_t>& stored = source_ != nullptr ? source_->pixels_ : pixels_;
    return {stored.begin(), stored.Width(), stored.Height()};
}

const std::vector<uint32_t>& TonedFrame::StoredCounts() {
    if (!counts_) {
        // The rows on their way here are counted as they will be.
        if (rearrangement_) Apply();
        counts_ = CountLevels(Stored());
    }
    return *counts_;
}

const std::vector<uint32_t>& TonedFrame::Counts() {
    const std::vector<uint32_t>& stored = StoredCounts();
    if (curve_.empty()) return stored;
    if (!mappedCounts_) mappedCounts_ = MapCounts(stored, curve_);
    return *mappedCounts_;
}

const PixelRange& TonedFrame::Range() {
    if (!range_) {
        const bool isStoredRange = !counts_ && curve_.empty() && !rearrangement_;
        range_ =
            isStoredRange ? FindPixelRange(Stored().begin(), Width(), Height()) : RangeOfCounts(Counts());
    }
    return *range_;
}

void TonedFrame::ForgetLevels() {
    counts_.reset();
    mappedCounts_.reset();
    range_.reset();
}

void TonedFrame::Apply() {
    if (source_ != nullptr)
        TakeFromSource();
    else
        Mapping(curve_).Apply(pixels_.begin(), Count());
    curve_.clear();
}

void TonedFrame::TakeFromSource() {
    // Blocks stay in the nearest cache from one step to the next.
    constexpr size_t kBlock = 4096;
    const Mapping own(curve_);
    const Mapping sources(source_->curve_);
    for (size_t start = 0; start < Count(); start += kBlock) {
        const size_t count = std::min(Count() - start, kBlock);
        uint16_t* stored = source_->pixels_.begin() + start;
        uint16_t* block = pixels_.begin() + start;
        std::copy_n(stored, count, block);
        own.Apply(block, count);
        sources.Apply(stored, count);
    }
    source_->curve_.clear();
    source_->ForgetLevels();
    source_ = nullptr;
    for (const int32_t y : rearrangedRows_) rearrangement_(pixels_.Row(y), y);
    rearrangement_ = nullptr;
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "operators/tile_equalise/TileCurve.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace vastrelline {

namespace {

// Hands out what the even share could not: one count at a time to bins below the limit. From each bin in turn
// the histogram is walked in steps that let the rest last to its end; when the last start is through, the
// first has its turn again, until nothing is left or no bin can take any more.
//
// A frame and a profile can be made so that nearly all steps meet full bins. So the open bins are known, and
// walks that would meet none are left out: they change nothing.
class ExcessWalk {
public:
    ExcessWalk(std::span<uint32_t> block, uint32_t clip, uint32_t excess)
        : block_(block), clip_(clip), excess_(excess) {
        uint32_t open = 0;  // as wide as bins, for the compiler's vectors
        for (const uint32_t bin : block) open += bin < clip ? 1 : 0;
        openCount_ = open;
    }

    void Run() {
        while (CanGo()) {
            size_t start = 0;
            while (start < block_.size() && CanGo()) {
                // Worked out anew at every start.
                const size_t step = std::max<size_t>(block_.size() / excess_, 1);
                const uint32_t before = excess_;
                WalkFrom(start, step);
                ++start;
                if (excess_ == before) start = NextUsefulStart(start, step);
            }
        }
    }

private:
    bool CanGo() const { return excess_ != 0 && openCount_ != 0; }
    bool IsOpen(size_t bin) const { return block_[bin] < clip_; }

    // Gives a bin one count if it is open; without branches, which would go either way at random.
    void Offer(size_t bin) {
        const uint32_t given = IsOpen(bin) ? 1 : 0;
        block_[bin] += given;
        excess_ -= given;
        openCount_ -= given != 0 && !IsOpen(bin) ? size_t{1} : 0;
    }

    void WalkFrom(size_t start, size_t step) {
        // A look at a listed bin costs a division, a look at the next bin in step far less.
        constexpr size_t kLooksPerDivision = 8;
        if (openCount_ * kLooksPerDivision < block_.size() / step) {
            for (const uint32_t bin : OpenBinsFrom(start)) {
                if (excess_ != 0 && (bin - start) % step == 0) Offer(bin);
            }
            return;
        }
        // With a count for every open bin none goes without.
        if (step == 1 && excess_ >= openCount_) return OfferAllFrom(start);
        for (size_t bin = start; bin < block_.size() && excess_ != 0; bin += step) Offer(bin);
    }

    // Offer for all bins from `start` on, in the compiler's vectors.
    void OfferAllFrom(size_t start) {
        uint32_t given = 0;
        uint32_t filled = 0;
        for (uint32_t& bin : block_.subspan(start)) {
            const uint32_t isOpen = bin < clip_ ? 1 : 0;
            bin += isOpen;
            given += isOpen;
            filled += isOpen & (bin == clip_ ? 1U : 0U);
        }
        excess_ -= given;
        openCount_ -= filled;
    }

    // The first start, from `start` on, whose walk meets an open bin; the end of the histogram if none does.
    size_t NextUsefulStart(size_t start, size_t step) {
        size_t next = block_.size();
        for (const uint32_t bin : OpenBinsFrom(start)) {
            if (IsOpen(bin)) next = std::min(next, start + (bin - start) % step);
        }
        return next;
    }

    // The open bins from `start` on, ascending, among them at most as many that have filled up.
    std::span<const uint32_t> OpenBinsFrom(size_t start) {
        if (!isListed_) {
            isListed_ = true;
            for (uint32_t bin = 0; bin < block_.size(); ++bin) {
                if (IsOpen(bin)) open_.push_back(bin);
            }
        } else if (openCount_ < open_.size() / 2) {
            std::erase_if(open_, [this](uint32_t bin) { return !IsOpen(bin); });
        }
        return {std::lower_bound(open_.begin(), open_.end(), start), open_.end()};
    }

    std::span<uint32_t> block_;
    uint32_t clip_;
    uint32_t excess_;
    size_t openCount_ = 0;
    std::vector<uint32_t> open_;  // listed when first asked for
    bool isListed_ = false;
};

}  // namespace

void ClipHistogram(std::span<uint32_t> block, uint32_t clip) {
    uint32_t excess = 0;
    for (const uint32_t bin : block) excess += bin > clip ? bin - clip : 0;
    const uint32_t increment = excess / static_cast<uint32_t>(block.size());
    // Wraps where the even share is beyond the limit; then no bin is near the limit.
    const uint32_t upper = clip - increment;
    // Without branches, which would go either way at random: a bin near the limit takes what is missing there
    // and not its whole share, one beyond it takes nothing.
    for (uint32_t& bin : block) {
        const uint32_t held = std::min(bin, clip);
        const uint32_t missing = clip - held;
        const bool isFilled = (bin > clip) | (bin > upper);
        const uint32_t share = isFilled ? missing : increment;
        excess -= share;
        bin = held + share;
    }
    if (excess != 0) ExcessWalk(block, clip, excess).Run();
}

void MapHistogram(std::span<uint32_t> block, uint16_t min, uint16_t max, uint32_t pixelsPerTile) {
    const auto scale = static_cast<float>(static_cast<double>(max - min) / pixelsPerTile);
    uint32_t sum = 0;
    for (uint32_t& bin : block) {
        sum += bin;
        const double level = min + static_cast<double>(sum) * static_cast<double>(scale);
        // Clamped to `max` before the truncation, which then always fits: the same result without a test.
        bin = static_cast<uint32_t>(static_cast<int32_t>(std::min<double>(level, max)));
    }
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "operators/box_mean/BoxMeanSchedule.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

#include "operators/histogram/PixelRange.h"

namespace vastrelline {

namespace {

// 32767 pixels of 16 bits add up to less than 2^31, which is what the division by a product holds for.
constexpr int32_t kLargestFastRadius = 16383;

template <typename Sum>
class BoxMeanRun {
public:
    BoxMeanRun(const BoxMeanCall& call, const BoxMeanLoops<Sum>& loops, WindowDivision division)
        : call_(call),
          loops_(loops),
          width_(static_cast<size_t>(call.width)),
          division_(division),
          // Beyond a line's length, every reach sees the end pixel alone.
          leftReach_(static_cast<size_t>(std::min(call.radius + 1, call.width))),
          rightReach_(static_cast<size_t>(std::min(call.radius, call.width))),
          line_(leftReach_ + width_ + rightReach_ + static_cast<size_t>(loops.slack)),
          capacity_(std::min(2 * call.radius + 2, call.height)),
          stride_(width_ + static_cast<size_t>(loops.slack)),
          ring_(static_cast<size_t>(capacity_) * stride_),
          sums_(width_) {}

    void Run() {
        SumRowsBeforeFirst();
        for (int32_t y = 0; y < call_.height; ++y) {
            const uint16_t* entering = AveragedRow(y + call_.radius);
            const uint16_t* leaving = AveragedRow(y - call_.radius - 1);
            loops_.meanColumns(sums_.data(), entering, leaving, call_.width, division_,
                               call_.destination + static_cast<size_t>(y) * width_);
        }
    }

private:
    // The column sums over the window before the first row, -radius - 1 to radius - 1.
    void SumRowsBeforeFirst() {
        AddRow(0, call_.radius + 1);
        for (int32_t y = 0; y < std::min(call_.radius, call_.height); ++y) AddRow(y, 1);
        if (call_.radius > call_.height) AddRow(call_.height - 1, call_.radius - call_.height);
    }

    void AddRow(int32_t y, int32_t times) {
        const uint16_t* row = AveragedRow(y);
        const auto factor = static_cast<uint32_t>(times);
        for (size_t x = 0; x < width_; ++x) sums_[x] = static_cast<Sum>(sums_[x] + factor * row[x]);
    }

    // The sum of a line over the window before its first place; `first` is that place.
    Sum SumBeforeFirst(const uint16_t* first) const {
        uint32_t sum = static_cast<uint32_t>(call_.radius + 1) * *first;
        for (size_t i = 0; i < std::min(rightReach_, width_); ++i) sum += first[i];
        const int32_t beyond = std::max(call_.radius - call_.width, 0);
        return static_cast<Sum>(sum + static_cast<uint32_t>(beyond) * first[width_ - 1]);
    }

    // A row that is averaged along itself; one beyond the frame is the nearest one in it. The frame's row is
    // read on the first call, when a result in place has not reached it yet: radius is 1 or more.
    const uint16_t* AveragedRow(int32_t y) {
        const int32_t row = ClampIndex(y, call_.height);
        for (; averaged_ <= row; ++averaged_) AverageRow(averaged_);
        return Slot(row);
    }

    void AverageRow(int32_t y) {
        const uint16_t* source = call_.source + static_cast<size_t>(y) * width_;
        uint16_t* first = line_.data() + leftReach_;
        std::fill_n(line_.data(), leftReach_, source[0]);
        std::copy_n(source, width_, first);
        std::fill_n(first + width_, rightReach_, source[width_ - 1]);
        loops_.meanLine(SumBeforeFirst(first), first + rightReach_, line_.data(), call_.width, division_,
                        Slot(y));
    }

    uint16_t* Slot(int32_t row) { return ring_.data() + static_cast<size_t>(row % capacity_) * stride_; }

    const BoxMeanCall& call_;
    const BoxMeanLoops<Sum>& loops_;
    size_t width_;
    WindowDivision division_;
    size_t leftReach_;
    size_t rightReach_;
    std::vector<uint16_t> line_;  // one row of pixels with what lies beyond its ends
    int32_t capacity_;            // averaged rows from the one that leaves to the one that enters
    size_t stride_;
    std::vector<uint16_t> ring_;  // the averaged rows in use
    std::vector<Sum> sums_;       // one for each column
    int32_t averaged_ = 0;        // rows averaged so far
};

}  // namespace

WindowDivision MakeWindowDivision(int32_t window) {
    // With 2^shift < window <= 2^(shift + 1) and factor = 2^(32 + shift) / window rounded up, the factor is
    // below 2^32 and too large by less than 1, so a product is too large by less than sum / 2^(32 + shift)
    // of window-ths: below one of them for each sum below 2^31, and the whole part is right.
    int32_t shift = 0;
    while ((int64_t{2} << shift) < window) ++shift;
    const uint64_t scale = uint64_t{1} << (32 + shift);
    const auto divisor = static_cast<uint64_t>(window);
    return {static_cast<uint32_t>((scale + divisor - 1) / divisor), shift};
}

std::optional<WindowDivision> MakeNarrowWindowDivision(int32_t window, int32_t largestPixel) {
    const int64_t largestSum = int64_t{window} * largestPixel;
    if (largestSum > 0xFFFF) return std::nullopt;
    // As above with 16 bits in place of 32. The factor is too large by excess / window, and the whole part of
    // a product is right if sum * excess stays below 2^(16 + shift); whether it does is tried for the largest
    // sum.
    int32_t shift = 0;
    while ((int64_t{2} << shift) < window) ++shift;
    const int64_t scale = int64_t{1} << (16 + shift);
    const int64_t factor = (scale + window - 1) / window;
    const int64_t excess = factor * window - scale;
    if (factor > 0xFFFF || largestSum * excess >= scale) return std::nullopt;
    return WindowDivision{static_cast<uint32_t>(factor), shift};
}

void RunBoxMeanSchedule(const BoxMeanCall& call, const BoxMeanKernels& kernels) {
    if (call.radius > kLargestFastRadius) {
        BoxMeanScalar(call);
        return;
    }
    const int32_t window = 2 * call.radius + 1;
    // A window that is too wide for 16 bits already for pixels of 1 needs no look at the pixels.
    std::optional<WindowDivision> narrow = MakeNarrowWindowDivision(window, 1);
    if (narrow) narrow = MakeNarrowWindowDivision(window, MaxPixel(call.source, call.width, call.height));
    if (narrow) {
        BoxMeanRun<uint16_t>(call, kernels.narrow, *narrow).Run();
    } else {
        BoxMeanRun<uint32_t>(call, kernels.wide, MakeWindowDivision(window)).Run();
    }
}

}  // namespace vastrelline

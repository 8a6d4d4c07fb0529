#include "image/BoxMeanSchedule.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace vastrelline {

namespace {

// 32767 pixels of 16 bits add up to less than 2^31, which is what the division by a product holds for.
constexpr int32_t kLargestFastRadius = 16383;

class BoxMeanRun {
public:
    BoxMeanRun(const BoxMeanCall& call, const BoxMeanKernels& kernels)
        : call_(call),
          kernels_(kernels),
          width_(static_cast<size_t>(call.width)),
          division_(MakeWindowDivision(2 * call.radius + 1)),
          // Beyond a line's length, every reach sees the end pixel alone.
          leftReach_(static_cast<size_t>(std::min(call.radius + 1, call.width))),
          rightReach_(static_cast<size_t>(std::min(call.radius, call.width))),
          line_(leftReach_ + width_ + rightReach_ + static_cast<size_t>(kernels.slack)),
          capacity_(std::min(2 * call.radius + 2, call.height)),
          stride_(width_ + static_cast<size_t>(kernels.slack)),
          ring_(static_cast<size_t>(capacity_) * stride_),
          sums_(width_) {}

    void Run() {
        SumRowsBeforeFirst();
        for (int32_t y = 0; y < call_.height; ++y) {
            const uint16_t* entering = AveragedRow(y + call_.radius);
            const uint16_t* leaving = AveragedRow(y - call_.radius - 1);
            kernels_.meanColumns(sums_.data(), entering, leaving, call_.width, division_,
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
        for (size_t x = 0; x < width_; ++x) sums_[x] += factor * row[x];
    }

    // The sum of a line over the window before its first place; `first` is that place.
    uint32_t SumBeforeFirst(const uint16_t* first) const {
        uint32_t sum = static_cast<uint32_t>(call_.radius + 1) * *first;
        for (size_t i = 0; i < std::min(rightReach_, width_); ++i) sum += first[i];
        const int32_t beyond = std::max(call_.radius - call_.width, 0);
        return sum + static_cast<uint32_t>(beyond) * first[width_ - 1];
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
        kernels_.meanLine(SumBeforeFirst(first), first + rightReach_, line_.data(), call_.width, division_,
                          Slot(y));
    }

    uint16_t* Slot(int32_t row) { return ring_.data() + static_cast<size_t>(row % capacity_) * stride_; }

    const BoxMeanCall& call_;
    const BoxMeanKernels& kernels_;
    size_t width_;
    WindowDivision division_;
    size_t leftReach_;
    size_t rightReach_;
    std::vector<uint16_t> line_;  // one row of pixels with what lies beyond its ends
    int32_t capacity_;            // averaged rows from the one that leaves to the one that enters
    size_t stride_;
    std::vector<uint16_t> ring_;  // the averaged rows in use
    std::vector<uint32_t> sums_;  // one for each column
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

void RunBoxMeanSchedule(const BoxMeanCall& call, const BoxMeanKernels& kernels) {
    if (call.radius > kLargestFastRadius) {
        BoxMeanScalar(call);
        return;
    }
    BoxMeanRun(call, kernels).Run();
}

}  // namespace vastrelline

#include "image/FilterSchedule.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <vector>

namespace vastrelline {

namespace {

constexpr int32_t kRowsAtOnce = 4;

class FilterRun {
public:
    FilterRun(const FilterCall& call, const FilterKernels& kernels)
        : call_(call),
          kernels_(kernels),
          size_(static_cast<int32_t>(call.kernel.size())),
          half_(size_ / 2),
          capacity_(size_ + kRowsAtOnce - 1),
          stride_(MakeStride(call.width, kernels.slack)),
          line_(static_cast<size_t>(call.width + size_ + kernels.slack)),
          ring_(static_cast<size_t>(capacity_) * stride_),
          seen_(static_cast<size_t>(capacity_)),
          window_(static_cast<size_t>(capacity_)) {
        KeepFirstRows();
    }

    void Run() {
        int32_t y = 0;
        // With fewer taps the four rows share too little.
        if (size_ >= kRowsAtOnce - 1) {
            for (; y + kRowsAtOnce <= call_.height; y += kRowsAtOnce) {
                kernels_.makeFourRows(See(y, kRowsAtOnce), call_.kernel.data(), size_, OutputRow(y),
                                      call_.width, call_.maxValue);
            }
        }
        for (; y < call_.height; ++y) {
            kernels_.makeOneRow(See(y, 1), call_.kernel.data(), size_, OutputRow(y), call_.width,
                                call_.maxValue);
        }
    }

private:
    // Doubles from one filtered row to the next. An odd number of cache lines, so that rows do not crowd the
    // same sets of the cache.
    static size_t MakeStride(int32_t width, int32_t slack) {
        constexpr size_t kLine = 8;
        const size_t lines = (static_cast<size_t>(width) + static_cast<size_t>(slack)) / kLine + 1;
        return (lines | 1) * kLine;
    }

    uint16_t* OutputRow(int32_t y) const {
        return call_.pixels + static_cast<size_t>(y) * static_cast<size_t>(call_.width);
    }

    int32_t EdgeIndex(int32_t index, int32_t count) const {
        if (call_.edges == EdgeRule::Replicate) return std::clamp(index, 0, count - 1);
        const int32_t rest = index % count;
        return rest < 0 ? rest + count : rest;
    }

    // The last rows of a wrapped frame see the first ones, which are overwritten by then.
    void KeepFirstRows() {
        if (call_.edges != EdgeRule::Wrap) return;
        keptRows_ = std::min(size_ - 1 - half_, call_.height);
        kept_.assign(call_.pixels, OutputRow(keptRows_));
    }

    // The unfiltered pixels of row `index`, which may lie beyond the frame.
    const uint16_t* SourceRow(int32_t index) const {
        const int32_t row = EdgeIndex(index, call_.height);
        if (index >= call_.height && row < keptRows_) {
            return kept_.data() + static_cast<size_t>(row) * static_cast<size_t>(call_.width);
        }
        return OutputRow(row);
    }

    // Filters a row into the ring and gives its place there.
    const double* FilterRow(int32_t index) {
        const uint16_t* source = SourceRow(index);
        for (int32_t i = 0; i < half_; ++i)
            line_[static_cast<size_t>(i)] = source[EdgeIndex(i - half_, call_.width)];
        kernels_.widenPixels(source, call_.width, line_.data() + half_);
        for (int32_t i = half_ + call_.width; i < call_.width + size_ - 1; ++i)
            line_[static_cast<size_t>(i)] = source[EdgeIndex(i - half_, call_.width)];
        double* out = ring_.data() + static_cast<size_t>(filtered_++ % capacity_) * stride_;
        kernels_.filterLine(line_.data(), call_.width, call_.kernel.data(), size_, out);
        return out;
    }

    // The filtered rows that `count` rows of the result from y on see, first to last.
    const double* const* See(int32_t y, int32_t count) {
        const int32_t end = y - half_ + size_ - 1 + count;
        for (; next_ < end; ++next_) {
            // Beyond a repeated edge there is nothing new to filter.
            const bool isRepeated = call_.edges == EdgeRule::Replicate && next_ > -half_ &&
                                    EdgeIndex(next_, call_.height) == EdgeIndex(next_ - 1, call_.height);
            seen_[SlotOf(next_)] = isRepeated ? seen_[SlotOf(next_ - 1)] : FilterRow(next_);
        }
        for (int32_t row = y - half_; row < end; ++row) {
            window_[static_cast<size_t>(row - (y - half_))] = seen_[SlotOf(row)];
        }
        return window_.data();
    }

    size_t SlotOf(int32_t row) const { return static_cast<size_t>((row + half_) % capacity_); }

    const FilterCall& call_;
    const FilterKernels& kernels_;
    int32_t size_;
    int32_t half_;
    int32_t capacity_;                   // rows that four rows of the result see
    size_t stride_;                      // doubles from one row of the ring to the next
    std::vector<double> line_;           // one row of pixels with what lies beyond its edges
    std::vector<double> ring_;           // the filtered rows in use
    std::vector<const double*> seen_;    // where each row in use lies in the ring
    std::vector<const double*> window_;  // the same, in order
    std::vector<uint16_t> kept_;         // the first rows of a wrapped frame, unfiltered
    int32_t keptRows_ = 0;
    int32_t filtered_ = 0;   // rows filtered so far
    int32_t next_ = -half_;  // the next row to see
};

}  // namespace

void RunFilterSchedule(const FilterCall& call, const FilterKernels& kernels) {
    constexpr int32_t kTopPixel = 0xFFFF;
    if (call.maxValue > kTopPixel) {
        // The fast loops hold pixels to 16 bits by saturation; beyond that the low bits count.
        FilterFrameScalar(call);
        return;
    }
    FilterRun(call, kernels).Run();
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "operators/separable/FilterSchedule.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "pixels/FrameLimits.h"
#include "pixels/ScratchVector.h"

namespace vastrelline {

namespace {

constexpr int32_t kRowsAtOnce = 4;

// The rows of a frame that is filtered in place.
class RowsInPlace {
public:
    explicit RowsInPlace(const FilterCall& call) : call_(call) { KeepFirstRows(); }

    // The unfiltered pixels of row `index`, which may lie beyond the frame.
    const uint16_t* Source(int32_t index) const {
        const int32_t row = EdgeIndex(index, call_.height, call_.edges);
        if (index >= call_.height && row < keptRows_) {
            return kept_.data() + static_cast<size_t>(row) * static_cast<size_t>(call_.width);
        }
        FetchRow(call_.pixels, call_.width, call_.height, row + 1);
        return Result(row);
    }

    // Where the result's rows go from y on, and that `count` of them are there.
    uint16_t* Result(int32_t y) const {
        return call_.pixels + static_cast<size_t>(y) * static_cast<size_t>(call_.width);
    }
    void Finish(int32_t /*y*/, int32_t /*count*/) const {}

private:
    // The last rows of a wrapped frame see the first ones, which are overwritten by then.
    void KeepFirstRows() {
        if (call_.edges != EdgeRule::Wrap) return;
        const auto size = static_cast<int32_t>(call_.kernel.size());
        keptRows_ = std::min(size - 1 - size / 2, call_.height);
        kept_.assign(call_.pixels, Result(keptRows_));
    }

    const FilterCall& call_;
    ScratchVector<uint16_t> kept_;  // the first rows of a wrapped frame, unfiltered
    int32_t keptRows_ = 0;
};

// Rows that are made and taken one by one.
class PassingRows {
public:
    explicit PassingRows(const RowFilterCall& call)
        : call_(call), result_(static_cast<size_t>(kRowsAtOnce) * static_cast<size_t>(call.width)) {}

    const uint16_t* Source(int32_t index) const {
        return call_.sourceRow(EdgeIndex(index, call_.height, call_.edges));
    }
    uint16_t* Result(int32_t /*y*/) { return result_.data(); }
    void Finish(int32_t y, int32_t count) const {
        const uint16_t* row = result_.data();
        for (int32_t i = 0; i < count; ++i, row += call_.width) call_.takeRow(y + i, row);
    }

private:
    const RowFilterCall& call_;
    ScratchVector<uint16_t> result_;
};

template <typename Rows>
class FilterRun {
public:
    FilterRun(const FilterCall& call, const FilterKernels& kernels, Rows& rows)
        : call_(call),
          kernels_(kernels),
          rows_(rows),
          size_(static_cast<int32_t>(call.kernel.size())),
          half_(size_ / 2),
          capacity_(size_ + kRowsAtOnce - 1),
          stride_(FilteredRowStride(call.width, kernels.slack)),
          line_(static_cast<size_t>(call.width + size_ + kernels.slack), 0.0),
          ring_(static_cast<size_t>(RingRows()) * stride_),
          seen_(static_cast<size_t>(capacity_)),
          window_(static_cast<size_t>(capacity_)) {
        // The loops over columns multiply lanes beyond a row's end, too. Nobody stores what comes of it, but
        // a host may trap what is no number.
        for (size_t row = 0; row < ring_.size(); row += stride_) {
            double* const first = ring_.data() + row;
            std::fill(first + call.width, first + stride_, 0.0);
        }
    }

    void Run() {
        int32_t y = 0;
        // With fewer taps the four rows share too little.
        if (size_ >= kRowsAtOnce - 1) {
            for (; y + kRowsAtOnce <= call_.height; y += kRowsAtOnce) {
                kernels_.makeFourRows(See(y, kRowsAtOnce), call_.kernel.data(), size_, rows_.Result(y),
                                      call_.width, call_.maxValue);
                rows_.Finish(y, kRowsAtOnce);
            }
        }
        for (; y < call_.height; ++y) {
            kernels_.makeOneRow(See(y, 1), call_.kernel.data(), size_, rows_.Result(y), call_.width,
                                call_.maxValue);
            rows_.Finish(y, 1);
        }
    }

private:
    // No row of a frame is filtered twice while the ring could hold all of them.
    int32_t RingRows() const { return std::min(capacity_, call_.height); }

    // Filters a row into the ring and gives its place there.
    const double* FilterRow(int32_t index) {
        const uint16_t* source = rows_.Source(index);
        for (int32_t i = 0; i < half_; ++i)
            line_[static_cast<size_t>(i)] = source[EdgeIndex(i - half_, call_.width, call_.edges)];
        kernels_.widenPixels(source, call_.width, line_.data() + half_);
        for (int32_t i = half_ + call_.width; i < call_.width + size_ - 1; ++i)
            line_[static_cast<size_t>(i)] = source[EdgeIndex(i - half_, call_.width, call_.edges)];
        double* out = ring_.data() + static_cast<size_t>(filtered_++ % RingRows()) * stride_;
        kernels_.filterLine(line_.data(), call_.width, call_.kernel.data(), size_, out);
        return out;
    }

    // The filtered rows that `count` rows of the result from y on see, first to last.
    const double* const* See(int32_t y, int32_t count) {
        const int32_t end = y - half_ + size_ - 1 + count;
        for (; next_ < end; ++next_) {
            const int32_t twin = SeenTwin(next_);
            seen_[SlotOf(next_)] = twin < next_ ? seen_[SlotOf(twin)] : FilterRow(next_);
        }
        for (int32_t row = y - half_; row < end; ++row) {
            window_[static_cast<size_t>(row - (y - half_))] = seen_[SlotOf(row)];
        }
        return window_.data();
    }

    // A row seen before that is the same as this one and still there; the row itself if there is none.
    int32_t SeenTwin(int32_t row) const {
        if (call_.edges == EdgeRule::Replicate) {
            const bool isRepeated = row > -half_ && EdgeIndex(row, call_.height, call_.edges) ==
                                                        EdgeIndex(row - 1, call_.height, call_.edges);
            return isRepeated ? row - 1 : row;
        }
        // A kernel higher than a wrapped frame sees its rows again and again.
        const bool isSeenAgain = call_.height <= capacity_ && row - call_.height >= -half_;
        return isSeenAgain ? row - call_.height : row;
    }

    size_t SlotOf(int32_t row) const { return static_cast<size_t>((row + half_) % capacity_); }

    const FilterCall& call_;
    const FilterKernels& kernels_;
    Rows& rows_;
    int32_t size_;
    int32_t half_;
    int32_t capacity_;  // rows that four rows of the result see
    size_t stride_;     // doubles from one row of the ring to the next
    // No load of a vector from these is split by the end of a line of the cache, at one of which they begin.
    ScratchVector<double> line_;         // one row of pixels with what lies beyond its edges
    ScratchVector<double> ring_;         // the filtered rows in use
    std::vector<const double*> seen_;    // where each row in use lies in the ring
    std::vector<const double*> window_;  // the same, in order
    int32_t filtered_ = 0;               // rows filtered so far
    int32_t next_ = -half_;              // the next row to see
};

}  // namespace

int32_t EdgeIndex(int32_t index, int32_t count, EdgeRule edges) {
    if (edges == EdgeRule::Replicate) return std::clamp(index, 0, count - 1);
    const int32_t rest = index % count;
    return rest < 0 ? rest + count : rest;
}

size_t FilteredRowStride(int32_t width, int32_t slack) {
    constexpr size_t kLine = 8;
    const size_t lines = (static_cast<size_t>(width) + static_cast<size_t>(slack)) / kLine + 1;
    return (lines | 1) * kLine;
}

bool IsBeyondFastLoops(int32_t maxValue) { return maxValue > kTopPixel; }

void RunFilterSchedule(const FilterCall& call, const FilterKernels& kernels) {
    if (IsBeyondFastLoops(call.maxValue)) {
        FilterFrameScalar(call);
        return;
    }
    RowsInPlace rows(call);
    FilterRun(call, kernels, rows).Run();
}

void RunRowSchedule(const RowFilterCall& call, const FilterKernels& kernels) {
    if (IsBeyondFastLoops(call.maxValue)) {
        FilterRowsScalar(call);
        return;
    }
    PassingRows rows(call);
    const FilterCall filter{nullptr, call.width, call.height, call.maxValue, call.kernel, call.edges};
    FilterRun(filter, kernels, rows).Run();
}

}  // namespace vastrelline

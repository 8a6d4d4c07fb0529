// SPDX-License-Identifier: Apache-2.0
#include <cstddef>
#include <vector>

#include "operators/separable/FilterSchedule.h"
#include "pixels/ScratchVector.h"

namespace vastrelline {

namespace {

// Walks the rows of the result. Each sees `size` rows of the source, filtered at the even columns; two rows
// further on most of these are still there, in a ring of so many rows as the kernel is high.
class HalvingRun {
public:
    HalvingRun(const HalvingCall& call, const FilterKernels& kernels)
        : call_(call),
          kernels_(kernels),
          size_(static_cast<int32_t>(call.kernel.size())),
          half_(size_ / 2),
          resultWidth_(call.width / 2),
          stride_(FilteredRowStride(resultWidth_, kernels.slack)),
          evens_(HalfLineLength()),
          odds_(HalfLineLength()),
          ring_(static_cast<size_t>(size_) * stride_),
          window_(static_cast<size_t>(size_)),
          next_(KeyOf(-half_)) {}

    void Run() {
        uint16_t* out = call_.result;
        for (int32_t y = 0; y < call_.height / 2; ++y) {
            kernels_.makeOneRow(See(2 * y), call_.kernel.data(), size_, out, resultWidth_, call_.maxValue);
            out += resultWidth_;
        }
    }

private:
    size_t HalfLineLength() const {
        const size_t line = static_cast<size_t>(call_.width) + static_cast<size_t>(size_);
        return line / 2 + 1 + static_cast<size_t>(kernels_.slack);
    }

    // Rows that are the same beyond a repeated edge have one key; wrapped ones are filtered anew.
    int32_t KeyOf(int32_t row) const {
        return call_.edges == EdgeRule::Replicate ? EdgeIndex(row, call_.height, call_.edges) : row;
    }

    double* Slot(int32_t key) {
        // Keys begin at -half_. Those in use at one time are neighbours, at most size_ of them.
        return ring_.data() + static_cast<size_t>((key + half_) % size_) * stride_;
    }

    // The `size_` filtered rows that the result sees around a row of the source, first to last.
    const double* const* See(int32_t row) {
        for (int32_t k = 0; k < size_; ++k) {
            const int32_t key = KeyOf(row - half_ + k);
            if (key >= next_) {
                FilterRow(key);
                next_ = key + 1;
            }
            window_[static_cast<size_t>(k)] = Slot(key);
        }
        return window_.data();
    }

    // Place p of the line is the pixel half_ before it; even and odd places lie apart.
    void PutPlace(const uint16_t* source, int32_t place) {
        std::vector<double>& places = place % 2 == 0 ? evens_ : odds_;
        places[static_cast<size_t>(place / 2)] = source[EdgeIndex(place - half_, call_.width, call_.edges)];
    }

    void FilterRow(int32_t key) {
        const int32_t row = EdgeIndex(key, call_.height, call_.edges);
        const uint16_t* source = call_.source + static_cast<size_t>(row) * static_cast<size_t>(call_.width);
        FetchRow(call_.source, call_.width, call_.height, row + 1);
        for (int32_t place = 0; place < half_; ++place) PutPlace(source, place);
        double* evens = evens_.data() + (half_ + 1) / 2;
        double* odds = odds_.data() + half_ / 2;
        // The first pixel of the row lies on place half_.
        const bool beginsEven = half_ % 2 == 0;
        kernels_.splitPixels(source, call_.width / 2, beginsEven ? evens : odds, beginsEven ? odds : evens);
        const int32_t split = call_.width / 2 * 2;
        for (int32_t place = half_ + split; place < call_.width + size_ - 1; ++place) PutPlace(source, place);
        kernels_.filterEvenPlaces(evens_.data(), odds_.data(), resultWidth_, call_.kernel.data(), size_,
                                  Slot(key));
    }

    const HalvingCall& call_;
    const FilterKernels& kernels_;
    int32_t size_;
    int32_t half_;
    int32_t resultWidth_;
    size_t stride_;               // doubles from one row of the ring to the next
    std::vector<double> evens_;   // one row of pixels with what lies beyond its edges: places 0, 2, ...
    std::vector<double> odds_;    // places 1, 3, ...
    ScratchVector<double> ring_;  // the filtered rows in use
    std::vector<const double*> window_;  // those that a row of the result sees, in order
    int32_t next_;                       // the key of the next row to filter
};

}  // namespace

void RunHalvingSchedule(const HalvingCall& call, const FilterKernels& kernels) {
    if (IsBeyondFastLoops(call.maxValue)) {
        FilterAndHalveScalar(call);
        return;
    }
    HalvingRun(call, kernels).Run();
}

}  // namespace vastrelline

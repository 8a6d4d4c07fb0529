// SPDX-License-Identifier: Apache-2.0
#include "operators/resample/ResizeSchedule.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "pixels/ScratchVector.h"

namespace vastrelline {

namespace {

const uint16_t* SourceRow(const ResizeCall& call, int32_t y) {
    return call.source + static_cast<size_t>(y) * static_cast<size_t>(call.width);
}

uint16_t* ResultRow(const ResizeCall& call, int32_t y) {
    return call.result + static_cast<size_t>(y) * static_cast<size_t>(call.resultWidth);
}

void Halve(const ResizeCall& call, const ResizeKernels& kernels) {
    for (int32_t y = 0; y < call.resultHeight; ++y) {
        kernels.halveRow(SourceRow(call, 2 * y), call.resultWidth, ResultRow(call, y));
    }
}

void Double(const ResizeCall& call, const ResizeKernels& kernels) {
    const int32_t last = call.width - 1;
    for (int32_t y = 0; y < call.resultHeight; ++y) {
        const uint16_t* source = SourceRow(call, y / 2);
        uint16_t* result = ResultRow(call, y);
        if (y / 2 == call.height - 1) {
            kernels.repeatRow(source, call.width, result);
            continue;
        }
        if (y % 2 == 0) {
            kernels.doubleRow(source, call.width, result);
        } else {
            kernels.doubleBetweenRows(source, SourceRow(call, y / 2 + 1), call.width, result);
        }
        // The last column takes no part in any interpolation.
        uint16_t* end = result + call.resultWidth;
        end[-2] = source[last];
        end[-1] = source[last];
    }
}

// Any other scale. Places grow with the position, so the columns of the result are runs: first those between
// two source columns, then those on the last one, then those beyond it.
class Interpolation {
public:
    Interpolation(const ResizeCall& call, const ResizeKernels& kernels) : call_(call), kernels_(kernels) {
        indices_.reserve(static_cast<size_t>(call.resultWidth));
        rests_.reserve(static_cast<size_t>(call.resultWidth));
        for (int32_t x = 0; x < call.resultWidth; ++x) {
            const auto [index, rest] = SourcePlaceOf(x, call.scale);
            if (index < 0 || index > call.width - 1) break;
            indices_.push_back(index);
            if (index == call.width - 1) continue;
            rests_.push_back(rest);
            areColumnsWhole_ = areColumnsWhole_ && rest == 0;
        }
        FindRepeats();
    }

    void Run() {
        for (int32_t y = 0; y < call_.resultHeight; ++y) {
            const SourcePlace place = SourcePlaceOf(y, call_.scale);
            uint16_t* result = ResultRow(call_, y);
            const bool isInside = place.index >= 0 && place.index <= call_.height - 1;
            const size_t count = isInside ? indices_.size() : 0;
            if (isInside) MakeRow(place, result);
            std::fill(result + count, result + call_.resultWidth, uint16_t{0});
        }
    }

private:
    // The pixels at both sides of each place in a source row, as the products need them.
    struct Neighbours {
        int32_t row = -1;
        ScratchVector<double> values;
        const double* left = nullptr;
        const double* right = nullptr;
    };

    // At whole scales every source column is the left one of as many places; then what lies to the right of
    // a place is what lies to the left of the one so many columns on.
    void FindRepeats() {
        const auto whole = TruncateToInt32(call_.scale);
        if (whole < 1 || static_cast<double>(whole) != call_.scale || rests_.empty()) return;
        for (size_t x = 0; x < indices_.size(); ++x)
            if (indices_[x] != static_cast<int32_t>(x / static_cast<size_t>(whole))) return;
        repeats_ = static_cast<size_t>(whole);
    }

    // The columns inside the source.
    void MakeRow(SourcePlace place, uint16_t* result) {
        // On source rows and columns alone, as at 1/3, one weight is 1 and the others are 0.
        const bool isWhole = place.rest == 0 && areColumnsWhole_;
        const size_t blended = place.index < call_.height - 1 && !isWhole ? rests_.size() : 0;
        if (blended > 0) {
            if (below_.row == place.index) std::swap(above_, below_);
            FindNeighbours(place.index, above_);
            if (place.rest == 0) {
                kernels_.blendInRow({above_.left, above_.right, nullptr, nullptr, rests_.data(), 0, blended},
                                    result);
            } else {
                FindNeighbours(place.index + 1, below_);
                kernels_.blendRow({above_.left, above_.right, below_.left, below_.right, rests_.data(),
                                   place.rest, blended},
                                  result);
            }
        }
        const uint16_t* source = SourceRow(call_, place.index);
        for (size_t x = blended; x < indices_.size(); ++x) result[x] = source[indices_[x]];
    }

    // Several rows of an enlarged frame lie between the same two of the source, which are read once.
    void FindNeighbours(int32_t row, Neighbours& neighbours) const {
        if (neighbours.row == row) return;
        neighbours.row = row;
        const uint16_t* source = SourceRow(call_, row);
        if (repeats_ > 0) return RepeatPixels(source, neighbours);
        neighbours.values.resize(2 * rests_.size());
        double* const left = neighbours.values.data();
        double* const right = left + rests_.size();
        for (size_t x = 0; x < rests_.size(); ++x) {
            left[x] = source[indices_[x]];
            right[x] = source[indices_[x] + 1];
        }
        neighbours.left = left;
        neighbours.right = right;
    }

    void RepeatPixels(const uint16_t* source, Neighbours& neighbours) const {
        // Written at once; what one pixel writes too much the next ones write again.
        constexpr size_t kAtOnce = 4;
        const size_t columns = static_cast<size_t>(indices_[rests_.size() - 1]) + 2;
        neighbours.values.resize(columns * repeats_ + kAtOnce);
        double* place = neighbours.values.data();
        neighbours.left = place;
        neighbours.right = place + repeats_;
        for (size_t i = 0; i < columns; ++i, place += repeats_) {
            const double pixel = source[i];
            for (size_t k = 0; k < repeats_; k += kAtOnce) std::fill_n(place + k, kAtOnce, pixel);
        }
    }

    const ResizeCall& call_;
    const ResizeKernels& kernels_;
    ScratchVector<int32_t> indices_;  // of the columns inside the source
    ScratchVector<double> rests_;     // of those between two source columns
    size_t repeats_ = 0;              // places beside each source column at a whole scale; 0 at any other
    bool areColumnsWhole_ = true;     // no rest but 0
    Neighbours above_;
    Neighbours below_;
};

}  // namespace

void RunResizeSchedule(const ResizeCall& call, const ResizeKernels& kernels) {
    if (call.scale == 0.5) {
        Halve(call, kernels);
    } else if (call.scale == 2.0) {
        Double(call, kernels);
    } else {
        Interpolation(call, kernels).Run();
    }
}

}  // namespace vastrelline

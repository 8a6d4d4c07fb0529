#include "operators/resample/ResizeSchedule.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

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
        std::vector<double> left;
        std::vector<double> right;
    };

    // The columns inside the source.
    void MakeRow(SourcePlace place, uint16_t* result) {
        // On source rows and columns alone, as at 1/3, one weight is 1 and the others are 0.
        const bool isWhole = place.rest == 0 && areColumnsWhole_;
        const size_t blended = place.index < call_.height - 1 && !isWhole ? rests_.size() : 0;
        if (blended > 0) {
            if (below_.row == place.index) std::swap(above_, below_);
            FindNeighbours(place.index, above_);
            FindNeighbours(place.index + 1, below_);
            kernels_.blendRow({above_.left.data(), above_.right.data(), below_.left.data(),
                               below_.right.data(), rests_.data(), place.rest, blended},
                              result);
        }
        const uint16_t* source = SourceRow(call_, place.index);
        for (size_t x = blended; x < indices_.size(); ++x) result[x] = source[indices_[x]];
    }

    // Several rows of an enlarged frame lie between the same two of the source, which are read once.
    void FindNeighbours(int32_t row, Neighbours& neighbours) const {
        if (neighbours.row == row) return;
        neighbours.row = row;
        neighbours.left.resize(rests_.size());
        neighbours.right.resize(rests_.size());
        const uint16_t* source = SourceRow(call_, row);
        for (size_t x = 0; x < rests_.size(); ++x) {
            neighbours.left[x] = source[indices_[x]];
            neighbours.right[x] = source[indices_[x] + 1];
        }
    }

    const ResizeCall& call_;
    const ResizeKernels& kernels_;
    std::vector<int32_t> indices_;  // of the columns inside the source
    std::vector<double> rests_;     // of those between two source columns
    bool areColumnsWhole_ = true;   // no rest but 0
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

// SPDX-License-Identifier: Apache-2.0
#include "views/FrameView.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>

namespace vastrelline {
namespace {

constexpr uint8_t kOutside = 128;
constexpr size_t kLevels = 65536;

// What of the frame lies under one pixel of the screen, in one direction: whole pixels, of the first and the
// last a part.
struct Reach {
    bool isInside = false;
    size_t first = 0;
    size_t last = 0;
    double firstPart = 1.0;
    double lastPart = 1.0;
    double sum = 1.0;  // of all parts
};

Reach ReachOf(double begin, double end, double middle, double size) {
    Reach reach;
    reach.isInside = middle >= 0.0 && middle < size;
    if (!reach.isInside) return reach;
    begin = std::max(begin, 0.0);
    end = std::min(end, size);
    reach.first = static_cast<size_t>(begin);
    reach.last = static_cast<size_t>(std::max(std::ceil(end) - 1.0, static_cast<double>(reach.first)));
    const auto first = static_cast<double>(reach.first);
    const auto last = static_cast<double>(reach.last);
    reach.firstPart = std::min(end, first + 1.0) - begin;
    reach.lastPart = end - std::max(begin, last);
    reach.sum = end - begin;
    return reach;
}

// Of every pixel of the screen.
std::vector<Reach> ReachesOf(double begin, double size, uint32_t count, int32_t frameSize) {
    const double step = size / count;
    std::vector<Reach> reaches;
    reaches.reserve(count);
    for (uint32_t i = 0; i < count; ++i) {
        const double middle = begin + (i + 0.5) * step;
        if (step < 1.0) {
            const double pixel = std::floor(middle);
            reaches.push_back(ReachOf(pixel, pixel + 1.0, middle, frameSize));
        } else {
            reaches.push_back(ReachOf(begin + i * step, begin + (i + 1) * step, middle, frameSize));
        }
    }
    return reaches;
}

// Goes through the view row by row and hands over the mean under every pixel that is inside.
//
// addRow   adds a row of the frame, times a weight, to sums of its width
template <typename AddRow, typename Put>
void Reduce(int32_t width, int32_t height, const ViewRequest& view, const AddRow& addRow, const Put& put) {
    const std::vector<Reach> columns = ReachesOf(view.x, view.w, view.pw, width);
    const std::vector<Reach> rows = ReachesOf(view.y, view.h, view.ph, height);
    std::vector<double> sums(static_cast<size_t>(width));
    std::vector<double> before(sums.size() + 1);  // the sum of all columns before each
    for (size_t y = 0; y < rows.size(); ++y) {
        const Reach& row = rows[y];
        if (!row.isInside) continue;
        std::fill(sums.begin(), sums.end(), 0.0);
        for (size_t each = row.first; each <= row.last; ++each) {
            const double part = each == row.first ? row.firstPart : each == row.last ? row.lastPart : 1.0;
            addRow(each, part, sums);
        }
        for (size_t x = 0; x < sums.size(); ++x) before[x + 1] = before[x] + sums[x];
        for (size_t x = 0; x < columns.size(); ++x) {
            const Reach& column = columns[x];
            if (!column.isInside) continue;
            double sum = sums[column.first] * column.firstPart;
            if (column.last > column.first)
                sum += before[column.last] - before[column.first + 1] + sums[column.last] * column.lastPart;
            put(y * columns.size() + x, sum / (column.sum * row.sum));
        }
    }
}

std::array<uint8_t, kLevels> GreysOf(const GreyWindow& window) {
    // As one frame that has every level once.
    Frame all{static_cast<int32_t>(kLevels), 1, {}};
    for (size_t level = 0; level < kLevels; ++level) all.pixels.push_back(static_cast<uint16_t>(level));
    const std::vector<uint8_t> greys = RenderThroughWindow(all, window);
    std::array<uint8_t, kLevels> table{};
    std::copy(greys.begin(), greys.end(), table.begin());
    return table;
}

}  // namespace

bool IsUsableView(const ViewRequest& view) {
    for (const double each : {view.x, view.y, view.w, view.h})
        if (!(std::fabs(each) <= kMaxViewReach)) return false;
    return view.w > 0.0 && view.h > 0.0 && view.pw > 0 && view.ph > 0 && view.pw <= kMaxViewSide &&
           view.ph <= kMaxViewSide && view.pw <= kMaxViewPixels / view.ph;
}

std::vector<uint8_t> RenderView(const Frame& frame, const ViewRequest& view, const GreyWindow& window) {
    const std::array<uint8_t, kLevels> greys = GreysOf(window);
    std::vector<uint8_t> picture(size_t{view.pw} * view.ph, kOutside);
    Reduce(
        frame.width, frame.height, view,
        [&](size_t y, double part, std::vector<double>& sums) {
            const uint16_t* const row = frame.pixels.data() + y * sums.size();
            for (size_t x = 0; x < sums.size(); ++x) sums[x] += part * row[x];
        },
        [&](size_t place, double mean) { picture[place] = greys[static_cast<size_t>(mean + 0.5)]; });
    return picture;
}

std::vector<uint8_t> RenderDifference(const Frame& a, const Frame& b, const ViewRequest& view, double gain) {
    std::vector<uint8_t> picture(size_t{view.pw} * view.ph, kOutside);
    Reduce(
        a.width, a.height, view,
        [&](size_t y, double part, std::vector<double>& sums) {
            const uint16_t* const left = a.pixels.data() + y * sums.size();
            const uint16_t* const right = b.pixels.data() + y * sums.size();
            for (size_t x = 0; x < sums.size(); ++x) sums[x] += part * (int32_t{right[x]} - int32_t{left[x]});
        },
        [&](size_t place, double mean) {
            constexpr double kWhite = 255.0;
            picture[place] =
                static_cast<uint8_t>(std::clamp(std::floor(kOutside + gain * mean + 0.5), 0.0, kWhite));
        });
    return picture;
}

}  // namespace vastrelline

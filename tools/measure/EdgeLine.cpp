// SPDX-License-Identifier: Apache-2.0
#include "measure/EdgeLine.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "measure/MeasuredArea.h"

namespace vastrelline {
namespace {

constexpr int32_t kHalfBox = 4;     // of the two means whose difference finds the edge
constexpr int32_t kHalfWindow = 8;  // in which its middle is then looked for
constexpr int kRounds = 4;
constexpr double kFarPixels = 2.0;      // a row's middle so far from the line is of something else
constexpr double kMostRoughness = 0.6;  // of the middles around the line, in pixels
constexpr double kLeastShift =
    1.0;  // columns that an edge has to cross, so that all phases of a pixel are met

double Level(const Frame& frame, int32_t x, int32_t y) {
    return frame.pixels[PixelCount(frame.width, y) + static_cast<size_t>(x)];
}

struct RowEdge {
    double row = 0.0;
    double place = 0.0;
};

// The steepest place of a row: the difference of the means of four pixels at both sides, rising if sign is 1.
int32_t SteepestPlace(const Frame& frame, int32_t y, double sign) {
    double best = -1.0;
    int32_t place = -1;
    double difference = 0.0;
    for (int32_t x = 0; x < kHalfBox; ++x) difference += Level(frame, x + kHalfBox, y) - Level(frame, x, y);
    for (int32_t x = kHalfBox; x + kHalfBox <= frame.width; ++x) {
        if (sign * difference > best) {
            best = sign * difference;
            place = x;
        }
        if (x + kHalfBox < frame.width)
            difference +=
                Level(frame, x + kHalfBox, y) - 2.0 * Level(frame, x, y) + Level(frame, x - kHalfBox, y);
    }
    return place;
}

// The centre of the rise around a place, in columns; nothing if it does not rise there.
bool FindMiddle(const Frame& frame, int32_t y, double around, double sign, double& middle) {
    const auto centre = static_cast<int32_t>(std::floor(around + 0.5));
    const int32_t begin = std::max(centre - kHalfWindow, 0);
    const int32_t end = std::min(centre + kHalfWindow, frame.width - 1);
    double sum = 0.0;
    double moment = 0.0;
    for (int32_t x = begin; x < end; ++x) {
        const double off = (x + 0.5 - around) / (kHalfWindow + 1.0);
        const double window = std::max(0.0, 1.0 - off * off);  // the ends count less, where noise alone is
        const double rise = sign * (Level(frame, x + 1, y) - Level(frame, x, y)) * window;
        sum += rise;
        moment += rise * (x + 0.5);
    }
    if (!(sum > 0.0)) return false;
    middle = moment / sum;
    return middle >= begin && middle <= end;
}

EdgeLine FitLine(const std::vector<RowEdge>& edges, bool isBrightRight) {
    double rows = 0.0;
    double places = 0.0;
    for (const RowEdge& edge : edges) {
        rows += edge.row;
        places += edge.place;
    }
    const auto count = static_cast<double>(edges.size());
    rows /= count;
    places /= count;
    double squares = 0.0;
    double products = 0.0;
    for (const RowEdge& edge : edges) {
        squares += (edge.row - rows) * (edge.row - rows);
        products += (edge.row - rows) * (edge.place - places);
    }
    EdgeLine line;
    line.slope = squares > 0.0 ? products / squares : 0.0;
    line.place = places - line.slope * rows;
    line.isBrightRight = isBrightRight;
    return line;
}

// A first line that stray rows do not bend: the median of slopes between rows half the frame apart (H. Theil:
// A rank-invariant method of linear and polynomial regression analysis, 1950).
EdgeLine FirstLine(const std::vector<RowEdge>& edges, bool isBrightRight) {
    std::vector<double> slopes;
    slopes.reserve(edges.size());
    const size_t apart = edges.size() / 2;
    for (size_t i = 0; i + apart < edges.size(); ++i)
        slopes.push_back((edges[i + apart].place - edges[i].place) / (edges[i + apart].row - edges[i].row));
    std::nth_element(slopes.begin(), slopes.begin() + static_cast<std::ptrdiff_t>(slopes.size() / 2),
                     slopes.end());
    EdgeLine line;
    line.slope = slopes[slopes.size() / 2];
    std::vector<double> places;
    places.reserve(edges.size());
    for (const RowEdge& edge : edges) places.push_back(edge.place - line.slope * edge.row);
    std::nth_element(places.begin(), places.begin() + static_cast<std::ptrdiff_t>(places.size() / 2),
                     places.end());
    line.place = places[places.size() / 2];
    line.isBrightRight = isBrightRight;
    return line;
}

[[noreturn]] void ThrowNoEdge(const char* why) {
    throw CannotMeasure(std::string("there is no straight edge: ") + why,
                        "--area names the part that has it");
}

}  // namespace

bool IsLyingEdge(const Frame& frame) {
    double across = 0.0;
    double down = 0.0;
    for (int32_t y = 0; y + kHalfBox < frame.height; ++y)
        for (int32_t x = 0; x + kHalfBox < frame.width; ++x) {
            const double right = Level(frame, x + kHalfBox, y) - Level(frame, x, y);
            const double below = Level(frame, x, y + kHalfBox) - Level(frame, x, y);
            across += right * right;
            down += below * below;
        }
    return down > across;
}

EdgeLine FindEdgeLine(const Frame& frame) {
    double left = 0.0;
    double right = 0.0;
    for (int32_t y = 0; y < frame.height; ++y)
        for (int32_t x = 0; x < frame.width / 2; ++x) {
            left += Level(frame, x, y);
            right += Level(frame, frame.width - 1 - x, y);
        }
    if (left == right) ThrowNoEdge("both halves are of one level");
    const bool isBrightRight = right > left;
    const double sign = isBrightRight ? 1.0 : -1.0;
    std::vector<RowEdge> edges;
    for (int32_t y = 0; y < frame.height; ++y) {
        const int32_t place = SteepestPlace(frame, y, sign);
        if (place >= 0) edges.push_back({static_cast<double>(y), place - 0.5});
    }
    EdgeLine line = FirstLine(edges, isBrightRight);
    for (int round = 0; round < kRounds; ++round) {
        std::vector<RowEdge> near;
        for (int32_t y = 0; y < frame.height; ++y) {
            double middle = 0.0;
            if (!FindMiddle(frame, y, line.At(y), sign, middle)) continue;
            if (std::fabs(middle - line.At(y)) <= kFarPixels * (round == 0 ? 2.0 : 1.0))
                near.push_back({static_cast<double>(y), middle});
        }
        if (near.size() * 2 < static_cast<size_t>(frame.height))
            ThrowNoEdge("fewer than half of the rows have one");
        line = FitLine(near, isBrightRight);
        edges = std::move(near);
    }
    double squares = 0.0;
    for (const RowEdge& edge : edges)
        squares += (edge.place - line.At(edge.row)) * (edge.place - line.At(edge.row));
    if (std::sqrt(squares / static_cast<double>(edges.size())) > kMostRoughness)
        ThrowNoEdge("its rows do not lie on a line");
    if (std::fabs(line.slope) * (frame.height - 1) < kLeastShift)
        throw CannotMeasure("the edge lies along the pixels", "turn it by about 5 degrees");
    return line;
}

}  // namespace vastrelline

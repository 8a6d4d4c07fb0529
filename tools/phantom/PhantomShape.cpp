// SPDX-License-Identifier: Apache-2.0
#include "phantom/PhantomShape.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstddef>
#include <limits>

namespace vastrelline {
namespace {

constexpr int kPiecesPerSpan = 6;
constexpr double kGridMm = 0.1;
constexpr size_t kSidesPerStretch = 8;

// The curve between b and c that has the slope of a-c at b and of b-d at c.
double CurveBetween(double a, double b, double c, double d, double t) {
    return 0.5 * (2.0 * b +
                  t * ((c - a) + t * ((2.0 * a - 5.0 * b + 4.0 * c - d) + t * (3.0 * b - a - 3.0 * c + d))));
}

double SquaredDistanceToSegment(PointMm p, PointMm a, PointMm b) {
    const double alongX = b.x - a.x;
    const double alongY = b.y - a.y;
    const double length = alongX * alongX + alongY * alongY;
    const double t =
        length > 0.0 ? std::clamp(((p.x - a.x) * alongX + (p.y - a.y) * alongY) / length, 0.0, 1.0) : 0.0;
    const double x = p.x - a.x - t * alongX;
    const double y = p.y - a.y - t * alongY;
    return x * x + y * y;
}

// A few neighbouring sides of an outline in the box around them. Most boxes are too far from a point to hold
// its nearest side, and are passed over whole.
struct Stretch {
    size_t first;  // its sides end at the points first to last - 1
    size_t last;
    double west;
    double east;
    double north;
    double south;
};

std::vector<Stretch> CutIntoStretches(const std::vector<PointMm>& outline) {
    std::vector<Stretch> stretches;
    for (size_t first = 0; first < outline.size(); first += kSidesPerStretch) {
        const PointMm before = outline[(first + outline.size() - 1) % outline.size()];
        Stretch stretch{first,    std::min(first + kSidesPerStretch, outline.size()),
                        before.x, before.x,
                        before.y, before.y};
        for (size_t i = first; i < stretch.last; ++i) {
            stretch.west = std::min(stretch.west, outline[i].x);
            stretch.east = std::max(stretch.east, outline[i].x);
            stretch.north = std::min(stretch.north, outline[i].y);
            stretch.south = std::max(stretch.south, outline[i].y);
        }
        stretches.push_back(stretch);
    }
    return stretches;
}

double SquaredDistanceToBox(PointMm p, const Stretch& box) {
    const double x = std::max({box.west - p.x, p.x - box.east, 0.0});
    const double y = std::max({box.north - p.y, p.y - box.south, 0.0});
    return x * x + y * y;
}

double DepthInside(const std::vector<PointMm>& outline, const std::vector<Stretch>& stretches, PointMm p) {
    double nearest = std::numeric_limits<double>::infinity();
    bool isInside = false;
    for (const Stretch& stretch : stretches) {
        const bool mayBeNearest = SquaredDistanceToBox(p, stretch) < nearest;
        const bool mayBeCrossed = stretch.north <= p.y && p.y <= stretch.south && p.x <= stretch.east;
        if (!mayBeNearest && !mayBeCrossed) continue;
        for (size_t i = stretch.first; i < stretch.last; ++i) {
            const PointMm a = outline[(i + outline.size() - 1) % outline.size()];
            const PointMm b = outline[i];
            nearest = std::min(nearest, SquaredDistanceToSegment(p, a, b));
            // A ray to the right enters or leaves at every side that it crosses.
            if ((a.y > p.y) != (b.y > p.y) && p.x < a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x))
                isInside = !isInside;
        }
    }
    const double distance = std::sqrt(nearest);
    return isInside ? distance : -distance;
}

}  // namespace

std::vector<PointMm> SmoothOutline(const std::vector<PointMm>& points) {
    std::vector<PointMm> outline;
    const size_t count = points.size();
    outline.reserve(count * kPiecesPerSpan);
    for (size_t i = 0; i < count; ++i) {
        const PointMm a = points[(i + count - 1) % count];
        const PointMm b = points[i];
        const PointMm c = points[(i + 1) % count];
        const PointMm d = points[(i + 2) % count];
        for (int piece = 0; piece < kPiecesPerSpan; ++piece) {
            const double t = static_cast<double>(piece) / kPiecesPerSpan;
            outline.push_back({CurveBetween(a.x, b.x, c.x, d.x, t), CurveBetween(a.y, b.y, c.y, d.y, t)});
        }
    }
    return outline;
}

DepthMap::DepthMap(const std::vector<PointMm>& outline) {
    assert(outline.size() >= 3);
    const auto [west, east] =
        std::minmax_element(outline.begin(), outline.end(), [](PointMm a, PointMm b) { return a.x < b.x; });
    const auto [north, south] =
        std::minmax_element(outline.begin(), outline.end(), [](PointMm a, PointMm b) { return a.y < b.y; });
    left_ = west->x - kReachMm;
    top_ = north->y - kReachMm;
    columns_ = static_cast<int32_t>((east->x + kReachMm - left_) / kGridMm) + 2;
    rows_ = static_cast<int32_t>((south->y + kReachMm - top_) / kGridMm) + 2;
    const std::vector<Stretch> stretches = CutIntoStretches(outline);
    depths_.reserve(static_cast<size_t>(columns_) * static_cast<size_t>(rows_));
    for (int32_t row = 0; row < rows_; ++row)
        for (int32_t column = 0; column < columns_; ++column)
            depths_.push_back(
                std::max(-kReachMm,
                         DepthInside(outline, stretches, {left_ + column * kGridMm, top_ + row * kGridMm})));
}

double DepthMap::At(double x, double y) const {
    const double u = (x - left_) / kGridMm;
    const double v = (y - top_) / kGridMm;
    if (!(u >= 0.0 && v >= 0.0 && u < columns_ - 1 && v < rows_ - 1)) return -kReachMm;
    const auto column = static_cast<size_t>(u);
    const auto row = static_cast<size_t>(v);
    const double across = u - static_cast<double>(column);
    const double down = v - static_cast<double>(row);
    const double* const upper = depths_.data() + row * static_cast<size_t>(columns_) + column;
    const double* const lower = upper + columns_;
    return (upper[0] * (1.0 - across) + upper[1] * across) * (1.0 - down) +
           (lower[0] * (1.0 - across) + lower[1] * across) * down;
}

double RayThroughBody(double depth, double roundingMm, double thickness) {
    if (depth <= 0.0) return 0.0;
    const double toFlat = 1.0 - std::min(depth / roundingMm, 1.0);
    return thickness * std::sqrt(1.0 - toFlat * toFlat);
}

}  // namespace vastrelline

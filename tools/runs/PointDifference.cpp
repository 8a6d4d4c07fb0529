// SPDX-License-Identifier: Apache-2.0
#include "runs/PointDifference.h"

#include <algorithm>

#include "frames/FrameDifference.h"

namespace vastrelline {
namespace {

std::optional<int32_t> PositionOf(const StagePoint& point) {
    return point.stage == nullptr ? std::nullopt : point.stage->place->position;
}

bool IsSamePoint(const StagePoint& first, const StagePoint& second) {
    return first.kind == second.kind && first.title == second.title &&
           PositionOf(first) == PositionOf(second);
}

PointDifference Named(const StagePoint& point) {
    PointDifference difference;
    difference.kind = point.kind;
    difference.title = point.title;
    difference.position = PositionOf(point);
    return difference;
}

PointDifference OneSided(const StagePoint& point) {
    PointDifference difference = Named(point);
    difference.isInBoth = false;
    return difference;
}

PointDifference Compare(const StagePoint& first, const StagePoint& second) {
    PointDifference difference = Named(first);
    difference.isShown = first.frame || second.frame;
    if (!difference.isShown) return difference;
    const bool isComparable = first.frame && second.frame && first.frame->width == second.frame->width &&
                              first.frame->height == second.frame->height;
    if (!isComparable) return OneSided(first);
    const FrameDifference pixels = FindDifference(*first.frame, *second.frame);
    difference.count = pixels.count;
    difference.largest = pixels.largest;
    return difference;
}

}  // namespace

std::vector<PointDifference> ComparePoints(const std::vector<StagePoint>& first,
                                           const std::vector<StagePoint>& second) {
    std::vector<PointDifference> differences;
    for (size_t i = 0; i < std::max(first.size(), second.size()); ++i) {
        const bool isInBoth = i < first.size() && i < second.size() && IsSamePoint(first[i], second[i]);
        if (!isInBoth) {
            differences.push_back(OneSided(i < first.size() ? first[i] : second[i]));
            break;
        }
        differences.push_back(Compare(first[i], second[i]));
    }
    return differences;
}

const PointDifference* FindFirstDifference(const std::vector<PointDifference>& points) {
    const auto found =
        std::find_if(points.begin(), points.end(), [](const auto& point) { return !point.IsSame(); });
    return found == points.end() ? nullptr : &*found;
}

}  // namespace vastrelline

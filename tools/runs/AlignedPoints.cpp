// SPDX-License-Identifier: Apache-2.0
#include "runs/AlignedPoints.h"

#include <algorithm>

#include "frames/FrameDifference.h"
#include "profile/StageAlignment.h"

namespace vastrelline {
namespace {

using Points = std::vector<const StagePoint*>;

// Numbers of stages are 0 and above.
int32_t KindOf(const StagePoint& point) {
    return point.kind == PointKind::Stage && point.stage != nullptr ? point.stage->place->stageNumber
                                                                    : -1 - static_cast<int32_t>(point.kind);
}

std::vector<int32_t> KindsOf(const Points& points) {
    std::vector<int32_t> kinds;
    kinds.reserve(points.size());
    for (const StagePoint* const point : points) kinds.push_back(KindOf(*point));
    return kinds;
}

std::optional<int32_t> PositionOf(const StagePoint& point) {
    return point.stage == nullptr ? std::nullopt : point.stage->place->position;
}

void Compare(AlignedPoint& aligned, const StagePoint& left, const StagePoint& right) {
    if (!left.frame && !right.frame) return;
    aligned.isShown = left.frame && right.frame && left.frame->width == right.frame->width &&
                      left.frame->height == right.frame->height;
    aligned.isDifferent = !aligned.isShown;
    if (!aligned.isShown) return;
    const FrameDifference pixels = FindDifference(*left.frame, *right.frame);
    aligned.differing = pixels.count;
    aligned.largest = pixels.largest;
    aligned.isDifferent = pixels.count > 0;
}

}  // namespace

std::vector<AlignedPoint> AlignPoints(const Points& left, const Points& right) {
    // Among stages of one kind those at the same position belong together.
    const auto likeness = [&](size_t i, size_t j) {
        return PositionOf(*left[i]) == PositionOf(*right[j]) ? size_t{1} : size_t{0};
    };
    std::vector<AlignedPoint> points;
    for (const AlignedStage& pair : AlignStages(KindsOf(left), KindsOf(right), likeness)) {
        AlignedPoint aligned;
        aligned.title = pair.first ? left[*pair.first]->title : right[*pair.second]->title;
        aligned.left = pair.first;
        aligned.right = pair.second;
        aligned.isMoved = pair.isMoved;
        if (pair.first && pair.second)
            Compare(aligned, *left[*pair.first], *right[*pair.second]);
        else
            aligned.isDifferent = true;
        points.push_back(std::move(aligned));
    }
    return points;
}

std::optional<size_t> FindFirstDifference(const std::vector<AlignedPoint>& points) {
    const auto found =
        std::find_if(points.begin(), points.end(), [](const auto& each) { return each.isDifferent; });
    if (found == points.end()) return std::nullopt;
    return static_cast<size_t>(found - points.begin());
}

}  // namespace vastrelline

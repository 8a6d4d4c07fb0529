// SPDX-License-Identifier: Apache-2.0
#include "runs/StagePoints.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "frames/FrameDifference.h"

namespace vastrelline {
namespace {

bool IsInversion(const RanStage& stage) { return stage.place->stage == nullptr; }

class PointList {
public:
    explicit PointList(const std::vector<RanStage>& stages) : stages_(stages) {}

    void Add(PointKind kind, Frame frame, std::string dump) {
        points_.push_back(
            {kind, std::string(PointName(kind)), nullptr, std::move(dump), std::move(frame), {}, {}});
    }

    // The inversion of the fixed chain is a stage whose frame has a dump of its own kind.
    void AddInverted(StageFrame frame) {
        const auto stage = std::find_if(stages_.begin(), stages_.end(), IsInversion);
        Add(PointKind::Inverted, std::move(frame.frame), std::move(frame.file));
        if (stage == stages_.end()) return;
        points_.back().stage = &*stage;
        hasInversion_ = true;
    }

    void AddStage(StageFrame frame) {
        AddWithoutFrame(frame.stage);
        const RanStage& stage = stages_[frame.stage];
        points_.push_back(
            {PointKind::Stage, stage.title, &stage, std::move(frame.file), std::move(frame.frame), {}, {}});
        next_ = frame.stage + 1;
    }

    // Stages before `end` that have no point yet.
    void AddWithoutFrame(size_t end) {
        for (; next_ < end; ++next_) {
            const RanStage& stage = stages_[next_];
            if (hasInversion_ && IsInversion(stage)) continue;
            points_.push_back({PointKind::Stage, stage.title, &stage, {}, std::nullopt, {}, {}});
        }
    }

    std::vector<StagePoint> Take() { return std::move(points_); }

private:
    const std::vector<RanStage>& stages_;
    std::vector<StagePoint> points_;
    size_t next_ = 0;
    bool hasInversion_ = false;
};

void Measure(std::vector<StagePoint>& points) {
    const Frame* before = nullptr;
    for (StagePoint& point : points) {
        if (!point.frame) continue;
        const Frame& frame = *point.frame;
        point.statistics = MeasureFrame(frame);
        if (before != nullptr && before->width == frame.width && before->height == frame.height)
            point.changed = static_cast<double>(FindDifference(*before, frame).count) /
                            static_cast<double>(frame.pixels.size());
        before = &frame;
    }
}

}  // namespace

std::string_view PointName(PointKind kind) {
    switch (kind) {
        case PointKind::Frame:
            return "frame";
        case PointKind::Input:
            return "input";
        case PointKind::Inverted:
            return "inverted";
        case PointKind::Stage:
            return "stage";
        case PointKind::Result:
            return "result";
    }
    return {};
}

std::vector<StagePoint> ListStagePoints(const Frame& read, const std::optional<Frame>& result,
                                        std::vector<StageFrame> frames, const std::vector<RanStage>& stages) {
    PointList list(stages);
    const bool isInputRead = !frames.empty() && frames.front().kind == StageFrameKind::Input &&
                             frames.front().frame.pixels == read.pixels;
    if (!isInputRead) list.Add(PointKind::Frame, read, {});
    std::optional<StageFrame> last;
    for (StageFrame& frame : frames) {
        switch (frame.kind) {
            case StageFrameKind::Input:
                list.Add(PointKind::Input, std::move(frame.frame), std::move(frame.file));
                break;
            case StageFrameKind::Inverted:
                list.AddInverted(std::move(frame));
                break;
            case StageFrameKind::AfterStage:
                list.AddStage(std::move(frame));
                break;
            case StageFrameKind::Result:
                last = std::move(frame);
                break;
        }
    }
    list.AddWithoutFrame(stages.size());
    if (last)
        list.Add(PointKind::Result, result ? *result : std::move(last->frame), std::move(last->file));
    else if (result)
        list.Add(PointKind::Result, *result, {});
    std::vector<StagePoint> points = list.Take();
    Measure(points);
    return points;
}

}  // namespace vastrelline

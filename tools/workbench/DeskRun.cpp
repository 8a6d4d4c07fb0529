// SPDX-License-Identifier: Apache-2.0
#include "workbench/DeskRun.h"

#include <algorithm>
#include <exception>
#include <new>
#include <optional>
#include <utility>
#include <vector>

#include "files/PrivateFolder.h"
#include "files/Sha256.h"
#include "formats/BmpFormat.h"
#include "formats/RawFormat.h"
#include "frames/FrameStatistics.h"
#include "messages/ToolError.h"
#include "runs/StageCurves.h"
#include "runs/StageFrames.h"
#include "workbench/DeskEdits.h"

namespace vastrelline {
namespace {

using Points = std::vector<std::shared_ptr<const KeptPoint>>;

void TestCode(const FrameRun& run, const ExportTraits& traits) {
    if (run.code == 0) return;
    throw ProcessingError({}, std::string(traits.name) + " returned " + std::to_string(run.code) + " (" +
                                  std::string(ExportCodeText(run.code)) + ")");
}

class TwoRuns {
public:
    TwoRuns(const DeskRunInput& input, const DeskState& desk, const ExportCaller& callExport,
            const std::stop_token& stop)
        : input_(input),
          desk_(desk),
          traits_(TraitsOf(input.call.kind)),
          callExport_(callExport),
          stop_(stop) {}

    std::shared_ptr<const KeptRun::Basis> RunForPicture() {
        ProfileFile file(input_.profilePath,
                         SwitchOff(input_.profilePath, desk_.bytes, desk_.section, desk_.offKeys));
        if (const std::optional<ToolError> error = WhyMeaningless(file, desk_.section))
            throw ToolError(*error);
        auto basis = std::make_shared<KeptRun::Basis>(KeptRun::Basis{std::move(file), {}, {}, {}});
        basis->plan = MakeSectionPlan(basis->file, desk_.section, traits_.kind);
        basis->run = Run(*basis, WithoutDumps());
        if (!traits_.takesBitmapPath) basis->hash = Sha256Of(EncodeRaw(Result(*basis)));
        basis_ = basis;
        return basis_;
    }

    // After RunForPicture.
    Frame TakeResult() const {
        if (!traits_.takesBitmapPath) return Result(*basis_);
        const Points points = RunForStages();
        const auto last = std::find_if(points.rbegin(), points.rend(),
                                       [](const auto& each) { return each->point.frame.has_value(); });
        if (last == points.rend()) throw ProcessingError({}, "the run shows no frame");
        return *(*last)->point.frame;
    }

    // Before the stages are known.
    Points FirstPoints() const {
        if (traits_.takesBitmapPath) return {};
        Points points;
        Add(points, {PointKind::Frame, "frame", nullptr, {}, *input_.frame, MeasureFrame(*input_.frame), {}});
        Frame result = Result(*basis_);
        FrameStatistics statistics = MeasureFrame(result);
        Add(points, {PointKind::Result, "result", nullptr, {}, std::move(result), statistics, {}});
        return points;
    }

    Points RunForStages() const {
        const PrivateFolder dumps;
        const std::string folder = dumps.Path().string();
        const FrameRun dumped = Run(*basis_, DumpInto(folder));
        // A dump never changes a pixel: frames of another run than the one that was timed would lie.
        if (dumped.call.output != basis_->run.call.output)
            throw ProcessingError({}, "two runs on the frame gave different results");
        const std::vector<RanStage>& stages = basis_->run.stages;
        std::vector<StageFrame> frames =
            ReadStageFrames(folder, {input_.frame->width, input_.frame->height}, stages);
        std::vector<std::optional<std::vector<CurvePoint>>> curves(stages.size());
        for (const StageFrame& step : frames)
            if (step.kind == StageFrameKind::AfterStage)
                curves[step.stage] = FindStageCurve(folder, stages, step);
        Points points;
        for (StagePoint& point : ListStagePoints(
                 *input_.frame, traits_.takesBitmapPath ? std::nullopt : std::optional(Result(*basis_)),
                 std::move(frames), stages)) {
            std::vector<CurvePoint> curve;
            if (point.stage != nullptr)
                curve = curves[static_cast<size_t>(point.stage - stages.data())].value_or(
                    std::vector<CurvePoint>());
            Add(points, std::move(point), std::move(curve));
        }
        return points;
    }

private:
    static void Add(Points& points, StagePoint point, std::vector<CurvePoint> curve = {}) {
        points.push_back(std::make_shared<KeptPoint>(KeptPoint{std::move(point), std::move(curve)}));
    }

    Frame Result(const KeptRun::Basis& basis) const {
        return {input_.frame->width, input_.frame->height, basis.run.call.output};
    }

    FrameRun Run(const KeptRun::Basis& basis, const std::vector<KeyEdit>& edits) const {
        const PrivateFolder bitmaps;
        ExportRequest call = input_.call;
        call.frame = *input_.frame;
        if (traits_.takesBitmapPath) call.bitmapPath = bitmaps.Inside("picture.bmp");
        call.onWait = [this] {
            if (stop_.stop_requested()) throw CancelledError();
        };
        FrameRun run =
            RunFrame(basis.file, basis.plan, ProfileUse::PrivateCopy, edits, std::move(call), callExport_);
        run.call.onWait = nullptr;  // it is of this call, and the run outlives it
        TestCode(run, traits_);
        return run;
    }

    const DeskRunInput& input_;
    const DeskState& desk_;
    const ExportTraits& traits_;
    const ExportCaller& callExport_;
    const std::stop_token& stop_;
    std::shared_ptr<const KeptRun::Basis> basis_;
};

}  // namespace

Frame RunDeskForResult(const DeskState& desk, const DeskRunInput& input, const ExportCaller& callExport,
                       const std::stop_token& stop) {
    TwoRuns runs(input, desk, callExport, stop);
    runs.RunForPicture();
    return runs.TakeResult();
}

void RunDesk(KeptRun run, const DeskInputMaker& makeInput, const ExportCaller& callExport,
             const std::stop_token& stop, const std::function<void(KeptRun)>& publish) {
    const auto fail = [&](const ToolError& error) {
        run.state = RunState::Failed;
        run.error = error;
        publish(run);
    };
    try {
        const DeskState desk = run.desk;
        const DeskRunInput input = makeInput(desk);
        TwoRuns runs(input, desk, callExport, stop);
        run.basis = runs.RunForPicture();
        run.points = runs.FirstPoints();
        run.state = RunState::Picture;
        publish(run);
        run.points = runs.RunForStages();
        run.state = RunState::Complete;
        publish(run);
    } catch (const CancelledError&) {
        run.state = RunState::Ended;
        publish(run);
    } catch (const ToolError& error) {
        fail(error);
    } catch (const std::bad_alloc&) {
        fail(ProcessingError({}, "there is not enough memory"));
    } catch (const std::exception& error) {
        fail(ProcessingError({}, error.what()));
    }
}

}  // namespace vastrelline

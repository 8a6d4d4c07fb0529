// SPDX-License-Identifier: Apache-2.0
#include "commands/StripRun.h"

#include <string>
#include <utility>

#include "files/PrivateFolder.h"
#include "formats/PngFormat.h"
#include "frames/GreyWindow.h"
#include "messages/ToolError.h"
#include "pictures/StripPicture.h"
#include "platform/OwnProcess.h"
#include "runs/StageFrames.h"

namespace vastrelline {
namespace {

Canvas Render(const Frame& frame, GreyWindow window) {
    return {frame.width, frame.height, RenderThroughWindow(frame, window)};
}

CaptionedPicture DrawStep(const StageFrame& step, const std::vector<RanStage>& stages, GreyWindow window) {
    Canvas picture = Render(step.frame, window);
    switch (step.kind) {
        case StageFrameKind::Input:
            return {"input", "", std::move(picture)};
        case StageFrameKind::Inverted:
            return {"inverted", "", std::move(picture)};
        case StageFrameKind::Result:
            return {"result", "", std::move(picture)};
        case StageFrameKind::AfterStage:
            break;
    }
    const RanStage& stage = stages[step.stage];
    const std::string position = stage.place->position ? std::to_string(*stage.place->position) + " " : "";
    return {position + stage.title, DescribeTime(stage), std::move(picture)};
}

// What the host gets; an export that gives a bitmap only keeps its frame, whose last dump is the same.
Frame LastFrame(const FrameRun& first, const std::vector<StageFrame>& frames) {
    if (first.call.bitmapPath.empty() || frames.empty())
        return {first.call.frame.width, first.call.frame.height, first.call.output};
    return frames.back().frame;
}

}  // namespace

std::vector<uint8_t> MakeStrip(const ProfileFile& file, const SectionPlan& plan, const FrameRun& first,
                               const Frame& frame, int32_t topLevel, const ExportCaller& callExport) {
    const PrivateFolder folder;
    ExportRequest call = first.call;
    call.frame = frame;
    if (!call.bitmapPath.empty()) call.bitmapPath = folder.Inside("picture.bmp");
    const PrivateFolder dumps;
    const FrameRun second = RunFrame(file, plan, ProfileUse::PrivateCopy, DumpInto(dumps.Path().string()),
                                     std::move(call), callExport);
    if (second.code != first.code)
        throw ProcessingError({}, "the run with dumps returned " + std::to_string(second.code));

    const std::vector<StageFrame> frames =
        ReadStageFrames(dumps.Path().string(), {frame.width, frame.height}, first.stages);
    if (frames.empty())
        throw OutputError(dumps.Path().string(),
                          "has no dumps of the run; the library cuts the names of long folders",
                          kTemporaryFolderHint);
    const GreyWindow window{0, topLevel};
    std::vector<CaptionedPicture> steps;
    for (const StageFrame& step : frames)
        if (step.kind != StageFrameKind::Result) steps.push_back(DrawStep(step, first.stages, window));
    const Canvas strip = DrawStrip({"before", "", Render(frame, window)},
                                   {"after", "", Render(LastFrame(first, frames), window)}, steps);
    return EncodePng8(strip.Levels(), strip.Width(), strip.Height());
}

}  // namespace vastrelline

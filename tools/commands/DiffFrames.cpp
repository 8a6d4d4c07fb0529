// SPDX-License-Identifier: Apache-2.0
#include "commands/DiffFrames.h"

#include <algorithm>
#include <iomanip>
#include <nlohmann/json.hpp>
#include <sstream>
#include <utility>

#include "files/PrivateFolder.h"
#include "messages/Messages.h"
#include "messages/ToolError.h"
#include "runs/FrameRun.h"

namespace vastrelline {

RunFrames RunForFrames(const ProfileFile& file, const SectionPlan& plan, const ExportTraits& traits,
                       const Frame& frame, const ExportCaller& callExport) {
    const PrivateFolder folder;
    ExportRequest call;
    call.kind = traits.kind;
    call.frame = frame;
    if (traits.takesBitmapPath) call.bitmapPath = folder.Inside("picture.bmp");
    const PrivateFolder dumps;
    FrameRun run = RunFrame(file, plan, ProfileUse::PrivateCopy, DumpInto(dumps.Path().string()),
                            std::move(call), callExport);
    if (run.code != 0)
        throw ProcessingError(file.Path(), "section '" + plan.section + "': " + std::string(traits.name) +
                                               " returned " + std::to_string(run.code) + " (" +
                                               std::string(ExportCodeText(run.code)) + ")");
    RunFrames frames{std::move(run.stages), {}};
    frames.frames = ReadStageFrames(dumps.Path().string(), {frame.width, frame.height}, frames.stages);
    return frames;
}

std::string FormatEffects(const std::string& framePath, const std::vector<FrameEffect>& effects) {
    constexpr double kPercent = 100.0;
    size_t width = 6;
    for (const FrameEffect& effect : effects) width = std::max(width, effect.title.size());
    std::ostringstream text;
    text << OneLine(framePath)
         << ", after each stage: pixels that differ, mean and largest difference in levels\n"
         << std::fixed << std::setprecision(1);
    for (const FrameEffect& effect : effects)
        text << "  " << std::left << std::setw(static_cast<int>(width)) << effect.title << std::right
             << std::setw(8) << kPercent * effect.changedShare << " %" << std::setw(9)
             << effect.meanDifference << std::setw(7) << effect.largest << '\n';
    return text.str();
}

nlohmann::ordered_json EffectsToJson(const std::vector<FrameEffect>& effects) {
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    for (const FrameEffect& effect : effects)
        array.push_back({{"title", effect.title},
                         {"changedShare", effect.changedShare},
                         {"meanDifference", effect.meanDifference},
                         {"largest", effect.largest}});
    return array;
}

}  // namespace vastrelline

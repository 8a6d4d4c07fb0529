// SPDX-License-Identifier: Apache-2.0
#include "commands/InfoCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>

#include "commands/FrameInfo.h"
#include "commands/JsonObject.h"
#include "commands/SizeOption.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

constexpr int kSensorBits = 12;

Json ToJson(const FrameInfo& info) {
    const FrameStatistics& levels = info.levels;
    Json percentiles = Json::object();
    for (size_t i = 0; i < kPercentiles.size(); ++i)
        percentiles[std::to_string(kPercentiles[i])] = levels.percentiles[i];
    Json corners = Json::array();
    for (size_t i = 0; i < kCorners.size(); ++i) {
        const FlatCorner& corner = info.corners[i];
        if (corner.width == 0) continue;
        corners.push_back({{"corner", CornerName(kCorners[i])},
                           {"width", corner.width},
                           {"height", corner.height},
                           {"level", corner.level}});
    }
    const double pixels = static_cast<double>(PixelCount(info.size.width, info.size.height));
    return {{"file", info.path},
            {"format", FileKindEnding(info.kind)},
            {"width", info.size.width},
            {"height", info.size.height},
            {"bits", info.sourceBits},
            {"bitsUsed", levels.bitsUsed},
            {"emptyLowBits", levels.emptyBits},
            {"fits12Bits", levels.bitsUsed <= kSensorBits},
            {"minimum", levels.least},
            {"maximum", levels.greatest},
            {"mean", levels.mean},
            {"levels", levels.levels},
            {"percentiles", percentiles},
            {"shareAtZero", static_cast<double>(levels.atZero) / pixels},
            {"shareAtMaximum", static_cast<double>(levels.atGreatest) / pixels},
            {"flatCorners", corners},
            {"notes", info.notes},
            {"advice", info.advice},
            {"next", info.next}};
}

Json ToJson(const std::string& path, const ToolError& error) {
    return {{"file", path},
            {"error", {{"where", error.Where()}, {"what", error.What()}, {"remedy", error.Remedy()}}}};
}

}  // namespace

std::string_view InfoCommand::Examples() const {
    return "  vastrelline info tooth_1300x1668.raw\n"
           "  vastrelline info frame.raw --size 1300x1668 --json\n"
           "  vastrelline info edge.png --measure edge --pitch 0.02\n";
}

std::string_view InfoCommand::Notes() const {
    return "Of several frames those that can be read are told; the exit code is that of the first one that "
           "cannot.\n"
           "A percentile is the level that so large a share of the pixels does not exceed. A flat corner is "
           "one\n"
           "of a single level, as the rounded corners of a sensor are. 'vastrelline phantom' makes frames "
           "to\n"
           "measure.\n";
}

void InfoCommand::AddOptions(CLI::App& command) {
    command.add_option("FRAME", frames_, "Frames: .raw, .pgm, .png, .tif or .bmp; - is standard input")
        ->required()
        ->type_name("");
    AddSizeOption(command, size_, "Size of the raw frames; without it the sizes in their names");
    AddMeasureOptions(command, measure_);
}

ExitCode InfoCommand::Execute(CommandContext& context) {
    if (std::count(frames_.begin(), frames_.end(), kStandardInput) > 1)
        throw UsageError("standard input can be one frame only");
    TestMeasureOptions(measure_);
    ExitCode code = ExitCode::Well;
    Json frames = Json::array();
    bool isFirst = true;
    for (const std::string& path : frames_) {
        try {
            const LoadedFrame loaded = LoadFrameFile(path, {ParseFrameSize(size_), std::nullopt});
            const FrameInfo info = DescribeLoadedFrame(path, loaded);
            std::optional<FrameMeasure> measure;
            if (!measure_.kind.empty()) measure = MeasureLoadedFrame(path, loaded.frame, measure_);
            if (context.wantsJson) {
                frames.push_back(ToJson(info));
                if (measure) frames.back()["measure"] = measure->json;
            } else {
                context.report << (isFirst ? "" : "\n") << FormatFrameInfo(info);
                if (measure)
                    for (const std::string& line : measure->lines)
                        context.report << "  measured    " << line << '\n';
            }
            isFirst = false;
        } catch (const ToolError& error) {
            if (frames_.size() == 1) throw;
            context.messages.Fail(error.what());
            frames.push_back(ToJson(path, error));
            if (code == ExitCode::Well) code = error.Code();
        }
    }
    if (context.wantsJson) PrintObject(context, code, {{"frames", frames}});
    return code;
}

}  // namespace vastrelline

#include "commands/CompareCommand.h"

#include <CLI/CLI.hpp>
#include <iomanip>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "commands/FrameNotes.h"
#include "commands/JsonObject.h"
#include "commands/SizeOption.h"
#include "formats/FrameFile.h"
#include "frames/FrameDifference.h"
#include "frames/FrameSize.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

constexpr double kPercent = 100.0;

Frame Load(const std::string& path, const std::optional<FrameSize>& size, Messages& messages) {
    LoadedFrame loaded = LoadFrameFile(path, {size, std::nullopt});
    ShowFrameNotes(path, loaded, messages);
    return std::move(loaded.frame);
}

Json ToJson(const FrameDifference& difference) {
    Json places = Json::array();
    for (const PixelDifference& place : difference.firstOnes)
        places.push_back({{"x", place.x}, {"y", place.y}, {"first", place.first}, {"second", place.second}});
    return {{"count", difference.count}, {"largest", difference.largest}, {"firstPlaces", places}};
}

ExitCode ReportAsJson(const Frame& first, const Frame& second, const CommandContext& context) {
    const bool isSameSize = first.width == second.width && first.height == second.height;
    const FrameDifference difference = isSameSize ? FindDifference(first, second) : FrameDifference{};
    const bool isEqual = isSameSize && difference.count == 0;
    const ExitCode code = isEqual ? ExitCode::Well : ExitCode::Findings;
    Json object = {{"equal", isEqual},
                   {"firstSize", {first.width, first.height}},
                   {"secondSize", {second.width, second.height}},
                   {"pixels", nullptr}};  // frames of different sizes are not compared pixel by pixel
    if (isSameSize) object["pixels"] = ToJson(difference);
    PrintObject(context, code, object);
    return code;
}

}  // namespace

std::string_view CompareCommand::Examples() const {
    return "  vastrelline compare before.raw after.raw --size 1300x1668\n"
           "  vastrelline compare before_1300x1668.raw after.png\n"
           "  vastrelline compare a.pgm b.pgm && echo the same\n";
}

std::string_view CompareCommand::Notes() const {
    return "Prints 'equal', or how many pixels differ, the largest difference and the first ten places.\n"
           "Exit code: 0 equal, 1 different, 2 wrong use, 3 a frame that cannot be read.\n";
}

void CompareCommand::AddOptions(CLI::App& command) {
    command.add_option("A", first_, "A frame: .raw, .pgm, .png, .tif or .bmp; - is standard input")
        ->required()
        ->type_name("");
    command.add_option("B", second_, "Another one, of any kind of file")->required()->type_name("");
    AddSizeOption(command, size_, "Size of both frames; needed for raw frames without it in the name");
}

ExitCode CompareCommand::Execute(CommandContext& context) {
    std::ostream& report = context.report;
    const std::optional<FrameSize> size = ParseFrameSize(size_);
    if (first_ == kStandardInput && second_ == kStandardInput)
        throw UsageError("standard input can be one frame only");
    const Frame first = Load(first_, size, context.messages);
    const Frame second = Load(second_, size, context.messages);
    const FrameSize firstSize{first.width, first.height};
    const FrameSize secondSize{second.width, second.height};
    if (context.wantsJson) return ReportAsJson(first, second, context);
    if (firstSize != secondSize) {
        report << "different: the sizes are " << FormatFrameSize(firstSize) << " and "
               << FormatFrameSize(secondSize) << '\n';
        return ExitCode::Findings;
    }
    const FrameDifference difference = FindDifference(first, second);
    if (difference.count == 0) {
        report << "equal: " << FormatFrameSize(firstSize) << " pixels\n";
        return ExitCode::Well;
    }
    const double percent =
        kPercent * static_cast<double>(difference.count) / static_cast<double>(first.pixels.size());
    report << "different: " << difference.count << " of " << first.pixels.size() << " pixels (" << std::fixed
           << std::setprecision(4) << percent << " %), largest difference " << difference.largest << '\n';
    report << "first places (x, y): first frame, second frame\n";
    for (const PixelDifference& place : difference.firstOnes)
        report << "  (" << place.x << ", " << place.y << "): " << place.first << ", " << place.second << '\n';
    return ExitCode::Findings;
}

}  // namespace vastrelline

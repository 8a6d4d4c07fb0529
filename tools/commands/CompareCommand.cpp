#include "commands/CompareCommand.h"

#include <CLI/CLI.hpp>
#include <iomanip>
#include <optional>

#include "commands/SizeOption.h"
#include "formats/FrameFile.h"
#include "frames/FrameDifference.h"
#include "frames/FrameSize.h"

namespace vastrelline {
namespace {

constexpr int kEqual = 0;
constexpr int kDifferent = 1;
constexpr double kPercent = 100.0;

}  // namespace

CLI::App* AddCompareCommand(CLI::App& app, CompareOptions& options) {
    CLI::App* const compare = app.add_subcommand("compare", "Tell whether two frames are equal");
    compare->add_option("A", options.first, "A frame: .raw, .pgm or .png")->required()->type_name("");
    compare->add_option("B", options.second, "Another one, of any of these kinds")->required()->type_name("");
    AddSizeOption(*compare, options.size,
                  "Size of both frames; needed for raw frames without it in the name");
    compare->footer(
        "Prints 'equal', or how many pixels differ, the largest difference and the first ten places.\n"
        "Exit code: 0 equal, 1 different, 2 wrong use; a frame that cannot be read gives 1 and an error.\n"
        "\n"
        "Example:\n"
        "  vastrelline compare before.raw after.raw --size 1300x1668\n");
    return compare;
}

int ExecuteCompare(const CompareOptions& options, std::ostream& report) {
    const std::optional<FrameSize> size = ParseFrameSize(options.size);
    const Frame first = ReadFrameFile(options.first, size);
    const Frame second = ReadFrameFile(options.second, size);
    const FrameSize firstSize{first.width, first.height};
    const FrameSize secondSize{second.width, second.height};
    if (firstSize != secondSize) {
        report << "different: the sizes are " << FormatFrameSize(firstSize) << " and "
               << FormatFrameSize(secondSize) << '\n';
        return kDifferent;
    }
    const FrameDifference difference = FindDifference(first, second);
    if (difference.count == 0) {
        report << "equal: " << FormatFrameSize(firstSize) << " pixels\n";
        return kEqual;
    }
    const double percent =
        kPercent * static_cast<double>(difference.count) / static_cast<double>(first.pixels.size());
    report << "different: " << difference.count << " of " << first.pixels.size() << " pixels (" << std::fixed
           << std::setprecision(4) << percent << " %), largest difference " << difference.largest << '\n';
    report << "first places (x, y): first frame, second frame\n";
    for (const PixelDifference& place : difference.firstOnes)
        report << "  (" << place.x << ", " << place.y << "): " << place.first << ", " << place.second << '\n';
    return kDifferent;
}

}  // namespace vastrelline

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

constexpr double kPercent = 100.0;

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
    command.add_option("A", first_, "A frame")->required()->type_name("");
    command.add_option("B", second_, "Another one, of any kind of file")->required()->type_name("");
    AddSizeOption(command, size_, "Size of both frames; needed for raw frames without it in the name");
}

ExitCode CompareCommand::Execute(CommandContext& context) {
    std::ostream& report = context.report;
    const std::optional<FrameSize> size = ParseFrameSize(size_);
    const Frame first = ReadFrameFile(first_, size);
    const Frame second = ReadFrameFile(second_, size);
    const FrameSize firstSize{first.width, first.height};
    const FrameSize secondSize{second.width, second.height};
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

#include "commands/PhantomCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>

#include "commands/SizeOption.h"
#include "files/FileKind.h"
#include "files/OutputFile.h"
#include "formats/PictureFile.h"
#include "frames/FrameSize.h"
#include "frames/GreyWindow.h"
#include "messages/ToolError.h"
#include "phantom/PhantomFrame.h"

namespace vastrelline {
namespace {

// Above this the largest arrays of the making come near a gigabyte.
constexpr int64_t kMaxPixels = int64_t{1} << 25;
constexpr double kMaxDose = 100.0;

void TestOptions(const PhantomOptions& options, FrameSize size) {
    const FileKind kind = FileKindOf(options.frame);
    if (kind == FileKind::Bmp || kind == FileKind::Other)
        throw UsageError("'" + options.frame + "' should end in .raw, .pgm, .png or .tif");
    if (int64_t{size.width} * size.height > kMaxPixels)
        throw UsageError("a phantom of " + FormatFrameSize(size) + " is too large");
    if (!(options.dose > 0.0 && options.dose <= kMaxDose))  // so that "not a number" is refused, too
        throw UsageError("--dose should be above 0 and at most 100");
    if (!options.window.empty() && kind != FileKind::Png)
        throw UsageError("--window is for .png pictures only");
    if (!options.window.empty() && !ParseGreyWindow(options.window))
        throw UsageError("'" + options.window + "' is no window; write it as in 0:4095");
}

}  // namespace

std::string_view PhantomCommand::Examples() const {
    return "  vastrelline phantom --out tooth_1300x1668.raw\n"
           "  vastrelline phantom --out dark.pgm --dose 0.12 --seed 7\n"
           "  vastrelline phantom --out look.png --window 0:4095\n";
}

std::string_view PhantomCommand::Notes() const {
    return "The phantom shows lower teeth in their jaw as a sensor of 26 x 33 mm sees them, in levels 0 to "
           "4095,\n"
           "with the sensor's two rounded corners at the bottom at 0. The same options give the same frame "
           "on\n"
           "every machine.\n";
}

void PhantomCommand::AddOptions(CLI::App& command) {
    command
        .add_option("--out", options_.frame,
                    "Where the frame goes: .raw, .pgm, .png or .tif, all with 16-bit levels")
        ->required()
        ->type_name("FRAME");
    AddSizeOption(command, options_.size, "Size of the frame")->capture_default_str();
    command.add_option("--dose", options_.dose, "Exposure; 1 is a good one, 0.12 is far too little")
        ->capture_default_str()
        ->type_name("FACTOR");
    command.add_option("--seed", options_.seed, "Another seed gives another jaw and other noise")
        ->check(
            [](const std::string& value) {
                return value.starts_with('-') ? "'" + value + "' is below 0" : std::string();
            },
            "", "")
        ->capture_default_str()
        ->type_name("NUMBER");
    command
        .add_option("--window", options_.window,
                    "Make the .png one of 8 bits to look at: levels that become black and white")
        ->type_name("LOW:HIGH");
    command.add_flag("--force", options_.mayReplace, "Replace the frame if it exists");
}

ExitCode PhantomCommand::Execute(CommandContext& context) {
    const PhantomOptions& options = options_;
    const FrameSize size = ParseFrameSize(options.size).value_or(FrameSize{});
    TestOptions(options, size);
    { const OutputFile trial(options.frame, options.mayReplace); }  // before the work
    const Frame frame = MakePhantomFrame(size, options.dose, options.seed);
    PictureStyle style;
    style.window = ParseGreyWindow(options.window);
    style.topLevel = kPhantomTopLevel;
    style.mayReplace = options.mayReplace;
    WritePictureFile(options.frame, frame, style);

    const auto [least, greatest] = std::minmax_element(frame.pixels.begin(), frame.pixels.end());
    context.report << "phantom  " << FormatFrameSize(size) << " pixels, dose " << options.dose << ", seed "
                   << options.seed << "\nlevels   " << *least << " to " << *greatest << "\nframe    "
                   << options.frame << '\n';
    return ExitCode::Well;
}

}  // namespace vastrelline

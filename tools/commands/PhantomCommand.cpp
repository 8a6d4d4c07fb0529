// SPDX-License-Identifier: Apache-2.0
#include "commands/PhantomCommand.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>

#include "commands/JsonObject.h"
#include "commands/PhantomMaking.h"
#include "files/OutputFile.h"
#include "formats/PictureFile.h"
#include "frames/FrameSize.h"
#include "frames/GreyWindow.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

void WriteTruth(const Json& truth, OutputFile& file) {
    const std::string text = truth.dump(2) + "\n";
    file.Write({text.begin(), text.end()});
    file.Publish();
}

}  // namespace

std::string_view PhantomCommand::Examples() const {
    return "  vastrelline phantom --out tooth_1300x1668.raw\n"
           "  vastrelline phantom edge --out edge.png --angle 5 --blur 0.7 --noise 8 --json\n"
           "  vastrelline phantom lines --out lines.png --pitch 0.02 --frequencies 2.5,5,10,15\n";
}

std::string_view PhantomCommand::Notes() const {
    return "teeth shows lower teeth in their jaw as a sensor of 26 x 33 mm sees them, in levels 0 to 4095, "
           "with\n"
           "the sensor's two rounded corners at the bottom at 0. wedge has steps of known levels, edge a "
           "slanted\n"
           "edge of known blur, lines sine-shaped line pairs of known contrast, all with known noise: 'info\n"
           "--measure KIND' measures them. The same options give the same frame on every machine.\n";
}

void PhantomCommand::AddOptions(CLI::App& command) { AddPhantomOptions(command, options_); }

ExitCode PhantomCommand::Execute(CommandContext& context) {
    const PhantomOptions& options = options_;
    TestPhantomOptions(options);
    { const OutputFile trial(options.frame, options.mayReplace); }  // before the work
    std::optional<OutputFile> truthFile;
    if (!options.truth.empty()) truthFile.emplace(options.truth, options.mayReplace);
    const MadePhantom made = MakePhantom(options);
    PictureStyle style;
    style.window = ParseGreyWindow(options.window);
    style.topLevel = made.topLevel;
    style.mayReplace = options.mayReplace;
    WritePictureFile(options.frame, made.frame, style);
    if (truthFile) WriteTruth(made.truth, *truthFile);

    const auto [least, greatest] = std::minmax_element(made.frame.pixels.begin(), made.frame.pixels.end());
    if (context.wantsJson) {
        Json fields = {{"frame", options.frame}, {"least", *least}, {"greatest", *greatest}};
        fields.update(made.truth);
        PrintObject(context, ExitCode::Well, fields);
        return ExitCode::Well;
    }
    context.report << "phantom  " << options.kind << ", "
                   << FormatFrameSize({made.frame.width, made.frame.height}) << " pixels, " << made.words
                   << ", seed " << options.seed << "\nlevels   " << *least << " to " << *greatest
                   << "\nframe    " << options.frame << '\n';
    if (truthFile) context.report << "truth    " << options.truth << '\n';
    return ExitCode::Well;
}

}  // namespace vastrelline

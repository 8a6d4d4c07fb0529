// SPDX-License-Identifier: Apache-2.0
#include "commands/PhantomOptions.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <string_view>

#include "commands/SizeOption.h"
#include "files/FileKind.h"
#include "frames/GreyWindow.h"
#include "messages/Suggestion.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

// An option that some kinds have only.
struct KindOption {
    const char* name;
    bool isGiven;
    std::vector<std::string_view> kinds;
};

std::vector<KindOption> KindOptionsOf(const PhantomOptions& options) {
    const std::vector<std::string_view> kKnown{"wedge", "edge", "lines"};
    return {{"--dose", options.dose.has_value(), {"teeth"}},
            {"--bits", options.bits.has_value(), kKnown},
            {"--low", options.low.has_value(), kKnown},
            {"--high", options.high.has_value(), kKnown},
            {"--noise", !options.noise.empty(), kKnown},
            {"--steps", options.steps.has_value(), {"wedge"}},
            {"--angle", options.angle.has_value(), {"edge"}},
            {"--blur", options.blur.has_value(), {"edge", "lines"}},
            {"--frequencies", !options.frequencies.empty(), {"lines"}},
            {"--pitch", options.pitch.has_value(), {"edge", "lines"}}};
}

std::string Enumerate(const std::vector<std::string_view>& words) {
    std::string text(words.front());
    for (size_t i = 1; i < words.size(); ++i)
        text += (i + 1 == words.size() ? " and " : ", ") + std::string(words[i]);
    return text;
}

// What is wrong with a kind; nothing if it is one.
std::string TestKind(const std::string& word) {
    const std::vector<std::string> kKinds{"teeth", "wedge", "edge", "lines"};
    if (std::find(kKinds.begin(), kKinds.end(), word) != kKinds.end()) return {};
    return "there is no phantom '" + word + "'; " +
           DidYouMean(word, kKinds, "teeth, wedge, edge and lines are");
}

void AddKnownOptions(CLI::App& command, PhantomOptions& options) {
    const auto add = [&command](const char* name, auto& value, const char* type, const char* help) {
        return command.add_option(name, value, help)->type_name(type);
    };
    add("--bits", options.bits, "NUMBER", "wedge, edge, lines: bits of the levels, 8 to 16; without it 12");
    add("--low", options.low, "LEVEL", "wedge, edge, lines: darkest level; without it an eighth of the top");
    add("--high", options.high, "LEVEL",
        "wedge, edge, lines: brightest; without it seven eighths of the top");
    add("--noise", options.noise, "SIGMA,...",
        "wedge, edge, lines: its standard deviation in levels, of a wedge also one for each step; without "
        "it 1/512 of the top")
        ->delimiter(',')
        ->allow_extra_args(false);
    add("--steps", options.steps, "NUMBER", "wedge: how many; without it 8");
    add("--angle", options.angle, "DEGREES", "edge: from the vertical, -45 to 45; without it 5");
    add("--blur", options.blur, "PIXELS", "edge, lines: sigma of the blur; without it 0.7");
    add("--frequencies", options.frequencies, "F,...",
        "lines: of each group, in cycles per pixel, with --pitch in line pairs per mm")
        ->delimiter(',')
        ->allow_extra_args(false);
    add("--pitch", options.pitch, "MM", "edge, lines: width of a pixel, for numbers per mm");
}

}  // namespace

void AddPhantomOptions(CLI::App& command, PhantomOptions& options) {
    command
        .add_option("--out", options.frame,
                    "Where the frame goes: .raw, .pgm, .png or .tif, all with 16-bit levels")
        ->required()
        ->type_name("FRAME");
    command.add_option("KIND", options.kind, "What it shows; without it teeth")
        ->type_name("{teeth,wedge,edge,lines}")  // from where completion has the words
        ->check(TestKind, "", "");
    command.add_option("--truth", options.truth, "Keep the numbers that the frame was made with, as JSON")
        ->type_name("FILE");
    AddSizeOption(command, options.size, "Size of the frame")->capture_default_str();
    command.add_option("--seed", options.seed, "Another seed gives other noise and other teeth")
        ->check(
            [](const std::string& value) {
                return value.starts_with('-') ? "'" + value + "' is below 0" : std::string();
            },
            "", "")
        ->capture_default_str()
        ->type_name("NUMBER");
    command
        .add_option("--dose", options.dose,
                    "teeth: exposure; without it 1, a good one; 0.12 is far too little")
        ->type_name("FACTOR");
    AddKnownOptions(command, options);
    command
        .add_option("--window", options.window,
                    "Make the .png one of 8 bits to look at: levels that become black and white")
        ->type_name("LOW:HIGH");
    command.add_flag("--force", options.mayReplace, "Replace files that exist");
}

void TestPhantomOptions(const PhantomOptions& options) {
    const FileKind kind = FileKindOf(options.frame);
    if (kind == FileKind::Bmp || kind == FileKind::Other)
        throw UsageError("'" + options.frame + "' should end in .raw, .pgm, .png or .tif");
    if (!options.window.empty() && kind != FileKind::Png)
        throw UsageError("--window is for .png pictures only");
    if (!options.window.empty() && !ParseGreyWindow(options.window))
        throw UsageError("'" + options.window + "' is no window; write it as in 0:4095");
    for (const KindOption& option : KindOptionsOf(options))
        if (option.isGiven &&
            std::find(option.kinds.begin(), option.kinds.end(), options.kind) == option.kinds.end())
            throw UsageError(std::string(option.name) + " is not for " + options.kind,
                             "it is for " + Enumerate(option.kinds));
}

}  // namespace vastrelline

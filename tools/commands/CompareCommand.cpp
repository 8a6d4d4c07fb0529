// SPDX-License-Identifier: Apache-2.0
#include "commands/CompareCommand.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <system_error>
#include <utility>
#include <vector>

#include "commands/CompareJunit.h"
#include "commands/CompareOutput.h"
#include "commands/ComparePage.h"
#include "commands/FrameNotes.h"
#include "commands/JsonObject.h"
#include "comparison/FolderPairs.h"
#include "comparison/PairOutcome.h"
#include "files/FileKind.h"
#include "files/OutputFile.h"
#include "formats/PictureFile.h"
#include "frames/FrameDifference.h"
#include "frames/GreyWindow.h"
#include "messages/ToolError.h"
#include "messages/UtcTime.h"
#include "platform/Cancellation.h"
#include "platform/PathText.h"

namespace vastrelline {
namespace {

bool IsFolder(const std::string& path) {
    std::error_code error;
    return path != kStandardInput && std::filesystem::is_directory(PathOf(path), error);
}

bool AreFolders(const CompareOptions& options) {
    const bool isFirst = IsFolder(options.first);
    if (isFirst != IsFolder(options.second))
        throw UsageError("a frame and a folder cannot be compared", "name two frames or two folders");
    return isFirst;
}

void TestOutputs(const CompareOptions& options) {
    for (const std::string& path : {options.difference, options.junit, options.report})
        if (!path.empty()) const OutputFile trial(path, options.mayReplace);
}

void WriteText(const std::string& path, const std::string& text, bool mayReplace) {
    OutputFile file(path, mayReplace);
    file.Write({text.begin(), text.end()});
    file.Publish();
}

// The difference that is white in a picture of 8 bits.
int32_t WhiteOf(const CompareOptions& options, const PairFigures& figures) {
    constexpr double kWhite = 255.0;
    const double wanted = options.gain > 0 ? std::round(kWhite / options.gain) : figures.largest;
    return static_cast<int32_t>(std::clamp(wanted, 1.0, 65535.0));
}

void WriteDifference(const CompareOptions& options, const FramePair& frames, const PairOutcome& outcome,
                     Messages& messages) {
    if (options.difference.empty()) return;
    if (!outcome.figures) {
        messages.Tell(options.difference + ": not written, for the sizes differ");
        return;
    }
    PictureStyle style;
    style.mayReplace = options.mayReplace;
    const FileKind kind = FileKindOf(options.difference);
    const int32_t white = WhiteOf(options, *outcome.figures);
    const bool holdsDifferences = kind == FileKind::Raw || kind == FileKind::Pgm;
    if (holdsDifferences)
        style.topLevel = std::max(1, outcome.figures->largest);
    else
        style.window = GreyWindow{0, white};
    WritePictureFile(options.difference, AbsoluteDifference(frames.first.frame, frames.second.frame), style);
    if (!holdsDifferences)
        messages.Tell(options.difference + ": white is a difference of " + std::to_string(white) +
                      (options.gain > 0 ? " or more" : ""));
}

std::vector<PairOutcome> CompareFolders(const CompareOptions& options, const PairTerms& terms,
                                        Messages& messages) {
    const std::vector<FolderPair> pairs = ListFolderPairs(options.first, options.second);
    std::vector<PairOutcome> outcomes;
    Progress progress = messages.Follow("frames", pairs.size());
    size_t failed = 0;
    for (const FolderPair& pair : pairs) {
        if (IsCancelled()) throw CancelledError();
        outcomes.push_back(CompareFolderPair(pair, terms));
        if (outcomes.back().error) ++failed;
        progress.Update(outcomes.size(), failed);
    }
    progress.Finish();
    SortWorstFirst(outcomes);
    return outcomes;
}

void WriteReport(const CompareOptions& options, const std::vector<PairOutcome>& outcomes,
                 const CommandContext& context, std::function<FramePair(const PairOutcome&)> load) {
    if (options.report.empty()) return;
    const bool areFolders = !outcomes.front().name.empty();
    const std::vector<uint8_t> page =
        MakeComparePage({&options, &outcomes, areFolders, context.commandLine, UtcMinute(), std::move(load)});
    OutputFile file(options.report, options.mayReplace);
    file.Write(page);
    file.Publish();
}

}  // namespace

std::string_view CompareCommand::Examples() const {
    return "  vastrelline compare before_1300x1668.raw after.png\n"
           "  vastrelline compare before.png after.png --tolerance 2 --report compared.html\n"
           "  vastrelline compare results-1.0 results-1.1 --report compared.html --junit compared.xml\n";
}

std::string_view CompareCommand::Notes() const {
    return "Levels are compared as they are, in 16 bits. Prints 'equal', 'within tolerance' or 'different' "
           "first,\n"
           "then how much and where. Of two folders, the frames of one name go together; a frame that only "
           "one\n"
           "of them has is a difference.\n"
           "Exit code: 0 equal or within tolerance, 1 different, 2 wrong use, 3 a frame that cannot be "
           "read, also\n"
           "if others differ.\n";
}

void CompareCommand::AddOptions(CLI::App& command) { AddCompareOptions(command, options_); }

ExitCode CompareCommand::Execute(CommandContext& context) {
    const bool areFolders = AreFolders(options_);
    TestCompareOptions(options_, areFolders);
    TestOutputs(options_);  // before the work
    const PairTerms terms{ParseFrameSize(options_.size), options_.tolerance};

    std::vector<PairOutcome> outcomes;
    if (areFolders) {
        outcomes = CompareFolders(options_, terms, context.messages);
        WriteReport(options_, outcomes, context, [&terms](const PairOutcome& outcome) {
            if (IsCancelled()) throw CancelledError();
            return LoadPair(outcome.first, outcome.second, terms);
        });
    } else {
        const FramePair frames = LoadPair(options_.first, options_.second, terms);
        ShowFrameNotes(options_.first, frames.first, context.messages);
        ShowFrameNotes(options_.second, frames.second, context.messages);
        outcomes.push_back(ComparePair(options_.first, options_.second, frames, terms));
        for (const std::string& note : outcomes.front().notes) context.messages.Tell("note: " + note);
        WriteDifference(options_, frames, outcomes.front(), context.messages);
        WriteReport(options_, outcomes, context, [&frames](const PairOutcome&) { return frames; });
    }
    if (!options_.junit.empty())
        WriteText(options_.junit,
                  FormatJunit(options_.first + " and " + options_.second, outcomes, options_.tolerance),
                  options_.mayReplace);
    const ExitCode code = CodeOf(outcomes);
    if (context.wantsJson)
        PrintObject(context, code,
                    areFolders ? PairsToJson(outcomes, options_) : PairToJson(outcomes.front(), options_));
    else
        context.report << (areFolders ? FormatPairs(outcomes, options_)
                                      : FormatPair(outcomes.front(), options_));
    return code;
}

}  // namespace vastrelline

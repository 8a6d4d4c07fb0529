// SPDX-License-Identifier: Apache-2.0
#include "comparison/PairOutcome.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace vastrelline {
namespace {

FrameSize SizeOf(const LoadedFrame& loaded) { return {loaded.frame.width, loaded.frame.height}; }

double RatioOf(const PairOutcome& outcome) {
    const bool hasRatio = outcome.figures && outcome.figures->psnr;
    return hasRatio ? *outcome.figures->psnr : std::numeric_limits<double>::infinity();
}

bool IsWorse(const PairOutcome& a, const PairOutcome& b) {
    if (a.state != b.state) return a.state > b.state;
    if (RatioOf(a) != RatioOf(b)) return RatioOf(a) < RatioOf(b);
    return a.name < b.name;
}

PairState StateOf(const PairFigures& figures) {
    if (figures.count == 0) return PairState::Equal;
    return figures.beyond == 0 ? PairState::WithinTolerance : PairState::Different;
}

}  // namespace

std::string_view PairStateName(PairState state) {
    switch (state) {
        case PairState::Equal:
            return "equal";
        case PairState::WithinTolerance:
            return "within-tolerance";
        case PairState::OnlyFirst:
            return "only-first";
        case PairState::OnlySecond:
            return "only-second";
        case PairState::Different:
            return "different";
        case PairState::OtherSize:
            return "different-sizes";
        case PairState::Unreadable:
            break;
    }
    return "unreadable";
}

FramePair LoadPair(const std::string& first, const std::string& second, const PairTerms& terms) {
    LoadedFrame one = LoadFrameFile(first, {terms.size, std::nullopt});
    return {std::move(one), LoadFrameFile(second, {terms.size, std::nullopt})};
}

PairOutcome ComparePair(const std::string& first, const std::string& second, const FramePair& frames,
                        const PairTerms& terms) {
    PairOutcome outcome;
    outcome.first = first;
    outcome.second = second;
    outcome.firstSize = SizeOf(frames.first);
    outcome.secondSize = SizeOf(frames.second);
    if (frames.first.sourceBits != frames.second.sourceBits)
        outcome.notes.emplace_back(
            "one file has levels of 8 bits, the other one of 16: they are compared as they are");
    if (outcome.firstSize != outcome.secondSize) {
        outcome.state = PairState::OtherSize;
        return outcome;
    }
    outcome.figures = ComparePixels(frames.first.frame, frames.second.frame, terms.tolerance);
    outcome.state = StateOf(*outcome.figures);
    return outcome;
}

PairOutcome CompareFolderPair(const FolderPair& pair, const PairTerms& terms) {
    PairOutcome outcome;
    try {
        if (!pair.first.empty() && !pair.second.empty()) {
            outcome = ComparePair(pair.first, pair.second, LoadPair(pair.first, pair.second, terms), terms);
        } else {
            const bool isFirst = pair.second.empty();
            const FrameSize size =
                SizeOf(LoadFrameFile(isFirst ? pair.first : pair.second, {terms.size, std::nullopt}));
            (isFirst ? outcome.firstSize : outcome.secondSize) = size;
            outcome.state = isFirst ? PairState::OnlyFirst : PairState::OnlySecond;
        }
    } catch (const ToolError& error) {
        outcome.state = PairState::Unreadable;
        outcome.error = error;
    }
    outcome.name = pair.name;
    outcome.first = pair.first;
    outcome.second = pair.second;
    return outcome;
}

void SortWorstFirst(std::vector<PairOutcome>& outcomes) {
    std::sort(outcomes.begin(), outcomes.end(), IsWorse);
}

std::vector<size_t> CountStates(const std::vector<PairOutcome>& outcomes) {
    std::vector<size_t> counts(kPairStates);
    for (const PairOutcome& outcome : outcomes) ++counts[static_cast<size_t>(outcome.state)];
    return counts;
}

ExitCode CodeOf(const std::vector<PairOutcome>& outcomes) {
    ExitCode code = ExitCode::Well;
    for (const PairOutcome& outcome : outcomes) {
        if (outcome.state == PairState::Unreadable) return ExitCode::Input;
        if (outcome.state != PairState::Equal && outcome.state != PairState::WithinTolerance)
            code = ExitCode::Findings;
    }
    return code;
}

}  // namespace vastrelline

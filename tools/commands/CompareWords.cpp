// SPDX-License-Identifier: Apache-2.0
#include "commands/CompareWords.h"

#include <algorithm>
#include <iomanip>
#include <sstream>

namespace vastrelline {
namespace {

constexpr double kPercent = 100.0;

std::string DescribeCount(const PairFigures& figures) {
    std::ostringstream text;
    text << figures.count << " of " << figures.pixels << " pixels (" << std::fixed << std::setprecision(4)
         << kPercent * static_cast<double>(figures.count) / static_cast<double>(figures.pixels) << " %)";
    return text.str();
}

std::string DescribeDifferent(const PairFigures& figures, int32_t tolerance) {
    std::string text = DescribeCount(figures) + ", largest difference " + std::to_string(figures.largest);
    if (tolerance > 0)
        text += "; " + std::to_string(figures.beyond) + " of them by more than the tolerance of " +
                std::to_string(tolerance);
    return text;
}

}  // namespace

std::string_view StateWords(PairState state) {
    switch (state) {
        case PairState::Equal:
            return "equal";
        case PairState::WithinTolerance:
            return "within tolerance";
        case PairState::OnlyFirst:
            return "only in A";
        case PairState::OnlySecond:
            return "only in B";
        case PairState::Different:
            return "different";
        case PairState::OtherSize:
            return "different sizes";
        case PairState::Unreadable:
            break;
    }
    return "unreadable";
}

std::string DescribePair(const PairOutcome& outcome, int32_t tolerance) {
    switch (outcome.state) {
        case PairState::Equal:
            return FormatFrameSize(*outcome.firstSize) + " pixels";
        case PairState::WithinTolerance:
            return DescribeCount(*outcome.figures) + " differ, by at most " +
                   std::to_string(outcome.figures->largest) + "; the tolerance is " +
                   std::to_string(tolerance);
        case PairState::OnlyFirst:
            return "B has no such frame";
        case PairState::OnlySecond:
            return "A has no such frame";
        case PairState::Different:
            return DescribeDifferent(*outcome.figures, tolerance);
        case PairState::OtherSize:
            return "the sizes are " + FormatFrameSize(*outcome.firstSize) + " and " +
                   FormatFrameSize(*outcome.secondSize);
        case PairState::Unreadable:
            break;
    }
    return outcome.error->what();
}

std::string DescribePairs(const std::vector<PairOutcome>& outcomes) {
    const std::vector<size_t> counts = CountStates(outcomes);
    std::string text = std::to_string(outcomes.size()) + (outcomes.size() == 1 ? " name" : " names");
    const char* part = ": ";
    for (size_t i = 0; i < counts.size(); ++i) {
        if (counts[i] == 0) continue;
        text.append(part).append(std::to_string(counts[i])).append(" ");
        text.append(StateWords(static_cast<PairState>(i)));
        part = ", ";
    }
    return text;
}

std::string_view HeadlineOf(const std::vector<PairOutcome>& outcomes) {
    const ExitCode code = CodeOf(outcomes);
    if (code == ExitCode::Input) return "unreadable";
    if (code != ExitCode::Well) return "different";
    const bool isEqual = std::all_of(outcomes.begin(), outcomes.end(),
                                     [](const PairOutcome& each) { return each.state == PairState::Equal; });
    return isEqual ? "equal" : "within tolerance";
}

std::string DescribeNoise(const PairFigures& figures) {
    if (!figures.psnr) return "infinite";
    std::ostringstream text;
    text << std::fixed << std::setprecision(2) << *figures.psnr << " dB at peak " << figures.peak;
    return text.str();
}

std::string DescribeClass(const DifferenceClass& differences) {
    const std::string least = std::to_string(differences.least);
    return differences.least == differences.greatest ? least
                                                     : least + " to " + std::to_string(differences.greatest);
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "commands/CompareJunit.h"

#include <algorithm>
#include <sstream>

#include "commands/CompareWords.h"
#include "messages/Markup.h"

namespace vastrelline {
namespace {

enum class Result : uint8_t { Passed, Failure, Error };

Result ResultOf(const PairOutcome& outcome) {
    const ExitCode code = CodeOf({outcome});
    if (code == ExitCode::Well) return Result::Passed;
    return code == ExitCode::Input ? Result::Error : Result::Failure;
}

std::string ShownName(const PairOutcome& outcome) {
    return outcome.name.empty() ? outcome.first + " and " + outcome.second : outcome.name;
}

std::ptrdiff_t Count(const std::vector<PairOutcome>& outcomes, Result result) {
    return std::count_if(outcomes.begin(), outcomes.end(),
                         [result](const PairOutcome& each) { return ResultOf(each) == result; });
}

}  // namespace

std::string FormatJunit(const std::string& title, const std::vector<PairOutcome>& outcomes,
                        int32_t tolerance) {
    std::ostringstream out;
    std::ostringstream counts;
    counts << "tests=\"" << outcomes.size() << "\" failures=\"" << Count(outcomes, Result::Failure)
           << "\" errors=\"" << Count(outcomes, Result::Error) << '"';
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites " << counts.str()
        << ">\n<testsuite name=\"" << EscapeMarkup(title) << "\" " << counts.str() << " skipped=\"0\">\n";
    for (const PairOutcome& outcome : outcomes) {
        const Result result = ResultOf(outcome);
        const std::string words =
            std::string(StateWords(outcome.state)) + ": " + DescribePair(outcome, tolerance);
        out << "<testcase classname=\"vastrelline.compare\" name=\"" << EscapeMarkup(ShownName(outcome))
            << '"';
        if (result == Result::Passed) {
            out << "/>\n";
            continue;
        }
        const char* const element = result == Result::Error ? "error" : "failure";
        out << ">\n<" << element << " type=\"" << PairStateName(outcome.state) << "\" message=\""
            << EscapeMarkup(words) << "\"/>\n</testcase>\n";
    }
    out << "</testsuite>\n</testsuites>\n";
    return out.str();
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "sweep/SweptKey.h"

#include <algorithm>
#include <optional>

#include "messages/ToolError.h"
#include "sweep/DecimalNumber.h"

namespace vastrelline {
namespace {

constexpr std::string_view kHowToWrite = "write KEY=FROM:TO:STEP, as in 04_MAX_SLOPE=1:3:0.5, or KEY=V1,V2";

std::string_view Trim(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
    return text;
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (size_t at = 0; at <= text.size();) {
        const size_t end = std::min(text.find(separator, at), text.size());
        parts.push_back(Trim(text.substr(at, end - at)));
        at = end + 1;
    }
    return parts;
}

UsageError TooMany(std::string_view text, uint64_t count, size_t most) {
    return UsageError("'" + std::string(text) + "' is " + std::to_string(count) + " values, and at most " +
                          std::to_string(most) + " pictures are made",
                      "take a larger step, or more by --limit");
}

std::vector<std::string> CountUp(std::string_view text, const std::vector<std::string_view>& parts,
                                 size_t most) {
    std::vector<DecimalNumber> numbers;
    for (const std::string_view part : parts) {
        const std::optional<DecimalNumber> number = ParseDecimal(part);
        if (!number)
            throw UsageError("'" + std::string(part) + "' in '" + std::string(text) +
                                 "' is no decimal number of at most " + std::to_string(kMostDecimalDigits) +
                                 " digits",
                             std::string(kHowToWrite));
        numbers.push_back(*number);
    }
    const std::optional<DecimalSteps> steps = MakeDecimalSteps(numbers[0], numbers[1], numbers[2]);
    if (!steps)
        throw UsageError("the step of '" + std::string(text) + "' does not lead to the end",
                         "take one that goes from the first number towards the second");
    if (steps->count > most) throw TooMany(text, steps->count, most);
    std::vector<std::string> values;
    for (uint64_t i = 0; i < steps->count; ++i) values.push_back(FormatDecimal(steps->At(i)));
    return values;
}

}  // namespace

SweptKey ParseSweptKey(std::string_view text, size_t most) {
    constexpr size_t kStepParts = 3;
    const size_t equals = text.find('=');
    const std::string_view key = Trim(text.substr(0, equals));
    if (equals == std::string_view::npos || key.empty())
        throw UsageError("'" + std::string(text) + "' sets nothing", std::string(kHowToWrite));
    const std::string_view written = Trim(text.substr(equals + 1));
    SweptKey swept{std::string(key), {}};
    const std::vector<std::string_view> steps = Split(written, ':');
    if (steps.size() > 1) {
        if (steps.size() != kStepParts)
            throw UsageError("'" + std::string(text) + "' has no start, end and step",
                             std::string(kHowToWrite));
        swept.values = CountUp(text, steps, most);
        return swept;
    }
    for (const std::string_view value : Split(written, ',')) {
        if (value.empty())
            throw UsageError("'" + std::string(text) + "' has an empty value", std::string(kHowToWrite));
        if (std::find(swept.values.begin(), swept.values.end(), value) != swept.values.end())
            throw UsageError("'" + std::string(text) + "' has the value " + std::string(value) + " twice",
                             "say it once");
        swept.values.emplace_back(value);
    }
    if (swept.values.size() > most) throw TooMany(text, swept.values.size(), most);
    return swept;
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "MaskedText.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace vastrelline::digest {

namespace {

bool IsDigit(char letter) { return letter >= '0' && letter <= '9'; }

// The length of what `pattern` fits at the beginning of the text, or 0. '9' stands for a digit, '8' for
// digits and blanks, '+' for one digit or more, everything else for itself. None of it asks the locale.
size_t MatchedLength(std::string_view text, std::string_view pattern) {
    size_t at = 0;
    for (const char sign : pattern) {
        if (at >= text.size()) return 0;
        if (sign == '+') {
            if (!IsDigit(text[at])) return 0;
            while (at < text.size() && IsDigit(text[at])) ++at;
            continue;
        }
        const bool fits = sign == '9'   ? IsDigit(text[at])
                          : sign == '8' ? IsDigit(text[at]) || text[at] == ' '
                                        : text[at] == sign;
        if (!fits) return 0;
        ++at;
    }
    return at;
}

struct ClockText {
    std::string_view pattern;
    std::string_view mask;
};

constexpr ClockText kClockTexts[] = {{" Log 8888.99.99 ", " Log YYYY.MM.DD "},
                                     {"#### 99:99:99 ", "#### hh:mm:ss "},
                                     {"( +.999 sec", "( S.SSS sec"},
                                     {"( + ms )", "( N ms )"}};

// The number that the base of a name begins with, of two digits or more and followed by a line; -1 for none.
int64_t RunningNumber(std::string_view base) {
    size_t digits = 0;
    while (digits < base.size() && IsDigit(base[digits])) ++digits;
    if (digits < 2 || digits > 10 || digits == base.size() || base[digits] != '_') return -1;
    int64_t number = 0;
    for (size_t i = 0; i < digits; ++i) number = number * 10 + (base[i] - '0');
    return number;
}

constexpr std::string_view kStamp = "99999999_999999_";

size_t BaseBegin(std::string_view name) { return name.rfind('/') + 1; }

}  // namespace

std::string MaskText(std::string_view text, std::string_view folder) {
    std::string masked;
    masked.reserve(text.size());
    while (!text.empty()) {
        if (!folder.empty() && text.substr(0, folder.size()) == folder) {
            masked += "{folder}";
            text.remove_prefix(folder.size());
            continue;
        }
        const auto* const clock =
            std::find_if(std::begin(kClockTexts), std::end(kClockTexts),
                         [&](const auto& form) { return MatchedLength(text, form.pattern) > 0; });
        if (clock != std::end(kClockTexts)) {
            masked += clock->mask;
            text.remove_prefix(MatchedLength(text, clock->pattern));
            continue;
        }
        masked += text.front();
        text.remove_prefix(1);
    }
    return masked;
}

std::vector<std::string> MaskNames(const std::vector<std::string>& names) {
    int64_t first = -1;
    for (const std::string& name : names) {
        const std::string_view base = std::string_view(name).substr(BaseBegin(name));
        if (MatchedLength(base, kStamp) > 0) continue;
        const int64_t number = RunningNumber(base);
        if (number >= 0 && (first < 0 || number < first)) first = number;
    }
    std::vector<std::string> masked;
    for (const std::string& name : names) {
        const size_t begin = BaseBegin(name);
        const std::string_view base = std::string_view(name).substr(begin);
        const std::string folder = name.substr(0, begin);
        if (MatchedLength(base, kStamp) > 0) {
            masked.push_back(folder + "T_" + std::string(base.substr(kStamp.size())));
        } else if (const int64_t number = RunningNumber(base); number >= 0) {
            masked.push_back(folder + "+" + std::to_string(number - first) +
                             std::string(base.substr(base.find('_'))));
        } else {
            masked.push_back(name);
        }
    }
    return masked;
}

}  // namespace vastrelline::digest

// SPDX-License-Identifier: Apache-2.0
#include "lint/FindingSink.h"

#include <algorithm>

namespace vastrelline {

std::string ShownText(const std::string& text) {
    constexpr size_t kLongest = 60;
    std::string shown = text;
    if (shown.size() > kLongest) {
        size_t end = kLongest;
        // Not within a character of several bytes.
        while (end > 0 && (static_cast<unsigned char>(shown[end]) & 0xC0U) == 0x80U) --end;
        shown.resize(end);
        shown += "...";
    }
    const bool isPlain = !shown.empty() && std::all_of(shown.begin(), shown.end(), [](char c) {
        return static_cast<unsigned char>(c) > ' ' && c != '\x7F' && c != ';';
    });
    return isPlain ? shown : "'" + shown + "'";
}

void FindingSink::Add(Severity severity, size_t offset, std::string text, std::optional<LintFix> fix) {
    const TextPlace place = file_.PlaceOf(offset);
    findings_.push_back(
        {{severity, file_.Path(), place.line, place.column, std::move(text), std::string(rule_)},
         std::move(fix)});
}

void FindingSink::AddForFile(std::string text) {
    findings_.push_back({{severity_, file_.Path(), 0, 1, std::move(text), std::string(rule_)}, std::nullopt});
}

}  // namespace vastrelline

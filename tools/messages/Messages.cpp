// SPDX-License-Identifier: Apache-2.0
#include "messages/Messages.h"

#include <utility>

namespace vastrelline {
namespace {

constexpr std::string_view kPlain = "\033[0m";

std::string_view ColourOf(Severity severity) {
    switch (severity) {
        case Severity::Note:
            return "\033[36m";
        case Severity::Warning:
            return "\033[33m";
        case Severity::Error:
            break;
    }
    return "\033[31m";
}

}  // namespace

std::string OneLine(std::string text) {
    while (!text.empty() && text.back() == '\n') text.pop_back();
    for (char& c : text)
        if (static_cast<unsigned char>(c) < ' ' || c == '\x7F') c = '?';
    return text;
}

void Messages::Tell(std::string_view text) {
    if (!isQuiet_) stream_ << OneLine(std::string(text)) << '\n';
}

void Messages::Show(const Finding& finding) {
    if (isQuiet_ && finding.severity != Severity::Error) return;
    std::string line = OneLine(FormatFinding(finding));
    if (isColoured_) {
        const std::string word = std::string(SeverityName(finding.severity)) + ":";
        if (const size_t place = line.find(word); place != std::string::npos)
            line.replace(place, word.size(),
                         std::string(ColourOf(finding.severity)) + word + std::string(kPlain));
    }
    stream_ << line << '\n';
}

void Messages::Fail(std::string_view text) { stream_ << OneLine(std::string(text)) << '\n'; }

void Messages::Explain(std::string_view text) { stream_ << text; }

Progress Messages::Follow(std::string what, size_t total) {
    return {stream_, {isTerminal_, isQuiet_}, std::move(what), total};
}

}  // namespace vastrelline

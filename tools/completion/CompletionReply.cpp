// SPDX-License-Identifier: Apache-2.0
#include "completion/CompletionReply.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "completion/Completion.h"
#include "completion/ShellLine.h"

namespace vastrelline {
namespace {

constexpr size_t kLongestDescription = 80;

// "NAME=value vastrelline ..." sets a variable for one command.
bool IsAssignment(const std::string& word) {
    const size_t equals = word.find('=');
    return equals != std::string::npos && equals > 0 && word.front() != '-' && word.find('/') > equals;
}

std::string OneShortLine(std::string text) {
    for (char& c : text)
        if (static_cast<unsigned char>(c) < ' ') c = ' ';
    if (text.size() <= kLongestDescription) return text;
    size_t end = kLongestDescription - 3;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U)
        --end;  // not inside a character
    return text.substr(0, end) + "...";
}

// A candidate is a line: one with a line end in it cannot be told.
bool CanBeTold(const Candidate& candidate) {
    return candidate.text.find_first_of("\r\n\t") == std::string::npos;
}

void AddLine(std::string& lines, std::string_view mark, std::string_view text) {
    lines.append(mark).append(text).append("\n");
}

std::string Wishes(const Completion& completion) {
    std::string lines;
    if (completion.files == FileWish::Files) AddLine(lines, ":files ", completion.filePrefix);
    if (completion.files == FileWish::Folders) AddLine(lines, ":folders ", completion.filePrefix);
    if (completion.goesOn) AddLine(lines, ":nospace", {});
    return lines;
}

std::string AnswerBash(const CLI::App& root, const std::string& text) {
    ShellLine line = ReadShellLine(text);
    const auto program = std::find_if_not(line.words.begin(), line.words.end(), IsAssignment);
    if (program == line.words.end()) return {};
    const Completion completion = CompleteWords(root, {program + 1, line.words.end()}, line.current);
    std::string lines;
    for (const Candidate& candidate : completion.candidates)
        if (CanBeTold(candidate) && candidate.text.size() >= line.kept)
            AddLine(lines, "+", QuoteForBash(candidate.text.substr(line.kept), line.openQuote));
    return lines + Wishes(completion);
}

std::string AnswerOthers(const CLI::App& root, const std::vector<std::string>& words,
                         const std::string& typed) {
    // What is typed of the word at the end may begin with a quote.
    const std::string current = ReadShellLine(typed).current;
    const Completion completion = CompleteWords(root, words, current);
    std::string lines;
    for (const Candidate& candidate : completion.candidates)
        if (CanBeTold(candidate))
            AddLine(lines, "+", candidate.text + "\t" + OneShortLine(candidate.description));
    return lines + Wishes(completion);
}

}  // namespace

std::string AnswerShell(const CLI::App& root, const std::vector<std::string>& question) {
    if (question.size() < 2) return {};
    if (question[0] == "bash") return AnswerBash(root, question[1]);
    if (!question[1].starts_with('=')) return {};
    return AnswerOthers(root, {question.begin() + 2, question.end()}, question[1].substr(1));
}

}  // namespace vastrelline

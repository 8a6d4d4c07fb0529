// SPDX-License-Identifier: Apache-2.0
#include "completion/ShellLine.h"

#include <utility>

namespace vastrelline {
namespace {

// What bash, as it is set up, takes for the start of a new word of its own, in the middle of ours.
bool IsBreak(char c) { return c == '=' || c == ':'; }

class LineReader {
public:
    explicit LineReader(std::string_view line) : line_(line) {}

    ShellLine Read() {
        while (place_ < line_.size()) Take(line_[place_++]);
        return std::move(result_);
    }

private:
    void Take(char c) {
        if (result_.openQuote == '\'') {
            TakeQuoted(c, '\'');
        } else if (result_.openQuote == '"') {
            // In double quotes a backslash hides four characters only.
            const bool isHidden = c == '\\' && place_ < line_.size() &&
                                  std::string_view("\"\\$`").find(line_[place_]) != std::string_view::npos;
            if (isHidden)
                Add(line_[place_++]);
            else
                TakeQuoted(c, '"');
        } else if (c == '\\') {
            if (place_ < line_.size()) Add(line_[place_++]);
        } else if (c == '\'' || c == '"') {
            result_.openQuote = c;
            hasWord_ = true;
            result_.kept = result_.current.size();
        } else if (c == ' ' || c == '\t' || c == '\n') {
            EndWord();
        } else {
            Add(c);
            if (IsBreak(c)) result_.kept = result_.current.size();
        }
    }

    void TakeQuoted(char c, char quote) {
        if (c != quote) return Add(c);
        result_.openQuote = '\0';
        result_.kept = result_.current.size();
    }

    void Add(char c) {
        result_.current += c;
        hasWord_ = true;
    }

    void EndWord() {
        if (hasWord_) result_.words.push_back(result_.current);
        result_.current.clear();
        result_.kept = 0;
        hasWord_ = false;
    }

    std::string_view line_;
    size_t place_ = 0;
    bool hasWord_ = false;  // a pair of quotes with nothing between is a word, too
    ShellLine result_;
};

}  // namespace

ShellLine ReadShellLine(std::string_view line) { return LineReader(line).Read(); }

std::string QuoteForBash(std::string_view text, char openQuote) {
    constexpr std::string_view kSpecial = " \t\n\\'\"`$&|;<>()[]{}*?!#~";
    std::string quoted;
    for (const char c : text) {
        if (openQuote == '\'') {
            quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
            continue;
        }
        const std::string_view special = openQuote == '"' ? std::string_view("\"\\$`") : kSpecial;
        if (special.find(c) != std::string_view::npos) quoted += '\\';
        quoted += c;
    }
    return quoted;
}

}  // namespace vastrelline

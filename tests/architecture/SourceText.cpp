// SPDX-License-Identifier: Apache-2.0
#include "SourceText.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <utility>

namespace vastrelline {

namespace {

bool IsWordPart(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; }
bool IsDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }
bool IsBlank(char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; }

class SourceReader {
public:
    explicit SourceReader(std::string_view text) : text_(text) {}

    SourceText Read() && {
        while (at_ < text_.size()) ReadNext();
        return std::move(result_);
    }

private:
    std::string_view Rest() const { return text_.substr(at_); }

    // To the end of `mark`, or of the text.
    void SkipPast(std::string_view mark) {
        const size_t found = text_.find(mark, at_);
        at_ = found == std::string_view::npos ? text_.size() : found + mark.size();
    }

    void ReadNext() {
        const char c = text_[at_];
        if (IsBlank(c)) {
            isLineStart_ = isLineStart_ || c == '\n';
            ++at_;
        } else if (Rest().starts_with("//")) {
            SkipPast("\n");
            isLineStart_ = true;
        } else if (Rest().starts_with("/*")) {
            at_ += 2;
            SkipPast("*/");
        } else if (c == '#' && isLineStart_) {
            ReadDirective();
        } else {
            isLineStart_ = false;
            ReadToken(c);
        }
    }

    void ReadToken(char c) {
        if (c == '"' || c == '\'') {
            SkipLiteral(c);
        } else if (IsDigit(c)) {
            size_t end = at_;
            while (end < text_.size() && (IsWordPart(text_[end]) || text_[end] == '.' || text_[end] == '\''))
                ++end;
            AddToken(end - at_, false);
        } else if (IsWordPart(c)) {
            const auto* const end = std::find_if_not(Rest().begin(), Rest().end(), IsWordPart);
            const auto length = static_cast<size_t>(end - Rest().begin());
            const bool isPrefix = length < Rest().size() && (Rest()[length] == '"' || Rest()[length] == '\'');
            if (!isPrefix) {
                AddToken(length, true);
            } else if (Rest()[length - 1] == 'R') {
                at_ += length;
                SkipRawLiteral();
            } else {
                at_ += length;
                SkipLiteral(text_[at_]);
            }
        } else {
            constexpr std::array<std::string_view, 5> kPairs{"::", "->", "<<", "<=", ">="};
            const bool isPair = std::any_of(kPairs.begin(), kPairs.end(),
                                            [&](std::string_view pair) { return Rest().starts_with(pair); });
            AddToken(isPair ? 2 : 1, false);
        }
    }

    void AddToken(size_t length, bool isWord) {
        result_.tokens.push_back({std::string(Rest().substr(0, length)), isWord});
        at_ += length;
    }

    void SkipLiteral(char quote) {
        ++at_;
        while (at_ < text_.size() && text_[at_] != quote) at_ += text_[at_] == '\\' ? 2U : 1U;
        at_ = std::min(at_ + 1, text_.size());
        result_.tokens.push_back({"\"", false});
    }

    void SkipRawLiteral() {
        const size_t open = std::min(text_.find('(', at_), text_.size());
        const std::string mark = ")" + std::string(text_.substr(at_ + 1, open - at_ - 1)) + "\"";
        SkipPast(mark);
        result_.tokens.push_back({"\"", false});
    }

    // A directive ends with its line, unless that ends with a backslash.
    void ReadDirective() {
        const size_t start = at_ + 1;
        do SkipPast("\n");
        while (at_ < text_.size() && text_[at_ - 2] == '\\');
        std::string_view line = text_.substr(start, at_ - start);
        line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
        if (line.starts_with("include")) {
            ReadInclude(line.substr(std::string_view("include").size()));
        } else if (line.starts_with("define")) {
            const SourceText macro = SourceReader(line).Read();
            for (const Token& token : macro.tokens)
                if (token.isWord) result_.macroWords.insert(token.text);
        }
    }

    void ReadInclude(std::string_view name) {
        const size_t open = name.find_first_of("\"<");
        if (open == std::string_view::npos) return;
        const size_t close = std::min(name.find_first_of("\">", open + 1), name.size());
        auto& list = name[open] == '"' ? result_.quotedIncludes : result_.systemIncludes;
        list.emplace_back(name.substr(open + 1, close - open - 1));
    }

    std::string_view text_;
    size_t at_ = 0;
    bool isLineStart_ = true;
    SourceText result_;
};

}  // namespace

SourceText ReadSourceText(std::string_view text) { return SourceReader(text).Read(); }

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "profile/PlainWords.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "profile_text/Utf8.h"

namespace vastrelline {

namespace {

// "[words](page)" at a place, or nothing.
struct Link {
    size_t wordsEnd = 0;
    size_t end = 0;  // 0: none
};

Link FindLink(std::string_view text, size_t open) {
    const size_t close = text.find("](", open);
    const size_t nextOpen = text.find('[', open + 1);
    if (close == std::string_view::npos || nextOpen < close) return {};
    const size_t end = text.find(')', close);
    if (end == std::string_view::npos) return {};
    return {close, end + 1};
}

bool IsSafe(wchar_t character) {
    const auto value = static_cast<uint32_t>(character);
    const bool isControl = value < 0x20 || (value >= 0x7F && value < 0xA0);
    const bool turns = (value >= 0x200E && value <= 0x200F) || (value >= 0x2028 && value <= 0x202E) ||
                       (value >= 0x2066 && value <= 0x2069);
    return !isControl && !turns;
}

bool IsHalf(wchar_t character, uint32_t first) {
    const auto value = static_cast<uint32_t>(character);
    return value >= first && value < first + 0x400;
}

// On Windows a character may be two halves; one alone stands for a byte that is no text.
bool IsLoneHalf(std::wstring_view text, size_t at) {
    constexpr uint32_t kFirstHigh = 0xD800;
    constexpr uint32_t kFirstLow = 0xDC00;
    const bool mayBePairs = sizeof(wchar_t) == 2;
    if (IsHalf(text[at], kFirstHigh))
        return !mayBePairs || at + 1 == text.size() || !IsHalf(text[at + 1], kFirstLow);
    return IsHalf(text[at], kFirstLow) && (!mayBePairs || at == 0 || !IsHalf(text[at - 1], kFirstHigh));
}

std::vector<std::string_view> SplitLines(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const size_t end = text.find('\n');
        lines.push_back(text.substr(0, end));
        if (end == std::string_view::npos) break;
        text.remove_prefix(end + 1);
    }
    return lines;
}

// Puts word after word into lines.
class Wrapper {
public:
    Wrapper(std::string_view prefix, size_t width) : prefix_(prefix), width_(width) {}

    void AddWords(std::string_view line) {
        while (!line.empty()) {
            const size_t begin = line.find_first_not_of(' ');
            if (begin == std::string_view::npos) return;
            const size_t end = std::min(line.find(' ', begin), line.size());
            AddWord(line.substr(begin, end - begin));
            line.remove_prefix(end);
        }
    }

    void AddLine(std::string_view line) {
        EndLine();
        text_.append(prefix_).append(line).append("\n");
    }

    void EndLine() {
        if (line_.empty()) return;
        text_.append(prefix_).append(line_).append("\n");
        line_.clear();
    }

    std::string Take() {
        EndLine();
        return std::move(text_);
    }

private:
    void AddWord(std::string_view word) {
        const size_t length = CountCharacters(prefix_) + CountCharacters(line_) + 1 + CountCharacters(word);
        if (!line_.empty() && length > width_) EndLine();
        if (!line_.empty()) line_ += ' ';
        line_ += word;
    }

    std::string_view prefix_;
    size_t width_;
    std::string line_;
    std::string text_;
};

}  // namespace

std::string PlainWords(std::string_view markdown) {
    std::string text;
    for (size_t i = 0; i < markdown.size(); ++i) {
        if (markdown[i] == '`') continue;
        const Link link = markdown[i] == '[' ? FindLink(markdown, i) : Link();
        if (link.end == 0) {
            text += markdown[i];
            continue;
        }
        text += PlainWords(markdown.substr(i + 1, link.wordsEnd - i - 1));
        i = link.end - 1;
    }
    return text;
}

std::string WrapWords(std::string_view text, std::string_view prefix, size_t width) {
    Wrapper wrapper(prefix, width);
    for (const std::string_view line : SplitLines(text)) {
        if (line.empty() || line.starts_with('|'))
            wrapper.AddLine(line);
        else {
            if (line.starts_with("- ")) wrapper.EndLine();
            wrapper.AddWords(line);
        }
    }
    return wrapper.Take();
}

std::string ShownText(std::string_view utf8) {
    const std::wstring text = DecodeUtf8(utf8);
    std::wstring shown = text;
    for (size_t i = 0; i < text.size(); ++i)
        if (!IsSafe(text[i]) || IsLoneHalf(text, i)) shown[i] = L'?';
    return EncodeUtf8(shown);
}

std::string ShortText(std::string_view utf8, size_t most) {
    constexpr std::string_view kCut = "...";
    std::wstring text = DecodeUtf8(ShownText(utf8));
    if (text.size() <= most) return EncodeUtf8(text);
    text.resize(most > kCut.size() ? most - kCut.size() : 0);
    return EncodeUtf8(text).append(kCut);
}

size_t CountCharacters(std::string_view utf8) { return DecodeUtf8(utf8).size(); }

std::string PaddedText(std::string text, size_t width) {
    const size_t length = CountCharacters(text);
    if (length < width) text.append(width - length, ' ');
    return text;
}

}  // namespace vastrelline

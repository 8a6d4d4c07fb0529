// SPDX-License-Identifier: Apache-2.0
#include "profile/TextMerge.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "messages/ToolError.h"
#include "profile/LineDifference.h"
#include "profile_text/ProfileText.h"
#include "profile_text/Utf8.h"

namespace vastrelline {
namespace {

// For an editor, which knows characters only: a byte that is none becomes the sign for that. Such a line
// keeps its bytes as long as it is not edited.
std::string ShownContent(std::wstring text) {
    constexpr wchar_t kFirstStray = 0xDC80;
    constexpr wchar_t kLastStray = 0xDCFF;
    constexpr wchar_t kUnknown = 0xFFFD;
    for (size_t i = 0; i < text.size(); ++i) {
        const bool isSecondHalf =
            sizeof(wchar_t) == 2 && i > 0 && text[i - 1] >= 0xD800 && text[i - 1] < 0xDC00;
        if (text[i] >= kFirstStray && text[i] <= kLastStray && !isSecondHalf) text[i] = kUnknown;
    }
    return EncodeUtf8(text);
}

// A profile cut into lines.
struct CutProfile {
    ProfileText text;
    std::vector<ProfileLine> lines;
    std::vector<std::string> contents;  // of the lines, without their ends, for an editor

    explicit CutProfile(const std::string& bytes) : text(bytes) {
        ProfileLineReader reader = text.Lines({text.Encoding().MarkSize(), bytes.size()});
        while (const std::optional<ProfileLine> line = reader.Next()) {
            lines.push_back(*line);
            contents.push_back(ShownContent(text.Decode(line->content)));
        }
    }

    std::string_view Bytes(size_t begin, size_t end) const {
        return std::string_view(text.Bytes()).substr(begin, end - begin);
    }
    std::string_view ContentOf(size_t line) const {
        return Bytes(lines[line].content.begin, lines[line].content.end);
    }
    std::string_view EndOf(size_t line) const {
        return Bytes(lines[line].content.end, lines[line].whole.end);
    }
    bool HasEnd(size_t line) const { return lines[line].content.end < lines[line].whole.end; }

    // Behind the last line: half of a unit.
    std::string_view Rest() const {
        const size_t end = lines.empty() ? text.Encoding().MarkSize() : lines.back().whole.end;
        return Bytes(end, text.Bytes().size());
    }
};

std::string WithPlainEnds(std::string_view text) {
    std::string plain;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r')
            plain.push_back(text[i]);
        else if (i + 1 == text.size() || text[i + 1] != '\n')
            plain.push_back('\n');
    }
    return plain;
}

// Puts the lines of the new bytes one behind the other.
class Merger {
public:
    explicit Merger(const CutProfile& old)
        : old_(old),
          bytes_(old.Bytes(0, old.text.Encoding().MarkSize())),
          end_(old.lines.empty() || !old.HasEnd(0) ? Encode(L"\r\n") : std::string(old.EndOf(0))) {}

    void Keep(size_t line, bool hasEnd) {
        if (old_.HasEnd(line)) end_ = old_.EndOf(line);
        Append(old_.ContentOf(line), hasEnd);
    }

    void Add(std::string_view content, bool hasEnd) { Append(Encode(DecodeUtf8(content)), hasEnd); }

    std::string Take() { return std::move(bytes_.append(old_.Rest())); }

private:
    std::string Encode(std::wstring_view text) const { return old_.text.Encoding().Encode(text); }

    void Append(std::string_view content, bool hasEnd) {
        bytes_.append(content);
        if (!hasEnd) return;
        // A line feed right behind a carriage return would be one line end with it.
        const bool wouldJoin = content.empty() && isBehindReturn_ && end_ == Encode(L"\n");
        bytes_.append(wouldJoin ? Encode(L"\r\n") : end_);
        isBehindReturn_ = end_ == Encode(L"\r");
    }

    const CutProfile& old_;
    std::string bytes_;
    std::string end_;  // of the line before
    bool isBehindReturn_ = false;
};

}  // namespace

std::string EditorText(const std::string& bytes) {
    const CutProfile cut(bytes);
    std::string text;
    for (size_t i = 0; i < cut.lines.size(); ++i) {
        text.append(cut.contents[i]);
        if (cut.HasEnd(i)) text.push_back('\n');
    }
    return text;
}

std::string MergeText(const std::string& path, const std::string& bytes, std::string_view text) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    if (text.starts_with(kMark))
        throw InputError(path, "a text that begins with a byte order mark would be read as another one",
                         "take the mark away");
    const CutProfile old(bytes);
    const std::string plain = WithPlainEnds(text);
    const std::vector<std::string_view> now = SplitLines(plain);
    const std::vector<std::string_view> before(old.contents.begin(), old.contents.end());
    const bool isLastOpen = !plain.empty() && plain.back() != '\n';
    Merger merger(old);
    size_t oldLine = 0;
    size_t line = 0;
    const auto hasEnd = [&](size_t which) { return which + 1 < now.size() || !isLastOpen; };
    const auto keepUpTo = [&](size_t end) {
        for (; line < end; ++line) merger.Keep(oldLine++, hasEnd(line));
    };
    for (const LineRun& run : DiffLines(before, now)) {
        keepUpTo(run.nowBegin);
        for (; line < run.nowEnd; ++line) merger.Add(now[line], hasEnd(line));
        oldLine = run.oldEnd;
    }
    keepUpTo(now.size());
    return merger.Take();
}

}  // namespace vastrelline

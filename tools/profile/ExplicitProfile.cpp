// SPDX-License-Identifier: Apache-2.0
#include "profile/ExplicitProfile.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <string_view>
#include <utility>

#include "profile/PlainWords.h"
#include "profile_text/CaseFolding.h"
#include "profile_text/ProfileLines.h"
#include "profile_text/Utf8.h"

namespace vastrelline {

namespace {

constexpr size_t kCommentWidth = 100;

std::wstring Folded(std::string_view name) {
    std::wstring text = DecodeUtf8(name);
    for (wchar_t& character : text) character = FoldCase(character);
    return text;
}

// Quotes go around what would lose blanks or quotes of its own.
std::string Quoted(const ReadValue& value) {
    const std::string text = FormatReadValue(value);
    if (text.empty()) return text;
    const auto isBlank = [](char character) { return IsProfileBlank(static_cast<uint8_t>(character)); };
    const bool isQuoted = text.front() == text.back() && (text.front() == '"' || text.front() == '\'');
    const bool needsQuotes = isBlank(text.front()) || isBlank(text.back()) || isQuoted;
    return needsQuotes ? std::string("\"").append(text).append("\"") : text;
}

// What was read is not what a section of one spelling can hold twice: each key once.
class Writer {
public:
    void Section(const std::string& name) { text_.append("[").append(name).append("]\n"); }

    void Place(const EffectivePlace& place) {
        const std::string title = PlaceTitle(place) + (place.runs ? "" : ": does not run");
        text_.append("\n").append(WrapWords(title, "; ---- ", kCommentWidth));
        for (const EffectiveValue& value : place.values) Value(value);
    }

    std::string Take() { return std::move(text_); }

private:
    void Value(const EffectiveValue& value) {
        if (!written_.insert(Folded(value.name)).second) return;
        std::string comment = PlainWords(value.key->meaning);
        if (!value.key->range.empty()) comment += " Sensible: " + PlainWords(value.key->range) + ".";
        if (value.reading.mark == ReadingMark::Default) comment += " This is the default.";
        text_ += WrapWords(comment, "; ", kCommentWidth);
        text_.append(value.name).append("=").append(Quoted(value.reading.value)).append("\n");
    }

    std::set<std::wstring> written_;  // keys of this section, folded
    std::string text_;
};

std::string WriteSection(const std::vector<EffectivePlace>& places, const std::wstring& section) {
    Writer writer;
    bool hasHead = false;
    for (const EffectivePlace& place : places) {
        if (Folded(place.section) != section) continue;
        if (!hasHead) writer.Section(place.section);
        hasHead = true;
        writer.Place(place);
    }
    return writer.Take();
}

}  // namespace

std::string WriteExplicitProfile(const std::string& head, const std::vector<EffectivePlace>& places) {
    std::string text = WrapWords(ShownText(head), "; ", kCommentWidth);
    std::set<std::wstring> written;
    for (const EffectivePlace& place : places) {
        const std::wstring section = Folded(place.section);
        if (written.insert(section).second) text.append("\n").append(WriteSection(places, section));
    }
    constexpr const char* kUtf8Mark = "\xEF\xBB\xBF";
    const bool isAscii =
        std::all_of(text.begin(), text.end(), [](char byte) { return static_cast<uint8_t>(byte) < 0x80; });
    return isAscii ? text : kUtf8Mark + text;
}

}  // namespace vastrelline

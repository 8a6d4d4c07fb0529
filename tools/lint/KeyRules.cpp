// SPDX-License-Identifier: Apache-2.0
#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "lint/KeySuggestion.h"
#include "lint/Rules.h"
#include "profile_text/Utf8.h"

namespace vastrelline {
namespace {

std::string PositionText(int32_t position) {
    const std::string digits = std::to_string(position);
    return "position " + (digits.size() < 2 ? "0" + digits : digits);
}

std::string HeadText(const LintedSection& section) { return "[" + section.section->name + "]"; }

bool LooksLikeComment(const ProfileEntry& entry) {
    return entry.key.starts_with('#') || entry.key.starts_with("//");
}

LintFix RenameTo(const LintedSection& section, const ProfileEntry& entry, const std::string& name) {
    return {entry.line.name, section.file->Text().Encoding().Encode(DecodeUtf8(name)), "write " + name};
}

// What the stage at the position of an unknown key would read.
std::string ReadableAt(const LintedSection& section, const ProfileEntry& entry) {
    const std::optional<NumberedName> name = SplitNumberedKey(entry.key);
    if (!name) return {};
    const auto stage = section.stageByPosition.find(name->position);
    if (stage == section.stageByPosition.end()) return {};
    std::string text =
        PositionText(name->position) + " is " + std::string(stage->second->title) + " and reads ";
    const std::span<const Key> keys = stage->second->keys;
    for (size_t i = 0; i < keys.size(); ++i) {
        if (i > 0) text += i + 1 == keys.size() ? " and " : ", ";
        text += keys[i].name;
    }
    return text;
}

template <typename Use>
void ForEachUnread(const LintedSection& section, UnreadCause cause, const Use& use) {
    for (const UnreadLine& line : section.unread)
        if (line.cause == cause) use(*line.entry);
}

}  // namespace

void FindLinesWithoutKey(const LintedSection& section, FindingSink& sink) {
    ForEachUnread(section, UnreadCause::NotAKey, [&](const ProfileEntry& entry) {
        const size_t offset = entry.line.name.begin;
        if (entry.HasValue())
            sink.Add(offset, "nothing stands before the equals sign; give a key or take the line away");
        else if (LooksLikeComment(entry))
            sink.Add(offset, ShownText(entry.key) + " is no comment; begin it with ';'");
        else if (entry.key.starts_with('['))
            sink.Add(offset, ShownText(entry.key) + " begins no section; close it with ']'");
        else
            sink.Add(offset,
                     ShownText(entry.key) + " has no equals sign; write KEY=value, or ';' before a comment");
    });
}

void FindUnknownKeys(const LintedSection& section, FindingSink& sink) {
    KeySuggester suggester(section);
    std::map<const ProfileEntry*, KeySuggestion> suggestions;
    std::map<std::string, size_t, std::less<>> claims;  // by name: how many lines may mean it
    ForEachUnread(section, UnreadCause::Unknown, [&](const ProfileEntry& entry) {
        if (LooksLikeComment(entry)) return;
        const KeySuggestion& suggestion = suggestions[&entry] = suggester.Suggest(entry);
        if (!suggestion.name.empty()) ++claims[suggestion.name];
    });
    ForEachUnread(section, UnreadCause::Unknown, [&](const ProfileEntry& entry) {
        const size_t offset = entry.line.name.begin;
        if (LooksLikeComment(entry)) {
            sink.Add(offset, ShownText(entry.key) + " is no comment; begin it with ';'");
            return;
        }
        const bool isNumbered = SplitNumberedKey(entry.key).has_value();
        const KeySuggestion& suggestion = suggestions.at(&entry);
        const std::string what =
            ShownText(entry.key) + (isNumbered ? " is read by no stage; " : " is read by no run; ");
        if (!suggestion.name.empty()) {
            std::optional<LintFix> fix;
            // Of two lines only one can get the name.
            if (suggestion.isSure && claims.at(suggestion.name) == 1)
                fix = RenameTo(section, entry, suggestion.name);
            sink.Add(offset, what + "did you mean " + suggestion.name + "?", std::move(fix));
            return;
        }
        const std::string readable = ReadableAt(section, entry);
        sink.Add(offset, what + (readable.empty() ? "take the line away" : readable));
    });
}

void FindKeysOfOtherStages(const LintedSection& section, FindingSink& sink) {
    ForEachUnread(section, UnreadCause::OtherStage, [&](const ProfileEntry& entry) {
        const NumberedName name = *SplitNumberedKey(entry.key);
        const std::string here = PositionText(name.position) + " is " +
                                 std::string(section.stageByPosition.at(name.position)->title);
        sink.Add(entry.line.name.begin,
                 ShownText(entry.key) + " is a key of " + std::string(FindStageOfKey(name.key)->title) +
                     ", but " + here + "; " +
                     AskFor(PlacesOfKey(section, name.key), "no stage of the list reads it"));
    });
}

void FindKeysOfOtherPositions(const LintedSection& section, FindingSink& sink) {
    ForEachUnread(section, UnreadCause::NoPosition, [&](const ProfileEntry& entry) {
        const std::optional<NumberedName> name = SplitNumberedKey(entry.key);
        const std::string_view key = name ? name->key : std::string_view(entry.key);
        const std::string what =
            name ? " stands for " + PositionText(name->position) + ", which the list does not have; "
                 : " needs the position of its stage in front; ";
        sink.Add(
            entry.line.name.begin,
            ShownText(entry.key) + what + AskFor(PlacesOfKey(section, key), "no stage of the list reads it"));
    });
}

void FindKeysOfOtherChains(const LintedSection& section, FindingSink& sink) {
    // Whoever switches stages of the fixed chain on means the section for ImageProcessingCR as well.
    bool isForBoth = false;
    ForEachUnread(section, UnreadCause::OtherChain, [&](const ProfileEntry& entry) {
        for (const FixedStep& step : FixedSteps())
            isForBoth = isForBoth || IsSameKeyName(entry.key, step.switchKey);
    });
    ForEachUnread(section, UnreadCause::OtherChain, [&](const ProfileEntry& entry) {
        if (SplitNumberedKey(entry.key)) return;  // the list has a finding of its own
        const size_t offset = entry.line.name.begin;
        if (!section.RunsList()) {
            sink.Add(Severity::Note, offset,
                     ShownText(entry.key) + " is read by PROCMODE 2 and 3 only; take the line away");
            return;
        }
        sink.Add(isForBoth ? Severity::Note : Severity::Warning, offset,
                 ShownText(entry.key) + " is read by the fixed chain and ImageProcessingCR only; " +
                     AskFor(PlacesOfKey(section, entry.key), "the stage list does not need it"));
    });
}

void FindKeysOfOtherSections(const LintedSection& section, FindingSink& sink) {
    ForEachUnread(section, UnreadCause::OtherSection, [&](const ProfileEntry& entry) {
        std::string remedy = "move it to the section that a host names";
        if (FindSetting(SettingsGroup::Sensor, entry.key) != nullptr) remedy = "move it to [Settings]";
        const std::optional<NumberedName> name = SplitNumberedKey(entry.key);
        if (name && section.role == SectionRole::Low) remedy = "its stages are fixed, take the line away";
        sink.Add(entry.line.name.begin,
                 ShownText(entry.key) + " is not read in " + HeadText(section) + "; " + remedy);
    });
}

void FindRepeatedKeys(const LintedSection& section, FindingSink& sink) {
    const ProfileFile& file = *section.file;
    for (const ProfileEntry& entry : section.section->entries) {
        if (entry.lineNumber == entry.firstLineNumber || entry.key.empty()) continue;
        const ProfileEntry* const first = section.Find(entry.key);
        const bool isSame = first != nullptr && file.ValueOf(*first) == file.ValueOf(entry);
        std::optional<LintFix> fix;
        if (isSame) fix = LintFix{entry.line.whole, {}, "take the line away"};
        sink.Add(entry.line.name.begin,
                 ShownText(entry.key) + " stands here again and line " +
                     std::to_string(entry.firstLineNumber) + " counts; take one of them away",
                 std::move(fix));
    }
}

void FindKeysWithoutEffect(const LintedSection& section, FindingSink& sink) {
    for (const PlannedPlace& place : section.plan.places)
        for (const PlannedKey& key : place.keys)
            if (key.entry != nullptr && !key.key->hasEffect)
                sink.Add(key.entry->line.name.begin,
                         ShownText(key.entry->key) + " is read and has no effect; take the line away");
}

}  // namespace vastrelline

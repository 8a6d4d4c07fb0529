// SPDX-License-Identifier: Apache-2.0
#include "lint/KeySuggestion.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace vastrelline {
namespace {

constexpr size_t kSureDistance = 2;
constexpr size_t kShortestForOneLetter = 6;  // in shorter names one other letter makes another word
constexpr size_t kShortestForTwo = 10;
constexpr size_t kLongestName = 60;       // longer ones are no misspelt keys
constexpr size_t kComparisons = 300'000;  // some tenths of a second

std::string DigitsOf(std::string_view name) {
    std::string digits;
    for (const char c : name)
        if (c >= '0' && c <= '9') digits += c;
    return digits;
}

// "xSAVE_LOG", "SAVE_LOG_": who sets a line aside writes something before or behind its name. "SAVE_LOGG" is
// a slip.
bool IsSetAside(std::string_view written, std::string_view name) {
    if (written.size() <= name.size()) return false;
    const size_t more = written.size() - name.size();
    if (IsSameKeyName(written.substr(more), name)) return true;
    if (!IsSameKeyName(written.substr(0, name.size()), name)) return false;
    const std::string_view last = written.substr(name.size() - 1, 1);
    return more > 1 || !IsSameKeyName(written.substr(name.size()), last);
}

// Whether a written name can only be a slip of the hand for the other one. Other digits mean something:
// VERSION2 is not VERSION. Both without their position.
bool IsSureSlip(std::string_view written, std::string_view name) {
    const size_t distance = EditDistance(written, name);
    const size_t shortest = distance > 1 ? kShortestForTwo : kShortestForOneLetter;
    return distance <= kSureDistance && name.size() >= shortest && DigitsOf(written) == DigitsOf(name) &&
           !IsSetAside(written, name);
}

std::string_view WithoutPosition(std::string_view name) {
    const std::optional<NumberedName> numbered = SplitNumberedKey(name);
    return numbered ? numbered->key : name;
}

}  // namespace

KeySuggester::KeySuggester(const LintedSection& section)
    : section_(section), names_(section.ReadableNames()), budget_(kComparisons) {}

KeySuggestion KeySuggester::Suggest(const ProfileEntry& entry) {
    if (entry.key.size() > kLongestName) return {};
    const std::optional<NumberedName> numbered = SplitNumberedKey(entry.key);
    std::vector<std::string> candidates;
    if (numbered) candidates = section_.NamesAt(numbered->position);
    const std::string atPosition = FindNearest(entry.key, candidates);
    KeySuggestion suggestion{atPosition, false};
    if (atPosition.empty()) {
        if (budget_ < names_.size()) return {};
        budget_ -= names_.size();
        candidates = names_;
        suggestion.name = FindNearest(entry.key, candidates);
    }
    if (suggestion.name.empty()) return suggestion;
    const auto nearOnes = std::count_if(candidates.begin(), candidates.end(), [&](const std::string& name) {
        return EditDistance(entry.key, name) <= kSureDistance;
    });
    // What stands at another position may be meant, but for certain it is only asked for.
    const bool isOfPlace = !numbered || !atPosition.empty();
    suggestion.isSure = isOfPlace && nearOnes == 1 &&
                        IsSureSlip(WithoutPosition(entry.key), WithoutPosition(suggestion.name)) &&
                        section_.Find(suggestion.name) == nullptr;
    return suggestion;
}

std::vector<std::string> PlacesOfKey(const LintedSection& section, std::string_view key) {
    constexpr size_t kMost = 3;
    std::vector<std::string> names;
    for (const auto& [position, stage] : section.stageByPosition) {
        if (names.size() == kMost) break;
        if (const Key* const found = FindStageKey(*stage, key))
            names.push_back(NumberedKeyName(position, found->name));
    }
    return names;
}

std::string AskFor(const std::vector<std::string>& names, std::string_view otherwise) {
    if (names.empty()) return std::string(otherwise);
    std::string text = "did you mean ";
    for (size_t i = 0; i < names.size(); ++i) {
        if (i > 0) text += i + 1 == names.size() ? " or " : ", ";
        text += names[i];
    }
    return text + "?";
}

}  // namespace vastrelline

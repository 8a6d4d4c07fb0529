// SPDX-License-Identifier: Apache-2.0
#include "profile/KeyLookup.h"

#include <algorithm>
#include <charconv>
#include <span>

#include "messages/Suggestion.h"
#include "profile/SectionPlan.h"

namespace vastrelline {

namespace {

constexpr SettingsGroup kGroups[] = {SettingsGroup::Common, SettingsGroup::Fixed, SettingsGroup::Sensor};

bool IsPartOfName(char letter) {
    return (letter >= '0' && letter <= '9') || (letter >= 'A' && letter <= 'Z') ||
           (letter >= 'a' && letter <= 'z') || letter == '_';
}

// Whether a text holds the name as a word of its own.
bool Names(std::string_view text, std::string_view name) {
    for (size_t at = text.find(name); at != std::string_view::npos; at = text.find(name, at + 1)) {
        const size_t end = at + name.size();
        const bool beginsThere = at == 0 || !IsPartOfName(text[at - 1]);
        if (beginsThere && (end == text.size() || !IsPartOfName(text[end]))) return true;
    }
    return false;
}

std::vector<std::string_view> NotesOf(std::span<const std::string_view> notes, std::string_view name) {
    std::vector<std::string_view> found;
    for (const std::string_view note : notes)
        if (Names(note, name)) found.push_back(note);
    return found;
}

bool Holds(std::span<const std::string_view> names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

KeyTopic MakeTopic(const KeyPlace& place) {
    if (place.stage != nullptr) {
        KeyTopic topic{place.key, place.stage, std::nullopt, nullptr,
                       NotesOf(place.stage->notes, place.key->name)};
        if (Holds(place.key->fixedNames, place.key->name))
            topic.fixedKey = FindSetting(SettingsGroup::Fixed, place.key->name);
        return topic;
    }
    const Stage* const stage = FindStage(place.key->stage);
    KeyTopic topic{place.key, stage, place.group, nullptr,
                   NotesOf(SettingsOf(*place.group).notes, place.key->name)};
    if (stage != nullptr)
        for (const std::string_view note : NotesOf(stage->notes, place.key->name))
            topic.notes.push_back(note);
    if (place.group == SettingsGroup::Common)
        topic.fixedKey = FindSetting(SettingsGroup::Fixed, place.key->name);
    return topic;
}

// What stands for the fixed chain's key already.
bool IsTold(const std::vector<KeyTopic>& topics, const Key& key) {
    return std::any_of(topics.begin(), topics.end(),
                       [&](const KeyTopic& topic) { return topic.fixedKey == &key; });
}

std::vector<KeyTopic> FindTopics(std::string_view name) {
    std::vector<KeyTopic> topics;
    for (const KeyPlace& place : FindKeyPlaces(name))
        if (!IsTold(topics, *place.key)) topics.push_back(MakeTopic(place));
    return topics;
}

const Stage* FindStageNamed(std::string_view word) {
    int32_t number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (error == std::errc() && end == word.data() + word.size()) return FindStage(number);
    for (const Stage& stage : AllStageRows())
        if (IsSameKeyName(stage.name, word) || IsSameKeyName(stage.title, word) ||
            IsSameKeyName(stage.page, word))
            return &stage;
    return nullptr;
}

// All that can be looked up.
std::vector<std::string> LookUpNames() {
    std::vector<std::string> names{std::string(kListNumberKey)};
    const auto add = [&](std::string_view name) {
        if (std::find(names.begin(), names.end(), name) == names.end()) names.emplace_back(name);
    };
    for (const Stage& stage : AllStageRows())
        for (const Key& key : stage.keys) add(key.name);
    for (const SettingsGroup group : kGroups)
        for (const Key& key : SettingsOf(group).keys) add(key.name);
    for (const Stage& stage : AllStageRows()) {
        add(stage.name);
        add(stage.title);
    }
    return names;
}

}  // namespace

std::optional<LookedUp> LookUpKey(std::string_view word) {
    LookedUp found;
    std::string_view name = word;
    if (const std::optional<NumberedName> numbered = SplitNumberedKey(word)) {
        found.position = numbered->position;
        name = numbered->key;
    }
    if (IsSameKeyName(name, kListNumberKey)) {
        found.keys.push_back({&ListNumberKey(), nullptr, std::nullopt, nullptr, {}});
    } else {
        found.keys = FindTopics(name);
    }
    if (!found.position) found.stage = FindStageNamed(word);
    if (found.keys.empty() && found.stage == nullptr) return std::nullopt;
    found.name = found.keys.empty() ? found.stage->title : found.keys.front().key->name;
    return found;
}

std::string FindNearestKey(std::string_view word) {
    const std::optional<NumberedName> numbered = SplitNumberedKey(word);
    if (!numbered) return FindNearest(word, LookUpNames());
    const std::string nearest = FindNearest(numbered->key, LookUpNames());
    return nearest.empty() ? nearest : NumberedKeyName(numbered->position, nearest);
}

}  // namespace vastrelline

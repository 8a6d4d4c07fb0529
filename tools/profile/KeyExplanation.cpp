// SPDX-License-Identifier: Apache-2.0
#include "profile/KeyExplanation.h"

#include <algorithm>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <optional>
#include <span>
#include <string_view>

#include "profile/PlainWords.h"
#include "profile/SectionPlan.h"
#include "profile/ValueJson.h"
#include "profile/ValueTable.h"

namespace vastrelline {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view kIndent = "  ";
constexpr size_t kLabelWidth = 10;

std::string Joined(std::span<const std::string_view> names) {
    std::string text;
    for (const std::string_view name : names) text.append(text.empty() ? "" : ", ").append(name);
    return text;
}

std::string Concat(std::initializer_list<std::string_view> parts) {
    std::string text;
    for (const std::string_view part : parts) text.append(part);
    return text;
}

std::string StageText(const Stage& stage) {
    return Concat({stage.title, " (", std::to_string(stage.number), ")"});
}

std::string TypeText(KeyType type) {
    switch (type) {
        case KeyType::Integer:
            return "a whole number; the leading digits count";
        case KeyType::Number:
        case KeyType::SingleNumber:
            return "a number, with a point";
        case KeyType::CutNumber:
            return "a number, whose fraction is cut off";
        case KeyType::Text:
            break;
    }
    return "a text of up to 260 characters";
}

std::string GroupText(SettingsGroup group) {
    switch (group) {
        case SettingsGroup::Common:
            return "setting of a section";
        case SettingsGroup::Fixed:
            return "setting of the fixed and the CR chain";
        case SettingsGroup::Sensor:
            break;
    }
    return "key of section Settings";
}

std::string TopicTitle(const KeyTopic& topic) {
    std::string title = std::string(topic.key->name) + ": ";
    if (topic.key == &ListNumberKey()) return title + "number of the stage at a position of the list";
    if (topic.group == SettingsGroup::Fixed && topic.stage != nullptr)
        return title + "key of " + StageText(*topic.stage) + " in the fixed and the CR chain";
    return title + (topic.group ? GroupText(*topic.group) : "key of the stage " + StageText(*topic.stage));
}

// A label and its text, whose further lines begin below its first.
std::string Labelled(std::string_view label, const std::string& text, size_t width) {
    if (text.empty()) return {};
    const std::string blanks(kIndent.size() + kLabelWidth, ' ');
    std::string lines = WrapWords(text, blanks, width);
    const std::string head = std::string(kIndent) + PaddedText(std::string(label), kLabelWidth);
    return lines.replace(0, head.size(), head);
}

std::string DefaultText(const Key& key) {
    return key.defaultText.empty() ? "empty" : std::string(key.defaultText);
}

// The stage's key that a key of the fixed chain stands for; null if there is none.
const Key* ListKeyOf(const KeyTopic& topic) {
    if (!topic.group) return topic.key;
    if (topic.group != SettingsGroup::Fixed || topic.stage == nullptr) return nullptr;
    for (const Key& key : topic.stage->keys)
        if (std::find(key.fixedNames.begin(), key.fixedNames.end(), topic.key->name) != key.fixedNames.end())
            return &key;
    return nullptr;
}

// How a list of stages names the key.
std::string ListText(const KeyTopic& topic, std::optional<int32_t> position) {
    const Key* const key = ListKeyOf(topic);
    if (key == nullptr) return {};
    const std::string_view stage = topic.stage != nullptr ? topic.stage->title : "a stage";
    if (position)
        return Concat({NumberedKeyName(*position, key->name), " where ", stage, " stands at position ",
                       std::to_string(*position), ", counted from 0"});
    return Concat({"NN_", key->name, ", NN being the position of ", stage, " in the list, from 00 on"});
}

// How the fixed chain names it.
std::string FixedText(const KeyTopic& topic) {
    if (topic.group == SettingsGroup::Common) return topic.fixedKey != nullptr ? "read there, too" : "";
    if (topic.group || topic.stage == nullptr) return {};
    if (topic.key->fixedNames.empty()) return "none";
    const bool isOne = topic.stage->fixedSwitches.size() == 1;
    return Concat({Joined(topic.key->fixedNames), "; ", Joined(topic.stage->fixedSwitches), " at 1 ",
                   isOne ? "runs" : "run", " the stage"});
}

std::string StageNumbers() {
    std::string text;
    for (const Stage& stage : AllStageRows())
        text += Concat({text.empty() ? "" : ", ", std::to_string(stage.number), " ", stage.title});
    return text;
}

std::string TextOf(const KeyTopic& topic, std::optional<int32_t> position, size_t width) {
    const Key& key = *topic.key;
    std::string text =
        Concat({TopicTitle(topic), "\n\n", WrapWords(PlainWords(key.meaning), kIndent, width), "\n"});
    text += Labelled("sensible", PlainWords(key.range), width);
    std::string defaultText = DefaultText(key);
    if (topic.fixedKey != nullptr && topic.fixedKey->defaultText != key.defaultText)
        defaultText += "; in the fixed chain " + DefaultText(*topic.fixedKey);
    text += Labelled("default", defaultText, width);
    if (key.syncText)
        text += Labelled(
            "sensor",
            std::string(*key.syncText) + " is written by a run whose sensor's own profile lacks the key",
            width);
    text += Labelled("type", TypeText(key.type), width);
    text += Labelled("looks", PlainWords(key.look), width);
    if (&key == &ListNumberKey()) text += Labelled("stages", StageNumbers(), width);
    text += Labelled("in a list", ListText(topic, position), width);
    text += Labelled("fixed", FixedText(topic), width);
    if (!key.hasEffect) text += Labelled("note", "read, and of no effect on any result", width);
    for (const std::string_view note : topic.notes) text += Labelled("note", PlainWords(note), width);
    return text;
}

std::string KeyLines(const Stage& stage) {
    size_t nameWidth = 0;
    size_t defaultWidth = 0;
    for (const Key& key : stage.keys) {
        nameWidth = std::max(nameWidth, key.name.size());
        defaultWidth = std::max(defaultWidth, key.defaultText.size());
    }
    std::string text;
    for (const Key& key : stage.keys) {
        text.append(kIndent).append(PaddedText(std::string(key.name), nameWidth)).append(kIndent);
        text.append(PaddedText(std::string(key.defaultText), defaultWidth)).append(kIndent);
        text.append(key.hasEffect ? PlainWords(key.range) : "no effect").append("\n");
    }
    return text;
}

std::string TextOf(const Stage& stage, size_t width) {
    std::string text =
        Concat({"stage ", StageText(stage), "\n\n", WrapWords(PlainWords(stage.text), kIndent, width), "\n",
                Labelled("looks", PlainWords(stage.look), width)});
    const std::string switches = Joined(stage.fixedSwitches);
    text += Labelled("fixed", switches.empty() ? "not in the fixed chain" : "switched by " + switches, width);
    text += Labelled("log", Joined(stage.logWords), width);
    text += Labelled("dumps", Joined(stage.dumps), width);
    for (const std::string_view note : stage.notes) text += Labelled("note", PlainWords(note), width);
    return Concat(
        {text, "\nIts keys, with default and sensible range; a list has them under the stage's position:\n",
         KeyLines(stage)});
}

std::string TextOf(const std::vector<KeyOccurrence>& occurrences) {
    std::string text;
    const std::string* section = nullptr;
    for (const KeyOccurrence& each : occurrences) {
        if (section == nullptr || *section != each.section)
            text += Concat({"\nIn section ", ShownText(each.section), ":\n"});
        section = &each.section;
        text.append(kIndent).append(ShownText(each.value.name)).append(" = ");
        text.append(ShownText(FormatReadValue(each.value.reading.value)));
        text.append("  (").append(DescribeMark(each.value)).append(")");
        const std::string slip = DescribeSlip(each.value.reading);
        text.append(slip.empty() ? "" : "; ").append(slip).append("\n");
    }
    return text;
}

Json ListOf(std::span<const std::string_view> texts) {
    Json list = Json::array();
    for (const std::string_view text : texts) list.push_back(PlainWords(text));
    return list;
}

Json DefaultOf(const Key& key) {
    return ValueToJson(ReadWritten(std::nullopt, key.type, key.defaultText).value);
}

std::string_view TypeName(KeyType type) {
    return type == KeyType::Integer ? "integer" : type == KeyType::Text ? "text" : "number";
}

Json ToJson(const KeyTopic& topic) {
    const Key& key = *topic.key;
    Json object = {{"name", key.name},
                   {"type", TypeName(key.type)},
                   {"default", DefaultOf(key)},
                   {"range", PlainWords(key.range)},
                   {"meaning", PlainWords(key.meaning)},
                   {"look", PlainWords(key.look)},
                   {"hasEffect", key.hasEffect},
                   {"notes", ListOf(topic.notes)}};
    if (topic.stage != nullptr) object["stage"] = topic.stage->number;
    object["takesPosition"] = !topic.group.has_value();
    if (topic.fixedKey != nullptr) object["fixedDefault"] = DefaultOf(*topic.fixedKey);
    object["fixedNames"] = key.fixedNames;
    return object;
}

Json ToJson(const Stage& stage) {
    Json keys = Json::array();
    for (const Key& key : stage.keys) keys.push_back(key.name);
    return {{"number", stage.number},
            {"name", stage.name},
            {"title", stage.title},
            {"text", PlainWords(stage.text)},
            {"look", PlainWords(stage.look)},
            {"notes", ListOf(stage.notes)},
            {"fixedSwitches", stage.fixedSwitches},
            {"keys", keys}};
}

bool IsLookedUp(const LookedUp& found, const EffectivePlace& place, const EffectiveValue& value) {
    if (found.position && found.position != place.position) return false;
    if (found.stage != nullptr && found.stage == place.stage) return true;
    return std::any_of(found.keys.begin(), found.keys.end(), [&](const KeyTopic& topic) {
        return value.key == topic.key || value.key == topic.fixedKey;
    });
}

}  // namespace

std::vector<KeyOccurrence> FindOccurrences(const LookedUp& found, const std::vector<EffectivePlace>& places) {
    std::vector<KeyOccurrence> occurrences;
    for (const EffectivePlace& place : places)
        for (const EffectiveValue& value : place.values)
            if (IsLookedUp(found, place, value))
                occurrences.push_back({place.section, PlaceTitle(place), value});
    return occurrences;
}

std::string ExplainForPeople(const LookedUp& found, const std::vector<KeyOccurrence>& occurrences,
                             size_t width) {
    std::string text;
    for (const KeyTopic& topic : found.keys)
        text.append(text.empty() ? "" : "\n").append(TextOf(topic, found.position, width));
    if (found.stage != nullptr) text.append(text.empty() ? "" : "\n").append(TextOf(*found.stage, width));
    return text + TextOf(occurrences);
}

Json ExplainToJson(const LookedUp& found, const std::vector<KeyOccurrence>& occurrences) {
    Json object = {{"name", found.name}, {"keys", Json::array()}, {"occurrences", Json::array()}};
    if (found.position) object["position"] = *found.position;
    for (const KeyTopic& topic : found.keys) object["keys"].push_back(ToJson(topic));
    if (found.stage != nullptr) object["stage"] = ToJson(*found.stage);
    for (const KeyOccurrence& each : occurrences) {
        Json place = {{"section", each.section},
                      {"place", each.place},
                      {"key", each.value.name},
                      {"value", ValueToJson(each.value.reading.value)},
                      {"mark", MarkName(each.value.reading.mark)}};
        if (each.value.line > 0) place["line"] = each.value.line;
        object["occurrences"].push_back(place);
    }
    return object;
}

}  // namespace vastrelline

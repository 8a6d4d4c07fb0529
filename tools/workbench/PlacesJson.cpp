// SPDX-License-Identifier: Apache-2.0
#include "workbench/PlacesJson.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "profile/EffectiveValues.h"
#include "profile/PlainWords.h"
#include "profile/ValueJson.h"
#include "profile/ValueReading.h"
#include "profile/ValueTable.h"
#include "profile_text/Utf8.h"
#include "workbench/DeskEdits.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

constexpr double kMostChoices = 5;

std::string_view TypeName(KeyType type) {
    switch (type) {
        case KeyType::Integer:
            return "integer";
        case KeyType::Number:
            return "number";
        case KeyType::SingleNumber:
            return "single-number";
        case KeyType::CutNumber:
            return "cut-number";
        case KeyType::Text:
            break;
    }
    return "text";
}

std::string_view ShapeName(ValueShape shape) {
    switch (shape) {
        case ValueShape::Odd:
            return "odd";
        case ValueShape::Even:
            return "even";
        case ValueShape::PowerOfTwo:
            return "power-of-two";
        case ValueShape::NotZero:
            return "not-zero";
        case ValueShape::Any:
            break;
    }
    return "any";
}

// Whether a range holds beside the other values of its place.
bool Holds(const SensibleRange& range, const EffectivePlace& place) {
    if (range.whenKey.empty()) return true;
    for (const EffectiveValue& value : place.values) {
        if (value.key->name != range.whenKey) continue;
        const auto* const number = std::get_if<int32_t>(&value.reading.value);
        return number != nullptr &&
               std::find(range.whenIs.begin(), range.whenIs.end(), *number) != range.whenIs.end();
    }
    return false;
}

Json BoundJson(double bound) { return std::isfinite(bound) ? Json(bound) : Json(nullptr); }

// From the least to the greatest value of the ranges that hold.
void AddRange(Json& object, const EffectiveValue& value, const EffectivePlace& place) {
    std::optional<SensibleRange> all;
    for (const SensibleRange& range : value.key->sensible) {
        if (!Holds(range, place)) continue;
        if (!all) {
            all = range;
            continue;
        }
        all->smallest = std::min(all->smallest, range.smallest);
        all->largest = std::max(all->largest, range.largest);
        if (all->shape != range.shape) all->shape = ValueShape::Any;
    }
    object["smallest"] = all ? BoundJson(all->smallest) : Json(nullptr);
    object["largest"] = all ? BoundJson(all->largest) : Json(nullptr);
    object["shape"] = ShapeName(all ? all->shape : ValueShape::Any);
    object["choices"] = nullptr;
    const bool isCounted = value.key->type == KeyType::Integer || value.key->type == KeyType::CutNumber;
    if (!all || !isCounted || all->shape != ValueShape::Any || !(all->largest - all->smallest < kMostChoices))
        return;
    object["choices"] = Json::array();
    for (double each = all->smallest; each <= all->largest; ++each)
        object["choices"].push_back(static_cast<int32_t>(each));
}

Json TextIn(const ProfileFile& file, const std::string& section, const std::string& key) {
    const ProfileEntry* const entry = file.FindEntry(section, key);
    if (entry == nullptr) return nullptr;
    const std::optional<std::wstring> value = file.ValueOf(*entry);
    return value ? Json(EncodeUtf8(*value)) : Json(nullptr);
}

Json ValueJson(const EffectiveValue& value, const EffectivePlace& place, const ProfileFile& file,
               const ProfileFile& saved) {
    Json object = {{"key", value.name},
                   {"base", value.key->name},
                   {"type", TypeName(value.key->type)},
                   {"text", TextIn(file, place.section, value.name)},
                   {"fileText", TextIn(saved, place.section, value.name)},
                   {"value", ValueToJson(value.reading.value)},
                   {"mark", DescribeMark(value)},
                   {"line", value.line > 0 ? Json(value.line) : Json(nullptr)},
                   {"default", value.key->defaultText},
                   {"range", PlainWords(value.key->range)},
                   {"hasEffect", value.key->hasEffect},
                   {"meaning", PlainWords(value.key->meaning)},
                   {"look", PlainWords(value.key->look)}};
    AddRange(object, value, place);
    return object;
}

}  // namespace

Json PlacesToJson(const ProfileFile& file, const SectionPlan& plan, const ProfileFile& saved,
                  const DeskState& desk) {
    const std::vector<EffectivePlace> places = ReadEffectiveValues(file, plan);
    Json array = Json::array();
    for (size_t i = 0; i < places.size(); ++i) {
        const EffectivePlace& place = places[i];
        const std::string switchKey = SwitchKeyOf(plan.places[i]);
        Json object = {{"place", i},
                       {"role", RoleName(place.role)},
                       {"title", PlaceTitle(place)},
                       {"section", place.section},
                       {"position", place.position ? Json(*place.position) : Json(nullptr)},
                       {"number", place.stageNumber},
                       {"stage", place.stage == nullptr ? Json(nullptr) : Json(place.stage->title)},
                       {"page", place.stage == nullptr ? Json(nullptr) : Json(place.stage->page)},
                       {"runs", place.runs},
                       {"off", desk.offKeys.contains(switchKey)},
                       {"canSwitch", !switchKey.empty()},
                       {"values", Json::array()}};
        for (const EffectiveValue& value : place.values)
            object["values"].push_back(ValueJson(value, place, file, saved));
        array.push_back(std::move(object));
    }
    return array;
}

}  // namespace vastrelline

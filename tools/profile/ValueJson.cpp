// SPDX-License-Identifier: Apache-2.0
#include "profile/ValueJson.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <variant>

#include "profile/PlainWords.h"

namespace vastrelline {

namespace {

using Json = nlohmann::ordered_json;

Json PlaceToJson(const EffectivePlace& place) {
    Json object = {{"role", RoleName(place.role)}, {"title", PlaceTitle(place)}, {"section", place.section}};
    if (place.position) object["position"] = *place.position;
    if (place.stageNumber != 0) object["stage"] = place.stageNumber;
    if (place.stage != nullptr) object["stageName"] = place.stage->name;
    object["runs"] = place.runs;
    object["values"] = Json::array();
    for (const EffectiveValue& value : place.values) object["values"].push_back(EffectiveToJson(value));
    return object;
}

}  // namespace

Json ValueToJson(const ReadValue& value) {
    if (const auto* const integer = std::get_if<int32_t>(&value)) return *integer;
    if (const auto* const number = std::get_if<double>(&value); number != nullptr && std::isfinite(*number))
        return *number;
    // Through its shortest text: 0.1F is 0.1, not 0.10000000149011612.
    if (const auto* const single = std::get_if<float>(&value); single != nullptr && std::isfinite(*single))
        return Json::parse(FormatReadValue(value));
    return FormatReadValue(value);
}

Json EffectiveToJson(const EffectiveValue& value) {
    Json object = {{"key", value.name},
                   {"value", ValueToJson(value.reading.value)},
                   {"mark", MarkName(value.reading.mark)}};
    if (value.line > 0) object["line"] = value.line;
    if (!IsAsWritten(value.reading)) object["reason"] = DescribeSlip(value.reading);
    object["default"] = ValueToJson(ReadWritten(std::nullopt, value.key->type, value.key->defaultText).value);
    object["range"] = PlainWords(value.key->range);
    object["hasEffect"] = value.key->hasEffect;
    return object;
}

Json ValuesToJson(const std::string& path, const SectionPlan& plan, const ExportTraits& traits,
                  const std::vector<EffectivePlace>& places) {
    Json object = {{"profile", path},
                   {"section", plan.section},
                   {"export", traits.name},
                   {"chain", ChainName(plan.chain)},
                   {"places", Json::array()}};
    for (const EffectivePlace& place : places) object["places"].push_back(PlaceToJson(place));
    return object;
}

}  // namespace vastrelline

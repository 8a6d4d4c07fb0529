// SPDX-License-Identifier: Apache-2.0
#include "profile/EffectiveValues.h"

#include <utility>

namespace vastrelline {

namespace {

EffectiveValue ReadPlanned(const ProfileFile& file, const PlannedKey& planned) {
    const std::optional<std::wstring> written =
        planned.entry != nullptr ? file.ValueOf(*planned.entry) : std::nullopt;
    const size_t line = planned.entry != nullptr ? planned.entry->lineNumber : 0;
    return {planned.name, planned.key, line,
            ReadWritten(written, planned.key->type, planned.key->defaultText)};
}

std::string StageTitle(const EffectivePlace& place) {
    if (place.stage != nullptr) return std::string(place.stage->title);
    return place.role == PlaceRole::FixedStep ? "Inversion" : "no stage";
}

// Median and Gaussian run twice in the fixed chain.
std::string StepTitle(const EffectivePlace& place) {
    const std::string_view switchKey = place.values.front().key->name;
    const bool isTwice = place.stage != nullptr && place.stage->fixedSwitches.size() > 1;
    return StageTitle(place) + (isTwice ? switchKey.starts_with("PRE_") ? ", first" : ", second" : "");
}

}  // namespace

std::vector<EffectivePlace> ReadEffectiveValues(const ProfileFile& file, const SectionPlan& plan) {
    std::vector<EffectivePlace> places;
    places.reserve(plan.places.size());
    for (const PlannedPlace& planned : plan.places) {
        EffectivePlace place{planned.role,
                             planned.section,
                             planned.position,
                             planned.stageNumber,
                             planned.stage,
                             planned.runs,
                             {}};
        for (const PlannedKey& key : planned.keys) place.values.push_back(ReadPlanned(file, key));
        places.push_back(std::move(place));
    }
    return places;
}

bool IsStep(const EffectivePlace& place) {
    return place.role == PlaceRole::ListedStage || place.role == PlaceRole::PassedOver ||
           place.role == PlaceRole::FixedStep || place.role == PlaceRole::LowStage;
}

std::string PlaceTitle(const EffectivePlace& place) {
    std::string position;
    if (place.position) {
        position = NumberedKeyName(*place.position, "");
        position.back() = ' ';
    }
    switch (place.role) {
        case PlaceRole::Settings:
            return "Settings of the section";
        case PlaceRole::Sensor:
            return "Sensor and range, section " + place.section;
        case PlaceRole::LowSettings:
            return "Curve stages of a weak frame, section " + place.section;
        case PlaceRole::LowStage:
            return position + StageTitle(place) + " of a weak frame, section " + place.section;
        case PlaceRole::FixedStep:
            return StepTitle(place);
        default:
            return position + StageTitle(place);
    }
}

std::string_view RoleName(PlaceRole role) {
    switch (role) {
        case PlaceRole::Settings:
            return "settings";
        case PlaceRole::Sensor:
            return "sensor";
        case PlaceRole::ListedStage:
            return "listed-stage";
        case PlaceRole::PassedOver:
            return "passed-over";
        case PlaceRole::FixedStep:
            return "fixed-step";
        case PlaceRole::LowSettings:
            return "low-settings";
        case PlaceRole::LowStage:
            return "low-stage";
    }
    return {};
}

bool IsAsWritten(const ValueReading& reading) {
    return reading.mark == ReadingMark::FromFile || reading.mark == ReadingMark::Default;
}

}  // namespace vastrelline

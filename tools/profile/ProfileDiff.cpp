// SPDX-License-Identifier: Apache-2.0
#include "profile/ProfileDiff.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <utility>

#include "profile/StageAlignment.h"

namespace vastrelline {

namespace {

struct NamedValue {
    std::string name;
    const EffectiveValue* value;
};

// A place as it is compared: settings with the inversion, or one stage that runs.
struct Unit {
    std::string title;
    int32_t stageNumber = 0;
    std::optional<int32_t> position;
    std::vector<NamedValue> values;
};

// All of one run, sorted by what can be set side by side.
struct Units {
    Unit settings;
    Unit sensor;
    std::vector<Unit> stages;
    Unit lowSettings;
    std::vector<Unit> lowStages;
};

// A stage's keys have names of their own in the fixed chain.
std::string CommonName(const EffectivePlace& place, const EffectiveValue& value) {
    if (place.stage != nullptr)
        for (const Key& key : place.stage->keys)
            if (std::find(key.fixedNames.begin(), key.fixedNames.end(), value.key->name) !=
                key.fixedNames.end())
                return std::string(key.name);
    return std::string(value.key->name);
}

// What says which stages run; the switch of the curve says which curve, and that is a value.
bool IsAboutTheList(const EffectivePlace& place, const EffectiveValue& value) {
    constexpr int32_t kCurve = 9;
    const std::string_view name = value.key->name;
    const bool isSwitch = place.role == PlaceRole::FixedStep && place.stage != nullptr &&
                          place.stageNumber != kCurve && &value == &place.values.front();
    return isSwitch || IsSameKeyName(name, kListCountKey) || IsSameKeyName(name, kListNumberKey);
}

void AddValues(Unit& unit, const EffectivePlace& place) {
    for (const EffectiveValue& value : place.values)
        if (!IsAboutTheList(place, value)) unit.values.push_back({CommonName(place, value), &value});
}

Unit StageUnit(const EffectivePlace& place) {
    Unit unit{std::string(place.stage->title), place.stageNumber, place.position, {}};
    AddValues(unit, place);
    return unit;
}

Units SortUnits(const std::vector<EffectivePlace>& places) {
    Units units;
    for (const EffectivePlace& place : places) {
        const bool isInversion = place.role == PlaceRole::FixedStep && place.stage == nullptr;
        if (place.role == PlaceRole::Settings || isInversion) {
            AddValues(units.settings, place);
        } else if (place.role == PlaceRole::Sensor) {
            AddValues(units.sensor, place);
        } else if (place.role == PlaceRole::LowSettings) {
            AddValues(units.lowSettings, place);
        } else if (place.role == PlaceRole::LowStage) {
            units.lowStages.push_back(StageUnit(place));
        } else if (place.runs && place.stage != nullptr) {
            units.stages.push_back(StageUnit(place));
        }
    }
    units.settings.title = "Settings of the section";
    units.sensor.title = "Sensor and range, section Settings";
    units.lowSettings.title = "Curve stages of a weak frame, section IP_LOWMODE";
    return units;
}

bool IsSame(const EffectiveValue& one, const EffectiveValue& other) {
    return FormatReadValue(one.reading.value) == FormatReadValue(other.reading.value);
}

const EffectiveValue* Find(const Unit& unit, const std::string& name) {
    for (const NamedValue& value : unit.values)
        if (value.name == name) return value.value;
    return nullptr;
}

std::optional<EffectiveValue> CopyOf(const EffectiveValue* value) {
    return value != nullptr ? std::optional(*value) : std::nullopt;
}

std::vector<ValueDifference> DiffValues(const Unit& first, const Unit& second) {
    std::vector<ValueDifference> differences;
    const auto add = [&](const std::string& name, const EffectiveValue* one, const EffectiveValue* other) {
        const Key& key = *(one != nullptr ? one : other)->key;
        differences.push_back({name, CopyOf(one), CopyOf(other), key.hasEffect});
    };
    for (const NamedValue& value : first.values) {
        const EffectiveValue* const other = Find(second, value.name);
        if (other == nullptr || !IsSame(*value.value, *other)) add(value.name, value.value, other);
    }
    for (const NamedValue& value : second.values)
        if (Find(first, value.name) == nullptr) add(value.name, nullptr, value.value);
    return differences;
}

// Keys that one chain does not have, left at their defaults, are no difference.
bool IsUnsetInOne(const ValueDifference& difference) {
    const std::optional<EffectiveValue>& only = difference.first ? difference.first : difference.second;
    return !(difference.first && difference.second) && only->reading.mark == ReadingMark::Default;
}

std::vector<ValueDifference> DiffSetValues(const Unit& first, const Unit& second) {
    std::vector<ValueDifference> differences = DiffValues(first, second);
    std::erase_if(differences, IsUnsetInOne);
    return differences;
}

size_t CountAlike(const Unit& first, const Unit& second) {
    constexpr size_t kMost = 999;
    size_t count = 0;
    for (const NamedValue& value : first.values) {
        const EffectiveValue* const other = Find(second, value.name);
        if (other != nullptr && IsSame(*value.value, *other)) ++count;
    }
    return std::min(count, kMost);
}

class Differences {
public:
    void AddSettings(const Unit& first, const Unit& second) {
        std::vector<ValueDifference> values = DiffSetValues(first, second);
        if (values.empty()) return;
        PlaceDifference difference;
        difference.title = first.title;
        difference.values = std::move(values);
        found_.push_back(std::move(difference));
    }

    void AddStages(const std::vector<Unit>& first, const std::vector<Unit>& second, bool isOfWeakFrame) {
        const std::vector<AlignedStage> aligned =
            AlignStages(KindsOf(first), KindsOf(second),
                        [&](size_t i, size_t j) { return CountAlike(first[i], second[j]); });
        for (const AlignedStage& each : aligned) {
            PlaceDifference difference =
                DiffStage(each.first ? &first[*each.first] : nullptr,
                          each.second ? &second[*each.second] : nullptr, each.isMoved);
            difference.isOfWeakFrame = isOfWeakFrame;
            const bool isChange = difference.change != PlaceChange::Changed || !difference.values.empty();
            if (isChange) found_.push_back(std::move(difference));
        }
    }

    std::vector<PlaceDifference> Take() { return std::move(found_); }

private:
    static std::vector<int32_t> KindsOf(const std::vector<Unit>& units) {
        std::vector<int32_t> kinds;
        kinds.reserve(units.size());
        for (const Unit& unit : units) kinds.push_back(unit.stageNumber);
        return kinds;
    }

    static PlaceDifference DiffStage(const Unit* first, const Unit* second, bool isMoved) {
        const Unit nothing;
        const Unit& shown = first != nullptr ? *first : *second;
        PlaceDifference difference;
        difference.title = shown.title;
        difference.stageNumber = shown.stageNumber;
        if (first != nullptr) difference.firstPosition = first->position;
        if (second != nullptr) difference.secondPosition = second->position;
        difference.change = first == nullptr    ? PlaceChange::OnlyInSecond
                            : second == nullptr ? PlaceChange::OnlyInFirst
                            : isMoved           ? PlaceChange::Moved
                                                : PlaceChange::Changed;
        difference.values =
            DiffSetValues(first != nullptr ? *first : nothing, second != nullptr ? *second : nothing);
        return difference;
    }

    std::vector<PlaceDifference> found_;
};

}  // namespace

std::vector<PlaceDifference> DiffPlaces(const std::vector<EffectivePlace>& first,
                                        const std::vector<EffectivePlace>& second) {
    const Units one = SortUnits(first);
    const Units other = SortUnits(second);
    Differences differences;
    differences.AddSettings(one.settings, other.settings);
    differences.AddSettings(one.sensor, other.sensor);
    differences.AddStages(one.stages, other.stages, false);
    // A run without the decision has no weak frames to tell of.
    if (!one.lowStages.empty() && !other.lowStages.empty()) {
        differences.AddSettings(one.lowSettings, other.lowSettings);
        differences.AddStages(one.lowStages, other.lowStages, true);
    }
    return differences.Take();
}

std::string_view ChangeName(PlaceChange change) {
    switch (change) {
        case PlaceChange::Changed:
            return "changed";
        case PlaceChange::OnlyInFirst:
            return "only-in-a";
        case PlaceChange::OnlyInSecond:
            return "only-in-b";
        case PlaceChange::Moved:
            return "moved";
    }
    return {};
}

}  // namespace vastrelline

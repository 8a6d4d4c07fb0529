// SPDX-License-Identifier: Apache-2.0
#include "keys/KeyTable.h"

#include <algorithm>

#include "keys/KeyRows.h"

namespace vastrelline {

namespace {

char Lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

const Key* FindIn(std::span<const Key> keys, std::string_view name) {
    const auto found =
        std::find_if(keys.begin(), keys.end(), [&](const Key& key) { return IsSameKeyName(key.name, name); });
    return found == keys.end() ? nullptr : &*found;
}

std::vector<Stage> JoinStageRows() {
    std::vector<Stage> stages;
    for (const std::span<const Stage> part : {StageRows1To4(), StageRows5To8(), StageRows9To13()})
        stages.insert(stages.end(), part.begin(), part.end());
    return stages;
}

}  // namespace

std::span<const Stage> AllStageRows() {
    static const std::vector<Stage> stages = JoinStageRows();
    return stages;
}

const Stage* FindStage(int32_t number) {
    for (const Stage& stage : AllStageRows())
        if (stage.number == number) return &stage;
    return nullptr;
}

const Key* FindStageKey(const Stage& stage, std::string_view name) { return FindIn(stage.keys, name); }

const Settings& SettingsOf(SettingsGroup group) {
    switch (group) {
        case SettingsGroup::Common:
            return CommonRows();
        case SettingsGroup::Fixed:
            return FixedRows();
        default:
            return SensorRows();
    }
}

const Key* FindSetting(SettingsGroup group, std::string_view name) {
    return FindIn(SettingsOf(group).keys, name);
}

std::vector<KeyPlace> FindKeyPlaces(std::string_view name) {
    std::vector<KeyPlace> places;
    for (const Stage& stage : AllStageRows())
        if (const Key* const key = FindStageKey(stage, name)) places.push_back({&stage, std::nullopt, key});
    for (const SettingsGroup group : {SettingsGroup::Common, SettingsGroup::Fixed, SettingsGroup::Sensor})
        if (const Key* const key = FindSetting(group, name)) places.push_back({nullptr, group, key});
    return places;
}

std::span<const FixedStep> FixedSteps() { return FixedStepRows(); }

std::span<const int32_t> LowSequence() { return LowSequenceRows(); }

bool IsSameKeyName(std::string_view one, std::string_view other) {
    return one.size() == other.size() && std::equal(one.begin(), one.end(), other.begin(),
                                                    [](char a, char b) { return Lower(a) == Lower(b); });
}

}  // namespace vastrelline

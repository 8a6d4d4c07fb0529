// SPDX-License-Identifier: Apache-2.0
#include "profile/SectionPlan.h"

#include <algorithm>
#include <set>
#include <utility>

#include "profile_text/Utf8.h"
#include "profile_text/ValueText.h"

namespace vastrelline {
namespace {

constexpr int32_t kFixedMode = 1;
constexpr int32_t kListedMode = 2;
constexpr int32_t kDecidingMode = 3;
constexpr int32_t kHdr = 13;
constexpr int32_t kSigmoid = 9;

// The number of a stage at a position of the list.
constexpr Key kListNumber = {kListNumberKey,
                             KeyType::Integer,
                             "0",
                             "0",
                             0,
                             true,
                             {},
                             "1 to 13",
                             {},
                             "Number of the stage at this position of the list.",
                             "",
                             std::nullopt};

class PlanMaker {
public:
    PlanMaker(const ProfileFile& file, SectionPlan& plan) : file_(file), plan_(plan) {}

    void PlanList() {
        AddGroup(PlaceRole::Settings, SettingsGroup::Common, plan_.section);
        PlanSensor();
        for (const int32_t position : ListedPositions(file_, plan_.section, plan_.functionCount))
            AddListed(position);
        if (plan_.chain == ChainKind::LowExposure) PlanLowSequence();
    }

    void PlanFixed() {
        PlannedPlace& settings = AddPlace(PlaceRole::Settings, plan_.section);
        std::set<std::string_view> ofSteps;
        for (const FixedStep& step : FixedSteps()) {
            ofSteps.insert(step.switchKey);
            ofSteps.insert(step.keys.begin(), step.keys.end());
        }
        for (const Key& key : SettingsOf(SettingsGroup::Fixed).keys)
            if (!ofSteps.contains(key.name)) AddKey(settings, std::string(key.name), key);
        // Read by whoever decides which chain runs.
        if (plan_.chain != ChainKind::Cr)
            AddKey(settings, "PROCMODE", *FindSetting(SettingsGroup::Common, "PROCMODE"));
        if (plan_.chain != ChainKind::Cr) PlanCorners();
        for (const FixedStep& step : FixedSteps()) AddStep(step);
    }

    void ListUnread() {
        const ProfileFileSection* const section = file_.FindSection(plan_.section);
        if (section == nullptr) return;
        std::set<const ProfileEntry*> read;
        for (const PlannedPlace& place : plan_.places)
            for (const PlannedKey& key : place.keys) read.insert(key.entry);
        for (const ProfileEntry& entry : section->entries)
            if (entry.counts && !read.contains(&entry)) plan_.unread.push_back(&entry);
    }

private:
    PlannedPlace& AddPlace(PlaceRole role, std::string section) {
        PlannedPlace& place = plan_.places.emplace_back();
        place.role = role;
        place.section = std::move(section);
        return place;
    }

    void AddKey(PlannedPlace& place, std::string name, const Key& key) const {
        const ProfileEntry* const entry = file_.FindEntry(place.section, name);
        place.keys.push_back({std::move(name), &key, entry});
    }

    void AddGroup(PlaceRole role, SettingsGroup group, std::string section) {
        PlannedPlace& place = AddPlace(role, std::move(section));
        for (const Key& key : SettingsOf(group).keys) AddKey(place, std::string(key.name), key);
    }

    // What a run reads in section Settings. The sensor's folder stands in the sensor's own profile only.
    void PlanSensor() {
        PlannedPlace& sensor = AddPlace(PlaceRole::Sensor, std::string(kSensorSectionName));
        for (const Key& key : SettingsOf(SettingsGroup::Sensor).keys)
            if (key.name != "SerialId") AddKey(sensor, std::string(key.name), key);
    }

    // The fixed chain takes the corners from the sensor's values; it does not normalise the range.
    void PlanCorners() {
        PlannedPlace& corners = AddPlace(PlaceRole::Sensor, std::string(kSensorSectionName));
        for (const Key& key : SettingsOf(SettingsGroup::Sensor).keys)
            if (key.syncText) AddKey(corners, std::string(key.name), key);
    }

    void AddStageKeys(PlannedPlace& place) const {
        if (place.stage == nullptr) return;
        for (const Key& key : place.stage->keys)
            AddKey(place, NumberedKeyName(*place.position, key.name), key);
    }

    void AddListed(int32_t position) {
        const std::string numberName = NumberedKeyName(position, kListNumberKey);
        PlannedPlace& place = AddPlace(PlaceRole::ListedStage, plan_.section);
        place.position = position;
        place.stageNumber = ReadIntegerKey(file_, plan_.section, numberName, 0);
        place.stage = FindStage(place.stageNumber);
        place.runs = place.stage != nullptr && RunsInList(plan_.chain, place.stageNumber);
        if (!place.runs) place.role = PlaceRole::PassedOver;
        AddKey(place, numberName, kListNumber);
        if (place.runs) AddStageKeys(place);
    }

    void AddStep(const FixedStep& step) {
        PlannedPlace& place = AddPlace(PlaceRole::FixedStep, plan_.section);
        place.stageNumber = step.stage;
        place.stage = FindStage(step.stage);
        const Key& switchKey = *FindSetting(SettingsGroup::Fixed, step.switchKey);
        const int32_t defaultValue = ParseLeadingInteger(DecodeUtf8(switchKey.defaultText));
        const bool isOn = ReadIntegerKey(file_, plan_.section, step.switchKey, defaultValue) != 0;
        // The curve stage is there in any case: without its switch as the linear curve.
        const bool isForCr = plan_.chain != ChainKind::Cr || step.isInCrChain;
        place.runs = isForCr && (isOn || step.stage == kSigmoid);
        place.isSwitchedOn = isOn;
        AddKey(place, std::string(step.switchKey), switchKey);
        for (const std::string_view name : step.keys)
            AddKey(place, std::string(name), *FindSetting(SettingsGroup::Fixed, name));
    }

    void PlanLowSequence() {
        PlannedPlace& settings = AddPlace(PlaceRole::LowSettings, std::string(kLowSectionName));
        AddKey(settings, "OUTPUTRANGE", *FindSetting(SettingsGroup::Common, "OUTPUTRANGE"));
        int32_t position = 0;
        for (const int32_t number : LowSequence()) {
            PlannedPlace& place = AddPlace(PlaceRole::LowStage, std::string(kLowSectionName));
            place.position = position++;
            place.stageNumber = number;
            place.stage = FindStage(number);
            AddStageKeys(place);
        }
    }

    const ProfileFile& file_;
    SectionPlan& plan_;
};

}  // namespace

std::string_view ChainName(ChainKind chain) {
    switch (chain) {
        case ChainKind::Configured:
            return "configured chain";
        case ChainKind::Extended:
            return "extended chain";
        case ChainKind::LowExposure:
            return "low-exposure chain";
        case ChainKind::Fixed:
            return "fixed chain";
        case ChainKind::Cr:
            break;
    }
    return "CR chain";
}

ChainKind ChainOf(int32_t procMode, ExportKind exportKind) {
    if (exportKind == ExportKind::CR) return ChainKind::Cr;
    if (procMode == kListedMode)
        return exportKind == ExportKind::NE ? ChainKind::Extended : ChainKind::Configured;
    const bool canDecide = exportKind == ExportKind::S || exportKind == ExportKind::NS;
    return procMode == kDecidingMode && canDecide ? ChainKind::LowExposure : ChainKind::Fixed;
}

bool RunsInList(ChainKind chain, int32_t stageNumber) {
    if (FindStage(stageNumber) == nullptr) return false;
    return stageNumber != kHdr || chain == ChainKind::LowExposure || chain == ChainKind::Extended;
}

SectionPlan MakeSectionPlan(const ProfileFile& file, std::string_view section, ExportKind exportKind) {
    return MakeSectionPlan(file, section, exportKind, ReadIntegerKey(file, section, "PROCMODE", kFixedMode),
                           ReadIntegerKey(file, section, kListCountKey, 0));
}

SectionPlan MakeSectionPlan(const ProfileFile& file, std::string_view section, ExportKind exportKind,
                            int32_t procMode, int32_t functionCount) {
    SectionPlan plan;
    plan.section = section;
    plan.hasSection = file.FindSection(section) != nullptr;
    const ProfileEntry* const mode = file.FindEntry(section, "PROCMODE");
    if (mode != nullptr && mode->HasValue()) plan.procMode = procMode;
    plan.chain = ChainOf(procMode, exportKind);
    plan.functionCount = functionCount;
    PlanMaker maker(file, plan);
    if (plan.chain == ChainKind::Fixed || plan.chain == ChainKind::Cr)
        maker.PlanFixed();
    else
        maker.PlanList();
    maker.ListUnread();
    return plan;
}

std::string NumberedKeyName(int32_t position, std::string_view key) {
    std::string digits = std::to_string(position);
    if (digits.size() < 2) digits.insert(0, 1, '0');
    return digits.append("_").append(key);
}

const Key& ListNumberKey() { return kListNumber; }

std::optional<NumberedName> SplitNumberedKey(std::string_view name) {
    const size_t end = std::min(name.find_first_not_of("0123456789"), name.size());
    constexpr size_t kLongestPosition = 10;  // digits of the largest
    if (end < 2 || end > kLongestPosition || end == name.size() || name[end] != '_') return std::nullopt;
    int64_t wide = 0;
    for (const char digit : name.substr(0, end)) wide = wide * 10 + (digit - '0');
    if (wide > INT32_MAX) return std::nullopt;
    const auto position = static_cast<int32_t>(wide);
    const std::string_view key = name.substr(end + 1);
    if (NumberedKeyName(position, key) != name) return std::nullopt;  // "004_" names nothing
    return NumberedName{position, key};
}

int32_t ReadIntegerKey(const ProfileFile& file, std::string_view section, std::string_view key,
                       int32_t defaultValue) {
    const ProfileEntry* const entry = file.FindEntry(section, key);
    const std::optional<std::wstring> value = entry == nullptr ? std::nullopt : file.ValueOf(*entry);
    return value ? ParseLeadingInteger(DropQuotes(*value)) : defaultValue;
}

std::vector<int32_t> ListedPositions(const ProfileFile& file, std::string_view section,
                                     int32_t functionCount) {
    const ProfileFileSection* const found = file.FindSection(section);
    std::vector<int32_t> positions;
    if (found == nullptr) return positions;
    for (const ProfileEntry& entry : found->entries) {
        if (!entry.counts) continue;
        const std::optional<NumberedName> name = SplitNumberedKey(entry.key);
        if (name && name->position < functionCount && IsSameKeyName(name->key, kListNumberKey))
            positions.push_back(name->position);
    }
    std::sort(positions.begin(), positions.end());
    return positions;
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "lint/LintedSection.h"

#include <algorithm>
#include <set>
#include <utility>

#include "messages/Suggestion.h"

namespace vastrelline {
namespace {

constexpr size_t kTypingErrors = 3;  // so many wrong letters are taken for slips of the hand
constexpr int32_t kListedMode = 2;
constexpr int32_t kDecidingMode = 3;
constexpr int32_t kEndless = INT32_MAX;

bool IsNear(std::string_view written, std::string_view name) {
    return !IsSameKeyName(written, name) && EditDistance(written, name) <= kTypingErrors;
}

bool HasNumberedKeys(const ProfileFileSection& section) {
    return std::any_of(section.entries.begin(), section.entries.end(), [](const ProfileEntry& entry) {
        const auto name = SplitNumberedKey(entry.key);
        return name && (IsSameKeyName(name->key, kListNumberKey) || FindStageOfKey(name->key) != nullptr);
    });
}

class SectionMaker {
public:
    SectionMaker(const ProfileFile& file, const ProfileFileSection& section) : file_(file) {
        linted_.file = &file;
        linted_.section = &section;
    }

    LintedSection Make() {
        const ProfileFileSection& section = *linted_.section;
        const bool hasMode = linted_.Find("PROCMODE") != nullptr;
        if (!hasMode && IsSameKeyName(section.name, kSensorSectionName)) linted_.role = SectionRole::Sensor;
        if (!hasMode && IsSameKeyName(section.name, kLowSectionName)) linted_.role = SectionRole::Low;
        const std::vector<int32_t> all = ListedPositions(file_, section.name, kEndless);
        linted_.listEnd = all.empty() ? 0 : all.back() + 1;
        MakePlan();
        ListStages(all);
        for (const ProfileEntry* const entry : linted_.plan.unread)
            linted_.unread.push_back({entry, CauseOf(*entry)});
        return std::move(linted_);
    }

private:
    // Taken over from a plan of a run: the places whose keys stand in this section.
    void MakePlan() {
        const std::string& name = linted_.section->name;
        switch (linted_.role) {
            case SectionRole::Host:
                MakeHostPlan();
                break;
            case SectionRole::Sensor:
                linted_.plan = MakeSectionPlan(file_, name, ExportKind::Plain);
                linted_.plan.places.clear();
                AddSensorPlace();
                break;
            case SectionRole::Low:
                linted_.plan = MakeSectionPlan(file_, name, ExportKind::S, kDecidingMode, 0);
                break;
        }
        KeepPlacesOfSection();
        for (size_t i = 0; i < linted_.plan.places.size(); ++i)
            if (const auto position = linted_.plan.places[i].position)
                linted_.placeByPosition.emplace(*position, i);
        ListUnread();
        ListMisspeltNumbers();
    }

    void MakeHostPlan() {
        const ProfileFileSection& section = *linted_.section;
        const ProfileEntry* const mode = linted_.Find("PROCMODE");
        int32_t procMode = ReadIntegerKey(file_, section.name, "PROCMODE", 1);
        if (mode == nullptr && HasNumberedKeys(section)) {
            linted_.isModeDoubtful = true;
            procMode = kListedMode;
        }
        int32_t count = ReadIntegerKey(file_, section.name, kListCountKey, 0);
        if (linted_.Find(kListCountKey) == nullptr && linted_.listEnd > 0) {
            linted_.isCountDoubtful = true;
            count = linted_.listEnd;
        }
        const ExportKind most = procMode == kListedMode     ? ExportKind::NE
                                : procMode == kDecidingMode ? ExportKind::S
                                                            : ExportKind::Plain;
        linted_.plan = MakeSectionPlan(file_, section.name, most, procMode, count);
    }

    void AddSensorPlace() {
        PlannedPlace& place = linted_.plan.places.emplace_back();
        place.role = PlaceRole::Sensor;
        place.section = linted_.section->name;
        for (const Key& key : SettingsOf(SettingsGroup::Sensor).keys) {
            std::string name(key.name);
            const ProfileEntry* const entry = linted_.Find(name);
            place.keys.push_back({std::move(name), &key, entry});
        }
    }

    void KeepPlacesOfSection() {
        std::erase_if(linted_.plan.places, [&](const PlannedPlace& place) {
            const bool isHere = IsSameKeyName(place.section, linted_.section->name);
            const bool isOfLow = place.role == PlaceRole::LowStage || place.role == PlaceRole::LowSettings;
            return !isHere || (linted_.role == SectionRole::Low && !isOfLow);
        });
    }

    void ListUnread() {
        std::set<const ProfileEntry*> read;
        for (const PlannedPlace& place : linted_.plan.places)
            for (const PlannedKey& key : place.keys) read.insert(key.entry);
        linted_.plan.unread.clear();
        for (const ProfileEntry& entry : linted_.section->entries)
            if (entry.counts && (!read.contains(&entry) || !entry.HasValue()))
                linted_.plan.unread.push_back(&entry);
    }

    void ListStages(const std::vector<int32_t>& positions) {
        for (const PlannedPlace& place : linted_.plan.places)
            if (place.position && place.stage != nullptr)
                linted_.stageByPosition.emplace(*place.position, place.stage);
        if (!linted_.RunsList()) return;
        for (const int32_t position : positions) {
            const std::string name = NumberedKeyName(position, kListNumberKey);
            const Stage* const stage = FindStage(ReadIntegerKey(file_, linted_.section->name, name, 0));
            if (stage != nullptr) linted_.stageByPosition.emplace(position, stage);
        }
    }

    void ListMisspeltNumbers() {
        constexpr size_t kMost = 100;  // nobody misspells more
        const std::string pattern = NumberedKeyName(0, kListNumberKey);
        for (const ProfileEntry* const entry : linted_.plan.unread) {
            if (linted_.misspeltNumbers.size() == kMost) return;
            if (entry->key.size() > pattern.size() + 2 * kTypingErrors) continue;
            const std::optional<NumberedName> name = SplitNumberedKey(entry->key);
            if (name && IsSameKeyName(name->key, kListNumberKey)) continue;
            // Two more letters, for the digits of the position.
            if (EditDistance(entry->key, pattern) <= kTypingErrors + 2)
                linted_.misspeltNumbers.push_back(entry);
        }
    }

    UnreadCause CauseOf(const ProfileEntry& entry) const {
        if (!entry.HasValue() || entry.key.empty()) return UnreadCause::NotAKey;
        const std::optional<NumberedName> numbered = SplitNumberedKey(entry.key);
        return numbered ? CauseOfNumbered(*numbered) : CauseOfPlain(entry.key);
    }

    UnreadCause CauseOfNumbered(const NumberedName& name) const {
        const bool isNumber = IsSameKeyName(name.key, kListNumberKey);
        if (!isNumber && FindStageOfKey(name.key) == nullptr) return UnreadCause::Unknown;
        if (linted_.role == SectionRole::Sensor) return UnreadCause::OtherSection;
        if (linted_.role == SectionRole::Low)
            return isNumber                         ? UnreadCause::OtherSection
                   : linted_.PlaceAt(name.position) ? UnreadCause::OtherStage
                                                    : UnreadCause::NoPosition;
        if (!linted_.RunsList()) return UnreadCause::OtherChain;
        if (isNumber) return UnreadCause::BeyondCount;
        if (const PlannedPlace* const place = linted_.PlaceAt(name.position))
            return place->runs ? UnreadCause::OtherStage : UnreadCause::AtOddPosition;
        return CauseWithoutPlace(name);
    }

    // Of a key of a stage at a position that the list does not run.
    UnreadCause CauseWithoutPlace(const NumberedName& name) const {
        const std::string numberName = NumberedKeyName(name.position, kListNumberKey);
        if (linted_.Find(numberName) != nullptr) {
            const auto stage = linted_.stageByPosition.find(name.position);
            if (stage == linted_.stageByPosition.end()) return UnreadCause::AtOddPosition;
            const bool isItsKey = FindStageKey(*stage->second, name.key) != nullptr;
            return isItsKey ? UnreadCause::BeyondCount : UnreadCause::OtherStage;
        }
        const bool isGap = name.position < linted_.plan.functionCount;
        return isGap || linted_.HasMisspeltNumber(name.position) ? UnreadCause::AtOddPosition
                                                                 : UnreadCause::NoPosition;
    }

    UnreadCause CauseOfPlain(std::string_view name) const {
        const bool isCommon = FindSetting(SettingsGroup::Common, name) != nullptr;
        const bool isFixed = FindSetting(SettingsGroup::Fixed, name) != nullptr;
        const bool isSensor = FindSetting(SettingsGroup::Sensor, name) != nullptr;
        if (linted_.role != SectionRole::Host)
            return isCommon || isFixed || isSensor ? UnreadCause::OtherSection : UnreadCause::Unknown;
        if (isCommon || isFixed) return UnreadCause::OtherChain;
        if (isSensor) return UnreadCause::OtherSection;
        const bool isOfStage = FindStageOfKey(name) != nullptr;
        return isOfStage && linted_.RunsList() ? UnreadCause::NoPosition : UnreadCause::Unknown;
    }

    const ProfileFile& file_;
    LintedSection linted_;
};

}  // namespace

const PlannedPlace* LintedSection::PlaceAt(int32_t position) const {
    const auto found = placeByPosition.find(position);
    return found == placeByPosition.end() ? nullptr : &plan.places[found->second];
}

bool LintedSection::HasMisspeltNumber(int32_t position) const {
    const std::string name = NumberedKeyName(position, kListNumberKey);
    return std::any_of(misspeltNumbers.begin(), misspeltNumbers.end(),
                       [&](const ProfileEntry* entry) { return IsNear(entry->key, name); });
}

bool LintedSection::HasMisspelt(std::string_view name) const {
    return std::any_of(unread.begin(), unread.end(), [&](const UnreadLine& line) {
        return line.entry->key.size() <= name.size() + kTypingErrors && IsNear(line.entry->key, name);
    });
}

std::vector<std::string> LintedSection::ReadableNames() const {
    std::vector<std::string> names;
    for (const PlannedPlace& place : plan.places)
        for (const PlannedKey& key : place.keys) names.push_back(key.name);
    return names;
}

std::vector<std::string> LintedSection::NamesAt(int32_t position) const {
    std::vector<std::string> names;
    if (const auto found = stageByPosition.find(position); found != stageByPosition.end())
        for (const Key& key : found->second->keys) names.push_back(NumberedKeyName(position, key.name));
    if (RunsList()) names.push_back(NumberedKeyName(position, kListNumberKey));
    return names;
}

LintedSection MakeLintedSection(const ProfileFile& file, const ProfileFileSection& section) {
    return SectionMaker(file, section).Make();
}

const Stage* FindStageOfKey(std::string_view name) {
    for (const Stage& stage : AllStageRows())
        if (FindStageKey(stage, name) != nullptr) return &stage;
    return nullptr;
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <string>

#include "lint/Rules.h"
#include "profile_text/Utf8.h"

namespace vastrelline {
namespace {

std::string PositionDigits(int32_t position) {
    const std::string digits = std::to_string(position);
    return digits.size() < 2 ? "0" + digits : digits;
}

// The stage's own name for a number of the list.
std::string StageTitle(int32_t number) {
    const Stage* const stage = FindStage(number);
    return stage == nullptr ? "no stage" : std::string(stage->title);
}

// Without a hole below its end, so that the end alone is in question.
bool IsWithoutGap(const LintedSection& section) {
    if (section.listEnd <= 0) return false;
    const auto all = ListedPositions(*section.file, section.section->name, section.listEnd);
    return all.size() == static_cast<size_t>(section.listEnd);
}

std::optional<LintFix> SetCount(const LintedSection& section) {
    const ProfileEntry* const count = section.Find(kListCountKey);
    if (count == nullptr || !count->HasValue() || !IsWithoutGap(section)) return std::nullopt;
    const std::string end = std::to_string(section.listEnd);
    return LintFix{count->line.value, section.file->Text().Encoding().Encode(DecodeUtf8(end)),
                   "write FunctionCount=" + end};
}

const ProfileEntry* FirstNumbered(const LintedSection& section) {
    for (const UnreadLine& line : section.unread)
        if (line.cause == UnreadCause::OtherChain && SplitNumberedKey(line.entry->key)) return line.entry;
    return nullptr;
}

}  // namespace

void FindUnknownStages(const LintedSection& section, FindingSink& sink) {
    for (const PlannedPlace& place : section.plan.places) {
        if (place.role != PlaceRole::PassedOver || place.stage != nullptr) continue;
        const ProfileEntry* const entry = place.keys.front().entry;
        if (entry == nullptr || !entry->HasValue()) continue;
        sink.Add(entry->line.value.begin, entry->key + "=" + std::to_string(place.stageNumber) +
                                              " is no stage and passed over; take a number from 1 to 13");
    }
}

void FindStagesPassedOver(const LintedSection& section, FindingSink& sink) {
    if (section.role != SectionRole::Host || section.plan.chain != ChainKind::Extended) return;
    for (const PlannedPlace& place : section.plan.places) {
        if (place.stage == nullptr || RunsInList(ChainKind::Configured, place.stageNumber)) continue;
        const ProfileEntry* const entry = place.keys.front().entry;
        sink.Add(entry->line.value.begin,
                 entry->key + "=" + std::to_string(place.stageNumber) + ": with PROCMODE 2 " +
                     std::string(place.stage->title) +
                     " runs from ImageProcessing_NE only; elsewhere it is passed over");
    }
}

// A stage behind the count is told at its number, a count behind the last stage at the count. Only the latter
// can be mended for certain: who makes the count smaller may mean to switch the last stages off.
void FindListEnds(const LintedSection& section, FindingSink& sink) {
    if (!section.RunsList()) return;
    const ProfileEntry* const count = section.Find(kListCountKey);
    if (count == nullptr) {
        if (section.listEnd > 0 && !section.HasMisspelt(kListCountKey))
            sink.Add(section.section->head.begin,
                     "[" + section.section->name +
                         "] lists stages without FunctionCount, so none of them runs; add " +
                         "FunctionCount=" + std::to_string(section.listEnd));
        return;
    }
    const int32_t functionCount = section.plan.functionCount;
    for (const UnreadLine& line : section.unread) {
        if (line.cause != UnreadCause::BeyondCount) continue;
        const NumberedName name = *SplitNumberedKey(line.entry->key);
        if (!IsSameKeyName(name.key, kListNumberKey)) continue;
        const int32_t number = ReadIntegerKey(*section.file, section.section->name, line.entry->key, 0);
        sink.Add(line.entry->line.name.begin,
                 line.entry->key + " (" + StageTitle(number) + ") is not run: FunctionCount is " +
                     std::to_string(functionCount) + "; count it or take its lines away");
    }
    // From the end of the list to the count nothing stands, not even something misspelt.
    const bool isLarger = section.listEnd > 0 && functionCount > section.listEnd;
    if (!isLarger || !section.misspeltNumbers.empty()) return;
    sink.Add(count->HasValue() ? count->line.value.begin : count->line.name.begin,
             "FunctionCount=" + std::to_string(functionCount) + ", but the list ends with position " +
                 PositionDigits(section.listEnd - 1) + "; write " + std::to_string(section.listEnd),
             SetCount(section));
}

void FindListGaps(const LintedSection& section, FindingSink& sink) {
    if (!section.RunsList() || section.Find(kListCountKey) == nullptr) return;
    const int32_t end = std::min(section.plan.functionCount, section.listEnd);
    int32_t expected = 0;
    constexpr int32_t kMostGaps = 20;  // a list with more is none
    int32_t gaps = 0;
    const auto tell = [&](int32_t until) {
        for (; expected < until && gaps < kMostGaps; ++expected) {
            if (section.HasMisspeltNumber(expected)) continue;
            ++gaps;
            const ProfileEntry* const count = section.Find(kListCountKey);
            sink.Add(count->line.name.begin,
                     "position " + PositionDigits(expected) + " has no stage and is passed over; add " +
                         NumberedKeyName(expected, kListNumberKey) + " or close the gap");
        }
        expected = until + 1;
    };
    for (const PlannedPlace& place : section.plan.places)
        if (place.position && *place.position < end) tell(*place.position);
    tell(end);
}

void FindEmptyLists(const LintedSection& section, FindingSink& sink) {
    if (!section.RunsList() || section.listEnd > 0 || section.isModeDoubtful) return;
    const ProfileEntry* const mode = section.Find("PROCMODE");
    if (mode == nullptr || !section.misspeltNumbers.empty()) return;
    sink.Add(mode->line.name.begin, "[" + section.section->name + "] has PROCMODE=" +
                                        std::to_string(section.plan.procMode.value_or(0)) +
                                        " and lists no stage; add FunctionCount and 00_Function_Number");
}

void FindUnusedLists(const LintedSection& section, FindingSink& sink) {
    if (section.role != SectionRole::Host || section.RunsList()) return;
    const ProfileEntry* const first = FirstNumbered(section);
    if (first == nullptr) return;
    sink.Add(first->line.name.begin,
             "PROCMODE=" + std::to_string(section.plan.procMode.value_or(1)) +
                 " runs the fixed chain, which reads no list; set PROCMODE=2 or take the " +
                 "numbered lines away");
}

}  // namespace vastrelline

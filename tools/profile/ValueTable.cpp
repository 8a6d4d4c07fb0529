// SPDX-License-Identifier: Apache-2.0
#include "profile/ValueTable.h"

#include <algorithm>
#include <string_view>

#include "profile/PlainWords.h"

namespace vastrelline {

namespace {

constexpr size_t kRoomyWidth = 100;  // of a terminal
constexpr std::string_view kIndent = "  ";
constexpr std::string_view kGap = "  ";

struct Row {
    std::string name;
    std::string value;
    std::string mark;
    std::string remark;
};

std::string RemarkOf(const EffectiveValue& value) {
    if (!IsAsWritten(value.reading)) return DescribeSlip(value.reading);
    const bool isMute = value.line > 0 && value.reading.mark == ReadingMark::Default;
    if (isMute) return "has no equals sign";
    return value.key->hasEffect ? PlainWords(value.key->range) : "no effect";
}

// Numbers stand in full.
std::string ValueText(const EffectiveValue& value, size_t width) {
    const std::string text = FormatReadValue(value.reading.value);
    const size_t most = value.key->type != KeyType::Text ? text.size() : width < kRoomyWidth ? 12 : 24;
    return ShortText(text, most);
}

Row RowOf(const EffectiveValue& value, size_t width) {
    return {ShownText(value.name), ValueText(value, width), DescribeMark(value), RemarkOf(value)};
}

struct Widths {
    size_t name = 0;
    size_t value = 0;
    size_t mark = 0;
};

bool IsOff(const EffectivePlace& place) { return place.role == PlaceRole::FixedStep && !place.runs; }

size_t ShownCount(const EffectivePlace& place) { return IsOff(place) ? 1 : place.values.size(); }

void Widen(Widths& widths, const Row& row) {
    widths.name = std::max(widths.name, CountCharacters(row.name));
    widths.value = std::max(widths.value, CountCharacters(row.value));
    widths.mark = std::max(widths.mark, CountCharacters(row.mark));
}

Widths WidthsOf(const std::vector<EffectivePlace>& places, const Row& head, size_t width) {
    Widths widths;
    Widen(widths, head);
    for (const EffectivePlace& place : places)
        for (size_t i = 0; i < ShownCount(place); ++i) Widen(widths, RowOf(place.values[i], width));
    return widths;
}

std::string FormatRow(const Row& row, const Widths& widths, size_t width) {
    std::string line(kIndent);
    line.append(PaddedText(row.name, widths.name)).append(kGap);
    line.append(PaddedText(row.value, widths.value)).append(kGap);
    line.append(PaddedText(row.mark, widths.mark)).append(kGap);
    const size_t taken = CountCharacters(line);
    constexpr size_t kLeastRemark = 12;
    if (width >= taken + kLeastRemark) line += ShortText(row.remark, width - taken);
    line.resize(line.find_last_not_of(' ') + 1);
    return line + "\n";
}

// Why something else is read is said in full, in a line of its own if need be.
std::string FormatValue(const EffectiveValue& value, const Widths& widths, size_t width) {
    Row row = RowOf(value, width);
    const std::string whole = FormatRow(row, widths, kRoomyWidth + row.remark.size() + width);
    if (IsAsWritten(value.reading) || CountCharacters(whole) <= width + 1)
        return FormatRow(row, widths, width);
    const std::string reason = WrapWords(row.remark, "      ", width);
    row.remark.clear();
    return FormatRow(row, widths, width) + reason;
}

bool HasSensorsOwn(const EffectivePlace& place) {
    return place.role == PlaceRole::Sensor &&
           std::any_of(place.values.begin(), place.values.end(),
                       [](const EffectiveValue& value) { return !value.key->syncText.has_value(); });
}

std::string TitleLine(const EffectivePlace& place) {
    std::string title = ShownText(PlaceTitle(place));
    if (IsOff(place)) return title + ": off";
    if (place.role == PlaceRole::PassedOver) return title + ": passed over, for this chain has no such stage";
    // Where the range is read, too, the chain is of the family that writes the sensor's values.
    if (HasSensorsOwn(place)) return title + "; each run first writes the sensor's own ten values there";
    return title;
}

}  // namespace

std::string DescribePlan(const std::string& path, const SectionPlan& plan, const ExportTraits& traits) {
    return ShownText(path) + ", section " + ShownText(plan.section) + ": " +
           std::string(ChainName(plan.chain)) + " by " + std::string(traits.name);
}

std::string DescribeMark(const EffectiveValue& value) {
    const bool isInFile = value.line > 0 && value.reading.mark != ReadingMark::Default;
    std::string text = isInFile ? "line " + std::to_string(value.line) : "default";
    if (!IsAsWritten(value.reading)) text.append(", ").append(MarkName(value.reading.mark));
    return text;
}

std::string FormatValueTable(const std::vector<EffectivePlace>& places, size_t width) {
    const Row head{"key", "value", "from", "sensible"};
    const Widths widths = WidthsOf(places, head, width);
    std::string text = FormatRow(head, widths, width);
    for (const EffectivePlace& place : places) {
        text.append("\n").append(WrapWords(TitleLine(place), "", width));
        for (size_t i = 0; i < ShownCount(place); ++i) text += FormatValue(place.values[i], widths, width);
    }
    return text;
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "profile/DiffReport.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>

#include "profile/PlainWords.h"
#include "profile/SectionPlan.h"
#include "profile/ValueJson.h"

namespace vastrelline {

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kIndent = "  ";

std::string PositionText(int32_t position) {
    std::string text = NumberedKeyName(position, "");
    text.pop_back();
    return text;
}

std::string TitleOf(const PlaceDifference& place) {
    const std::optional<int32_t> position =
        place.change == PlaceChange::OnlyInSecond ? place.secondPosition : place.firstPosition;
    std::string title = (position ? PositionText(*position) + " " : "") + place.title;
    if (place.isOfWeakFrame) title += " of a weak frame";
    switch (place.change) {
        case PlaceChange::OnlyInFirst:
            return title + ": only in A";
        case PlaceChange::OnlyInSecond:
            return title + ": only in B";
        case PlaceChange::Moved:
            return title + ": moved" +
                   (place.secondPosition ? ", in B at " + PositionText(*place.secondPosition) : "");
        case PlaceChange::Changed:
            break;
    }
    const bool isElsewhere = place.secondPosition && place.secondPosition != place.firstPosition;
    return isElsewhere ? title + " (" + PositionText(*place.secondPosition) + " in B)" : title;
}

std::string SideText(const std::optional<EffectiveValue>& value) {
    if (!value) return "-";
    const ValueReading& reading = value->reading;
    std::string text = FormatReadValue(reading.value);
    if (text.empty()) text = "''";
    if (reading.mark != ReadingMark::FromFile) text.append(" (").append(MarkName(reading.mark)).append(")");
    return text;
}

struct Row {
    std::string name;
    std::string first;
    std::string second;
    bool hasEffect = true;
};

Row RowOf(const ValueDifference& value, size_t width) {
    const size_t most = std::max<size_t>(width / 3, 30);
    return {ShownText(value.name), ShortText(SideText(value.first), most),
            ShortText(SideText(value.second), most), value.hasEffect};
}

struct Widths {
    size_t name = 3;
    size_t first = 1;
    size_t second = 1;
};

std::string FormatRow(const Row& row, const Widths& widths) {
    std::string line(kIndent);
    line.append(PaddedText(row.name, widths.name)).append(kIndent);
    line.append(PaddedText(row.first, widths.first)).append(kIndent);
    line.append(PaddedText(row.second, widths.second)).append(row.hasEffect ? "" : "  no effect");
    line.resize(line.find_last_not_of(' ') + 1);
    return line + "\n";
}

std::string Counted(size_t count, const std::string& one, const std::string& many) {
    return std::to_string(count) + " " + (count == 1 ? one : many);
}

size_t CountChanges(const std::vector<PlaceDifference>& differences, PlaceChange change) {
    return static_cast<size_t>(
        std::count_if(differences.begin(), differences.end(),
                      [change](const PlaceDifference& place) { return place.change == change; }));
}

size_t CountValues(const std::vector<PlaceDifference>& differences) {
    size_t count = 0;
    for (const PlaceDifference& place : differences) {
        const bool isInBoth = place.change == PlaceChange::Changed || place.change == PlaceChange::Moved;
        if (isInBoth) count += place.values.size();
    }
    return count;
}

Json SideToJson(const std::optional<EffectiveValue>& value) {
    if (!value) return nullptr;
    Json object = {{"key", value->name},
                   {"value", ValueToJson(value->reading.value)},
                   {"mark", MarkName(value->reading.mark)}};
    if (value->line > 0) object["line"] = value->line;
    return object;
}

Json PlaceToJson(const PlaceDifference& place) {
    Json object = {{"change", ChangeName(place.change)}, {"title", place.title}};
    if (place.stageNumber != 0) object["stage"] = place.stageNumber;
    if (place.firstPosition) object["positionA"] = *place.firstPosition;
    if (place.secondPosition) object["positionB"] = *place.secondPosition;
    object["isOfWeakFrame"] = place.isOfWeakFrame;
    object["values"] = Json::array();
    for (const ValueDifference& value : place.values)
        object["values"].push_back({{"name", value.name},
                                    {"a", SideToJson(value.first)},
                                    {"b", SideToJson(value.second)},
                                    {"hasEffect", value.hasEffect}});
    return object;
}

}  // namespace

std::string FormatDifferences(const std::vector<PlaceDifference>& differences, size_t width) {
    Widths widths;
    for (const PlaceDifference& place : differences) {
        for (const ValueDifference& value : place.values) {
            const Row row = RowOf(value, width);
            widths.name = std::max(widths.name, CountCharacters(row.name));
            widths.first = std::max(widths.first, CountCharacters(row.first));
            widths.second = std::max(widths.second, CountCharacters(row.second));
        }
    }
    std::string text = differences.empty() ? "" : FormatRow({"key", "A", "B", true}, widths);
    for (const PlaceDifference& place : differences) {
        text.append("\n").append(ShownText(TitleOf(place))).append("\n");
        for (const ValueDifference& value : place.values) text += FormatRow(RowOf(value, width), widths);
    }
    return text;
}

std::vector<DifferenceRow> ListDifferences(const std::vector<PlaceDifference>& differences) {
    std::vector<DifferenceRow> rows;
    for (const PlaceDifference& place : differences) {
        const std::string title = TitleOf(place);
        for (const ValueDifference& value : place.values)
            rows.push_back(
                {title, value.name, SideText(value.first), SideText(value.second), value.hasEffect});
        if (place.values.empty()) rows.push_back({title, {}, {}, {}, true});
    }
    return rows;
}

std::string SumUpDifferences(const std::vector<PlaceDifference>& differences) {
    if (differences.empty()) return "equal";
    std::string text;
    const auto add = [&](const std::string& part) { text.append(text.empty() ? "" : ", ").append(part); };
    if (const size_t count = CountValues(differences); count > 0)
        add(Counted(count, "value differs", "values differ"));
    if (const size_t count = CountChanges(differences, PlaceChange::OnlyInFirst); count > 0)
        add(Counted(count, "stage", "stages") + " only in A");
    if (const size_t count = CountChanges(differences, PlaceChange::OnlyInSecond); count > 0)
        add(Counted(count, "stage", "stages") + " only in B");
    if (const size_t count = CountChanges(differences, PlaceChange::Moved); count > 0)
        add(Counted(count, "stage", "stages") + " moved");
    return text;
}

Json DifferencesToJson(const std::vector<PlaceDifference>& differences) {
    Json places = Json::array();
    for (const PlaceDifference& place : differences) places.push_back(PlaceToJson(place));
    return places;
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "commands/StagesReport.h"

#include <cmath>
#include <iomanip>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <string_view>

#include "commands/RunHead.h"
#include "commands/RunReport.h"
#include "files/Sha256.h"
#include "formats/RawFormat.h"
#include "frames/FrameSize.h"
#include "messages/FindingJson.h"
#include "messages/Messages.h"
#include "profile/PlainWords.h"
#include "profile/ValueJson.h"
#include "profile/ValueTable.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

constexpr size_t kMedian = 3;
static_assert(kPercentiles[kMedian] == 50);

// What a stage reads; null of a point that is none.
const EffectivePlace* PlaceOf(const StagesReport& report, const StagePoint& point) {
    if (point.stage == nullptr) return nullptr;
    const auto index = static_cast<size_t>(point.stage->place - report.plan->places.data());
    return &report.places->at(index);
}

// A key and its value are never parted by a line end.
std::string KeyLines(const EffectivePlace& place, std::string_view indent, size_t width) {
    std::string text;
    std::string line;
    for (const EffectiveValue& value : place.values) {
        std::string item = ShownText(value.name);
        item.append("=").append(ShownText(FormatReadValue(value.reading.value)));
        item.append(" (").append(DescribeMark(value)).append(")");
        if (!line.empty() && CountCharacters(line) + 2 + CountCharacters(item) > width) {
            text.append(line).append(",\n");
            line.clear();
        }
        line.append(line.empty() ? indent : ", ").append(item);
    }
    return line.empty() ? text : text.append(line).append("\n");
}

std::string PositionText(const StagePoint& point) {
    if (point.stage == nullptr || !point.stage->place->position) return "-";
    std::string text = NumberedKeyName(*point.stage->place->position, "");
    text.pop_back();
    return text;
}

void WriteRow(std::ostream& out, size_t number, const StagePoint& point) {
    const bool hasTime = point.stage != nullptr && point.stage->elapsedMs;
    out << std::setw(2) << number << "  " << std::setw(3) << PositionText(point) << "  " << std::left
        << std::setw(22) << point.title << std::right << std::setw(5)
        << (hasTime ? std::to_string(std::lround(*point.stage->elapsedMs)) : "-");
    if (point.frame)
        out << std::setw(7) << point.statistics.least << std::setw(7) << point.statistics.percentiles[kMedian]
            << std::setw(7) << point.statistics.greatest << std::setw(13)
            << (point.changed ? DescribeShare(*point.changed) : "-");
    else
        out << "  shows no frame";
    out << '\n';
}

Json LeafJson(const std::string& leaf) { return leaf.empty() ? Json(nullptr) : Json(leaf); }

template <typename Number>
Json OptionalJson(const std::optional<Number>& number) {
    return number ? Json(*number) : Json(nullptr);
}

std::string HashOf(const SignedFrame& band) {
    Frame frame{band.width, band.height, {}};
    for (const int16_t level : band.levels) frame.pixels.push_back(static_cast<uint16_t>(level));
    return Sha256Of(EncodeRaw(frame));
}

Json BandsJson(const ShownPoint& shown, const PointFiles& files) {
    Json array = Json::array();
    for (size_t i = 0; i < files.bands.size(); ++i) {
        const StageBand& band = shown.bands[i];
        const BandFiles& own = files.bands[i];
        array.push_back({{"band", band.number},
                         {"width", band.before.width},
                         {"height", band.before.height},
                         {"window", {{"low", -own.reach}, {"high", own.reach}}},
                         {"before", own.before},
                         {"beforeSha256", HashOf(band.before)},
                         {"after", own.after},
                         {"afterSha256", HashOf(band.after)},
                         {"curve", LeafJson(own.curve)}});
    }
    return array;
}

Json FrameJson(const StagePoint& point, const PointFiles& files) {
    if (!point.frame) return nullptr;
    return {{"picture", files.picture},
            {"width", point.frame->width},
            {"height", point.frame->height},
            {"window", {{"low", files.window.low}, {"high", files.window.high}}},
            {"least", point.statistics.least},
            {"median", point.statistics.percentiles[kMedian]},
            {"greatest", point.statistics.greatest},
            {"changedShare", OptionalJson(point.changed)},
            {"sha256", Sha256Of(EncodeRaw(*point.frame))}};
}

Json PointJson(const StagesReport& report, const ShownPoint& shown, const PointFiles& files) {
    const StagePoint& point = shown.point;
    const EffectivePlace* const place = PlaceOf(report, point);
    Json keys = Json::array();
    if (place != nullptr)
        for (const EffectiveValue& value : place->values) keys.push_back(EffectiveToJson(value));
    return {{"point", PointName(point.kind)},
            {"title", point.title},
            {"position", place == nullptr ? Json(nullptr) : OptionalJson(place->position)},
            {"number", place == nullptr ? Json(nullptr) : Json(place->stageNumber)},
            {"elapsedMs", point.stage == nullptr ? Json(nullptr) : OptionalJson(point.stage->elapsedMs)},
            {"frame", FrameJson(point, files)},
            {"keys", std::move(keys)},
            {"curve", LeafJson(files.curve)},
            {"bands", BandsJson(shown, files)}};
}

}  // namespace

std::string FormatStages(const StagesReport& report, size_t width) {
    constexpr std::string_view kIndent = "         ";
    std::ostringstream out;
    out << OneLine(report.framePath) << ": "
        << OneLine(DescribePlan(report.profile->Path(), *report.plan, *report.traits)) << "\n\n"
        << " #  pos  stage                    ms    min median    max      changed\n";
    for (size_t i = 0; i < report.points->size(); ++i) {
        const StagePoint& point = (*report.points)[i].point;
        WriteRow(out, i, point);
        const EffectivePlace* const place = PlaceOf(report, point);
        if (place != nullptr) out << KeyLines(*place, kIndent, width);
    }
    return out.str();
}

nlohmann::ordered_json StagesToJson(const StagesReport& report) {
    const FrameRun& run = *report.run;
    Json points = Json::array();
    for (size_t i = 0; i < report.points->size(); ++i)
        points.push_back(PointJson(report, (*report.points)[i], report.pictures->points[i]));
    Json json = RunHeadJson(report.framePath, *report.frame, *report.profile, *report.plan, *report.traits);
    json.update({{"code", run.code},
                 {"elapsedMs", run.call.record.elapsedMs},
                 {"exposure", ExposureToJson(run.call.record.dose)},
                 {"folder", report.folder},
                 {"contactSheet", report.pictures->contactSheet},
                 {"table", "stages.txt"},
                 {"points", std::move(points)},
                 {"findings", FindingsJson(report.findings)}});
    return json;
}

}  // namespace vastrelline

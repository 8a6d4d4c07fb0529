// SPDX-License-Identifier: Apache-2.0
#include "workbench/RunJson.h"

#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "messages/ErrorJson.h"
#include "messages/FindingJson.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

constexpr size_t kTimedRuns = 20;
constexpr size_t kMedian = 3;
static_assert(kPercentiles[kMedian] == 50);

template <typename Number>
Json OptionalJson(const std::optional<Number>& number) {
    return number ? Json(*number) : Json(nullptr);
}

Json PointToJson(size_t index, const KeptPoint& kept, const KeptRun::Basis& basis) {
    const StagePoint& point = kept.point;
    const bool hasFrame = point.frame.has_value();
    const auto level = [&](uint16_t value) { return hasFrame ? Json(value) : Json(nullptr); };
    return {{"point", index},
            {"kind", PointName(point.kind)},
            {"title", point.title},
            {"place",
             point.stage == nullptr ? Json(nullptr) : Json(point.stage->place - basis.plan.places.data())},
            {"ms", point.stage == nullptr ? Json(nullptr) : OptionalJson(point.stage->elapsedMs)},
            {"changed", OptionalJson(point.changed)},
            {"hasFrame", hasFrame},
            {"hasCurve", !kept.curve.empty()},
            {"least", level(point.statistics.least)},
            {"median", level(point.statistics.percentiles[kMedian])},
            {"greatest", level(point.statistics.greatest)}};
}

Json ExposureJson(const std::optional<DoseFigures>& dose) {
    if (!dose) return nullptr;
    return {{"objectMedian", dose->objectMedian},
            {"objectTotal", dose->objectTotal},
            {"lowSignal", dose->lowSignal},
            {"lowRatio", dose->lowRatio},
            {"isLow", dose->isLow}};
}

void AddBasis(Json& json, const KeptRun& run) {
    const KeptRun::Basis& basis = *run.basis;
    const CallRecord& record = basis.run.call.record;
    json["elapsedMs"] = record.elapsedMs;
    json["code"] = basis.run.code;
    json["sha256"] = basis.hash;
    json["width"] = basis.run.call.frame.width;
    json["height"] = basis.run.call.frame.height;
    json["isLow"] = record.dose ? Json(record.dose->isLow) : Json(nullptr);
    json["exposure"] = ExposureJson(record.dose);
    json["log"] = basis.run.logBytes;
    for (const Finding& finding : basis.run.findings) json["findings"].push_back(FindingToJson(finding));
    for (size_t i = 0; i < run.points.size(); ++i)
        json["points"].push_back(PointToJson(i, *run.points[i], basis));
}

}  // namespace

Json RunToJson(const KeptRun& run) {
    Json json = {{"id", run.id},
                 {"state", RunStateName(run.state)},
                 {"frame", run.desk.frame},
                 {"section", run.desk.section},
                 {"change", run.change},
                 {"when", run.when},
                 {"before", OptionalJson(run.elapsedBefore)},
                 {"elapsedMs", nullptr},
                 {"code", nullptr},
                 {"sha256", nullptr},
                 {"width", nullptr},
                 {"height", nullptr},
                 {"isLow", nullptr},
                 {"exposure", nullptr},
                 {"off", run.desk.offKeys},
                 {"aside", run.isAside},
                 {"of", run.of ? Json(*run.of) : Json(nullptr)},
                 {"points", Json::array()},
                 {"log", ""},
                 {"findings", Json::array()},
                 {"error", ErrorJson(run.error)}};
    if (run.basis != nullptr) AddBasis(json, run);
    return json;
}

Json TimingsToJson(const std::vector<const HistoryRow*>& rows) {
    Json runs = Json::array();
    for (size_t i = 0; i < std::min(rows.size(), kTimedRuns); ++i) {
        Json stages = Json::array();
        for (const auto& [title, ms] : rows[i]->stages)
            stages.push_back({{"title", title}, {"ms", OptionalJson(ms)}});
        runs.push_back(
            {{"id", rows[i]->id}, {"elapsedMs", rows[i]->elapsedMs}, {"stages", std::move(stages)}});
    }
    return {{"runs", std::move(runs)}};
}

}  // namespace vastrelline

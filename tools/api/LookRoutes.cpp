// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "api/ApiRoutes.h"
#include "api/ViewFields.h"
#include "measure/EdgeMeasure.h"
#include "measure/FlatNoise.h"
#include "measure/MeasuredArea.h"
#include "messages/ToolError.h"
#include "views/FrameView.h"
#include "views/LevelHistogram.h"
#include "views/LevelLine.h"
#include "workbench/RunJson.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

constexpr int32_t kMaxPixels = 65536;

std::shared_ptr<const KeptPoint> PointOf(const KeptRun& run, std::string_view name) {
    std::shared_ptr<const KeptPoint> point = FindPoint(run, name);
    if (point == nullptr)
        throw InputError({}, "run " + std::to_string(run.id) + " has no point '" + std::string(name) + "'");
    return point;
}

const Frame& FrameOf(const KeptPoint& point) {
    if (!point.point.frame) throw InputError({}, "stage " + point.point.title + " shows no frame");
    return *point.point.frame;
}

// The point of the path, "api/runs/*/points/*/...".
std::shared_ptr<const KeptPoint> PointOf(const ApiCall& call) {
    return PointOf(*call.bench.FindRun(call.Part(0)), call.Part(1));
}

// "14/3"
std::shared_ptr<const KeptPoint> PointNamed(const ApiCall& call, const char* field) {
    const std::string text = call.Field(field);
    const size_t slash = text.find('/');
    if (slash == std::string::npos)
        throw UsageError("field '" + std::string(field) + "' should be RUN/POINT", {});
    return PointOf(*call.bench.FindRun(std::string_view(text).substr(0, slash)),
                   std::string_view(text).substr(slash + 1));
}

HttpAnswer GetRun(const ApiCall& call) { return JsonAnswer(RunToJson(*call.bench.FindRun(call.Part(0)))); }

HttpAnswer GetView(const ApiCall& call) {
    const std::shared_ptr<const KeptPoint> point = PointOf(call);
    return PixelsAnswer(RenderView(FrameOf(*point), ViewOf(call), WindowOf(call)));
}

HttpAnswer GetDifference(const ApiCall& call) {
    const std::shared_ptr<const KeptPoint> a = PointNamed(call, "a");
    const std::shared_ptr<const KeptPoint> b = PointNamed(call, "b");
    const Frame& left = FrameOf(*a);
    const Frame& right = FrameOf(*b);
    if (left.width != right.width || left.height != right.height)
        throw InputError({}, "the two frames have different sizes");
    return PixelsAnswer(RenderDifference(left, right, ViewOf(call), call.Number("gain")));
}

HttpAnswer GetHistogram(const ApiCall& call) {
    const std::shared_ptr<const KeptPoint> point = PointOf(call);
    const LevelHistogram histogram = CountLevels(FrameOf(*point));
    return JsonAnswer(
        {{"first", histogram.first}, {"counts", histogram.counts}, {"total", FrameOf(*point).pixels.size()}});
}

HttpAnswer GetCurve(const ApiCall& call) {
    Json curve = Json::array();
    for (const CurvePoint& each : PointOf(call)->curve) curve.push_back({each.level, each.value});
    return JsonAnswer({{"curve", std::move(curve)}});
}

HttpAnswer Probe(const ApiCall& call) {
    const std::shared_ptr<const KeptRun> run = call.bench.FindRun(call.Part(0));
    const int32_t x = call.Integer("x");
    const int32_t y = call.Integer("y");
    Json values = Json::array();
    for (const std::shared_ptr<const KeptPoint>& point : run->points) {
        const std::optional<Frame>& frame = point->point.frame;
        const bool isInside = frame && x >= 0 && y >= 0 && x < frame->width && y < frame->height;
        values.push_back(isInside ? Json(frame->pixels[PixelCount(frame->width, y) + static_cast<size_t>(x)])
                                  : Json(nullptr));
    }
    return JsonAnswer({{"x", x}, {"y", y}, {"values", std::move(values)}});
}

HttpAnswer GetLine(const ApiCall& call) {
    Json values = Json::array();
    const std::shared_ptr<const KeptPoint> point = PointOf(call);
    for (const LinePoint& each : ReadLevelLine(
             FrameOf(*point), {call.Number("x0"), call.Number("y0"), call.Number("x1"), call.Number("y1")}))
        values.push_back({each.distance, each.level});
    return JsonAnswer({{"values", std::move(values)}});
}

PixelArea AreaOf(const ApiCall& call, const Frame& frame) {
    const PixelArea area{call.Integer("x"), call.Integer("y"), call.Integer("w"), call.Integer("h")};
    const bool isInside = area.left >= 0 && area.top >= 0 && area.width > 0 && area.height > 0 &&
                          area.width <= frame.width - area.left && area.height <= frame.height - area.top;
    if (!isInside) throw UsageError("the area is not within the frame", {});
    return area;
}

HttpAnswer GetPixels(const ApiCall& call) {
    const std::shared_ptr<const KeptPoint> point = PointOf(call);
    const Frame& frame = FrameOf(*point);
    const PixelArea area = AreaOf(call, frame);
    if (area.width > kMaxPixels / area.height)
        throw UsageError("at most 65536 pixels can be had at a time", {});
    const Frame part = CutArea(frame, area);
    std::string bytes;
    for (const uint16_t level : part.pixels) {
        constexpr unsigned kByteBits = 8;
        bytes.push_back(static_cast<char>(level & 0xFFU));
        bytes.push_back(static_cast<char>(level >> kByteBits));
    }
    return BytesAnswer(std::move(bytes));
}

// Measures an area of a point's frame; where that cannot be done, it is said in words.
template <typename Measure>
auto MeasureAreaOf(const ApiCall& call, const Measure& measure) {
    const std::shared_ptr<const KeptPoint> point = PointOf(call);
    const Frame& frame = FrameOf(*point);
    try {
        return measure(frame, AreaOf(call, frame));
    } catch (const CannotMeasure& error) {
        // The remedies of the measures are options of the command line.
        throw InputError({}, error.what(), "drag over another area");
    }
}

HttpAnswer GetNoise(const ApiCall& call) {
    const FlatNoise noise = MeasureAreaOf(call, [](const Frame& frame, const PixelArea& area) {
        return MeasureFlatNoise(frame, area, ClippingLevel(frame));
    });
    return JsonAnswer({{"mean", noise.mean},
                       {"sigma", noise.deviation},
                       {"snr", noise.deviation > 0.0 ? Json(noise.mean / noise.deviation) : Json(nullptr)},
                       {"clippedShare", noise.clippedShare}});
}

HttpAnswer GetEdge(const ApiCall& call) {
    const EdgeMeasure edge = MeasureAreaOf(
        call, [](const Frame& frame, const PixelArea& area) { return MeasureEdge(CutArea(frame, area)); });
    Json profile = Json::array();
    for (const EdgePoint& each : edge.profile) profile.push_back({each.distance, each.level});
    Json response = Json::array();
    for (const ModulationPoint& each : edge.mtf) response.push_back({each.frequency, each.modulation});
    return JsonAnswer({{"profile", std::move(profile)},
                       {"response", std::move(response)},
                       {"mtf50", edge.mtf50 ? Json(*edge.mtf50) : Json(nullptr)},
                       {"darkLevel", edge.darkLevel},
                       {"brightLevel", edge.brightLevel},
                       {"risePixels", edge.risePixels},
                       {"overshoot", edge.overshoot},
                       {"contrastToNoise", edge.contrastToNoise},
                       {"clippedShare", edge.clippedShare}});
}

HttpAnswer GetTimings(const ApiCall& call) { return JsonAnswer(call.bench.Timings()); }

constexpr ApiRoute kRoutes[] = {
    {"GET", "api/runs/*", GetRun},
    {"GET", "api/runs/*/points/*/view", GetView},
    {"GET", "api/difference", GetDifference},
    {"GET", "api/runs/*/points/*/histogram", GetHistogram},
    {"GET", "api/runs/*/points/*/curve", GetCurve},
    {"GET", "api/runs/*/probe", Probe},
    {"GET", "api/runs/*/points/*/line", GetLine},
    {"GET", "api/runs/*/points/*/pixels", GetPixels},
    {"GET", "api/runs/*/points/*/noise", GetNoise},
    {"GET", "api/runs/*/points/*/edge", GetEdge},
    {"GET", "api/timings", GetTimings},
};

}  // namespace

std::span<const ApiRoute> LookRoutes() { return kRoutes; }

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "commands/FrameMeasure.h"

#include <CLI/CLI.hpp>
#include <cmath>
#include <cstdio>
#include <optional>

#include "measure/EdgeMeasure.h"
#include "measure/LinesMeasure.h"
#include "measure/MeasuredArea.h"
#include "measure/WedgeMeasure.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

constexpr int32_t kMostSteps = 256;
constexpr double kMostPitch = 10.0;
constexpr double kPercent = 100.0;
constexpr double kMuchClipping = 0.001;

std::string Fixed(double value, int digits) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", digits, value);
    return text;
}

Json OrNull(const std::optional<double>& value) { return value ? Json(*value) : Json(nullptr); }

std::optional<double> PerMm(const std::optional<double>& perPixel, double pitch) {
    return perPixel && pitch > 0.0 ? std::optional(*perPixel / pitch) : std::nullopt;
}

std::string FrequencyWords(double perPixel, double pitch) {
    std::string text = Fixed(perPixel, 4) + " cycles per pixel";
    if (pitch > 0.0) text += " (" + Fixed(perPixel / pitch, 2) + " line pairs per mm)";
    return text;
}

FrameMeasure TellWedge(const WedgeMeasure& measure) {
    FrameMeasure told;
    told.json["runsDown"] = measure.runsDown;
    Json& list = told.json["steps"] = Json::array();
    for (const MeasuredStep& step : measure.steps) {
        const FlatNoise& noise = step.noise;
        list.push_back({{"left", step.area.left},
                        {"top", step.area.top},
                        {"width", step.area.width},
                        {"height", step.area.height},
                        {"mean", noise.mean},
                        {"noise", step.isClipped ? Json(nullptr) : Json(noise.deviation)},
                        {"clippedShare", noise.clippedShare},
                        {"difference", OrNull(step.difference)},
                        {"contrastToNoise", OrNull(step.contrastToNoise)}});
        std::string line = "mean " + Fixed(noise.mean, 1);
        line += step.isClipped
                    ? ", noise not known: " + Fixed(kPercent * noise.clippedShare, 1) + " % are clipped"
                    : ", noise " + Fixed(noise.deviation, 2);
        if (step.difference) line += ", step " + Fixed(*step.difference, 1);
        if (step.contrastToNoise) line += ", contrast to noise " + Fixed(*step.contrastToNoise, 1);
        told.lines.push_back(line);
    }
    return told;
}

FrameMeasure TellEdge(const EdgeMeasure& measure, double pitch) {
    FrameMeasure told;
    Json table = Json::array();
    constexpr size_t kEvery = 10;  // of the points, as the phantom's truth has them
    for (size_t i = 0; i < measure.mtf.size(); i += kEvery)
        table.push_back({{"cyclesPerPixel", measure.mtf[i].frequency},
                         {"linePairsPerMm", OrNull(PerMm(measure.mtf[i].frequency, pitch))},
                         {"modulation", measure.mtf[i].modulation}});
    told.json = {{"isLying", measure.isLying},
                 {"angleDegrees", measure.angleDegrees},
                 {"darkLevel", measure.darkLevel},
                 {"brightLevel", measure.brightLevel},
                 {"noise", measure.noise},
                 {"contrastToNoise", measure.noise > 0.0 ? Json(measure.contrastToNoise) : Json(nullptr)},
                 {"risePixels", measure.risePixels},
                 {"overshoot", measure.overshoot},
                 {"clippedShare", measure.clippedShare},
                 {"mtf50", OrNull(measure.mtf50)},
                 {"mtf50PerMm", OrNull(PerMm(measure.mtf50, pitch))},
                 {"mtf", table}};
    told.lines = {"edge at " + Fixed(measure.angleDegrees, 2) + " degrees from the " +
                      (measure.isLying ? "row" : "column") + ", levels " + Fixed(measure.darkLevel, 1) +
                      " and " + Fixed(measure.brightLevel, 1) + ", noise " + Fixed(measure.noise, 2),
                  (std::isfinite(measure.risePixels)
                       ? "rises from 10 to 90 % within " + Fixed(measure.risePixels, 2) + " pixels"
                       : std::string("rises too unevenly for a width from 10 to 90 %")) +
                      ", goes beyond by " + Fixed(kPercent * measure.overshoot, 1) + " %",
                  measure.mtf50 ? "half of the contrast is left at " + FrequencyWords(*measure.mtf50, pitch)
                                : "more than half of the contrast is left up to 1 cycle per pixel"};
    if (measure.clippedShare > kMuchClipping)
        told.lines.push_back(Fixed(kPercent * measure.clippedShare, 1) +
                             " % of the pixels are clipped: the edge looks sharper than it is");
    return told;
}

FrameMeasure TellLines(const LinesMeasure& measure, double pitch) {
    FrameMeasure told;
    told.json["isLying"] = measure.isLying;
    Json& list = told.json["groups"] = Json::array();
    for (const MeasuredGroup& group : measure.groups) {
        list.push_back({{"top", group.top},
                        {"height", group.height},
                        {"cyclesPerPixel", group.frequency},
                        {"linePairsPerMm", OrNull(PerMm(group.frequency, pitch))},
                        {"mean", group.mean},
                        {"amplitude", group.amplitude},
                        {"modulation", group.modulation}});
        told.lines.push_back(FrequencyWords(group.frequency, pitch) + ": modulation " +
                             Fixed(group.modulation, 4));
    }
    return told;
}

}  // namespace

void AddMeasureOptions(CLI::App& command, MeasureOptions& options) {
    command
        .add_option(
            "--measure", options.kind,
            "Measure noise and contrast of a step wedge, the response of a slanted edge, or line pairs")
        ->type_name("KIND")
        ->check(CLI::IsMember(std::vector<std::string>{"wedge", "edge", "lines"}));
    command
        .add_option("--area", options.area, "The part of the frame that is measured; without it all of it")
        ->type_name("X,Y,W,H");
    command.add_option("--steps", options.steps, "Steps of the wedge; 1: an even area")
        ->capture_default_str()
        ->type_name("NUMBER");
    command.add_option("--pitch", options.pitch, "Width of a pixel, for line pairs per mm")->type_name("MM");
}

void TestMeasureOptions(const MeasureOptions& options) {
    if (!options.area.empty() && options.kind.empty()) throw UsageError("--area is for --measure only");
    if (!options.area.empty() && !ParsePixelArea(options.area))
        throw UsageError("'" + options.area + "' is no area",
                         "write column, row, width and height as in 10,20,300,200");
    if (options.steps < 1 || options.steps > kMostSteps) throw UsageError("--steps should be 1 to 256");
    if (!(options.pitch >= 0.0 && options.pitch <= kMostPitch))
        throw UsageError("--pitch should be above 0 and at most 10");
}

FrameMeasure MeasureLoadedFrame(const std::string& path, const Frame& frame, const MeasureOptions& options) {
    try {
        const PixelArea area =
            ParsePixelArea(options.area).value_or(PixelArea{0, 0, frame.width, frame.height});
        const Frame part = CutArea(frame, area);
        FrameMeasure told = options.kind == "wedge"  ? TellWedge(MeasureWedge(part, options.steps))
                            : options.kind == "edge" ? TellEdge(MeasureEdge(part), options.pitch)
                                                     : TellLines(MeasureLines(part), options.pitch);
        Json json = {
            {"kind", options.kind},
            {"area",
             {{"left", area.left}, {"top", area.top}, {"width", area.width}, {"height", area.height}}}};
        json.update(told.json);
        told.json = std::move(json);
        return told;
    } catch (const CannotMeasure& error) {
        throw InputError(path, error.what(), error.Remedy());
    }
}

}  // namespace vastrelline

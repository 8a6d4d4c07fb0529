// SPDX-License-Identifier: Apache-2.0
#include "commands/PhantomMaking.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "frames/FrameSize.h"
#include "messages/ToolError.h"
#include "phantom/EdgePhantom.h"
#include "phantom/LinesPhantom.h"
#include "phantom/PhantomFrame.h"
#include "phantom/WedgePhantom.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

// Above this the largest arrays of the making come near a gigabyte.
constexpr int32_t kLeastBits = 8;
constexpr int32_t kMostBits = 16;
constexpr int32_t kSensorBits = 12;
constexpr int32_t kUsualSteps = 8;
constexpr int32_t kMostSteps = 256;
constexpr double kUsualAngle = 5.0;  // as slanted edges are mostly set up
constexpr double kMostAngle = 45.0;
constexpr double kUsualBlur = 0.7;
constexpr double kMostBlur = 50.0;
constexpr double kMostPitch = 10.0;
constexpr double kNyquist = 0.5;
constexpr int32_t kLeastRowsOfGroup = 8;  // so that there is a plain row between groups
constexpr double kUsualNoiseParts = 512.0;

std::string Short(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", value);
    return text;
}

// Refuses what is not a number, too.
double InRange(const char* name, double value, double least, double most) {
    if (!(value >= least && value <= most))
        throw UsageError(std::string(name) + " should be " + Short(least) + " to " + Short(most));
    return value;
}

double Greatest(const std::vector<double>& values) { return *std::max_element(values.begin(), values.end()); }

int32_t TopLevelOf(const PhantomOptions& options) {
    const int32_t bits = options.bits.value_or(kSensorBits);
    InRange("--bits", bits, kLeastBits, kMostBits);
    return (int32_t{1} << bits) - 1;
}

std::vector<double> NoiseOf(const PhantomOptions& options, int32_t topLevel) {
    std::vector<double> noise = options.noise;
    if (noise.empty()) noise.push_back((topLevel + 1.0) / kUsualNoiseParts);
    for (const double sigma : noise) InRange("--noise", sigma, 0.0, topLevel);
    return noise;
}

double OneNoise(const std::vector<double>& noise) {
    if (noise.size() > 1) throw UsageError("--noise takes one number; a wedge alone has one for each step");
    return noise.front();
}

KnownLevels LevelsOf(const PhantomOptions& options, double greatestNoise) {
    constexpr double kEighths = 8.0;
    KnownLevels levels;
    levels.topLevel = TopLevelOf(options);
    levels.seed = options.seed;
    const double all = levels.topLevel + 1.0;
    levels.low = InRange("--low", options.low.value_or(all / kEighths), 0.0, levels.topLevel);
    levels.high = InRange("--high", options.high.value_or(all - all / kEighths), 0.0, levels.topLevel);
    if (!(levels.low < levels.high)) throw UsageError("--low should be below --high");
    const double reach = kNoiseReach * greatestNoise;
    if (levels.low < reach || levels.high + reach > levels.topLevel)
        throw UsageError("a noise of " + Short(greatestNoise) + " at levels " + Short(levels.low) + " to " +
                             Short(levels.high) + " would be cut at 0 or " + std::to_string(levels.topLevel),
                         "leave six times the noise free at both ends");
    return levels;
}

double PitchOf(const PhantomOptions& options) {
    constexpr double kLeastPitch = 1e-4;
    return options.pitch ? InRange("--pitch", *options.pitch, kLeastPitch, kMostPitch) : 0.0;
}

double BlurOf(const PhantomOptions& options) {
    return InRange("--blur", options.blur.value_or(kUsualBlur), 0.0, kMostBlur);
}

void AddLevels(const KnownLevels& levels, Json& truth) {
    truth["topLevel"] = levels.topLevel;
    truth["low"] = levels.low;
    truth["high"] = levels.high;
}

// What is known per pixel is known per mm if the pixel's width is.
Json PerMm(double perPixel, double pitch) { return pitch > 0.0 ? Json(perPixel / pitch) : Json(nullptr); }

MadePhantom MakeTeeth(const PhantomOptions& options, FrameSize size) {
    const double dose = options.dose.value_or(1.0);
    if (!(dose > 0.0 && dose <= kMostPhantomDose))
        throw UsageError("--dose should be above 0 and at most 100");
    return {MakePhantomFrame(size, dose, options.seed),
            kPhantomTopLevel,
            "dose " + Short(dose),
            {{"topLevel", kPhantomTopLevel}, {"dose", dose}}};
}

MadePhantom MakeWedge(const PhantomOptions& options, FrameSize size) {
    WedgePhantom phantom;
    phantom.size = size;
    phantom.noise = NoiseOf(options, TopLevelOf(options));
    phantom.levels = LevelsOf(options, Greatest(phantom.noise));
    const int32_t usual = phantom.noise.size() > 1 ? static_cast<int32_t>(phantom.noise.size()) : kUsualSteps;
    const int32_t steps = options.steps.value_or(usual);
    InRange("--steps", steps, 2, std::min(kMostSteps, std::max(2, size.width)));
    if (size.width < steps) throw UsageError("a wedge should have a column for each step");
    if (phantom.noise.size() == 1) phantom.noise.resize(static_cast<size_t>(steps), phantom.noise.front());
    if (phantom.noise.size() != static_cast<size_t>(steps))
        throw UsageError("--noise should be one number, or one for each of " + std::to_string(steps) +
                         " steps");
    MadePhantom made{MakeWedgePhantom(phantom), phantom.levels.topLevel, {}, Json::object()};
    AddLevels(phantom.levels, made.truth);
    Json& list = made.truth["steps"] = Json::array();
    for (const WedgeStep& step : WedgeStepsOf(phantom))
        list.push_back(
            {{"left", step.left}, {"width", step.width}, {"level", step.level}, {"noise", step.noise}});
    made.words = std::to_string(steps) + " steps, noise up to " + Short(Greatest(phantom.noise)) + " levels";
    return made;
}

Json ModulationTable(const BlurredStep& step, double pitch) {
    constexpr int kRows = 20;  // up to one cycle per pixel
    Json table = Json::array();
    for (int i = 0; i <= kRows; ++i) {
        const double frequency = static_cast<double>(i) / kRows;
        table.push_back({{"cyclesPerPixel", frequency},
                         {"linePairsPerMm", PerMm(frequency, pitch)},
                         {"modulation", step.ModulationAt(frequency)}});
    }
    return table;
}

MadePhantom MakeEdge(const PhantomOptions& options, FrameSize size) {
    EdgePhantom phantom;
    phantom.size = size;
    phantom.noise = OneNoise(NoiseOf(options, TopLevelOf(options)));
    phantom.levels = LevelsOf(options, phantom.noise);
    phantom.angleDegrees = InRange("--angle", options.angle.value_or(kUsualAngle), -kMostAngle, kMostAngle);
    phantom.blurPixels = BlurOf(options);
    const double pitch = PitchOf(options);
    const BlurredStep step(phantom.angleDegrees, phantom.blurPixels);
    MadePhantom made{MakeEdgePhantom(phantom), phantom.levels.topLevel, {}, Json::object()};
    AddLevels(phantom.levels, made.truth);
    made.truth.update({{"noise", phantom.noise},
                       {"angleDegrees", phantom.angleDegrees},
                       {"blurPixels", phantom.blurPixels},
                       {"pitchMm", pitch > 0.0 ? Json(pitch) : Json(nullptr)},
                       {"risePixels", step.RiseDistance()},
                       {"mtf50", step.HalfModulation()},
                       {"mtf50PerMm", PerMm(step.HalfModulation(), pitch)},
                       {"mtf", ModulationTable(step, pitch)}});
    made.words = "angle " + Short(phantom.angleDegrees) + " degrees, blur " + Short(phantom.blurPixels) +
                 " pixels, noise " + Short(phantom.noise) + " levels";
    return made;
}

MadePhantom MakeLines(const PhantomOptions& options, FrameSize size) {
    LinesPhantom phantom;
    phantom.size = size;
    phantom.noise = OneNoise(NoiseOf(options, TopLevelOf(options)));
    phantom.levels = LevelsOf(options, phantom.noise);
    phantom.blurPixels = BlurOf(options);
    const double pitch = PitchOf(options);
    phantom.frequencies = {0.05, 0.1, 0.15, 0.2, 0.3, 0.4};
    if (!options.frequencies.empty()) {
        phantom.frequencies = options.frequencies;
        for (double& frequency : phantom.frequencies) {
            if (pitch > 0.0) frequency *= pitch;
            if (!(frequency > 0.0 && frequency < kNyquist))
                throw UsageError("--frequencies should be above 0 and below half a cycle per pixel",
                                 "say --pitch MM if they are line pairs per mm");
        }
    }
    if (phantom.frequencies.size() * kLeastRowsOfGroup > static_cast<size_t>(size.height))
        throw UsageError(std::to_string(phantom.frequencies.size()) + " groups of lines need at least " +
                         std::to_string(phantom.frequencies.size() * kLeastRowsOfGroup) + " rows");
    MadePhantom made{MakeLinesPhantom(phantom), phantom.levels.topLevel, {}, Json::object()};
    AddLevels(phantom.levels, made.truth);
    made.truth.update({{"noise", phantom.noise},
                       {"blurPixels", phantom.blurPixels},
                       {"pitchMm", pitch > 0.0 ? Json(pitch) : Json(nullptr)}});
    Json& list = made.truth["groups"] = Json::array();
    for (const LineGroup& group : LineGroupsOf(phantom))
        list.push_back({{"top", group.top},
                        {"height", group.height},
                        {"cyclesPerPixel", group.frequency},
                        {"linePairsPerMm", PerMm(group.frequency, pitch)},
                        {"amplitude", group.amplitude},
                        {"modulation", group.modulation}});
    made.words = std::to_string(phantom.frequencies.size()) + " groups of lines, blur " +
                 Short(phantom.blurPixels) + " pixels, noise " + Short(phantom.noise) + " levels";
    return made;
}

}  // namespace

MadePhantom MakePhantom(const PhantomOptions& options) {
    const FrameSize size = ParseFrameSize(options.size).value_or(FrameSize{});
    if (PixelCount(size.width, size.height) > kMostPhantomPixels)
        throw UsageError("a phantom of " + FormatFrameSize(size) + " is too large");
    MadePhantom made = options.kind == "wedge"   ? MakeWedge(options, size)
                       : options.kind == "edge"  ? MakeEdge(options, size)
                       : options.kind == "lines" ? MakeLines(options, size)
                                                 : MakeTeeth(options, size);
    Json truth = {
        {"kind", options.kind}, {"width", size.width}, {"height", size.height}, {"seed", options.seed}};
    truth.update(made.truth);
    made.truth = std::move(truth);
    return made;
}

}  // namespace vastrelline

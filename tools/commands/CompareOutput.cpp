// SPDX-License-Identifier: Apache-2.0
#include "commands/CompareOutput.h"

#include <iomanip>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <utility>

#include "commands/CompareWords.h"
#include "messages/Messages.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

constexpr size_t kMostRows = 1000;  // the objects for programs have all

Json PlaceJson(const PixelDifference& place) {
    return {{"x", place.x}, {"y", place.y}, {"first", place.first}, {"second", place.second}};
}

Json SizeJson(const std::optional<FrameSize>& size) {
    return size ? Json{size->width, size->height} : Json(nullptr);
}

Json FiguresJson(const std::optional<PairFigures>& figures) {
    if (!figures) return nullptr;  // frames of different sizes are not compared pixel by pixel
    Json places = Json::array();
    for (const PixelDifference& place : figures->places) places.push_back(PlaceJson(place));
    Json classes = Json::array();
    for (const DifferenceClass& each : figures->classes)
        classes.push_back({{"least", each.least}, {"greatest", each.greatest}, {"count", each.count}});
    return {{"count", figures->count},
            {"beyondTolerance", figures->beyond},
            {"largest", figures->largest},
            {"largestPlace", figures->count == 0 ? Json(nullptr) : PlaceJson(figures->largestPlace)},
            {"firstPlaces", std::move(places)},
            {"differences", std::move(classes)},
            {"meanSquaredError", figures->meanSquare},
            {"peak", figures->peak},
            {"psnr", figures->psnr ? Json(*figures->psnr) : Json("inf")}};
}

Json PathJson(const std::string& path) { return path.empty() ? Json(nullptr) : Json(path); }

void WriteFigures(std::ostream& out, const PairFigures& figures) {
    out << "noise      PSNR " << DescribeNoise(figures) << '\n' << "by levels  ";
    const char* part = "";
    for (const DifferenceClass& each : figures.classes) {
        if (each.count == 0) continue;
        out << part << DescribeClass(each) << ": " << each.count;
        part = ", ";
    }
    const PixelDifference& largest = figures.largestPlace;
    out << "\nlargest    at (" << largest.x << ", " << largest.y << "): " << largest.first << ", "
        << largest.second << "\nplaces over the frame (x, y): first frame, second frame\n";
    for (const PixelDifference& place : figures.places)
        out << "  (" << place.x << ", " << place.y << "): " << place.first << ", " << place.second << '\n';
}

void WriteRow(std::ostream& out, const PairOutcome& outcome) {
    out << std::left << std::setw(18) << StateWords(outcome.state) << std::right;
    if (outcome.figures) {
        out << std::setw(10) << outcome.figures->count << std::setw(9) << outcome.figures->largest
            << std::setw(9) << std::fixed << std::setprecision(2) << outcome.figures->psnr.value_or(0.0);
    } else {
        out << std::setw(10) << '-' << std::setw(9) << '-' << std::setw(9) << '-';
    }
    out << "  " << OneLine(outcome.name);
    if (outcome.state == PairState::OtherSize) out << ": " << DescribePair(outcome, 0);
    if (outcome.error) out << ": " << OneLine(outcome.error->what());
    out << '\n';
}

}  // namespace

std::string FormatPair(const PairOutcome& outcome, const CompareOptions& options) {
    std::ostringstream out;
    out << HeadlineOf({outcome}) << ": " << DescribePair(outcome, options.tolerance) << '\n';
    if (outcome.figures && outcome.figures->count > 0) WriteFigures(out, *outcome.figures);
    return out.str();
}

std::string FormatPairs(const std::vector<PairOutcome>& outcomes, const CompareOptions& options) {
    std::ostringstream out;
    out << HeadlineOf(outcomes) << ": " << DescribePairs(outcomes) << '\n';
    if (options.tolerance > 0) out << "the tolerance is " << options.tolerance << '\n';
    const size_t equal = CountStates(outcomes)[static_cast<size_t>(PairState::Equal)];
    if (equal == outcomes.size()) return out.str();
    out << "\nstate                 pixels  largest  PSNR dB  name\n";
    size_t rows = 0;
    for (const PairOutcome& outcome : outcomes)
        if (outcome.state != PairState::Equal && rows++ < kMostRows) WriteRow(out, outcome);
    if (rows > kMostRows) out << "and " << rows - kMostRows << " more, which --json tells\n";
    return out.str();
}

nlohmann::ordered_json PairToJson(const PairOutcome& outcome, const CompareOptions& options) {
    return {{"equal", outcome.state == PairState::Equal},
            {"state", PairStateName(outcome.state)},
            {"tolerance", options.tolerance},
            {"first", PathJson(outcome.first)},
            {"second", PathJson(outcome.second)},
            {"firstSize", SizeJson(outcome.firstSize)},
            {"secondSize", SizeJson(outcome.secondSize)},
            {"pixels", FiguresJson(outcome.figures)},
            {"notes", outcome.notes}};
}

nlohmann::ordered_json PairsToJson(const std::vector<PairOutcome>& outcomes, const CompareOptions& options) {
    Json counts = Json::object();
    const std::vector<size_t> states = CountStates(outcomes);
    for (size_t i = 0; i < states.size(); ++i)
        counts[std::string(PairStateName(static_cast<PairState>(i)))] = states[i];
    Json pairs = Json::array();
    for (const PairOutcome& outcome : outcomes) {
        Json pair = {{"name", outcome.name}};
        pair.update(PairToJson(outcome, options));
        pair.erase("tolerance");
        pair["error"] = nullptr;
        if (outcome.error)
            pair["error"] = {{"where", outcome.error->Where()},
                             {"what", outcome.error->What()},
                             {"remedy", outcome.error->Remedy()}};
        pairs.push_back(std::move(pair));
    }
    return {{"equal", states[static_cast<size_t>(PairState::Equal)] == outcomes.size()},
            {"tolerance", options.tolerance},
            {"first", options.first},
            {"second", options.second},
            {"counts", std::move(counts)},
            {"pairs", std::move(pairs)}};
}

}  // namespace vastrelline

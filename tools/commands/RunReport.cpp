// SPDX-License-Identifier: Apache-2.0
#include "commands/RunReport.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string_view>

#include "frames/FrameSize.h"
#include "messages/FindingJson.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

std::string Fixed(double value, int decimals) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(decimals) << value;
    return text.str();
}

// The chain that ran: a low-exposure one says what it decided.
std::string ChainText(const RunReport& report) {
    std::string text(ChainName(report.plan->chain));
    const std::optional<DoseFigures>& dose = report.run->call.record.dose;
    if (report.plan->chain == ChainKind::LowExposure && dose)
        text += dose->isLow ? ", low sequence" : ", the section's list";
    return text;
}

void PrintStages(std::ostream& out, const std::vector<RanStage>& stages) {
    if (stages.empty()) out << "stages   none\n";
    std::string_view word = "stages   ";
    for (const RanStage& stage : stages) {
        const std::optional<int32_t> position = stage.place->position;
        out << word << std::setw(2) << (position ? std::to_string(*position) : "-") << "  " << std::left
            << std::setw(22) << stage.title << std::right << std::setw(6)
            << (stage.elapsedMs ? Fixed(*stage.elapsedMs, 0) + " ms" : "-") << '\n';
        word = "         ";
    }
}

void PrintExposure(std::ostream& out, const DoseFigures& dose) {
    out << "exposure " << (dose.isLow ? "low" : "normal") << ": ";
    if (dose.objectTotal == 0)
        out << "no pixel belongs to the object\n";
    else
        out << Fixed(100.0 * dose.lowRatio, 2) << " % of the object's " << dose.objectTotal
            << " pixels lie below level 100; its median is " << dose.objectMedian << '\n';
}

Json StagesJson(const std::vector<RanStage>& stages) {
    Json array = Json::array();
    for (const RanStage& stage : stages) {
        const PlannedPlace& place = *stage.place;
        array.push_back({{"position", place.position ? Json(*place.position) : Json(nullptr)},
                         {"number", place.stageNumber},
                         {"stage", stage.title},
                         {"elapsedMs", stage.elapsedMs ? Json(*stage.elapsedMs) : Json(nullptr)}});
    }
    return array;
}

Json PathJson(const std::string& path) { return path.empty() ? Json(nullptr) : Json(path); }

Json RangeJson(LevelRange range) { return {{"least", range.least}, {"greatest", range.greatest}}; }

}  // namespace

nlohmann::ordered_json ExposureToJson(const std::optional<DoseFigures>& dose) {
    if (!dose) return nullptr;
    const Json ratio = std::isfinite(dose->lowRatio) ? Json(dose->lowRatio) : Json(nullptr);
    return {{"isLow", dose->isLow},
            {"objectMedian", dose->objectMedian},
            {"objectTotal", dose->objectTotal},
            {"lowSignal", dose->lowSignal},
            {"lowRatio", ratio}};
}

LevelRange RangeOf(const std::vector<uint16_t>& pixels) {
    if (pixels.empty()) return {};
    const auto [least, greatest] = std::minmax_element(pixels.begin(), pixels.end());
    return {*least, *greatest};
}

void PrintRunReport(std::ostream& out, const RunReport& report) {
    const FrameRun& run = *report.run;
    const Frame& frame = report.frame->frame;
    out << "read     " << report.framePath << ", " << FormatFrameSize({frame.width, frame.height})
        << " pixels\n"
        << "input    levels " << report.input.least << " to " << report.input.greatest << '\n'
        << "profile  " << report.profilePath << ", section '" << report.plan->section << "'"
        << (report.isInPlace ? ", in place" : "") << '\n'
        << "export   " << report.traits->name << ": " << ChainText(report) << '\n';
    if (run.call.record.dose) PrintExposure(out, *run.call.record.dose);
    PrintStages(out, run.stages);
    out << "result   " << report.traits->name << " returned " << run.code << " (" << ExportCodeText(run.code)
        << ") after " << Fixed(run.call.record.elapsedMs, 1) << " ms\n";
    if (!report.traits->takesBitmapPath) {
        const LevelRange output = RangeOf(run.call.output);
        out << "output   levels " << output.least << " to " << output.greatest << '\n';
    }
    out << "picture  " << report.picturePath << " (" << report.pictureKind << ")\n";
    if (!report.stripPath.empty()) out << "strip    " << report.stripPath << '\n';
    if (!report.logPath.empty()) out << "log      " << report.logPath << '\n';
    if (!report.recordPath.empty()) out << "record   " << report.recordPath << '\n';
}

nlohmann::ordered_json RunToJson(const RunReport& report) {
    const FrameRun& run = *report.run;
    const Frame& frame = report.frame->frame;
    const Json output = report.traits->takesBitmapPath ? Json(nullptr) : RangeJson(RangeOf(run.call.output));
    return {{"frame",
             {{"file", report.framePath},
              {"width", frame.width},
              {"height", frame.height},
              {"sourceBits", report.frame->sourceBits},
              {"levels", RangeJson(report.input)}}},
            {"profile", report.profilePath},
            {"section", report.plan->section},
            {"isInPlace", report.isInPlace},
            {"export", report.traits->name},
            {"chain", ChainName(report.plan->chain)},
            {"code", run.code},
            {"elapsedMs", run.call.record.elapsedMs},
            {"exposure", ExposureToJson(run.call.record.dose)},
            {"stages", StagesJson(run.stages)},
            {"output", output},
            {"picture", report.picturePath},
            {"strip", PathJson(report.stripPath)},
            {"log", PathJson(report.logPath)},
            {"record", PathJson(report.recordPath)},
            {"findings", FindingsJson(report.findings)}};
}

}  // namespace vastrelline

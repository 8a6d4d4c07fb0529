// SPDX-License-Identifier: Apache-2.0
#include "commands/AgainstReport.h"

#include <algorithm>
#include <iomanip>
#include <nlohmann/json.hpp>
#include <sstream>

#include "commands/RunHead.h"
#include "messages/FindingJson.h"
#include "messages/Messages.h"
#include "profile/ValueTable.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

std::string TitleOf(const PointDifference& point) {
    if (!point.position) return point.title;
    std::string title = NumberedKeyName(*point.position, "");
    title.back() = ' ';
    return title + point.title;
}

std::string DescribeDifference(const PointDifference& point) {
    if (!point.isShown) return "shows no frame";
    if (!point.isInBoth) return "one build only";
    return point.count == 0 ? "the same" : "";
}

// Of several curves in a row only the last leaves a frame: nobody has looked behind the others.
std::string SameWords(const std::vector<PointDifference>& points) {
    const auto count = std::count_if(points.begin(), points.end(),
                                     [](const PointDifference& point) { return !point.isShown; });
    if (count == 0) return "the same pixels everywhere";
    return "the same pixels wherever there is a frame; " + std::to_string(count) +
           (count == 1 ? " stage shows none" : " stages show none");
}

std::string Verdict(const AgainstReport& report) {
    if (report.own.code != report.other.code)
        return "different codes: " + std::to_string(report.own.code) + ", and " +
               std::to_string(report.other.code) + " of the other build";
    const PointDifference* const first = FindFirstDifference(report.points);
    if (first == nullptr) return SameWords(report.points);
    if (!first->isInBoth) return "different: only one build comes by '" + TitleOf(*first) + "'";
    return "different from '" + TitleOf(*first) + "' on: " + std::to_string(first->count) +
           (first->count == 1 ? " pixel" : " pixels") + ", by up to " + std::to_string(first->largest) +
           (first->largest == 1 ? " level" : " levels");
}

Json BuildJson(const ComparedBuild& build) {
    return {{"file", build.path}, {"sha256", build.hash}, {"code", build.code}};
}

Json PointJson(const PointDifference& point) {
    return {{"point", PointName(point.kind)},
            {"title", point.title},
            {"position", point.position ? Json(*point.position) : Json(nullptr)},
            {"inBoth", point.isInBoth},
            {"differing", point.isShown && point.isInBoth ? Json(point.count) : Json(nullptr)},
            {"largest", point.isShown && point.isInBoth ? Json(point.largest) : Json(nullptr)}};
}

}  // namespace

bool AgainstReport::IsSame() const {
    return own.code == other.code && FindFirstDifference(points) == nullptr;
}

std::string FormatAgainst(const AgainstReport& report) {
    constexpr int kTitleWidth = 28;
    std::ostringstream out;
    out << OneLine(report.options->frame) << ": "
        << OneLine(DescribePlan(report.input->profile.Path(), *report.plan, report.input->traits)) << '\n'
        << "build    " << OneLine(report.own.path) << "\n         SHA-256 " << report.own.hash << '\n'
        << "against  " << OneLine(report.other.path) << "\n         SHA-256 " << report.other.hash << '\n';
    if (!report.points.empty())
        out << "\n  " << std::left << std::setw(kTitleWidth) << "point" << std::right << std::setw(10)
            << "pixels" << std::setw(9) << "largest" << '\n';
    for (const PointDifference& point : report.points) {
        out << "  " << std::left << std::setw(kTitleWidth) << TitleOf(point) << std::right;
        const std::string words = DescribeDifference(point);
        if (words.empty())
            out << std::setw(10) << point.count << std::setw(9) << point.largest << '\n';
        else
            out << "  " << words << '\n';
    }
    out << '\n' << Verdict(report) << '\n';
    return out.str();
}

nlohmann::ordered_json AgainstToJson(const AgainstReport& report) {
    Json json = RunHeadJson(report.options->frame, report.input->frame, report.input->profile, *report.plan,
                            report.input->traits);
    Json points = Json::array();
    for (const PointDifference& point : report.points) points.push_back(PointJson(point));
    const PointDifference* const first = FindFirstDifference(report.points);
    json.update({{"same", report.IsSame()},
                 {"build", BuildJson(report.own)},
                 {"against", BuildJson(report.other)},
                 {"firstDifference", first == nullptr ? Json(nullptr) : PointJson(*first)},
                 {"points", std::move(points)},
                 {"findings", FindingsJson(report.input->findings)}});
    return json;
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "commands/SweepReport.h"

#include <algorithm>
#include <cmath>
#include <iomanip>
#include <nlohmann/json.hpp>
#include <sstream>

#include "commands/RunHead.h"
#include "commands/StagePictures.h"
#include "messages/ErrorJson.h"
#include "messages/FindingJson.h"
#include "messages/Messages.h"
#include "pictures/ContactSheet.h"
#include "pictures/GridSheet.h"
#include "profile/PlainWords.h"
#include "profile/SectionPlan.h"
#include "profile/ValueJson.h"
#include "profile/ValueTable.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

constexpr size_t kMedian = 3;
static_assert(kPercentiles[kMedian] == 50);

SectionPlan PlanOf(const SweepPlan& plan) {
    return MakeSectionPlan(plan.input.profile, plan.options.section, plan.input.traits.kind);
}

bool HasOwn(const SweepReport& report) {
    return std::any_of(report.pictures->begin(), report.pictures->end(),
                       [](const SweptPicture& picture) { return picture.isOwn; });
}

std::string OwnText(const SweptPlace& place) { return FormatReadValue(place.own.reading.value); }

// "04_MAX_SLOPE is 1.8 (line 41)"
std::string DescribeOwn(const SweptPlace& place) {
    return ShownText(place.swept.key) + " is " + ShownText(OwnText(place)) + " in the profile (" +
           DescribeMark(place.own) + ")";
}

CaptionedPicture CaptionOf(const SweptPicture& picture, std::string title) {
    std::string detail = picture.error ? "failed" : "";
    const bool isAsEver = picture.isOwn && picture.changed.value_or(0.0) == 0.0;
    if (picture.changed && !isAsEver) detail = DescribeShare(*picture.changed) + " changed";
    if (picture.isOwn) detail.append(detail.empty() ? "" : "\n").append("in the profile");
    return {std::move(title), detail, picture.small, picture.isOwn};
}

// Columns of the table, each as wide as its widest text, numbers at the right.
class Table {
public:
    void Add(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }

    std::string Format() const {
        std::vector<size_t> widths(rows_.front().size());
        for (const std::vector<std::string>& row : rows_)
            for (size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], CountCharacters(row[i]));
        std::string text;
        for (const std::vector<std::string>& row : rows_) {
            std::string line;
            for (size_t i = 0; i < row.size(); ++i) {
                const bool isLast = i + 1 == widths.size();
                line.append(i == 0 ? "" : "  ");
                if (!isLast) line.append(widths[i] - CountCharacters(row[i]), ' ');
                line.append(row[i]);
            }
            text.append(line).append("\n");
        }
        return text;
    }

private:
    std::vector<std::vector<std::string>> rows_;
};

std::vector<std::string> RowOf(const SweptPicture& picture, size_t keys) {
    std::vector<std::string> row{picture.isOwn && !picture.values.empty() ? "*" : ""};
    for (size_t i = 0; i < keys; ++i)
        row.push_back(picture.values.empty() ? "as it is" : ShownText(picture.values[i]));
    if (picture.error) {
        row.insert(row.end(), {"-", "-", "-", "-", "-", "failed"});
        return row;
    }
    const FrameStatistics& levels = picture.statistics;
    row.push_back(std::to_string(std::lround(picture.elapsedMs)));
    row.push_back(std::to_string(levels.least));
    row.push_back(std::to_string(levels.percentiles[kMedian]));
    row.push_back(std::to_string(levels.greatest));
    row.push_back(picture.changed ? DescribeShare(*picture.changed) : "-");
    row.push_back(picture.leaf);
    return row;
}

Json FrameJson(const SweptPicture& picture) {
    if (picture.error) return nullptr;
    return {{"width", picture.size.width},
            {"height", picture.size.height},
            {"window", {{"low", picture.window.low}, {"high", picture.window.high}}},
            {"least", picture.statistics.least},
            {"median", picture.statistics.percentiles[kMedian]},
            {"greatest", picture.statistics.greatest},
            {"changedShare", picture.changed ? Json(*picture.changed) : Json(nullptr)},
            {"sha256", picture.hash}};
}

Json PictureJson(const SweptPicture& picture) {
    return {{"values", picture.values},
            {"isOwn", picture.isOwn},
            {"exit", static_cast<int>(picture.error ? picture.error->Code() : ExitCode::Well)},
            {"picture", picture.error ? Json(nullptr) : Json(picture.leaf)},
            {"profileSha256", picture.profileHash.empty() ? Json(nullptr) : Json(picture.profileHash)},
            {"elapsedMs", picture.error ? Json(nullptr) : Json(picture.elapsedMs)},
            {"frame", FrameJson(picture)},
            {"findings", FindingsJson(picture.findings)},
            {"error", ErrorJson(picture.error)}};
}

std::string TitleOf(const SweepReport& report) {
    const SweepPlan& plan = *report.plan;
    std::string title = RunTitle(plan.options);
    if (plan.places.size() > 1)
        title.append("\n")
            .append(plan.places[0].swept.key)
            .append(" across, ")
            .append(plan.places[1].swept.key)
            .append(" down");
    for (const SweptPlace& place : plan.places) title.append("\n").append(DescribeOwn(place));
    return title;
}

}  // namespace

ExitCode CodeOf(const SweepReport& report) {
    ExitCode code = report.unchanged->error ? report.unchanged->error->Code() : ExitCode::Well;
    for (const SweptPicture& picture : *report.pictures)
        if (picture.error) code = std::max(code, picture.error->Code());
    return code;
}

Canvas DrawSweepSheet(const SweepReport& report) {
    const SweepPlan& plan = *report.plan;
    std::vector<CaptionedPicture> pictures;
    if (plan.places.size() == 1) {
        if (!HasOwn(report) && !report.unchanged->error) {
            CaptionedPicture own{OwnText(plan.places[0]), "in the profile", report.unchanged->small, true};
            pictures.push_back(std::move(own));
        }
        for (const SweptPicture& picture : *report.pictures)
            pictures.push_back(CaptionOf(picture, picture.values[0]));
        return DrawContactSheet(TitleOf(report), pictures, 0);
    }
    for (const SweptPicture& picture : *report.pictures) pictures.push_back(CaptionOf(picture, ""));
    return DrawGridSheet(TitleOf(report), {plan.places[0].swept.values, plan.places[1].swept.values},
                         pictures);
}

std::string FormatSweep(const SweepReport& report) {
    const SweepPlan& plan = *report.plan;
    std::ostringstream out;
    out << OneLine(plan.options.frame) << ": "
        << OneLine(DescribePlan(plan.input.profile.Path(), PlanOf(plan), plan.input.traits)) << '\n';
    for (const SweptPlace& place : plan.places) out << DescribeOwn(place) << '\n';
    Table table;
    std::vector<std::string> head{""};
    for (const SweptPlace& place : plan.places) head.push_back(ShownText(place.swept.key));
    head.insert(head.end(), {"ms", "min", "median", "max", "changed", "picture"});
    table.Add(std::move(head));
    table.Add(RowOf(*report.unchanged, plan.places.size()));
    for (const SweptPicture& picture : *report.pictures) table.Add(RowOf(picture, plan.places.size()));
    out << '\n' << table.Format();
    return out.str();
}

std::vector<Finding> SumUpFindings(const SweepReport& report) {
    std::vector<Finding> sums;
    std::vector<size_t> counts;
    for (const SweptPicture& picture : *report.pictures) {
        for (const Finding& finding : picture.findings) {
            const auto known = std::find_if(sums.begin(), sums.end(), [&](const Finding& sum) {
                return sum.rule == finding.rule && sum.line == finding.line &&
                       (!sum.rule.empty() || sum.text == finding.text);
            });
            if (known == sums.end()) {
                sums.push_back(finding);
                counts.push_back(0);
            } else {
                ++counts[static_cast<size_t>(known - sums.begin())];
            }
        }
    }
    for (size_t i = 0; i < sums.size(); ++i)
        if (counts[i] > 0) sums[i].text += " (and " + std::to_string(counts[i]) + " more)";
    return sums;
}

nlohmann::ordered_json SweepToJson(const SweepReport& report) {
    const SweepPlan& plan = *report.plan;
    Json keys = Json::array();
    for (const SweptPlace& place : plan.places)
        keys.push_back({{"key", place.swept.key},
                        {"section", place.section},
                        {"own", EffectiveToJson(place.own)},
                        {"values", place.swept.values}});
    Json pictures = Json::array();
    for (const SweptPicture& picture : *report.pictures) pictures.push_back(PictureJson(picture));
    Json json = RunHeadJson(plan.options.frame, plan.input.frame, plan.input.profile, PlanOf(plan),
                            plan.input.traits);
    json.update({{"folder", report.folder},
                 {"contactSheet", kSweepSheetLeaf},
                 {"table", kSweepTableLeaf},
                 {"keys", std::move(keys)},
                 {"unchanged", PictureJson(*report.unchanged)},
                 {"pictures", std::move(pictures)},
                 {"findings", FindingsJson(plan.input.findings)}});
    return json;
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "commands/SelftestReport.h"

#include <algorithm>
#include <iomanip>
#include <nlohmann/json.hpp>
#include <sstream>

#include "messages/Messages.h"
#include "reports/ReportPage.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

bool HasState(const SelftestReport& report, CheckState state) {
    return std::any_of(report.checks.begin(), report.checks.end(),
                       [&](const SelftestCheck& check) { return check.state == state; });
}

ReportVerdict MarkOf(CheckState state) {
    return state == CheckState::Failed ? ReportVerdict::Findings : ReportVerdict::Well;
}

}  // namespace

const char* CheckStateName(CheckState state) {
    switch (state) {
        case CheckState::Passed:
            return "passed";
        case CheckState::Left:
            return "left out";
        case CheckState::Failed:
            break;
    }
    return "failed";
}

ExitCode CodeOfSelftest(const SelftestReport& report) {
    return HasState(report, CheckState::Failed) ? ExitCode::Findings : ExitCode::Well;
}

std::string DescribeSelftest(const SelftestReport& report) {
    std::string left;
    std::string failed;
    for (const SelftestCheck& check : report.checks) {
        std::string& list = check.state == CheckState::Left ? left : failed;
        if (check.state == CheckState::Passed) continue;
        list.append(list.empty() ? "" : ", ").append(check.title);
    }
    if (!failed.empty()) return "Something is not as it should be: " + failed + ".";
    if (!left.empty()) return "All that was looked at is as it should be; left out: " + left + ".";
    return "This installation is whole.";
}

std::string FormatSelftest(const SelftestReport& report) {
    std::ostringstream text;
    constexpr int kTitleWidth = 14;
    text << std::left;
    for (const SelftestCheck& check : report.checks) {
        text << std::setw(kTitleWidth) << check.title << CheckStateName(check.state) << ": "
             << OneLine(check.result) << '\n';
        for (const std::string& fault : check.faults) text << "    " << OneLine(fault) << '\n';
    }
    text << std::setw(kTitleWidth) << "Verdict" << DescribeSelftest(report) << '\n';
    return text.str();
}

nlohmann::ordered_json SelftestToJson(const SelftestReport& report) {
    Json json = {{"date", report.date},
                 {"machine", report.machine},
                 {"program", report.program},
                 {"library", {{"file", report.library}, {"sha256", report.libraryHash}}},
                 {"verdict", DescribeSelftest(report)},
                 {"checks", Json::array()}};
    for (const SelftestCheck& check : report.checks)
        json["checks"].push_back({{"title", check.title},
                                  {"state", CheckStateName(check.state)},
                                  {"result", check.result},
                                  {"faults", check.faults}});
    return json;
}

std::vector<uint8_t> SelftestToHtml(const SelftestReport& report) {
    ReportPage page(std::string("Self test of Vastrelline ") + VASTRELLINE_VERSION);
    const bool hasFailed = HasState(report, CheckState::Failed);
    page.SetVerdict(hasFailed ? ReportVerdict::Findings : ReportVerdict::Well,
                    hasFailed ? "Not whole" : "Passed", DescribeSelftest(report));
    page.BeginSection("Checks");
    std::vector<ReportRow> rows;
    for (const SelftestCheck& check : report.checks)
        rows.push_back({{check.title, std::string(CheckStateName(check.state)) + ": " + check.result},
                        MarkOf(check.state)});
    page.AddFacts("What was looked at", rows);
    if (hasFailed) {
        page.BeginSection("Faults");
        std::vector<ReportRow> faults;
        for (const SelftestCheck& check : report.checks)
            for (const std::string& fault : check.faults)
                faults.push_back({{check.title, fault}, ReportVerdict::Findings});
        page.AddFacts("What is not as it should be", faults);
    }
    page.BeginSection("Of what");
    page.AddFacts("Machine and files", {{{"Date", report.date}},
                                        {{"Machine", report.machine}},
                                        {{"Version", VASTRELLINE_VERSION}},
                                        {{"Tool", report.program}},
                                        {{"Library", report.library}},
                                        {{"SHA-256 of the library", report.libraryHash}}});
    page.BeginSection("Signed");
    page.AddBlankLines({"Tested by", "Date", "Signature"});
    page.AddBlankLines({"Approved by", "Date", "Signature"});
    return page.Bytes();
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "commands/VerifyReport.h"

#include <nlohmann/json.hpp>
#include <sstream>

#include "messages/Markup.h"
#include "messages/Messages.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

constexpr ProofState kStates[] = {ProofState::Equal,          ProofState::Different, ProofState::FrameChanged,
                                  ProofState::ProfileChanged, ProofState::New,       ProofState::Failed};

// "is different", "have another frame": behind a number.
std::string_view StateWords(ProofState state, bool isOne) {
    switch (state) {
        case ProofState::Equal:
            return isOne ? "is equal" : "are equal";
        case ProofState::Different:
            return isOne ? "is different" : "are different";
        case ProofState::FrameChanged:
            return isOne ? "has another frame" : "have another frame";
        case ProofState::ProfileChanged:
            return isOne ? "has another profile" : "have another profile";
        case ProofState::New:
            return isOne ? "is new" : "are new";
        case ProofState::Failed:
            break;
    }
    return "failed";
}

const ProofPoint* PointAt(const ProofFacts* facts, size_t index) {
    return facts != nullptr && index < facts->points.size() ? &facts->points[index] : nullptr;
}

Json HashJson(const ProofPoint* point) {
    return point == nullptr || point->hash.empty() ? Json(nullptr) : Json(point->hash);
}

Json FirstDifferenceJson(const EntryResult& result) {
    if (result.verdict.state != ProofState::Different) return nullptr;
    const ProofFacts* const facts = result.entry->facts ? &*result.entry->facts : nullptr;
    const size_t index = result.verdict.firstPoint;
    const ProofPoint* const expected = PointAt(facts, index);
    const ProofPoint* const actual = PointAt(&result.outcome.facts, index);
    const ProofPoint* const named = expected != nullptr ? expected : actual;
    return {{"point", named->point},
            {"title", named->title},
            {"position", named->position ? Json(*named->position) : Json(nullptr)},
            {"expectedSha256", HashJson(expected)},
            {"actualSha256", HashJson(actual)}};
}

Json ErrorJson(const EntryResult& result) {
    if (!result.error) return nullptr;
    return {{"where", result.error->Where()},
            {"what", result.error->What()},
            {"remedy", result.error->Remedy()},
            {"exit", static_cast<int>(result.error->Code())}};
}

Json EntryJson(const EntryResult& result) {
    const ProofEntry& entry = *result.entry;
    return {
        {"name", NameProofEntry(entry)},
        {"profile", entry.profile},
        {"section", entry.section},
        {"export", TraitsOf(entry.exportKind).name},
        {"state", ProofStateName(result.verdict.state)},
        {"text", result.verdict.text},
        {"points", result.outcome.facts.points.size()},
        {"differentPoints", result.verdict.differentPoints},
        {"firstDifference", FirstDifferenceJson(result)},
        {"elapsedMs", result.outcome.facts.points.empty() ? Json(nullptr) : Json(result.outcome.elapsedMs)},
        {"error", ErrorJson(result)}};
}

std::string OrUnknown(const std::string& text) { return text.empty() ? "unknown" : text; }

}  // namespace

std::string SummariseResults(const std::vector<EntryResult>& results) {
    const size_t count = results.size();
    const std::string entries = std::to_string(count) + (count == 1 ? " entry" : " entries");
    const size_t equal = CountState(results, ProofState::Equal);
    if (equal == count) return entries + (count == 1 ? ", equal" : ", all equal");
    std::string text = entries + ":";
    const char* separator = " ";
    for (const ProofState state : kStates) {
        const size_t number = CountState(results, state);
        if (number == 0) continue;
        text.append(separator).append(std::to_string(number)).append(" ");
        text.append(StateWords(state, number == 1));
        separator = ", ";
    }
    return text;
}

std::string FormatVerify(const VerifyReport& report) {
    const ProofManifest& manifest = *report.manifest;
    std::ostringstream text;
    text << "manifest " << OneLine(manifest.path) << " (made with " << OneLine(OrUnknown(manifest.version))
         << " on " << OneLine(OrUnknown(manifest.platform)) << ")\n"
         << "library  " << OneLine(report.libraryFile) << '\n';
    for (const EntryResult& result : *report.results) {
        const ProofState state = result.verdict.state;
        if (state == ProofState::Equal || (report.isAdded && state == ProofState::New)) continue;
        text << OneLine(NameProofEntry(*result.entry)) << "\n    " << OneLine(result.verdict.text) << '\n';
    }
    text << "result   ";
    if (report.isAdded && report.isWritten)
        text << report.results->size() << (report.results->size() == 1 ? " entry" : " entries")
             << " added, the manifest has " << manifest.entries.size() << '\n';
    else
        text << SummariseResults(*report.results) << '\n';
    if (report.isUpdated)
        text << "update   "
             << (report.isWritten ? "written, with the old hashes in each entry's history"
                                  : "nothing was written")
             << '\n';
    return text.str();
}

nlohmann::ordered_json VerifyToJson(const VerifyReport& report) {
    const std::vector<EntryResult>& results = *report.results;
    Json json = {{"manifest", report.manifest->path},
                 {"madeWith",
                  {{"version", report.manifest->version},
                   {"platform", report.manifest->platform},
                   {"librarySha256", report.manifest->libraryHash}}},
                 {"library", {{"file", report.libraryFile}, {"sha256", report.libraryHash}}},
                 {"equal", CountState(results, ProofState::Equal)},
                 {"different", CountState(results, ProofState::Different)},
                 {"frameChanged", CountState(results, ProofState::FrameChanged)},
                 {"profileChanged", CountState(results, ProofState::ProfileChanged)},
                 {"new", CountState(results, ProofState::New)},
                 {"failed", CountState(results, ProofState::Failed)},
                 {"written", report.isWritten},
                 {"entries", Json::array()}};
    for (const EntryResult& result : results) json["entries"].push_back(EntryJson(result));
    return json;
}

std::string VerifyToJunit(const VerifyReport& report) {
    const std::vector<EntryResult>& results = *report.results;
    const size_t failed = CountState(results, ProofState::Failed);
    std::ostringstream xml;
    xml << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuite name=\"vastrelline verify\" tests=\""
        << results.size() << "\" failures=\""
        << results.size() - failed - CountState(results, ProofState::Equal) << "\" errors=\"" << failed
        << "\">\n";
    for (const EntryResult& result : results) {
        xml << "  <testcase classname=\"" << EscapeMarkup(report.manifest->path) << "\" name=\""
            << EscapeMarkup(NameProofEntry(*result.entry)) << "\"";
        if (result.verdict.state == ProofState::Equal) {
            xml << "/>\n";
            continue;
        }
        const char* const element = result.error ? "error" : "failure";
        xml << ">\n    <" << element << " message=\"" << EscapeMarkup(result.verdict.text) << "\"/>\n"
            << "  </testcase>\n";
    }
    xml << "</testsuite>\n";
    return xml.str();
}

}  // namespace vastrelline

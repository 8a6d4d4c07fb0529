// SPDX-License-Identifier: Apache-2.0
#include "workbench/StateJson.h"

#include <algorithm>
#include <cstddef>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>

#include "lint/LintRules.h"
#include "messages/ErrorJson.h"
#include "messages/FindingJson.h"
#include "profile/SectionPlan.h"
#include "profile/TopLevel.h"
#include "workbench/DeskEdits.h"
#include "workbench/HistoryJson.h"
#include "workbench/PlacesJson.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

Json OptionalId(const std::optional<uint64_t>& id) { return id ? Json(*id) : Json(nullptr); }

Json FramesJson(const std::vector<FrameShelf::Item>& frames) {
    Json array = Json::array();
    for (size_t i = 0; i < frames.size(); ++i) {
        const FrameShelf::Item& item = frames[i];
        const bool isKnown = item.width > 0;
        array.push_back({{"id", i},
                         {"name", item.name},
                         {"width", isKnown ? Json(item.width) : Json(nullptr)},
                         {"height", isKnown ? Json(item.height) : Json(nullptr)},
                         {"error", ErrorJson(item.error)}});
    }
    return array;
}

// Lines that the two texts do not share, counted by their ends: what is moved counts, too.
size_t CountUnsaved(std::string_view now, std::string_view file) {
    if (now == file) return 0;
    std::vector<std::string_view> lines[2];
    const std::string_view texts[2] = {now, file};
    for (size_t side = 0; side < 2; ++side)
        for (std::string_view rest = texts[side]; !rest.empty();) {
            const size_t end = std::min(rest.find('\n'), rest.size() - 1) + 1;
            lines[side].push_back(rest.substr(0, end));
            rest.remove_prefix(end);
        }
    for (auto& each : lines) std::sort(each.begin(), each.end());
    std::vector<std::string_view> onlyNow;
    std::vector<std::string_view> onlyThere;
    std::set_difference(lines[0].begin(), lines[0].end(), lines[1].begin(), lines[1].end(),
                        std::back_inserter(onlyNow));
    std::set_difference(lines[1].begin(), lines[1].end(), lines[0].begin(), lines[0].end(),
                        std::back_inserter(onlyThere));
    return std::max({onlyNow.size(), onlyThere.size(), size_t{1}});
}

// The place that a line of the profile belongs to: the one that reads it.
Json PlaceOfLine(const SectionPlan& plan, size_t line) {
    for (size_t i = 0; i < plan.places.size(); ++i)
        for (const PlannedKey& key : plan.places[i].keys)
            if (key.entry != nullptr && key.entry->lineNumber == line) return i;
    return nullptr;
}

Json FindingsJson(const ProfileFile& file, const SectionPlan& plan) {
    Json array = Json::array();
    // Of a file that is no profile each line is one, and every change sends them all.
    constexpr size_t kMostFindings = 1000;
    const bool hasSection = file.FindSection(plan.section) != nullptr;
    for (const LintFinding& each : LintProfile(file, hasSection ? std::string_view(plan.section) : "")) {
        if (array.size() == kMostFindings) break;
        Json json = FindingToJson(each.finding);
        json["place"] = each.finding.line == 0 ? Json(nullptr) : PlaceOfLine(plan, each.finding.line);
        array.push_back(std::move(json));
    }
    return array;
}

Json SectionsJson(const ProfileFile& file) {
    Json array = Json::array();
    for (const std::string& name : file.SectionNames())
        if (!IsSameKeyName(name, kSensorSectionName) && !IsSameKeyName(name, kLowSectionName))
            array.push_back(name);
    return array;
}

Json AgainstJson(const std::vector<AgainstFile>& files) {
    Json array = Json::array();
    for (const AgainstFile& file : files)
        array.push_back({{"path", file.path}, {"kind", file.isLibrary ? "library" : "profile"}});
    return array;
}

std::string LeafOf(const std::string& path) { return path.substr(path.find_last_of("/\\") + 1); }

}  // namespace

Json StateToJson(const ShownState& shown) {
    const DeskState& now = shown.desk.Now();
    const SectionPlan plan = MakeSectionPlan(shown.file, now.section, shown.kind);
    const ProfileFile saved(shown.path, shown.desk.FileBytes());
    const std::shared_ptr<const KeptRun> latest = shown.runs.Latest();
    Json exports = Json::array();
    for (const ExportTraits& traits : AllExports()) exports.push_back(traits.name);
    return {{"type", "state"},
            {"revision", shown.revision},
            {"tool",
             {{"version", VASTRELLINE_VERSION}, {"export", TraitsOf(shown.kind).name}, {"exports", exports}}},
            {"frames", FramesJson(shown.frames)},
            {"frame", now.frame},
            {"profile",
             {{"name", LeafOf(shown.path)},
              {"sections", SectionsJson(shown.file)},
              {"section", now.section},
              {"chain", ChainName(plan.chain)},
              {"unsaved", CountUnsaved(now.bytes, shown.desk.FileBytes())},
              {"canUndo", shown.desk.CanUndo()},
              {"canRedo", shown.desk.CanRedo()},
              {"changedOnDisk", shown.desk.IsChangedOnDisk()},
              {"topLevel", ReadTopLevel(shown.file, now.section)},
              {"textRevision", shown.desk.TextRevision()}}},
            {"places", PlacesToJson(shown.file, plan, saved, now)},
            {"findings", FindingsJson(shown.file, plan)},
            {"error", ErrorJson(WhyMeaningless(shown.file, now.section))},
            {"run", latest == nullptr ? Json(nullptr) : Json(latest->id)},
            {"pinned", {{"A", OptionalId(shown.runs.A())}, {"B", OptionalId(shown.runs.B())}}},
            {"history", HistoryToJson(shown.runs, std::nullopt)},
            {"notes", shown.notes},
            {"against", AgainstJson(shown.against)}};
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "commands/ProfileExplainCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "commands/JsonObject.h"
#include "commands/SectionChoice.h"
#include "messages/ToolError.h"
#include "profile/EffectiveValues.h"
#include "profile/PlainWords.h"
#include "profile/ProfileFile.h"
#include "profile/ValueJson.h"

namespace vastrelline {
namespace {

// Of the stages that know the key only the one that stands at the position, if one of them does.
void KeepStageAt(LookedUp& found, const SectionPlan& plan) {
    const auto stands = [&](const KeyTopic& topic) {
        return std::any_of(plan.places.begin(), plan.places.end(), [&](const PlannedPlace& place) {
            return place.position == found.position && place.stage != nullptr && place.stage == topic.stage;
        });
    };
    if (!found.position || std::none_of(found.keys.begin(), found.keys.end(), stands)) return;
    std::erase_if(found.keys, [&](const KeyTopic& topic) { return !stands(topic); });
}

}  // namespace

std::string_view ProfileExplainCommand::Examples() const {
    return "  vastrelline profile explain MAX_SLOPE\n"
           "  vastrelline profile explain 03_GAUSSIAN_SIZE --profile dental.ini --section General\n"
           "  vastrelline profile explain clahe\n";
}

std::string_view ProfileExplainCommand::Notes() const {
    return "Tells meaning, sensible range, default, what it does to the picture and what to look out for. A "
           "stage\n"
           "may be named, too, by name or number. Letters of either case. docs/tool-json.md tells of "
           "--json.\n";
}

void ProfileExplainCommand::AddOptions(CLI::App& command) {
    command.add_option("KEY", word_, "A key, with or without position, or a stage")
        ->required()
        ->type_name("");
    CLI::Option* const profile =
        command.add_option("--profile", profile_, "Tell where this profile has it")->type_name("FILE");
    command.add_option("--section", section_, "Only in this section")->type_name("NAME")->needs(profile);
    command.add_option("--export", exportName_, "The library's function; as profile show has it")
        ->type_name("NAME")
        ->needs(profile);
}

std::vector<KeyOccurrence> ProfileExplainCommand::Occurrences(LookedUp& found) const {
    std::vector<KeyOccurrence> occurrences;
    if (profile_.empty()) return occurrences;
    const ProfileFile file = ProfileFile::Read(profile_);
    const std::vector<std::string> sections =
        section_.empty() ? file.SectionNames() : std::vector<std::string>{section_};
    for (const std::string& section : sections) {
        const SectionPlan plan = PlanNamedSection(file, section, exportName_);
        if (!section_.empty()) KeepStageAt(found, plan);
        for (KeyOccurrence& each : FindOccurrences(found, ReadEffectiveValues(file, plan))) {
            // Without a section only what stands in the profile, and each line once.
            const bool isNew =
                std::none_of(occurrences.begin(), occurrences.end(),
                             [&](const KeyOccurrence& known) { return known.value.line == each.value.line; });
            if (!section_.empty() || (each.value.line > 0 && isNew)) occurrences.push_back(std::move(each));
        }
    }
    return occurrences;
}

ExitCode ProfileExplainCommand::Execute(CommandContext& context) {
    std::optional<LookedUp> found = LookUpKey(word_);
    if (!found) {
        const std::string nearest = FindNearestKey(word_);
        throw UsageError("there is no key or stage '" + word_ + "'", nearest.empty()
                                                                         ? "docs/README.md lists them all"
                                                                         : "did you mean '" + nearest + "'?");
    }
    const std::vector<KeyOccurrence> occurrences = Occurrences(*found);
    if (context.wantsJson) {
        PrintObject(context, ExitCode::Well, ExplainToJson(*found, occurrences));
        return ExitCode::Well;
    }
    context.report << ExplainForPeople(*found, occurrences, TerminalWidth());
    if (!profile_.empty() && occurrences.empty())
        context.report << "\n" << ShownText(profile_) << " does not have it.\n";
    return ExitCode::Well;
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "commands/ProfileDiffCommand.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>
#include <optional>

#include "commands/DiffFrames.h"
#include "commands/JsonObject.h"
#include "commands/SectionChoice.h"
#include "commands/SizeOption.h"
#include "formats/FrameFile.h"
#include "frames/FrameSize.h"
#include "messages/ToolError.h"
#include "profile/DiffReport.h"
#include "profile/EffectiveValues.h"
#include "profile/PlainWords.h"
#include "profile/ProfileDiff.h"
#include "profile/ValueJson.h"
#include "profile/ValueTable.h"

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

// One of the two runs that are compared.
struct Side {
    const ProfileFile& file;
    SectionPlan plan;
    const ExportTraits& traits;
    std::vector<EffectivePlace> places;
};

Side ReadSide(const ProfileFile& file, const std::string& section, const std::string& exportName) {
    SectionPlan plan = PlanNamedSection(file, section, exportName);
    std::vector<EffectivePlace> places = ReadEffectiveValues(file, plan);
    const ExportTraits& traits = TraitsOf(ChooseNamedExport(file, section, exportName));
    return {file, std::move(plan), traits, std::move(places)};
}

Json ToJson(const Side& side) {
    return {{"profile", side.file.Path()},
            {"section", side.plan.section},
            {"export", side.traits.name},
            {"chain", ChainName(side.plan.chain)}};
}

std::string TitleOf(const Side& side) { return DescribePlan(side.file.Path(), side.plan, side.traits); }

// Sections that a host names; the other two are read beside them.
std::vector<std::string> RunSections(const ProfileFile& file) {
    std::vector<std::string> names = file.SectionNames();
    std::erase_if(names, [](const std::string& name) {
        return IsSameKeyName(name, kSensorSectionName) || IsSameKeyName(name, kLowSectionName);
    });
    return names;
}

// Where the colon parts the two names: names may have one, too.
std::optional<size_t> FindColon(const std::string& names, const ProfileFile& first,
                                const ProfileFile& second) {
    for (size_t colon = names.find(':'); colon != std::string::npos; colon = names.find(':', colon + 1))
        if (first.FindSection(names.substr(0, colon)) != nullptr &&
            second.FindSection(names.substr(colon + 1)) != nullptr)
            return colon;
    const size_t any = names.find(':');
    return any == std::string::npos ? std::nullopt : std::optional(any);
}

std::vector<FrameEffect> FindEffects(const Side& a, const Side& b, const Frame& frame,
                                     const ExportCaller& callExport) {
    const RunFrames first = RunForFrames(a.file, a.plan, a.traits, frame, callExport);
    const RunFrames second = RunForFrames(b.file, b.plan, b.traits, frame, callExport);
    return CompareRunFrames(first, second);
}

}  // namespace

std::string_view ProfileDiffCommand::Examples() const {
    return "  vastrelline profile diff old.ini new.ini --section General\n"
           "  vastrelline profile diff dental.ini --section General:Endodontic --frame tooth.png\n"
           "  vastrelline profile diff old.ini new.ini && echo the same\n";
}

std::string_view ProfileDiffCommand::Notes() const {
    return "Sets the stages side by side by their kinds, not by their positions, with defaults filled in, "
           "and "
           "tells\n"
           "only what differs. Without --section all sections of the same name are compared.\n"
           "Exit code: 0 equal, 1 different, 2 wrong use, 3 a profile that cannot be read. docs/tool-json.md "
           "tells\n"
           "of --json.\n";
}

void ProfileDiffCommand::AddOptions(CLI::App& command) {
    command.add_option("A", first_, "A profile")->required()->type_name("");
    command.add_option("B", second_, "Another one; without it two sections of the first")->type_name("");
    command.add_option("--section", section_, "The section of both, or A:B for one of each")
        ->type_name("NAME[:NAME]");
    command.add_option("--export", exportName_, "The library's function, for both; as profile show has it")
        ->type_name("NAME");
    command
        .add_option("--frame", frame_,
                    "Run both on this frame, and tell what the difference does after each stage")
        ->type_name("FRAME");
    AddSizeOption(command, size_, "Size of a raw frame");
}

std::vector<ProfileDiffCommand::SectionPair> ProfileDiffCommand::ChoosePairs(
    const ProfileFile& first, const ProfileFile& second) const {
    if (!section_.empty()) {
        const bool isOne = first.FindSection(section_) != nullptr && second.FindSection(section_) != nullptr;
        const std::optional<size_t> colon = isOne ? std::nullopt : FindColon(section_, first, second);
        if (!colon) return {{section_, section_}};
        return {{section_.substr(0, *colon), section_.substr(*colon + 1)}};
    }
    if (second_.empty()) throw UsageError("one profile and no --section", "name two sections: --section A:B");
    std::vector<SectionPair> pairs;
    for (const std::string& name : RunSections(first))
        if (second.FindSection(name) != nullptr) pairs.emplace_back(name, name);
    if (pairs.empty())
        throw UsageError("the profiles have no section of the same name", "name one of each: --section A:B");
    return pairs;
}

std::optional<Frame> ProfileDiffCommand::ReadDiffFrame(size_t pairCount) const {
    if (frame_.empty()) return std::nullopt;
    if (pairCount != 1) throw UsageError("--frame goes with one pair of sections", "name it by --section");
    return ReadFrameFile(frame_, ParseFrameSize(size_));
}

ExitCode ProfileDiffCommand::Execute(CommandContext& context) {
    const ProfileFile first = ProfileFile::Read(first_);
    const ProfileFile second = second_.empty() ? first : ProfileFile::Read(second_);
    std::vector<std::string> lonely;  // sections that the other profile lacks
    if (section_.empty()) {
        for (const std::string& name : RunSections(first))
            if (second.FindSection(name) == nullptr) lonely.push_back("only in A: section " + name);
        for (const std::string& name : RunSections(second))
            if (first.FindSection(name) == nullptr) lonely.push_back("only in B: section " + name);
    }
    bool isEqual = lonely.empty();
    Json comparisons = Json::array();
    std::string text;
    const std::vector<SectionPair> pairs = ChoosePairs(first, second);
    const std::optional<Frame> frame = ReadDiffFrame(pairs.size());
    for (const auto& [firstSection, secondSection] : pairs) {
        const Side a = ReadSide(first, firstSection, exportName_);
        const Side b = ReadSide(second, secondSection, exportName_);
        const std::vector<PlaceDifference> differences = DiffPlaces(a.places, b.places);
        const bool areSame = differences.empty() && a.plan.chain == b.plan.chain;
        isEqual = isEqual && areSame;
        comparisons.push_back({{"a", ToJson(a)},
                               {"b", ToJson(b)},
                               {"equal", areSame},
                               {"places", DifferencesToJson(differences)}});
        text.append(text.empty() ? "" : "\n").append("A  ").append(TitleOf(a)).append("\n");
        text.append("B  ").append(TitleOf(b)).append("\n\n");
        if (!differences.empty()) text.append(FormatDifferences(differences, TerminalWidth())).append("\n");
        text.append(areSame || !differences.empty() ? SumUpDifferences(differences)
                                                    : "the same values, but another chain")
            .append("\n");
        if (!frame) continue;
        const std::vector<FrameEffect> effects = FindEffects(a, b, *frame, context.callExport);
        comparisons.back()["frame"] = EffectsToJson(effects);
        text.append("\n").append(FormatEffects(frame_, effects));
    }
    if (context.wantsJson) {
        PrintObject(context, isEqual ? ExitCode::Well : ExitCode::Findings,
                    {{"equal", isEqual}, {"onlyInOne", lonely}, {"comparisons", comparisons}});
    } else {
        for (const std::string& line : lonely)
            text += (&line == lonely.data() ? "\n" : "") + ShownText(line) + "\n";
        context.report << text;
    }
    return isEqual ? ExitCode::Well : ExitCode::Findings;
}

}  // namespace vastrelline

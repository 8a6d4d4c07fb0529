// SPDX-License-Identifier: Apache-2.0
#include "commands/ProfileShowCommand.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>
#include <vector>

#include "commands/JsonObject.h"
#include "commands/SectionChoice.h"
#include "messages/ToolError.h"
#include "profile/EffectiveValues.h"
#include "profile/ExplicitProfile.h"
#include "profile/ProfileFile.h"
#include "profile/ValueJson.h"
#include "profile/ValueTable.h"

namespace vastrelline {

std::string_view ProfileShowCommand::Examples() const {
    return "  vastrelline profile show dental.ini --section General\n"
           "  vastrelline profile show dental.ini --section LowDose --export ImageProcessingS\n"
           "  vastrelline profile show dental.ini --section General --explicit > all.ini\n";
}

std::string_view ProfileShowCommand::Notes() const {
    return "Behind each value stands where it has come from: its line, 'default' for what the profile "
           "lacks,\n"
           "'misread' for what a run reads in another way than it stands there, 'cut' for a value of more "
           "than\n"
           "260 characters. The table is as wide as COLUMNS says. docs/tool-json.md tells of --json.\n";
}

void ProfileShowCommand::AddOptions(CLI::App& command) {
    command.add_option("FILE", file_, "The profile")->required()->type_name("");
    command.add_option("--section", section_, "The section that a run would name")
        ->required()
        ->type_name("NAME");
    command
        .add_option("--export", exportName_,
                    "The library's function: ImageProcessing, or S, N, NS, NE, CR; S for PROCMODE 3, else "
                    "ImageProcessing")
        ->type_name("NAME");
    command.add_flag("--explicit", isExplicit_,
                     "Print a profile with all defaults written out, and comments");
}

ExitCode ProfileShowCommand::Execute(CommandContext& context) {
    if (isExplicit_ && context.wantsJson) throw UsageError("--explicit and --json do not go together");
    const ProfileFile file = ProfileFile::Read(file_);
    const SectionPlan plan = PlanNamedSection(file, section_, exportName_);
    const ExportTraits& traits = TraitsOf(ChooseNamedExport(file, section_, exportName_));
    const std::vector<EffectivePlace> places = ReadEffectiveValues(file, plan);
    const std::string title = DescribePlan(file_, plan, traits);
    if (context.wantsJson)
        PrintObject(context, ExitCode::Well, ValuesToJson(file_, plan, traits, places));
    else if (isExplicit_)
        context.report << WriteExplicitProfile("All values of " + title + ".", places);
    else
        context.report << title << "\n\n" << FormatValueTable(places, TerminalWidth());
    return ExitCode::Well;
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "commands/ProfileNewCommand.h"

#include <CLI/CLI.hpp>
#include <vector>

#include "messages/Suggestion.h"
#include "messages/ToolError.h"
#include "profile/ProfileFile.h"
#include "profile/ProfileStore.h"
#include "profile/SampleProfiles.h"

namespace vastrelline {
namespace {

std::vector<std::string> SampleNames() {
    std::vector<std::string> names;
    for (const SampleProfile& sample : SampleProfiles()) names.emplace_back(sample.name);
    return names;
}

std::string Joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
    return text;
}

const SampleProfile& FindSample(const std::string& name) {
    for (const SampleProfile& sample : SampleProfiles())
        if (sample.name == name) return sample;
    const std::vector<std::string> names = SampleNames();
    throw UsageError("there is no sample '" + name + "'",
                     DidYouMean(name, names, "take one of " + Joined(names)));
}

}  // namespace

std::string_view ProfileNewCommand::Examples() const {
    return "  vastrelline profile new --out mine.ini\n"
           "  vastrelline profile new --sample dental --out dental.ini\n"
           "  vastrelline profile new --sample stages --out stages.ini --force\n";
}

std::string_view ProfileNewCommand::Notes() const {
    return "Every line of a sample is explained in it. 'general' is the smallest, 'dental' has sections for\n"
           "general, endodontic and periodontal viewing and for weak frames.\n";
}

void ProfileNewCommand::AddOptions(CLI::App& command) {
    command.add_option("--out", out_, "The new profile")->required()->type_name("FILE");
    command.add_option("--sample", sample_, "What to begin with: " + Joined(SampleNames()) + " (general)")
        ->type_name("NAME");
    command.add_flag("--force", mayReplace_, "Replace the file if it exists");
}

ExitCode ProfileNewCommand::Execute(CommandContext& context) {
    const SampleProfile& sample = FindSample(sample_);
    StoreProfileFile(out_, std::string(sample.text), mayReplace_);
    const ProfileFile file(out_, std::string(sample.text));
    context.report << out_ << ": sections " << Joined(file.SectionNames()) << '\n';
    return ExitCode::Well;
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "commands/CommandTree.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <utility>

#include "commands/HelpFormat.h"

namespace vastrelline {
namespace {

constexpr const char* kAbout =
    "Turns the raw frame of an intra-oral X-ray sensor into a diagnostic image.\n"
    "\n"
    "A frame is a picture of 16-bit grey levels, mostly of 12 significant bits (0 to 4095), in which a "
    "large\n"
    "value means much radiation. Frames come as .raw (16-bit levels, low byte first; the size is told by\n"
    "--size or by a name such as tooth_1300x1668.raw) and in usual picture formats.\n";

constexpr const char* kExits =
    "Exit code: 0 well, 1 differences or findings, 2 wrong use, 3 input, 4 processing, 5 output,\n"
    "130 cancelled. 'vastrelline COMMAND --help' tells a command's options.\n";

std::string FooterOf(const Command& command) {
    return "Examples:\n" + std::string(command.Examples()) +
           (command.Notes().empty() ? "" : "\n" + std::string(command.Notes()));
}

}  // namespace

CommandTree::CommandTree() : root_(std::make_unique<CLI::App>(kAbout, "vastrelline")) {
    root_->allow_windows_style_options(false);  // a word that begins with "/" is a path on every system
    root_->set_version_flag("--version", "vastrelline " VASTRELLINE_VERSION);
    root_->formatter(std::static_pointer_cast<CLI::FormatterBase>(MakeHelpFormat()));
    root_->footer(std::string(kFirstSteps) + "\n" + kExits);
    root_->require_subcommand(1);
    for (const CommandEntry& entry : CommandTable()) AddBranch(entry);
}

CommandTree::~CommandTree() = default;

void CommandTree::AddBranch(const CommandEntry& entry) {
    CLI::App& parent = entry.group.empty() ? *root_ : GroupApp(entry.group);
    Branch branch{&entry, entry.make(),
                  parent.add_subcommand(std::string(entry.name), std::string(entry.summary))};
    branch.command->AddOptions(*branch.app);
    for (CLI::Option* const option : branch.app->get_options())
        if (option->get_required()) option->group("Needed");
    if (entry.hasJson)
        branch.app->add_flag("--json", wantsJson_, "Print one JSON object; words go to standard error");
    branch.app->add_flag("-q,--quiet", isQuiet_, "On standard error say nothing but errors");
    branch.app->set_help_flag("-h,--help", "Print this help and exit");  // anew, as the last one
    branch.app->footer(FooterOf(*branch.command));
    branches_.push_back(std::move(branch));
}

CLI::App& CommandTree::GroupApp(std::string_view name) {
    const std::span<const CommandGroup> groups = CommandGroups();
    const auto group = std::find_if(groups.begin(), groups.end(),
                                    [name](const CommandGroup& each) { return each.name == name; });
    for (CLI::App* const app : root_->get_subcommands(nullptr))
        if (app->get_name() == name) return *app;
    CLI::App* const app = root_->add_subcommand(
        std::string(name), group == groups.end() ? std::string() : std::string(group->summary));
    app->require_subcommand(1);
    app->footer("'vastrelline " + std::string(name) + " COMMAND --help' tells a command's options.\n");
    return *app;
}

const CommandTree::Branch* CommandTree::Parsed() const {
    const auto found = std::find_if(branches_.begin(), branches_.end(),
                                    [](const Branch& branch) { return branch.app->parsed(); });
    return found == branches_.end() ? nullptr : &*found;
}

std::vector<std::string> CommandTree::NamesIn(std::string_view group) {
    std::vector<std::string> names;
    for (const CommandEntry& entry : CommandTable()) {
        const std::string name(entry.group == group ? entry.name : group.empty() ? entry.group : "");
        if (!name.empty() && std::find(names.begin(), names.end(), name) == names.end())
            names.push_back(name);
    }
    return names;
}

}  // namespace vastrelline

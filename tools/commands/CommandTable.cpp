// SPDX-License-Identifier: Apache-2.0
#include "commands/CommandTable.h"

#include "commands/BatchCommand.h"
#include "commands/CompareCommand.h"
#include "commands/CompletionCommand.h"
#include "commands/ConvertCommand.h"
#include "commands/InfoCommand.h"
#include "commands/ManCommand.h"
#include "commands/PhantomCommand.h"
#include "commands/ProfileDiffCommand.h"
#include "commands/ProfileExplainCommand.h"
#include "commands/ProfileLintCommand.h"
#include "commands/ProfileNewCommand.h"
#include "commands/ProfileSetCommand.h"
#include "commands/ProfileShowCommand.h"
#include "commands/RerunCommand.h"
#include "commands/RunCommand.h"
#include "commands/SelftestCommand.h"
#include "commands/StagesCommand.h"
#include "commands/SweepCommand.h"
#include "commands/TuneCommand.h"
#include "commands/VerifyCommand.h"
#include "commands/VersionCommand.h"

namespace vastrelline {
namespace {

template <typename Kind>
std::unique_ptr<Command> Make() {
    return std::make_unique<Kind>();
}

constexpr CommandEntry kCommands[] = {
    // group, name, summary, --json, maker
    {"", "run", "Process a frame with the settings of a profile", true, Make<RunCommand>},
    {"", "stages", "Show the frame after every stage of a run", true, Make<StagesCommand>},
    {"", "sweep", "Show what the values of a key do", true, Make<SweepCommand>},
    {"", "tune", "Tune a profile in the browser and see it at once", false, Make<TuneCommand>},
    {"", "batch", "Process folders of frames, several at a time", true, Make<BatchCommand>},
    {"", "rerun", "Make a result again and tell whether it is the same", true, Make<RerunCommand>},
    {"", "info", "Tell what is in a frame", true, Make<InfoCommand>},
    {"", "compare", "Tell whether frames are equal, or how they differ", true, Make<CompareCommand>},
    {"", "convert", "Write a frame as another kind of file", true, Make<ConvertCommand>},
    {"", "verify", "Tell whether a build gives the pixels of a manifest", true, Make<VerifyCommand>},
    {"", "selftest", "Tell whether this installation is whole", true, Make<SelftestCommand>},
    {"", "phantom", "Make a frame to try or to measure with", true, Make<PhantomCommand>},
    {"profile", "lint", "Find what is wrong or odd in profiles", true, Make<ProfileLintCommand>},
    {"profile", "show", "Show every value that a run would use", true, Make<ProfileShowCommand>},
    {"profile", "diff", "Tell in what two profiles or sections differ", true, Make<ProfileDiffCommand>},
    {"profile", "explain", "Tell what a key or a stage does", true, Make<ProfileExplainCommand>},
    {"profile", "set", "Set values in a profile and keep all else", true, Make<ProfileSetCommand>},
    {"profile", "new", "Begin a profile from a commented sample", false, Make<ProfileNewCommand>},
    {"", "completion", "Print a shell's completion script", false, Make<CompletionCommand>},
    {"", "man", "Print the manual page", false, Make<ManCommand>},
    {"", "version", "Tell the version and the build of a library", true, Make<VersionCommand>},
};

constexpr CommandGroup kGroups[] = {
    {"profile", "Look at, test and change profiles"},
};

}  // namespace

std::span<const CommandEntry> CommandTable() { return kCommands; }

std::span<const CommandGroup> CommandGroups() { return kGroups; }

}  // namespace vastrelline

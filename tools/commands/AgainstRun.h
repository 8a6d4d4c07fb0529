// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "commands/Command.h"
#include "commands/RunOptions.h"

namespace vastrelline {

// Runs the section on the frame by the tool's own library and by another build of it, each in a process of
// its own, and tells at which point of the run they begin to differ.
//
// Returns  ExitCode::Well for the same pixels everywhere, ExitCode::Findings for others
// Errors   as RunCommand; InputError for a file that is no such library
ExitCode RunAgainst(const RunOptions& options, CommandContext& context);

}  // namespace vastrelline

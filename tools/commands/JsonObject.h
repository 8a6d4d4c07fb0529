// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string_view>

#include "commands/Command.h"
#include "messages/ExitCode.h"

namespace vastrelline {

// Prints the one object of a command: a head that all have (tool, version, command, exit), then its own
// fields, indented; bytes that are no UTF-8 are replaced.
void PrintObject(std::ostream& out, std::string_view command, ExitCode code,
                 const nlohmann::ordered_json& fields);

// The same for the running command, to where its results go.
void PrintObject(const CommandContext& context, ExitCode code, const nlohmann::ordered_json& fields);

// An object in a line of its own, without a head, written at once: for a command that prints many.
void PrintLine(std::ostream& out, const nlohmann::ordered_json& fields);

// The same with the head: the last line of such a command.
void PrintObjectLine(const CommandContext& context, ExitCode code, const nlohmann::ordered_json& fields);

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "commands/CommandTree.h"

namespace vastrelline {

// The tool's manual page, in the mdoc language of manual pages, made of the command table and what the
// commands say of themselves.
std::string MakeManualPage(const CommandTree& tree);

// A text as mdoc reads it back: nothing in it is taken for a request or an escape.
std::string EscapeForMdoc(std::string_view text);

// A running text in lines of at most 80 bytes; each sentence begins a new line, as the language asks.
std::string WrapForMdoc(std::string_view text);

}  // namespace vastrelline

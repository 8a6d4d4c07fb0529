// SPDX-License-Identifier: Apache-2.0
#include "messages/ToolError.h"

#include <utility>

namespace vastrelline {
namespace {

std::string Compose(const std::string& where, const std::string& what, const std::string& remedy) {
    std::string text = where.empty() ? what : where + ": " + what;
    if (!remedy.empty()) text += "; " + remedy;
    return text;
}

}  // namespace

ToolError::ToolError(ExitCode code, std::string where, std::string what, std::string remedy)
    : std::runtime_error(Compose(where, what, remedy)),
      code_(code),
      where_(std::move(where)),
      what_(std::move(what)),
      remedy_(std::move(remedy)) {}

UsageError::UsageError(std::string what, std::string remedy)
    : ToolError(ExitCode::WrongUse, {}, std::move(what), std::move(remedy)) {}

InputError::InputError(std::string where, std::string what, std::string remedy)
    : ToolError(ExitCode::Input, std::move(where), std::move(what), std::move(remedy)) {}

ProcessingError::ProcessingError(std::string where, std::string what, std::string remedy)
    : ToolError(ExitCode::Processing, std::move(where), std::move(what), std::move(remedy)) {}

OutputError::OutputError(std::string where, std::string what, std::string remedy)
    : ToolError(ExitCode::Output, std::move(where), std::move(what), std::move(remedy)) {}

CancelledError::CancelledError() : ToolError(ExitCode::Cancelled, {}, "cancelled") {}

}  // namespace vastrelline

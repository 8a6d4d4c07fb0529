// SPDX-License-Identifier: Apache-2.0
#include "commands/JsonObject.h"

#include <nlohmann/json.hpp>

namespace vastrelline {
namespace {

using Json = nlohmann::ordered_json;

Json WithHead(std::string_view command, ExitCode code, const Json& fields) {
    Json object = {{"tool", "vastrelline"},
                   {"version", VASTRELLINE_VERSION},
                   {"command", command},
                   {"exit", static_cast<int>(code)}};
    object.update(fields);
    return object;
}

}  // namespace

void PrintObject(std::ostream& out, std::string_view command, ExitCode code,
                 const nlohmann::ordered_json& fields) {
    const Json object = WithHead(command, code, fields);
    out << object.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

void PrintObject(const CommandContext& context, ExitCode code, const nlohmann::ordered_json& fields) {
    PrintObject(context.report, context.command, code, fields);
}

void PrintLine(std::ostream& out, const nlohmann::ordered_json& fields) {
    out << fields.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n' << std::flush;
}

void PrintObjectLine(const CommandContext& context, ExitCode code, const nlohmann::ordered_json& fields) {
    PrintLine(context.report, WithHead(context.command, code, fields));
}

}  // namespace vastrelline

#include "commands/JsonObject.h"

#include <nlohmann/json.hpp>

namespace vastrelline {

void PrintObject(std::ostream& out, std::string_view command, ExitCode code,
                 const nlohmann::ordered_json& fields) {
    using Json = nlohmann::ordered_json;
    Json object = {{"tool", "vastrelline"},
                   {"version", VASTRELLINE_VERSION},
                   {"command", command},
                   {"exit", static_cast<int>(code)}};
    object.update(fields);
    out << object.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

void PrintObject(const CommandContext& context, ExitCode code, const nlohmann::ordered_json& fields) {
    PrintObject(context.report, context.command, code, fields);
}

}  // namespace vastrelline

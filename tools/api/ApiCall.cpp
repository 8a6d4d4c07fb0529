// SPDX-License-Identifier: Apache-2.0
#include "api/ApiCall.h"

#include <charconv>
#include <cmath>
#include <utility>

#include "messages/ToolError.h"

namespace vastrelline {
namespace {

template <typename Value>
Value Parse(const std::string& what, std::string_view text) {
    Value value{};
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end || text.empty())
        throw UsageError(what + " should be a number", {});
    return value;
}

std::string FieldWords(const char* name) { return "field '" + std::string(name) + "'"; }

[[noreturn]] void RefuseBody(const char* name, const char* kind) {
    throw UsageError("field '" + std::string(name) + "' should be " + kind, {});
}

// A body may be as long as a profile, but it is one text then: a tree of millions of parts takes a hundred
// times its length.
nlohmann::json ParseBody(const std::string& body) {
    constexpr int kMostDepth = 8;
    constexpr size_t kMostParts = 10'000;
    size_t parts = 0;
    return nlohmann::json::parse(
        body,
        [&](int depth, nlohmann::json::parse_event_t /*event*/, nlohmann::json& /*part*/) {
            if (depth > kMostDepth || ++parts > kMostParts)
                throw UsageError("the body has more parts than any request needs", {});
            return true;
        },
        false);
}

}  // namespace

ApiCall::ApiCall(Workbench& ownBench, const HttpRequest& request, std::vector<std::string_view> parts)
    : bench(ownBench), request_(request), parts_(std::move(parts)) {
    if (request.body.empty()) return;
    body_ = ParseBody(request.body);
    if (!body_.is_object()) throw UsageError("the body should be a JSON object", {});
}

uint64_t ApiCall::PartNumber(size_t index) const {
    return Parse<uint64_t>(std::string(Part(index)).append(" in the address"), Part(index));
}

std::string ApiCall::Field(const char* name) const {
    const auto found = request_.query.find(name);
    return found == request_.query.end() ? std::string() : found->second;
}

double ApiCall::Number(const char* name) const {
    const auto number = Parse<double>(FieldWords(name), Field(name));
    if (!std::isfinite(number)) throw UsageError("field '" + std::string(name) + "' should be finite", {});
    return number;
}

int32_t ApiCall::Integer(const char* name) const { return Parse<int32_t>(FieldWords(name), Field(name)); }

uint64_t ApiCall::WholeNumber(const char* name) const {
    return Parse<uint64_t>(FieldWords(name), Field(name));
}

const nlohmann::json& ApiCall::Body(const char* name) const {
    static const nlohmann::json kNone;
    if (!body_.is_object()) return kNone;
    const auto found = body_.find(name);
    return found == body_.end() ? kNone : *found;
}

std::string ApiCall::BodyText(const char* name) const {
    const nlohmann::json& value = Body(name);
    if (!value.is_string()) RefuseBody(name, "a text");
    return value.get<std::string>();
}

uint64_t ApiCall::BodyNumber(const char* name) const {
    const nlohmann::json& value = Body(name);
    if (!value.is_number_unsigned()) RefuseBody(name, "a whole number");
    return value.get<uint64_t>();
}

bool ApiCall::BodyFlag(const char* name) const {
    const nlohmann::json& value = Body(name);
    if (!value.is_boolean()) RefuseBody(name, "true or false");
    return value.get<bool>();
}

HttpAnswer JsonAnswer(const nlohmann::ordered_json& json) {
    return {200,
            "application/json",
            json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace),
            {}};
}

HttpAnswer RevisionAnswer(uint64_t revision) { return JsonAnswer({{"revision", revision}}); }

HttpAnswer BytesAnswer(std::string bytes) { return {200, "application/octet-stream", std::move(bytes), {}}; }

}  // namespace vastrelline

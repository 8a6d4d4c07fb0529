// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "server/HttpExchange.h"
#include "workbench/Workbench.h"

namespace vastrelline {

// A request of the page, and what it says. What is missing or is of another kind is a UsageError in words.
class ApiCall {
public:
    // parts   what stands in the path where the route has stars
    ApiCall(Workbench& bench, const HttpRequest& request, std::vector<std::string_view> parts);

    Workbench& bench;

    std::string_view Part(size_t index) const { return parts_.at(index); }
    uint64_t PartNumber(size_t index) const;

    // Of the query.
    std::string Field(const char* name) const;  // empty: not there
    double Number(const char* name) const;
    int32_t Integer(const char* name) const;
    uint64_t WholeNumber(const char* name) const;

    // Of the body, which is a JSON object.
    std::string BodyText(const char* name) const;
    uint64_t BodyNumber(const char* name) const;
    bool BodyFlag(const char* name) const;
    const nlohmann::json& Body(const char* name) const;  // null where it is missing

private:
    const HttpRequest& request_;
    std::vector<std::string_view> parts_;
    nlohmann::json body_;
};

HttpAnswer JsonAnswer(const nlohmann::ordered_json& json);

// {"revision": N}
HttpAnswer RevisionAnswer(uint64_t revision);

// Bytes that are no text.
HttpAnswer BytesAnswer(std::string bytes);

}  // namespace vastrelline

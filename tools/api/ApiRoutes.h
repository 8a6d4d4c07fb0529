// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>
#include <string_view>

#include "api/ApiCall.h"
#include "server/HttpExchange.h"

namespace vastrelline {

// One address of the protocol.
struct ApiRoute {
    std::string_view method;   // "GET", "POST"
    std::string_view pattern;  // "api/runs/*/probe": a star is one part of the path
    HttpAnswer (*answer)(const ApiCall& call);
};

// The tables, by what they are about.
std::span<const ApiRoute> DeskRoutes();
std::span<const ApiRoute> LookRoutes();
std::span<const ApiRoute> HelpRoutes();
std::span<const ApiRoute> JobRoutes();
std::span<const ApiRoute> CompareRoutes();
std::span<const ApiRoute> HistoryRoutes();
std::span<const ApiRoute> ReportRoutes();

// Answers a request: by the route that it fits, with what a route throws as a failure in words.
HttpAnswer AnswerApi(Workbench& bench, const HttpRequest& request);

}  // namespace vastrelline

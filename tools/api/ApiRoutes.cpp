// SPDX-License-Identifier: Apache-2.0
#include "api/ApiRoutes.h"

#include <algorithm>
#include <array>
#include <exception>
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "messages/ErrorJson.h"
#include "messages/ToolError.h"

namespace vastrelline {
namespace {

constexpr unsigned kBad = 400;
constexpr unsigned kNotFound = 404;
constexpr unsigned kWrongMethod = 405;
constexpr unsigned kConflict = 409;
constexpr unsigned kFailed = 500;

std::string_view TakePart(std::string_view& rest) {
    const std::string_view part = rest.substr(0, rest.find('/'));
    rest.remove_prefix(std::min(part.size() + 1, rest.size()));
    return part;
}

// What stands at the stars; nothing: the path is another one.
std::optional<std::vector<std::string_view>> Match(std::string_view pattern, std::string_view path) {
    if (std::count(pattern.begin(), pattern.end(), '/') != std::count(path.begin(), path.end(), '/'))
        return std::nullopt;
    std::vector<std::string_view> stars;
    while (!pattern.empty() || !path.empty()) {
        const std::string_view wanted = TakePart(pattern);
        const std::string_view part = TakePart(path);
        if (wanted == "*" && !part.empty())
            stars.push_back(part);
        else if (wanted != part)
            return std::nullopt;
    }
    return stars;
}

HttpAnswer Failure(unsigned status, const ToolError& error) {
    HttpAnswer answer = JsonAnswer({{"error", ErrorJson(error)}});
    answer.status = status;
    return answer;
}

HttpAnswer Call(const ApiRoute& route, Workbench& bench, const HttpRequest& request,
                std::vector<std::string_view> parts) {
    try {
        return route.answer(ApiCall(bench, request, std::move(parts)));
    } catch (const ConflictError& error) {
        return Failure(kConflict, error);
    } catch (const ToolError& error) {
        return Failure(kBad, error);
    } catch (const std::bad_alloc&) {
        return Failure(kFailed, ProcessingError({}, "there is not enough memory"));
    } catch (const std::exception& error) {
        return Failure(kFailed, ProcessingError({}, error.what()));
    }
}

}  // namespace

HttpAnswer AnswerApi(Workbench& bench, const HttpRequest& request) {
    bool isKnown = false;
    for (const std::span<const ApiRoute> table : {DeskRoutes(), LookRoutes(), HelpRoutes(), JobRoutes(),
                                                  CompareRoutes(), HistoryRoutes(), ReportRoutes()}) {
        for (const ApiRoute& route : table) {
            std::optional<std::vector<std::string_view>> parts = Match(route.pattern, request.path);
            if (!parts) continue;
            if (route.method == request.method) return Call(route, bench, request, std::move(*parts));
            isKnown = true;
        }
    }
    return Failure(isKnown ? kWrongMethod : kNotFound, UsageError("there is no such address", {}));
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <string>

namespace vastrelline {

// What a page asks for.
struct HttpRequest {
    std::string method;                        // "GET", "POST"
    std::string path;                          // below the token, without a slash before it: "api/state"
    std::map<std::string, std::string> query;  // decoded; of a field that stands there twice the first
    std::string body;
};

// What it gets.
struct HttpAnswer {
    unsigned status = 200;
    std::string type = "application/json";
    std::string body;
    std::string download;  // the file's name where it is to be saved; empty: it is shown
};

// Answers a request; called on several threads at a time.
using HttpHandler = std::function<HttpAnswer(const HttpRequest&)>;

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "server/EventChannel.h"
#include "server/HttpExchange.h"

namespace vastrelline {

// What happens around the serving.
struct PageMoments {
    std::function<void(const std::string& address)> onBegin;
    std::function<void()> onTick;  // five times a second
    std::function<void()> onEnd;   // nothing may come through the channel behind it
};

// Serves the workbench's page, which is part of the tool, and its requests until the tool is asked to end.
//
// api      answers everything below "api/"
// Errors   InputError if the port cannot be had; UsageError if the tool was built without the page
void ServePage(uint16_t port, const HttpHandler& api, EventChannel& events, const PageMoments& moments);

}  // namespace vastrelline

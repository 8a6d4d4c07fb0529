// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "server/EventChannel.h"
#include "server/HttpExchange.h"

namespace vastrelline {

// Serves pages on 127.0.0.1 and on nothing else, over HTTP 1.1, and their events over a WebSocket at
// "events". Requests that do not know the token, or come from elsewhere, get an empty answer.
class LocalServer {
public:
    // port      0: a free one
    // handler   called on two threads, so that a long answer does not hold up the others
    // events    outlives the server
    // Errors    InputError if the port cannot be had
    LocalServer(uint16_t port, HttpHandler handler, EventChannel& events);
    ~LocalServer();  // ends all connections; waits for handlers that are at work
    LocalServer(const LocalServer&) = delete;
    LocalServer& operator=(const LocalServer&) = delete;

    // "http://127.0.0.1:PORT/TOKEN/"
    std::string Address() const;

    // What a sheet of styles has to carry that the page makes itself.
    std::string StyleNonce() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "server/HttpExchange.h"

namespace vastrelline {

// Who is let in. Any program of this machine, and any page in the user's browser, may send requests to a
// server on the loopback address: only who knows the token gets an answer, and no page of another origin
// gets one even so.
class ServerGate {
public:
    ServerGate(std::string token, uint16_t port);

    // "http://127.0.0.1:PORT/TOKEN/"
    std::string Address() const;

    // The status that a request is refused with; 0: it is let in.
    //
    // target         as it stands in the request's line: path and query
    // host, origin   the request's fields; empty: not there
    unsigned Judge(std::string_view target, std::string_view host, std::string_view origin) const;

    // The path below the token and the query, decoded. Nothing where an escape is none.
    std::optional<HttpRequest> Split(std::string_view target) const;

private:
    bool IsOwn(std::string_view host) const;

    std::string token_;
    std::string port_;
};

// 32 hexadecimal digits that nobody can guess.
std::string MakeToken();

// What the browser is allowed to load and to run in the page: its own parts, and nothing of anybody else.
//
// nonce   that the page's own sheets of styles carry: its editor makes them as it goes
std::string ContentPolicy(uint16_t port, const std::string& nonce);

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#pragma once

// clang-format off: this version of Asio takes for granted what it uses of this header.
#include <utility>
// clang-format on

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <cstdint>

namespace vastrelline {

using TextRequest = boost::beast::http::request<boost::beast::http::string_body>;
using TextResponse = boost::beast::http::response<boost::beast::http::string_body>;

// Sends a request to a server of this machine, on a connection of its own, and takes the answer.
inline TextResponse AskServer(uint16_t port, TextRequest request) {
    boost::asio::io_context context;
    boost::asio::ip::tcp::socket socket(context);
    socket.connect({boost::asio::ip::address_v4::loopback(), port});
    request.prepare_payload();
    boost::beast::http::write(socket, request);
    boost::beast::flat_buffer buffer;
    TextResponse response;
    boost::beast::http::read(socket, buffer, response);
    return response;
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "server/LocalServer.h"

#ifndef _WIN32
#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <unistd.h>
#endif

// clang-format off: this version of Asio takes for granted what it uses of this header.
#include <utility>
// clang-format on

#include <atomic>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket.hpp>
#include <string>

#include "messages/ToolError.h"
#include "platform/MemoryLimit.h"
#include "server/AskServer.h"

namespace vastrelline {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using asio::ip::tcp;

HttpAnswer Echo(const HttpRequest& request) {
    return {200, "text/plain", request.method + " " + request.path + " " + request.body, {}};
}

class LocalServerTest : public testing::Test {
protected:
    LocalServerTest()
        : server_(
              0, [this](const HttpRequest& request) { return handler_(request); }, events_) {
        const std::string address = server_.Address();
        const size_t begin = std::string("http://").size();
        const size_t slash = address.find('/', begin);
        host_ = address.substr(begin, slash - begin);
        path_ = address.substr(slash);
        port_ = static_cast<uint16_t>(std::stoi(host_.substr(host_.find(':') + 1)));
    }

    tcp::socket Connect() {
        tcp::socket socket(context_);
        socket.connect({asio::ip::address_v4::loopback(), port_});
        return socket;
    }

    TextRequest Request(http::verb verb, const std::string& path) const {
        TextRequest request{verb, path_ + path, 11};
        request.set(http::field::host, host_);
        return request;
    }

    TextResponse Ask(TextRequest request) const { return AskServer(port_, std::move(request)); }

    // What the server answers to bytes; empty where it closes the connection.
    std::string Say(const std::string& bytes) {
        tcp::socket socket = Connect();
        asio::write(socket, asio::buffer(bytes));
        socket.shutdown(tcp::socket::shutdown_send);
        std::string answer;
        boost::system::error_code end;
        asio::read(socket, asio::dynamic_buffer(answer), end);
        return answer;
    }

    // Every test of the fixture is a class derived from it.
    // NOLINTBEGIN(misc-non-private-member-variables-in-classes)
    HttpHandler handler_ = Echo;
    EventChannel events_;
    LocalServer server_;
    std::string host_;
    std::string path_;
    uint16_t port_ = 0;
    asio::io_context context_;
    // NOLINTEND(misc-non-private-member-variables-in-classes)
};

TEST_F(LocalServerTest, AnswersWhoKnowsTheToken) {
    const TextResponse page = Ask(Request(http::verb::get, ""));
    EXPECT_EQ(page.result_int(), 200U);
    EXPECT_EQ(page.body(), "GET  ");
    EXPECT_EQ(page["Cache-Control"], "no-store");
    EXPECT_EQ(page["X-Content-Type-Options"], "nosniff");
    EXPECT_EQ(page["Content-Security-Policy"].find("default-src 'none'"), 0U);
    TextRequest post = Request(http::verb::post, "api/set%20x");
    post.body() = "body";
    EXPECT_EQ(Ask(post).body(), "POST api/set x body");
}

TEST_F(LocalServerTest, GivesOthersNothing) {
    handler_ = [](const HttpRequest&) -> HttpAnswer { throw std::logic_error("the handler was asked"); };
    TextRequest request = Request(http::verb::get, "");
    request.target("/");
    EXPECT_EQ(Ask(request).result_int(), 404U);
    request = Request(http::verb::get, "");
    request.set(http::field::host, "evil.example");
    EXPECT_EQ(Ask(request).result_int(), 403U);
    EXPECT_EQ(Ask(request).body(), "");
    request = Request(http::verb::get, "");
    request.set(http::field::origin, "http://evil.example");
    EXPECT_EQ(Ask(request).result_int(), 403U);
    EXPECT_EQ(Ask(Request(http::verb::get, "%zz")).result_int(), 400U);
}

TEST_F(LocalServerTest, ReadsNoBodyOfOthersAndAnswersOnce) {
    const std::string head = "POST / HTTP/1.1\r\nHost: " + host_ + "\r\nContent-Length: ";
    EXPECT_EQ(Say(head + "50000000\r\n\r\n").find("HTTP/1.1 404"), 0U);
    const std::string twice = Say(head + "0\r\n\r\n" + head + "0\r\n\r\n");
    EXPECT_EQ(twice.find("HTTP/1.1 404"), 0U);
    EXPECT_EQ(twice.rfind("HTTP/1.1 404"), 0U);
}

// More often than there may be connections.
TEST_F(LocalServerTest, SurvivesAHandlerThatThrows) {
    handler_ = [](const HttpRequest& request) -> HttpAnswer {
        if (request.path == "bad") throw std::logic_error("not caught by anybody");
        return Echo(request);
    };
    for (int i = 0; i < 100; ++i)
        ASSERT_EQ(Say("GET " + path_ + "bad HTTP/1.1\r\nHost: " + host_ + "\r\n\r\n"), "");
    EXPECT_EQ(Ask(Request(http::verb::get, "good")).body(), "GET good ");
}

#ifndef _WIN32
TEST_F(LocalServerTest, KeepsItsSocketsFromOtherPrograms) {
    tcp::socket page = Connect();
    http::write(page, Request(http::verb::get, "one"));
    beast::flat_buffer buffer;
    TextResponse response;
    http::read(page, buffer, response);
    int count = 0;
    for (int descriptor = 0; descriptor < 1024; ++descriptor) {
        sockaddr_in name{};
        socklen_t size = sizeof(name);
        const bool isServers = getsockname(descriptor, reinterpret_cast<sockaddr*>(&name), &size) == 0 &&
                               name.sin_family == AF_INET && ntohs(name.sin_port) == port_;
        if (!isServers) continue;
        ++count;
        EXPECT_EQ(fcntl(descriptor, F_GETFD) & FD_CLOEXEC, FD_CLOEXEC) << descriptor;
    }
    EXPECT_EQ(count, 2);
}

TEST_F(LocalServerTest, GoesOnAfterATimeWithoutDescriptors) {
    // What watches undefined behaviour needs a descriptor of its own to look at memory.
    if (!CanLimitMemory()) GTEST_SKIP() << "this build watches memory";
    tcp::socket page(context_);
    page.open(tcp::v4());
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
    const int next = dup(0);
    ASSERT_GE(next, 0);
    close(next);
    const rlimit none{static_cast<rlim_t>(next), before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
    page.connect({asio::ip::address_v4::loopback(), port_});
    http::write(page, Request(http::verb::get, "one"));
    pollfd answered{page.native_handle(), POLLIN, 0};
    EXPECT_EQ(poll(&answered, 1, 300), 0);
    ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_EQ(poll(&answered, 1, 10'000), 1);
}
#endif

TEST_F(LocalServerTest, KeepsAConnection) {
    tcp::socket socket = Connect();
    beast::flat_buffer buffer;
    for (const char* const path : {"one", "two", "three"}) {
        http::write(socket, Request(http::verb::get, path));
        TextResponse response;
        http::read(socket, buffer, response);
        EXPECT_EQ(response.body(), std::string("GET ") + path + " ");
    }
}

TEST_F(LocalServerTest, SurvivesWhatIsNoRequest) {
    EXPECT_EQ(Say(""), "");
    EXPECT_EQ(Say(std::string(100, '\0')), "");
    EXPECT_EQ(Say("GET"), "");
    EXPECT_EQ(Say("\x16\x03\x01\x02"), "");
    EXPECT_EQ(Say("GET / HTTP/1.1\r\n" + std::string(20000, 'a') + ": b\r\n\r\n"), "");
    EXPECT_EQ(
        Say("POST " + path_ + " HTTP/1.1\r\nHost: " + host_ + "\r\nContent-Length: 99999999999\r\n\r\n"), "");
    EXPECT_EQ(Say("POST " + path_ + " HTTP/1.1\r\nHost: " + host_ + "\r\nContent-Length: 5\r\n\r\nab"), "");
    EXPECT_EQ(Ask(Request(http::verb::get, "still")).body(), "GET still ");
}

TEST_F(LocalServerTest, AnswersOneWhileAnotherTakesItsTime) {
    std::atomic<bool> isFree{false};
    handler_ = [&](const HttpRequest& request) -> HttpAnswer {
        while (request.path == "slow" && !isFree) std::this_thread::yield();
        return Echo(request);
    };
    tcp::socket slow = Connect();
    http::write(slow, Request(http::verb::get, "slow"));
    EXPECT_EQ(Ask(Request(http::verb::get, "quick")).body(), "GET quick ");
    isFree = true;
    beast::flat_buffer buffer;
    TextResponse response;
    http::read(slow, buffer, response);
    EXPECT_EQ(response.body(), "GET slow ");
}

TEST_F(LocalServerTest, SendsEventsToAllPages) {
    using Page = beast::websocket::stream<tcp::socket>;
    Page one(Connect());
    one.handshake(host_, path_ + "events");
    Page other(Connect());
    other.handshake(host_, path_ + "events");
    // Who has shaken hands listens a moment later.
    const auto read = [](Page& page) {
        beast::flat_buffer buffer;
        page.read(buffer);
        return beast::buffers_to_string(buffer.data());
    };
    EXPECT_EQ(read(one), R"({"type":"alive"})");
    EXPECT_EQ(read(other), R"({"type":"alive"})");
    events_.Publish("a", "first");
    events_.Publish("b", "second");
    for (Page* const page : {&one, &other}) {
        EXPECT_EQ(read(*page), "first");
        EXPECT_EQ(read(*page), "second");
    }
}

TEST_F(LocalServerTest, SendsNoEventsToAnotherOrigin) {
    TextRequest request = Request(http::verb::get, "events");
    request.set(http::field::origin, "http://evil.example");
    request.set(http::field::connection, "Upgrade");
    request.set(http::field::upgrade, "websocket");
    request.set(http::field::sec_websocket_version, "13");
    request.set(http::field::sec_websocket_key, "AAAAAAAAAAAAAAAAAAAAAA==");
    EXPECT_EQ(Ask(request).result_int(), 403U);
}

TEST_F(LocalServerTest, TellsThatAPortIsTaken) {
    EventChannel events;
    try {
        const LocalServer second(port_, Echo, events);
        FAIL() << "two servers have one port";
    } catch (const InputError& error) {
        EXPECT_EQ(error.Where(), "127.0.0.1:" + std::to_string(port_));
        EXPECT_EQ(error.What(), "cannot be listened on: another program has it");
    }
}

}  // namespace
}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "server/LocalServer.h"

// clang-format off: this version of Asio takes for granted what it uses of this header.
#include <utility>
// clang-format on

#include <boost/asio/awaitable.hpp>
#include <boost/asio/co_spawn.hpp>
#include <boost/asio/detached.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/redirect_error.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/thread_pool.hpp>
#include <boost/asio/use_awaitable.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket.hpp>
#include <chrono>
#include <cstdint>
#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>

#include "messages/ToolError.h"
#include "platform/KeepFromChildren.h"
#include "platform/Reason.h"
#include "server/ServerGate.h"

namespace vastrelline {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
namespace websocket = beast::websocket;
using asio::ip::tcp;

using Request = http::request<http::string_body>;
using Response = http::response<http::string_body>;

constexpr uint64_t kMaxBodyBytes = uint64_t{64} << 20;  // a profile's greatest size
constexpr uint32_t kMaxHeadBytes = uint32_t{16} << 10;
constexpr size_t kMaxConnections = 64;
constexpr std::chrono::seconds kPatience{30};             // with a page that says nothing
constexpr std::chrono::seconds kPatienceWithReader{120};  // with one that does not take its answer
constexpr std::chrono::milliseconds kPause{100};          // where the system gives no connection
constexpr std::chrono::seconds kBeat{2};
constexpr size_t kHandlerThreads = 2;
constexpr const char* kEventsPath = "events";
constexpr const char* kAlive = R"({"type":"alive"})";

std::string_view View(beast::string_view text) { return {text.data(), text.size()}; }

// In the words of every system.
std::string Describe(const boost::system::error_code& code) {
    // The run-time library of Windows has a number for it and no words.
    if (code == boost::system::errc::address_in_use) return "another program has it";
    const boost::system::error_condition known = code.default_error_condition();
    return known.category() == boost::system::generic_category()
               ? DescribeReason({known.value(), std::generic_category()})
               : DescribeReason({code.value(), std::system_category()});
}

tcp::acceptor Bind(asio::io_context& context, uint16_t port) {
    try {
        tcp::acceptor acceptor(context);
        acceptor.open(tcp::v4());
        KeepFromChildren(static_cast<intptr_t>(acceptor.native_handle()));
#ifdef _WIN32
        // There two programs may have one port unless the first one minds.
        acceptor.set_option(asio::detail::socket_option::boolean<SOL_SOCKET, SO_EXCLUSIVEADDRUSE>(true));
#else
        acceptor.set_option(asio::socket_base::reuse_address(true));  // of connections that have just ended
#endif
        acceptor.bind({asio::ip::address_v4::loopback(), port});
        acceptor.listen();
        return acceptor;
    } catch (const boost::system::system_error& error) {
        throw InputError("127.0.0.1:" + std::to_string(port),
                         "cannot be listened on: " + Describe(error.code()), "--port names another");
    }
}

}  // namespace

struct LocalServer::State {
    State(uint16_t wishedPort, HttpHandler ownHandler, EventChannel& ownEvents)
        : acceptor(Bind(context, wishedPort)),
          port(acceptor.local_endpoint().port()),
          gate(MakeToken(), port),
          handler(std::move(ownHandler)),
          events(ownEvents) {}

    asio::awaitable<void> Accept();
    asio::awaitable<void> Serve(tcp::socket socket);
    asio::awaitable<bool> ServeOne(beast::tcp_stream& stream, beast::flat_buffer& buffer);
    asio::awaitable<void> SendEvents(beast::tcp_stream stream, Request request);
    asio::awaitable<HttpAnswer> Handle(HttpRequest request);
    asio::awaitable<void> Send(beast::tcp_stream& stream, unsigned version, bool staysOpen,
                               HttpAnswer answer) const;

    asio::io_context context;
    tcp::acceptor acceptor;
    uint16_t port;
    ServerGate gate;
    std::string nonce = MakeToken();
    HttpHandler handler;
    EventChannel& events;
    size_t connections = 0;  // counted on the context's thread alone
    asio::thread_pool pool{kHandlerThreads};
    std::thread thread;
};

asio::awaitable<void> LocalServer::State::Accept() {
    while (true) {
        boost::system::error_code failure;
        tcp::socket socket =
            co_await acceptor.async_accept(asio::redirect_error(asio::use_awaitable, failure));
        if (failure) {  // no descriptor is left, say: there may be one again soon
            asio::steady_timer pause(context, kPause);
            co_await pause.async_wait(asio::redirect_error(asio::use_awaitable, failure));
            continue;
        }
        KeepFromChildren(static_cast<intptr_t>(socket.native_handle()));
        if (connections >= kMaxConnections) continue;  // closes it
        asio::co_spawn(context, Serve(std::move(socket)), asio::detached);
    }
}

asio::awaitable<HttpAnswer> LocalServer::State::Handle(HttpRequest request) {
    const auto work = [](const HttpHandler& own, HttpRequest asked) -> asio::awaitable<HttpAnswer> {
        co_return own(asked);
    };
    co_return co_await asio::co_spawn(pool, work(handler, std::move(request)), asio::use_awaitable);
}

asio::awaitable<void> LocalServer::State::Send(beast::tcp_stream& stream, unsigned version, bool staysOpen,
                                               HttpAnswer answer) const {
    Response response{static_cast<http::status>(answer.status), version};
    response.set(http::field::content_type, answer.type);
    response.set(http::field::cache_control, "no-store");
    response.set("Content-Security-Policy", ContentPolicy(port, nonce));
    response.set("X-Content-Type-Options", "nosniff");
    response.set("Referrer-Policy", "no-referrer");
    response.set("Cross-Origin-Resource-Policy", "same-origin");
    response.set("Cross-Origin-Opener-Policy", "same-origin");
    if (!answer.download.empty())
        response.set(http::field::content_disposition, "attachment; filename=\"" + answer.download + "\"");
    response.keep_alive(staysOpen);
    response.body() = std::move(answer.body);
    response.prepare_payload();
    stream.expires_after(kPatienceWithReader);
    co_await http::async_write(stream, response, asio::use_awaitable);
}

// Whether the connection stays.
asio::awaitable<bool> LocalServer::State::ServeOne(beast::tcp_stream& stream, beast::flat_buffer& buffer) {
    http::request_parser<http::string_body> parser;
    parser.header_limit(kMaxHeadBytes);
    parser.body_limit(kMaxBodyBytes);
    stream.expires_after(kPatience);
    co_await http::async_read_header(stream, buffer, parser, asio::use_awaitable);
    const auto& head = parser.get();
    const std::string target(View(head.target()));
    // Named, and not made within the call: GCC 12 destroys such a temporary twice.
    HttpAnswer answer{gate.Judge(target, View(head[http::field::host]), View(head[http::field::origin])),
                      "text/plain",
                      {},
                      {}};
    // Whoever is not let in has no body read, and gets one answer.
    if (answer.status != 0) {
        co_await Send(stream, head.version(), false, std::move(answer));
        co_return false;
    }
    stream.expires_after(kPatience);
    co_await http::async_read(stream, buffer, parser, asio::use_awaitable);
    stream.expires_never();  // an answer may take its time
    Request request = parser.release();
    std::optional<HttpRequest> asked = gate.Split(target);
    if (asked && asked->path == kEventsPath && websocket::is_upgrade(request)) {
        co_await SendEvents(std::move(stream), std::move(request));
        co_return false;
    }
    constexpr unsigned kBadRequest = 400;
    answer.status = kBadRequest;
    if (asked) {
        asked->method = std::string(View(request.method_string()));
        asked->body = std::move(request.body());
        answer = co_await Handle(std::move(*asked));
    }
    co_await Send(stream, request.version(), request.keep_alive(), std::move(answer));
    co_return request.keep_alive();
}

asio::awaitable<void> LocalServer::State::SendEvents(beast::tcp_stream stream, Request request) {
    websocket::stream<beast::tcp_stream> page(std::move(stream));
    co_await page.async_accept(request, asio::use_awaitable);
    // The timer is how an event, which comes on another thread, wakes this one; it outlives what may still be
    // on its way when the page has gone.
    auto alarm = std::make_shared<asio::steady_timer>(context);
    const std::shared_ptr<EventChannel::Listener> listener =
        events.Listen([this, alarm] { asio::post(context, [alarm] { alarm->cancel(); }); });
    while (true) {
        std::optional<std::string> event = listener->Take();
        if (!event) {
            // Set before the last look, so that nothing can come unseen between look and wait.
            alarm->expires_after(kBeat);
            boost::system::error_code woken;
            co_await alarm->async_wait(asio::redirect_error(asio::use_awaitable, woken));
            if (!woken) event = kAlive;
        }
        if (!event) continue;
        beast::get_lowest_layer(page).expires_after(kPatience);
        co_await page.async_write(asio::buffer(*event), asio::use_awaitable);
    }
}

asio::awaitable<void> LocalServer::State::Serve(tcp::socket socket) {
    ++connections;
    try {
        beast::tcp_stream stream(std::move(socket));
        beast::flat_buffer buffer;
        while (co_await ServeOne(stream, buffer)) {
        }
    } catch (const std::exception&) {
        // The page has gone, or sent what is no request; or memory is short. It ends this connection only.
    }
    --connections;
}

LocalServer::LocalServer(uint16_t port, HttpHandler handler, EventChannel& events)
    : state_(std::make_unique<State>(port, std::move(handler), events)) {
    asio::co_spawn(state_->context, state_->Accept(), asio::detached);
    state_->thread = std::thread([this] { state_->context.run(); });
}

LocalServer::~LocalServer() {
    state_->context.stop();
    state_->thread.join();
    state_->pool.join();
}

std::string LocalServer::Address() const { return state_->gate.Address(); }

std::string LocalServer::StyleNonce() const { return state_->nonce; }

}  // namespace vastrelline

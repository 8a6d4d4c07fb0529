// SPDX-License-Identifier: Apache-2.0
#include "server/PageServer.h"

#include <chrono>
#include <thread>

#include "platform/Cancellation.h"
#include "server/LocalServer.h"
#include "server/PageParts.h"

namespace vastrelline {
namespace {

// The page's parts; its first file learns what its styles have to carry.
HttpAnswer AnswerPart(const HttpRequest& request, const std::string& nonce) {
    constexpr unsigned kNotFound = 404;
    constexpr std::string_view kPlaceholder = "STYLE-NONCE";
    const PagePart* const part = FindPagePart(request.path.empty() ? "index.html" : request.path);
    if (part == nullptr || request.method != "GET") return {kNotFound, "text/plain", {}, {}};
    HttpAnswer answer{200, std::string(part->type), std::string(part->bytes), {}};
    const size_t place = part->name == "index.html" ? answer.body.find(kPlaceholder) : std::string::npos;
    if (place != std::string::npos) answer.body.replace(place, kPlaceholder.size(), nonce);
    return answer;
}

}  // namespace

void ServePage(uint16_t port, const HttpHandler& api, EventChannel& events, const PageMoments& moments) {
    constexpr std::chrono::milliseconds kTick{200};
    std::string nonce;
    LocalServer server(
        port,
        [&](const HttpRequest& request) {
            return request.path.starts_with("api/") ? api(request) : AnswerPart(request, nonce);
        },
        events);
    nonce = server.StyleNonce();  // nobody knows the address before this
    moments.onBegin(server.Address());
    while (!IsCancelled()) {
        std::this_thread::sleep_for(kTick);
        moments.onTick();
    }
    moments.onEnd();
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "server/ServerGate.h"

#include <algorithm>
#include <charconv>
#include <random>
#include <utility>

namespace vastrelline {
namespace {

constexpr unsigned kForbidden = 403;
constexpr unsigned kNotFound = 404;

// Nothing where an escape is none.
std::optional<std::string> Unescape(std::string_view text, bool isQuery) {
    constexpr size_t kEscapeDigits = 2;
    constexpr int kHexadecimal = 16;
    std::string plain;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            plain.push_back(isQuery && text[i] == '+' ? ' ' : text[i]);
            continue;
        }
        uint8_t byte = 0;
        if (text.size() - i <= kEscapeDigits) return std::nullopt;
        const char* const begin = text.data() + i + 1;
        const auto [end, error] = std::from_chars(begin, begin + kEscapeDigits, byte, kHexadecimal);
        if (error != std::errc() || end != begin + kEscapeDigits) return std::nullopt;
        plain.push_back(static_cast<char>(byte));
        i += kEscapeDigits;
    }
    return plain;
}

// As long for a wrong text as for the right one: the time tells nothing of where they part.
bool IsSameSecret(std::string_view one, std::string_view other) {
    if (one.size() != other.size()) return false;
    unsigned difference = 0;
    for (size_t i = 0; i < one.size(); ++i)
        difference |=
            static_cast<unsigned>(static_cast<unsigned char>(one[i]) ^ static_cast<unsigned char>(other[i]));
    return difference == 0;
}

std::string_view PathOfTarget(std::string_view target) { return target.substr(0, target.find('?')); }

}  // namespace

ServerGate::ServerGate(std::string token, uint16_t port)
    : token_(std::move(token)), port_(std::to_string(port)) {}

std::string ServerGate::Address() const { return "http://127.0.0.1:" + port_ + "/" + token_ + "/"; }

bool ServerGate::IsOwn(std::string_view host) const {
    return host == "127.0.0.1:" + port_ || host == "localhost:" + port_;
}

unsigned ServerGate::Judge(std::string_view target, std::string_view host, std::string_view origin) const {
    constexpr std::string_view kScheme = "http://";
    // A name that an attacker's page has made to mean this machine comes as another host.
    if (!IsOwn(host)) return kForbidden;
    if (!origin.empty() && (!origin.starts_with(kScheme) || !IsOwn(origin.substr(kScheme.size()))))
        return kForbidden;
    const std::string_view path = PathOfTarget(target);
    if (!path.starts_with('/')) return kNotFound;
    const size_t end = path.find('/', 1);
    if (end == std::string_view::npos || !IsSameSecret(path.substr(1, end - 1), token_)) return kNotFound;
    return 0;
}

std::optional<HttpRequest> ServerGate::Split(std::string_view target) const {
    HttpRequest request;
    const std::string_view path = PathOfTarget(target);
    std::optional<std::string> plain = Unescape(path.substr(path.find('/', 1) + 1), false);
    if (!plain) return std::nullopt;
    request.path = std::move(*plain);
    std::string_view rest = target.substr(std::min(path.size() + 1, target.size()));
    while (!rest.empty()) {
        const std::string_view field = rest.substr(0, rest.find('&'));
        rest.remove_prefix(std::min(field.size() + 1, rest.size()));
        const size_t equals = std::min(field.find('='), field.size());
        std::optional<std::string> name = Unescape(field.substr(0, equals), true);
        std::optional<std::string> value = Unescape(field.substr(std::min(equals + 1, field.size())), true);
        if (!name || !value) return std::nullopt;
        request.query.emplace(std::move(*name), std::move(*value));
    }
    return request;
}

std::string MakeToken() {
    constexpr size_t kDigits = 32;
    constexpr std::string_view kHex = "0123456789abcdef";
    std::random_device random;
    std::string token;
    while (token.size() < kDigits) token.push_back(kHex[random() % kHex.size()]);
    return token;
}

std::string ContentPolicy(uint16_t port, const std::string& nonce) {
    std::string policy = "default-src 'none'; script-src 'self'; style-src 'self' 'nonce-";
    policy.append(nonce).append(
        "'; img-src 'self' blob: data:; base-uri 'none'; form-action 'none'; frame-ancestors 'none'; "
        "connect-src 'self'");
    for (const char* const host : {"127.0.0.1", "localhost"})
        policy.append(" ws://").append(host).append(":").append(std::to_string(port));
    return policy;
}

}  // namespace vastrelline

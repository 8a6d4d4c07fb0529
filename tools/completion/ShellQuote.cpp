// SPDX-License-Identifier: Apache-2.0
#include "completion/ShellQuote.h"

#include <algorithm>

namespace vastrelline {
namespace {

bool IsPlain(char c) {
    constexpr std::string_view kPlainSigns = "%+,-./:=@_^";
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
    return isLetter || kPlainSigns.find(c) != std::string_view::npos;
}

}  // namespace

std::string QuoteForShell(std::string_view word) {
    if (!word.empty() && std::all_of(word.begin(), word.end(), IsPlain)) return std::string(word);
    std::string quoted = "'";
    for (const char c : word) {
        if (c == '\'')
            quoted += "'\\''";
        else
            quoted += c;
    }
    return quoted + "'";
}

}  // namespace vastrelline

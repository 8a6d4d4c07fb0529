// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace vastrelline {

using FormatArgument = std::variant<int32_t, double, std::wstring_view>;

// Text from a format in the notation of printf, the same on every platform and in every locale: the
// decimal point is '.', and "%s" always takes wide text.
//
// Conversions  %d and %i (int32_t), %f (double, six decimals without a precision, ties to even of the exact
//              value), %s (wide text), %%; flag 0, width, precision of %f, length modifier l (ignored)
// Errors       a conversion without its argument, with one of the wrong type, or unknown is ours and
//              asserts; in a release build it gives no text
std::wstring FormatText(std::wstring_view format, std::initializer_list<FormatArgument> arguments);
std::wstring FormatText(std::wstring_view format, std::span<const FormatArgument> arguments);

}  // namespace vastrelline

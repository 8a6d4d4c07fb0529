// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace CLI {
class FormatterBase;
}

namespace vastrelline {

// The text in lines of at most `width` characters, broken at blanks; a longer word has a line of its own.
std::string WrapText(std::string_view text, size_t width);

// How help looks: words in a column of their own, no line wider than kHelpWidth.
std::shared_ptr<CLI::FormatterBase> MakeHelpFormat();

inline constexpr size_t kHelpWidth = 100;

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "report/LogLine.h"

#include <algorithm>
#include <cassert>
#include <span>

namespace vastrelline {

LogLine::LogLine(std::wstring_view format, std::initializer_list<FormatArgument> arguments)
    : format_(format), count_(std::min(arguments.size(), kMostArguments)) {
    assert(arguments.size() <= kMostArguments);
    std::copy_n(arguments.begin(), count_, arguments_.begin());
}

std::wstring LogLine::Text() const {
    return FormatText(format_, std::span<const FormatArgument>(arguments_.data(), count_));
}

}  // namespace vastrelline

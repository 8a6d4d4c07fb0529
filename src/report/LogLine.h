// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

#include "platform/TextFormat.h"

namespace vastrelline {

// A line of the log that is not a text yet: it becomes one only where it is written, so that a run without a
// log needs no memory for it.
class LogLine {
public:
    static constexpr size_t kMostArguments = 2;

    // Both have to outlive this, which literals and numbers do.
    LogLine(std::wstring_view format, std::initializer_list<FormatArgument> arguments);

    std::wstring Text() const;

private:
    std::wstring_view format_;
    std::array<FormatArgument, kMostArguments> arguments_{};
    size_t count_ = 0;
};

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vastrelline {

// What two texts do not share, line by line.

// The lines of a text, each without the '\n' at its end. Behind the last '\n' there is a line only if
// something stands there.
std::vector<std::string_view> SplitLines(std::string_view text);

// Lines that take the place of others; either side may be empty, not both.
struct LineRun {
    size_t oldBegin = 0;
    size_t oldEnd = 0;
    size_t nowBegin = 0;
    size_t nowEnd = 0;

    bool operator==(const LineRun&) const = default;
};

// The shortest way from one list of lines to another, in their order, by Myers (1986). Texts that have more
// than some thousand different lines between the first and the last difference count as replaced there, so
// that the time stays short.
std::vector<LineRun> DiffLines(std::span<const std::string_view> old, std::span<const std::string_view> now);

// A line that is not as it was.
struct LineChange {
    size_t line = 0;                 // of the new text, from 1; of a line that is gone, where it would stand
    std::optional<std::string> old;  // none: a new line
    std::optional<std::string> now;  // none: it is gone

    bool operator==(const LineChange&) const = default;
};

// Lines that take each other's places one by one are changed ones.
std::vector<LineChange> FindLineChanges(std::string_view old, std::string_view now);

// The same as other programs read it: "--- oldName", "+++ nowName", and pieces with three lines around each
// difference. Empty for texts without one.
std::string UnifiedDifference(std::string_view old, std::string_view now, std::string_view oldName,
                              std::string_view nowName);

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vastrelline {

enum class Severity : uint8_t { Note, Warning, Error };

// "note", "warning", "error"
std::string_view SeverityName(Severity severity);

// Something that a person should know about a file: where, what, and by which rule it was found.
struct Finding {
    Severity severity = Severity::Warning;
    std::string file;
    size_t line = 0;    // from 1; 0: the whole file
    size_t column = 1;  // from 1, in characters
    std::string text;   // what, and after a semicolon what to do
    std::string rule;   // "unknown-key"; may be empty

    bool operator==(const Finding&) const = default;
};

// "P.ini:41: warning: 04_MAX_SLOP is read by no stage; did you mean 04_MAX_SLOPE? [unknown-key]". The column
// stands behind the line unless it is the first.
std::string FormatFinding(const Finding& finding);

}  // namespace vastrelline

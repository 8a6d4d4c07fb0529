// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

#include "messages/Finding.h"
#include "messages/Progress.h"

namespace vastrelline {

// A text for one line of a terminal: bytes that would move the cursor or end the line become '?'.
std::string OneLine(std::string text);

// The words for people, on standard error: results go elsewhere.
class Messages {
public:
    // isTerminal   a progress line may change in place there
    Messages(std::ostream& stream, bool isColoured, bool isTerminal = false)
        : stream_(stream), isColoured_(isColoured), isTerminal_(isTerminal) {}

    // From now on only errors are said.
    void BeQuiet() { isQuiet_ = true; }

    // A line of information.
    void Tell(std::string_view text);

    // A finding as one line.
    void Show(const Finding& finding);

    // What ended the command. Always said.
    void Fail(std::string_view text);

    // Several lines that somebody asked for by a wrong use. Always said.
    void Explain(std::string_view text);

    // Tells how far a longer work has come; see Progress.
    Progress Follow(std::string what, size_t total);

private:
    std::ostream& stream_;
    bool isColoured_;
    bool isTerminal_;
    bool isQuiet_ = false;
};

}  // namespace vastrelline

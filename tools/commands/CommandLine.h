// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <ostream>

#include "library/ExportRequest.h"

namespace vastrelline {

// Where the tool writes.
struct Streams {
    std::ostream& report;  // results
    std::ostream& errors;  // words for people
    bool isColoured = false;
    bool isTerminal = false;  // where the words go
};

// The whole tool behind main: reads the arguments, runs one command, and returns the exit code. An error is
// one line on `errors`, and with --json also an object on `report`.
int RunCommandLine(int argc, const char* const* argv, const ExportCaller& callExport, const Streams& streams);

}  // namespace vastrelline

#pragma once

#include <ostream>

#include "library/ExportRequest.h"

namespace vastrelline {

// The whole tool behind main: reads the arguments, runs one command, and returns the exit code: 0 for
// success, 1 for a failure, 2 for wrong use; `compare` gives 1 for different frames. An error is one line on
// `errors`.
int RunCommandLine(int argc, const char* const* argv, const ExportCaller& callExport, std::ostream& report,
                   std::ostream& errors);

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <string_view>

#include "commands/CommandLine.h"
#include "library/ExportCall.h"
#include "runs/Cancellation.h"
#include "runs/Worker.h"

namespace {

// Colours are for a terminal whose owner has not asked for none.
bool AreColoursWanted() {
    const char* const noColour = std::getenv("NO_COLOR");
    return noColour == nullptr || *noColour == '\0';
}

}  // namespace

int main(int argc, char** argv) {
    constexpr int kWorkerArguments = 3;
    if (argc == kWorkerArguments && std::string_view(argv[1]) == vastrelline::kWorkerWord)
        return vastrelline::RunWorker(argv[2], vastrelline::CallExport);
    vastrelline::CatchCancellation();
    const bool isTerminal = isatty(STDERR_FILENO) == 1;
    return vastrelline::RunCommandLine(argc, argv, vastrelline::CallInWorker,
                                       {std::cout, std::cerr, isTerminal && AreColoursWanted(), isTerminal});
}

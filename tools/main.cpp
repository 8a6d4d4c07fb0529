#include <unistd.h>

#include <cstdlib>
#include <iostream>

#include "commands/CommandLine.h"
#include "library/ExportCall.h"

namespace {

// Colours are for a terminal whose owner has not asked for none.
bool IsColourWanted() {
    const char* const noColour = std::getenv("NO_COLOR");
    return isatty(STDERR_FILENO) == 1 && (noColour == nullptr || *noColour == '\0');
}

}  // namespace

int main(int argc, char** argv) {
    return vastrelline::RunCommandLine(argc, argv, vastrelline::CallExport,
                                       {std::cout, std::cerr, IsColourWanted()});
}

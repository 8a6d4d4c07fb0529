#include <iostream>

#include "commands/CommandLine.h"
#include "library/ExportCall.h"

int main(int argc, char** argv) {
    return vastrelline::RunCommandLine(argc, argv, vastrelline::CallExport, std::cout, std::cerr);
}

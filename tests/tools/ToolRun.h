// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "commands/CommandLine.h"

namespace vastrelline {

// What one start of the tool gave.
struct ToolRun {
    int exitCode = -1;
    std::string report;
    std::string errors;
};

// Runs the tool inside of the test, with a function in the library's place.
inline ToolRun RunTool(const std::vector<std::string>& arguments, const ExportCaller& callExport) {
    std::vector<const char*> words{"vastrelline"};
    for (const std::string& argument : arguments) words.push_back(argument.c_str());
    std::ostringstream report;
    std::ostringstream errors;
    const int exitCode =
        RunCommandLine(static_cast<int>(words.size()), words.data(), callExport, {report, errors});
    return {exitCode, report.str(), errors.str()};
}

// Stands for the library where a test must not come that far.
inline int32_t MustNotBeCalled(ExportRequest& /*request*/) {
    throw std::logic_error("the export was called");
}

}  // namespace vastrelline

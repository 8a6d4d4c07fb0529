#pragma once

#include <ostream>
#include <string>

namespace CLI {
class App;
}

namespace vastrelline {

struct CompareOptions {
    std::string first;
    std::string second;
    std::string size;  // of raw frames; may be empty
};

CLI::App* AddCompareCommand(CLI::App& app, CompareOptions& options);

// Tells whether two frames are equal, and if not how much they differ and where first. Returns 0 for equal
// frames, 1 for different ones.
int ExecuteCompare(const CompareOptions& options, std::ostream& report);

}  // namespace vastrelline

#pragma once

#include <cstdint>
#include <ostream>
#include <string>

namespace CLI {
class App;
}

namespace vastrelline {

struct PhantomOptions {
    std::string frame;
    std::string size = "1300x1668";
    double dose = 1.0;
    uint64_t seed = 1;
    std::string window;  // empty: all levels are kept
    bool mayReplace = false;
};

CLI::App* AddPhantomCommand(CLI::App& app, PhantomOptions& options);

// Makes the phantom's frame, writes it and tells about it. Returns 0.
//
// Errors   UsageError for a size, dose or ending that cannot be; std::runtime_error if the file cannot be
//          written
int ExecutePhantom(const PhantomOptions& options, std::ostream& report);

}  // namespace vastrelline

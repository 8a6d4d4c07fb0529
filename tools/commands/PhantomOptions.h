// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace vastrelline {

// What `phantom` is asked for, as it was typed. What is not there has a default of its kind.
struct PhantomOptions {
    std::string kind = "teeth";
    std::string frame;
    std::string truth;  // empty: no file
    std::string size = "1300x1668";
    uint64_t seed = 1;
    std::string window;  // empty: all levels are kept
    bool mayReplace = false;

    std::optional<double> dose;   // teeth
    std::optional<int32_t> bits;  // of all other kinds
    std::optional<double> low;
    std::optional<double> high;
    std::vector<double> noise;
    std::optional<int32_t> steps;     // wedge
    std::optional<double> angle;      // edge
    std::optional<double> blur;       // edge and lines
    std::vector<double> frequencies;  // lines
    std::optional<double> pitch;      // edge and lines: mm
};

void AddPhantomOptions(CLI::App& command, PhantomOptions& options);

// Errors   UsageError: an ending that no frame has, a window that cannot be, an option of another kind
void TestPhantomOptions(const PhantomOptions& options);

}  // namespace vastrelline

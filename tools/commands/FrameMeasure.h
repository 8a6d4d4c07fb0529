// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "frames/Frame.h"

namespace CLI {
class App;
}

namespace vastrelline {

// What `info` is asked to measure, as it was typed.
struct MeasureOptions {
    std::string kind;  // wedge, edge, lines; empty: nothing
    std::string area;  // empty: the whole frame
    int32_t steps = 8;
    double pitch = 0.0;  // mm; 0: not known
};

// What was measured on a frame, for people and for programs.
struct FrameMeasure {
    std::vector<std::string> lines;
    nlohmann::ordered_json json;
};

void AddMeasureOptions(CLI::App& command, MeasureOptions& options);

// Errors   UsageError: an area or number that cannot be
void TestMeasureOptions(const MeasureOptions& options);

// path     for errors
// options  tested, with a kind
// Errors   InputError: the frame does not show what is to be measured
FrameMeasure MeasureLoadedFrame(const std::string& path, const Frame& frame, const MeasureOptions& options);

}  // namespace vastrelline

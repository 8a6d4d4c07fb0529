// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>

namespace CLI {
class App;
}

namespace vastrelline {

struct CompareOptions {
    std::string first;
    std::string second;
    std::string size;  // of raw frames; may be empty
    int32_t tolerance = 0;
    std::string difference;  // a picture; empty: none is asked for, as with the other files
    double gain = 0.0;       // 0: the largest difference becomes white
    std::string report;
    std::string junit;
    bool mayReplace = false;
};

void AddCompareOptions(CLI::App& command, CompareOptions& options);

// What is wrong before any frame is read.
//
// Errors   UsageError
void TestCompareOptions(const CompareOptions& options, bool isOfFolders);

}  // namespace vastrelline

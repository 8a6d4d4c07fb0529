// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "commands/RunOptions.h"

namespace vastrelline {

// What the command line of `batch` says.
struct BatchOptions {
    RunOptions run;  // what holds for every frame; frame and picture differ from one to the next
    std::vector<std::string> inputs;
    std::string folder;
    std::string format;
    size_t jobs = 1;
    size_t memoryMebibytes = 0;  // of a worker; 0: by the size of the frame
    bool isResumed = false;
    bool keepsGoing = false;
};

// Adds the options, bound to the record.
void AddBatchOptions(CLI::App& command, BatchOptions& options);

// Everything that is wrong with the options and needs no file.
//
// Errors   UsageError
void TestBatchOptions(const BatchOptions& options);

// All that counts for a result beside frame, profile, section and library, as one text: another text, another
// result.
std::string DescribeResultOptions(const BatchOptions& options, const ExportTraits& traits);

}  // namespace vastrelline

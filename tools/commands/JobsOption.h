// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>

namespace CLI {
class App;
}

namespace vastrelline {

// --jobs, of a command that has several worker processes at a time.
//
// what   the option's line in the help; without the option there are as many as processors
// jobs   is set to that number
void AddJobsOption(CLI::App& command, const std::string& what, size_t& jobs);

// Errors   UsageError
void TestJobs(size_t jobs);

}  // namespace vastrelline

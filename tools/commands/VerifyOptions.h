// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string>

#include "proof/ProofAddition.h"

namespace CLI {
class App;
}

namespace vastrelline {

// What the command line of `verify` says; an empty text stands for an option that is not there.
struct VerifyOptions {
    std::string manifest;
    bool isAdded = false;
    ProofWishes wishes;  // of --add
    bool isUpdated = false;
    std::string reason;
    size_t jobs = 1;
    bool hasTimeout = false;
    double timeoutSeconds = 0.0;
    std::string library;
    std::string junit;
    bool mayReplace = false;
};

// Adds the options, bound to the record.
void AddVerifyOptions(CLI::App& command, VerifyOptions& options);

// Everything that is wrong with the options and needs no file.
//
// Errors   UsageError
void TestVerifyOptions(const VerifyOptions& options);

}  // namespace vastrelline

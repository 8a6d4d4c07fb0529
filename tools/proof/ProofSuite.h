// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "messages/ToolError.h"
#include "proof/ProofManifest.h"
#include "proof/ProofRun.h"
#include "proof/ProofVerdict.h"

namespace vastrelline {

// What came of an entry.
struct EntryResult {
    const ProofEntry* entry = nullptr;
    ProofVerdict verdict;
    ProofOutcome outcome;
    std::optional<ToolError> error;  // Failed
};

// Which runs are made.
enum class ProofDepth : uint8_t {
    Compared,  // of entries whose frame and profile are those of the manifest
    All,       // of every entry: what it gives now is wanted
};

// Runs entries, several at a time, each in a fresh process as the call makes them.
//
// entries   to be run; they outlive the result
// onDone    called with the number of entries that are done and of those that are not equal, by one thread at
//           a time
// Errors    CancelledError; InputError for the call's library; what is wrong with an entry is in its result
std::vector<EntryResult> RunProofEntries(const ProofManifest& manifest,
                                         const std::vector<const ProofEntry*>& entries, ProofDepth depth,
                                         const ProofCall& call, size_t jobs,
                                         const std::function<void(size_t, size_t)>& onDone);

// How many are in a state.
size_t CountState(const std::vector<EntryResult>& results, ProofState state);

// The code of a command that asks whether all are equal: the highest of those of the entries.
ExitCode CodeOf(const std::vector<EntryResult>& results);

}  // namespace vastrelline

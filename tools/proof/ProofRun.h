// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "library/ExportRequest.h"
#include "proof/PhantomShelf.h"
#include "proof/ProofManifest.h"

namespace vastrelline {

// How the runs of a manifest are made.
struct ProofCall {
    const ExportCaller& callExport;
    std::string library;       // as of ExportRequest
    std::string instructions;  // as of ExportRequest
    std::optional<std::chrono::milliseconds> timeout;
    std::function<void()> onWait;
    PhantomShelf& phantoms;
};

// What of a run was looked at: without points if frame or profile are not those that were expected.
struct ProofOutcome {
    ProofFacts facts;
    double elapsedMs = 0.0;  // of the export
};

// Reads frame and profile, and runs the section on the frame with dumps.
//
// expected   the run is left out where frame or profile have other hashes than here; null: it is made
// Errors     InputError for frame and profile, also for a section that is not there; ProcessingError,
//            OutputError, CancelledError as of RunFrame and for a code other than 0
ProofOutcome RunProofEntry(const ProofManifest& manifest, const ProofEntry& entry, const ProofFacts* expected,
                           const ProofCall& call);

}  // namespace vastrelline

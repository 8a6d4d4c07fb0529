// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "proof/ProofManifest.h"

namespace vastrelline {

enum class ProofState : uint8_t {
    Equal,
    Different,       // the same frame and profile give something else
    FrameChanged,    // so that nothing can be said of the result
    ProfileChanged,  // likewise
    New,             // the manifest has no hashes to compare with
    Failed,          // no run: what is wrong is told by an error
};

// "equal", "different", "frame-changed", "profile-changed", "new", "failed"
std::string_view ProofStateName(ProofState state);

struct ProofVerdict {
    ProofState state = ProofState::New;
    size_t firstPoint = 0;       // Different: the first that differs, in the order of the run
    size_t differentPoints = 0;  // Different: how many do
    std::string text;            // what is to be said of it; empty of Equal
};

// Compares what an entry says with what a run gave.
ProofVerdict JudgeProof(const ProofEntry& entry, const ProofFacts& got);

// "stage 4 (Gamma curve, position 03)": its number in the run, its name, and where it stands in the list;
// "the result" and the like of other points.
std::string NameProofPoint(const ProofFacts& facts, size_t point);

}  // namespace vastrelline

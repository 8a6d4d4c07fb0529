// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "comparison/FolderPairs.h"
#include "comparison/PairFigures.h"
#include "formats/FrameFile.h"
#include "frames/FrameSize.h"
#include "messages/ExitCode.h"
#include "messages/ToolError.h"

namespace vastrelline {

enum class PairState : uint8_t {
    Equal,
    WithinTolerance,
    OnlyFirst,
    OnlySecond,
    Different,
    OtherSize,
    Unreadable,
};

inline constexpr size_t kPairStates = 7;

// "equal", "within-tolerance", "only-first", "only-second", "different", "different-sizes", "unreadable"
std::string_view PairStateName(PairState state);

// What came of two files.
struct PairOutcome {
    std::string name;   // of a pair of a folder
    std::string first;  // paths; empty of a file that is not there
    std::string second;
    PairState state = PairState::Equal;
    std::optional<FrameSize> firstSize;  // of a frame that was read
    std::optional<FrameSize> secondSize;
    std::optional<PairFigures> figures;  // of two frames of one size
    std::optional<ToolError> error;      // why a file could not be read
    std::vector<std::string> notes;      // what a person should know of the comparison, a sentence each
};

struct FramePair {
    LoadedFrame first;
    LoadedFrame second;
};

// How two frames are told apart.
struct PairTerms {
    std::optional<FrameSize> size;  // of raw frames
    int32_t tolerance = 0;          // levels; a pixel that differs by no more is within it
};

// Errors   as LoadFrameFile
FramePair LoadPair(const std::string& first, const std::string& second, const PairTerms& terms);

PairOutcome ComparePair(const std::string& first, const std::string& second, const FramePair& frames,
                        const PairTerms& terms);

// The same of two files of folders: what cannot be read is an outcome, not an error.
PairOutcome CompareFolderPair(const FolderPair& pair, const PairTerms& terms);

// The worst first: unreadable ones, other sizes, different ones from the lowest PSNR up, files without a
// partner, the rest.
void SortWorstFirst(std::vector<PairOutcome>& outcomes);

// How many there are of each state.
std::vector<size_t> CountStates(const std::vector<PairOutcome>& outcomes);

// Well if all are equal or within tolerance; Input if a file could not be read; else Findings.
ExitCode CodeOf(const std::vector<PairOutcome>& outcomes);

}  // namespace vastrelline

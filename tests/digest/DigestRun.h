// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "DigestFrames.h"
#include "vastrelline.h"

namespace vastrelline::digest {

// The functions that take a frame, in the order of the public header.
enum class ExportedFunction : uint8_t { Plain, S, N, Ns, Ne, Cr, Rotate };

// What a caller hands over wrongly, if anything.
enum class Mistake : uint8_t { None, NoInput, NoOutput, NoProfilePath, MissingProfile };

// One call of the library: all that its result depends on.
struct DigestRun {
    ExportedFunction function = ExportedFunction::Plain;
    Mistake mistake = Mistake::None;
    FrameRecipe frame{};
    std::string profile{};  // "{folder}" stands for the folder of the run
    std::string section = "General";
    uint8_t applyMapping = 0;
    uint8_t applySpotCorrection = 0;
    std::optional<SensorGeometry> geometry{};  // S and NS
    int32_t sensorMode = 0;                    // NE
    int32_t rotation = 0;                      // RotateImage
    int32_t flip = 0;
    bool asksForDose = false;  // the call decides about the exposure, and its figures belong to the result
};

using DigestRuns = std::vector<DigestRun>;

// Whether the call delivers a bitmap in place of a frame.
inline bool DeliversBitmap(ExportedFunction function) {
    return function == ExportedFunction::N || function == ExportedFunction::Ns ||
           function == ExportedFunction::Ne;
}

}  // namespace vastrelline::digest

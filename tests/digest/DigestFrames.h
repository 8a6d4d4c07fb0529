// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <vector>

namespace vastrelline::digest {

// What a made frame shows, of 12 bits but for Deep.
enum class FrameKind : uint8_t {
    Flat,        // one level
    Ramp,        // rising to the right and downwards, over the full range
    Noise,       // every level alike
    Radiograph,  // teeth, roots and a filling over bone, with grain
    Corners,     // the same, with the dark triangles of a sensor at its two upper corners
    Weak,        // the same at a tenth of the exposure
    Steps,       // blocks of one level each
    Specks,      // a grey level with single black and white pixels
    Stripes,     // black and white columns, the hardest edges there are
    Deep,        // a ramp over 16 bits
    Levels,      // each level once, then again, row after row
    Black,
    White,
    DarkSides,  // a radiograph under black corners that are larger than any sensor has them
};

struct FrameRecipe {
    FrameKind kind = FrameKind::Radiograph;
    int32_t width = 0;
    int32_t height = 0;
};

// The pixels of a frame, rows from the top; none for a size of 0 or less. Made by whole numbers alone: the
// same with any compiler on any machine.
std::vector<uint16_t> MakeFrame(const FrameRecipe& recipe);

}  // namespace vastrelline::digest

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/InstructionSet.h"
#include "platform/Variant.h"

namespace vastrelline {

// Gives the dark areas of an equalised frame their earlier values back, in place: there the equalisation
// mostly lifts noise. Dark is what lies below the valley under level 1500 of the frame's smoothed histogram;
// the border of these areas is softened.
//
// pixels     the equalised frame, width * height pixels
// before     the frame as it stood before; must not overlap
// maxValue   the top of the result; below 1500 the search for the valley starts here
// Edges      the softening wraps around to the opposite edge
// Rounding   truncation
void CorrectDarkArea(uint16_t* pixels, const uint16_t* before, int32_t width, int32_t height,
                     int32_t maxValue);

// The loops of a form.
struct DarkAreaLoops {
    // Gives `mask` 255 where a pixel lies below `threshold`, else 0. Returns whether one does.
    bool (*mark)(const uint16_t* pixels, size_t count, uint16_t threshold, uint16_t* mask);

    // Gives pixels their earlier values back as far as a smoothed mask of 0 to 255 says, up to maxValue;
    // where that is 0 a pixel stays as it is.
    void (*mix)(uint16_t* pixels, const uint16_t* before, const uint16_t* mask, size_t count,
                int32_t maxValue);
};
using DarkAreaVariant = Variant<const DarkAreaLoops*>;

// All forms that this machine can run, the reference first and the fastest last.
std::span<const DarkAreaVariant> DarkAreaVariants();

}  // namespace vastrelline

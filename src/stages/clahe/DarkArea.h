#pragma once

#include <cstdint>

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

}  // namespace vastrelline

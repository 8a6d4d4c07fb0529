// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>

#include "platform/InstructionSet.h"
#include "platform/Variant.h"

namespace vastrelline {

// One equalisation of a frame that is thought to go on beyond its right and lower edge, where it repeats the
// nearest pixel. All arguments are checked: at least two tiles on each axis, width + padRight a multiple of
// tilesX, height + padBottom of tilesY, no side of 0, min below max, bins and clip above 0.
struct ClaheCall {
    uint16_t* pixels;  // width * height, changed in place
    uint32_t width;
    uint32_t height;
    uint32_t padRight;  // columns and rows of the border
    uint32_t padBottom;
    uint16_t min;  // range of the pixels; outside it counts as the nearer end
    uint16_t max;
    uint32_t tilesX;
    uint32_t tilesY;
    uint32_t bins;
    uint32_t clip;  // a tile's bins are cut to this
};

// A form of the equalisation.
using ClaheVariant = Variant<void (*)(const ClaheCall& call)>;

// All forms that this machine can run, the reference first and the fastest last. They change no pixel before
// they hold the memory they need, a list of one tile's bins apart; without it they throw std::bad_alloc.
std::span<const ClaheVariant> ClaheVariants();

// Checks what is left to check (range, tiles, bins), works out the clip and runs the fastest form.
//
// call       `bins` 0 means 128; `clip` is not read
// maxSlope   as for ClaheEqualize
// Returns    a ClaheStatus
// Errors     std::bad_alloc
int32_t RunClaheTiles(ClaheCall call, double maxSlope);

// The definition.
void ClaheTilesScalar(const ClaheCall& call);

#if VASTRELLINE_VECTOR_FORMS
void ClaheTilesBaseline(const ClaheCall& call);
void ClaheTilesAvx2(const ClaheCall& call);
#endif

}  // namespace vastrelline

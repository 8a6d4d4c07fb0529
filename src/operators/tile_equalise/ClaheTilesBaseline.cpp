// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "operators/tile_equalise/ClaheSchedule.h"

#if VASTRELLINE_VECTOR_FORMS

#define TARGET TARGET_BASELINE

namespace vastrelline {

namespace {

#include "operators/tile_equalise/ClaheBinRow.inl"

template <typename Index>
void Blend(const BlendPatch& patch, const BlendPiece<Index>& piece) {
    for (uint32_t y = 0; y < piece.rows; ++y) {
        const Index* const bins = piece.bins + y * piece.stride;
        uint16_t* const pixels = piece.pixels + y * piece.stride;
        for (uint32_t x = 0; x < piece.columns; ++x)
            pixels[x] = BlendFourCurves(patch, piece.row + y, piece.column + x, bins[x]);
    }
}

template <typename Index>
constexpr ClaheKernels<Index> kKernels = {BinRow<Index>, Blend<Index>};

}  // namespace

void ClaheTilesBaseline(const ClaheCall& call) {
    RunClaheSchedule(call, kKernels<uint8_t>, kKernels<uint16_t>);
}

}  // namespace vastrelline

#endif

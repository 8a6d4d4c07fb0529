#include <algorithm>

#include "operators/tile_equalise/ClaheSchedule.h"

#if VASTRELLINE_VECTOR_FORMS

#define TARGET TARGET_BASELINE

namespace vastrelline {

namespace {

#include "operators/tile_equalise/ClaheBinRow.inl"

template <typename Index>
void BlendRow(const BlendPatch& patch, uint32_t row, uint32_t column, uint32_t count, const Index* bins,
              uint16_t* pixels) {
    for (uint32_t x = 0; x < count; ++x) pixels[x] = BlendFourCurves(patch, row, column + x, bins[x]);
}

template <typename Index>
constexpr ClaheKernels<Index> kKernels = {BinRow<Index>, BlendRow<Index>};

}  // namespace

void ClaheTilesBaseline(const ClaheCall& call) {
    RunClaheSchedule(call, kKernels<uint8_t>, kKernels<uint16_t>);
}

}  // namespace vastrelline

#endif

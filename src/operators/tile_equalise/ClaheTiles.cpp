// SPDX-License-Identifier: Apache-2.0
#include "operators/tile_equalise/ClaheTiles.h"

#include "operators/tile_equalise/ClaheEqualize.h"
#include "pixels/Truncate.h"

namespace vastrelline {

namespace {

constexpr ClaheVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, ClaheTilesScalar},
#if VASTRELLINE_VECTOR_FORMS
    {"baseline", InstructionSet::Baseline, ClaheTilesBaseline},
    {"avx2", InstructionSet::Avx2, ClaheTilesAvx2},
#endif
};

// What a profile may ask for: far beyond use, far below what would starve the host.
constexpr uint64_t kTileBytes = uint64_t{4} << 20;
constexpr uint64_t kAllTilesBytes = uint64_t{4} << 30;

bool AreTooManyBins(uint64_t tilesX, uint64_t tilesY, uint64_t bins) {
    const uint64_t bytes = bins * sizeof(uint32_t);
    // Two factors of 32 bits each cannot wrap.
    return bytes > kTileBytes || tilesX * tilesY >= (kAllTilesBytes + bytes - 1) / bytes;
}

uint32_t ClipLimit(uint32_t pixelsPerTile, uint32_t bins, double maxSlope) {
    constexpr uint32_t kUnlimitedSlopeClip = 16384;
    if (!(maxSlope > 0)) return kUnlimitedSlopeClip;
    const auto clip = static_cast<uint32_t>(TruncateToInt32(pixelsPerTile * maxSlope / bins));
    return clip == 0 ? 1 : clip;
}

}  // namespace

std::span<const ClaheVariant> ClaheVariants() { return AllowedVariants(kVariants); }

int32_t RunClaheTiles(ClaheCall call, double maxSlope) {
    constexpr uint32_t kDefaultBins = 128;
    if (call.min >= call.max) return kClaheNoRange;
    if (call.tilesX < 2 || call.tilesY < 2) return kClaheTooFewTiles;
    // Read as "no change", although just beside it the frame does change.
    if (maxSlope == 1.0) return kClaheFinished;
    if (call.width == 0 || call.height == 0) return kClaheFinished;
    if (call.bins == 0) call.bins = kDefaultBins;
    if (AreTooManyBins(call.tilesX, call.tilesY, call.bins)) return kClaheTooManyBins;

    const uint32_t tileWidth = (call.width + call.padRight) / call.tilesX;
    const uint32_t tileHeight = (call.height + call.padBottom) / call.tilesY;
    call.clip = ClipLimit(tileWidth * tileHeight, call.bins, maxSlope);
    FastestOf(ClaheVariants()).run(call);
    return kClaheFinished;
}

}  // namespace vastrelline

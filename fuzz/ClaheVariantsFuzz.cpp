// SPDX-License-Identifier: Apache-2.0

// The equalisation by tiles on a small frame with tiles, border, range and bins from anywhere: every form
// against the definition. The input's head is the frame, its tail picks the rest, so that a change of that
// leaves the pixels where they are.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "operators/tile_equalise/ClaheTiles.h"
#include "support/EqualForms.h"
#include "support/FuzzInput.h"

namespace {

using namespace vastrelline;

ClaheCall TakeCall(InputTail& tail) {
    constexpr uint8_t kLargestTile = 40;
    constexpr uint32_t kLargeScale = 6;
    constexpr uint16_t kMostBins = 700;  // from 257 on they are held in 16 bits
    ClaheCall call{};
    const uint8_t edges[] = {tail.Take<uint8_t>(), tail.Take<uint8_t>()};
    // Some tiles have so many pixels that the weights of one no longer fit 16 bits.
    const uint32_t scale = edges[0] / kLargestTile == 5 ? kLargeScale : 1;
    const uint32_t tileWidth = edges[0] % kLargestTile * scale + 1U;
    const uint32_t tileHeight = edges[1] % kLargestTile * scale + 1U;
    call.tilesX = tail.Take<uint8_t>() % 3 + 2U;
    call.tilesY = tail.Take<uint8_t>() % 3 + 2U;
    call.padRight = tail.Take<uint8_t>() % (tileWidth + 1);
    call.padBottom = tail.Take<uint8_t>() % (tileHeight + 1);
    call.width = tileWidth * call.tilesX - call.padRight;
    call.height = tileHeight * call.tilesY - call.padBottom;
    const uint16_t ends[] = {tail.Take<uint16_t>(), tail.Take<uint16_t>()};
    call.min = std::min({ends[0], ends[1], uint16_t{65534}});
    call.max = std::max({ends[0], ends[1], static_cast<uint16_t>(call.min + 1)});
    call.bins = tail.Take<uint16_t>() % kMostBins + 1U;
    const bool isSmall = tail.Take<uint8_t>() % 4 != 0;
    const auto clip = tail.Take<uint32_t>();
    call.clip = std::max(isSmall ? clip % 64 : clip, 1U);
    return call;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    InputTail tail(data, size);
    ClaheCall call = TakeCall(tail);
    std::vector<uint16_t> pixels =
        tail.TakeFrame(static_cast<int32_t>(call.width), static_cast<int32_t>(call.height));
    // What a short input leaves empty repeats it.
    const size_t given = std::max<size_t>(tail.Size() / sizeof(uint16_t), 1);
    for (size_t i = given; i < pixels.size(); ++i) pixels[i] = pixels[i - given];
    RequireEqualForms(ClaheVariants(), [&](const ClaheVariant& form) {
        Guarded<uint16_t> frame(pixels);
        call.pixels = frame.Data();
        form.run(call);
        return frame;
    });
    return 0;
}

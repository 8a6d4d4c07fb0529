// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cstddef>
#include <vector>

#include "operators/tile_equalise/ClaheTiles.h"
#include "operators/tile_equalise/TileCurve.h"
#include "pixels/Border.h"
#include "pixels/ScratchVector.h"

namespace vastrelline {

namespace {

// The curves of the four tiles around a patch, by bin.
struct Corners {
    const uint32_t* leftUpper;
    const uint32_t* rightUpper;
    const uint32_t* leftBottom;
    const uint32_t* rightBottom;
};

// The padded frame and how its pixels fall into bins.
struct Padded {
    ScratchVector<uint16_t> pixels;
    size_t width;
    std::vector<uint16_t> binOfLevel;
};

void CountTile(const Padded& padded, size_t x0, size_t y0, size_t tileWidth, size_t tileHeight,
               std::span<uint32_t> block) {
    for (size_t y = y0; y < y0 + tileHeight; ++y) {
        for (size_t x = x0; x < x0 + tileWidth; ++x) {
            ++block[padded.binOfLevel[padded.pixels[y * padded.width + x]]];
        }
    }
}

// Maps the pixels of a patch, whose first pixel stands at `position`. With odd tile edges rows run over the
// left edge into the row above, and with tiles one pixel high the first patch starts before the frame.
void MapPatch(Padded& padded, int64_t position, uint32_t subWidth, uint32_t subHeight,
              const Corners& corners) {
    const uint32_t n = subWidth * subHeight;
    for (uint32_t r = 0; r < subHeight; ++r) {
        for (uint32_t c = 0; c < subWidth; ++c) {
            const int64_t at = position + static_cast<int64_t>(r * padded.width + c);
            if (at < 0 || at >= static_cast<int64_t>(padded.pixels.size())) continue;
            uint16_t& pixel = padded.pixels[static_cast<size_t>(at)];
            const size_t g = padded.binOfLevel[pixel];
            const uint32_t upper = (subWidth - c) * corners.leftUpper[g] + c * corners.rightUpper[g];
            const uint32_t bottom = (subWidth - c) * corners.leftBottom[g] + c * corners.rightBottom[g];
            // No wrap is left to lose: a quotient beyond 16 bits would need n below 65537, and then the
            // sum, at most n times a level, fits into 32 bits.
            pixel = static_cast<uint16_t>(((subHeight - r) * upper + r * bottom) / n);
        }
    }
}

// What lies before the first tile centre of an axis, between two, or after the last, and the tiles on its
// sides.
struct Span {
    uint32_t edge;
    size_t before;
    size_t after;
};

Span SpanAt(uint32_t index, uint32_t tiles, uint32_t tileEdge) {
    if (index == 0) return {tileEdge >> 1, 0, 0};
    if (index == tiles) return {tileEdge >> 1, tiles - 1, tiles - 1};
    return {tileEdge, index - 1, index};
}

}  // namespace

void ClaheTilesScalar(const ClaheCall& call) {
    const auto width = static_cast<int32_t>(call.width);
    const auto height = static_cast<int32_t>(call.height);
    const auto padRight = static_cast<int32_t>(call.padRight);
    const auto padBottom = static_cast<int32_t>(call.padBottom);
    Padded padded{ExtendImage(call.pixels, width, height, padRight, padBottom, BorderMode::BorderTrailing)
                      .value_or(ScratchVector<uint16_t>()),
                  call.width + call.padRight, std::vector<uint16_t>(0x10000)};
    const uint32_t tileWidth = (call.width + call.padRight) / call.tilesX;
    const uint32_t tileHeight = (call.height + call.padBottom) / call.tilesY;

    const uint32_t binSize = uint32_t{call.max} - call.min;
    for (uint32_t level = 0; level < padded.binOfLevel.size(); ++level) {
        const uint32_t clamped = std::clamp<uint32_t>(level, call.min, call.max);
        padded.binOfLevel[level] = static_cast<uint16_t>((clamped - call.min) / (binSize / call.bins + 1));
    }

    std::vector<uint32_t> maps(size_t{call.tilesX} * call.tilesY * call.bins);
    const auto block = [&](size_t x, size_t y) {
        return std::span(maps).subspan((y * call.tilesX + x) * call.bins, call.bins);
    };
    for (size_t y = 0; y < call.tilesY; ++y) {
        for (size_t x = 0; x < call.tilesX; ++x) {
            CountTile(padded, x * tileWidth, y * tileHeight, tileWidth, tileHeight, block(x, y));
            ClipHistogram(block(x, y), call.clip);
            MapHistogram(block(x, y), call.min, call.max, tileWidth * tileHeight);
        }
    }

    int64_t position = 0;
    for (uint32_t i = 0; i <= call.tilesY; ++i) {
        const Span rows = SpanAt(i, call.tilesY, tileHeight);
        for (uint32_t j = 0; j <= call.tilesX; ++j) {
            const Span columns = SpanAt(j, call.tilesX, tileWidth);
            const Corners corners = {
                block(columns.before, rows.before).data(), block(columns.after, rows.before).data(),
                block(columns.before, rows.after).data(), block(columns.after, rows.after).data()};
            MapPatch(padded, position, columns.edge, rows.edge, corners);
            position += columns.edge;
        }
        position += (int64_t{rows.edge} - 1) * static_cast<int64_t>(padded.width);
    }
    CropImage(padded.pixels.data(), call.pixels, width + padRight, height + padBottom, padRight, padBottom,
              BorderMode::BorderTrailing);
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include "operators/tile_equalise/ClaheSchedule.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <span>
#include <vector>

#include "operators/tile_equalise/TileCurve.h"

namespace vastrelline {

namespace {

// Of so many bins each has its number in 8 bits.
constexpr uint32_t kNarrowBins = 256;

uint32_t CeilLog2(uint32_t value) { return static_cast<uint32_t>(std::bit_width(value - 1)); }

BinRule MakeBinRule(const ClaheCall& call) {
    const uint64_t binSize = static_cast<uint32_t>(call.max - call.min) / call.bins + 1;
    const uint32_t log = CeilLog2(static_cast<uint32_t>(binSize));
    const uint64_t multiplier = (((uint64_t{1} << log) - binSize) << 16U) / binSize + 1;
    return {call.min, call.max, static_cast<uint16_t>(multiplier), static_cast<uint8_t>(log == 0 ? 0 : 1),
            static_cast<uint8_t>(log == 0 ? 0 : log - 1)};
}

// What lies between two tile centres on one axis, or between the outer centre and the edge.
struct Span {
    uint32_t edge;
    uint32_t before;  // the tiles on its sides
    uint32_t after;
};

Span SpanAt(uint32_t index, uint32_t tiles, uint32_t tileEdge) {
    if (index == 0) return {tileEdge / 2, 0, 0};
    if (index == tiles) return {tileEdge / 2, tiles - 1, tiles - 1};
    return {tileEdge, index - 1, index};
}

std::vector<ColumnWeights> MakeColumnWeights(uint32_t width) {
    std::vector<ColumnWeights> columns(width);
    for (uint32_t c = 0; c < width; ++c) {
        const auto left = static_cast<int16_t>(width - c);
        const auto right = static_cast<int16_t>(c);
        columns[c] = {{left, right, left, right}};
    }
    return columns;
}

template <typename Index>
class Schedule {
public:
    Schedule(const ClaheCall& call, const ClaheKernels<Index>& kernels)
        : call_(call),
          kernels_(kernels),
          rule_(MakeBinRule(call)),
          paddedWidth_(call.width + call.padRight),
          tileWidth_(paddedWidth_ / call.tilesX),
          tileHeight_((call.height + call.padBottom) / call.tilesY),
          usedBins_(BinOf(call.max) + 1),
          counts_(kTables == 1 ? call.bins : kTables * kTableStride),
          binRows_(std::bit_ceil(std::min(2 * tileHeight_, call.height))),
          bins_(size_t{binRows_} * call.width),
          pieceBins_(tileWidth_),
          curves_(2 * size_t{call.tilesX} * usedBins_),
          corners_(usedBins_),
          halfColumns_(MakeColumnWeights(tileWidth_ / 2)),
          columns_(MakeColumnWeights(tileWidth_)) {}

    void Run() {
        int64_t position = 0;
        for (uint32_t i = 0; i <= call_.tilesY; ++i) {
            if (i < call_.tilesY) MakeTileRow(i);
            const Span rows = SpanAt(i, call_.tilesY, tileHeight_);
            for (uint32_t j = 0; j <= call_.tilesX; ++j) {
                const Span columns = SpanAt(j, call_.tilesX, tileWidth_);
                if (columns.edge != 0 && rows.edge != 0) MapPatch(position, rows, columns);
                position += columns.edge;
            }
            // With odd tile edges this is not the start of a row: it slips to the left by one pixel more
            // each time, as in the definition.
            position += (int64_t{rows.edge} - 1) * paddedWidth_;
        }
    }

private:
    // Neighbours are often alike; four tables keep one count from waiting for the one before it. They stand
    // so far apart whatever the number of bins, which their addresses then need no register for.
    static constexpr size_t kTables = sizeof(Index) == 1 ? 4 : 1;
    static constexpr size_t kTableStride = kNarrowBins + 16;

    Index BinOf(uint16_t level) const {
        Index bin = 0;
        kernels_.binRow(&level, 1, rule_, &bin);
        return bin;
    }

    uint16_t* Row(uint32_t y) const { return call_.pixels + size_t{y} * call_.width; }
    std::span<uint16_t> Curve(uint32_t x, uint32_t y) {
        return std::span(curves_).subspan((y % 2 * size_t{call_.tilesX} + x) * usedBins_, usedBins_);
    }

    const Index* BinsOfRow(uint32_t y) const { return &bins_[(y & (binRows_ - 1)) * size_t{call_.width}]; }
    bool HasBinsOfRow(uint32_t y) const { return y < binnedRows_ && binnedRows_ - y <= binRows_; }

    // Whole rows, which the processor fetches ahead. The last two rows of tiles stay: the patches between
    // them are mapped next.
    void BinRowsUpTo(uint32_t end) {
        for (; binnedRows_ < std::min(end, call_.height); ++binnedRows_) {
            Index* const bins = &bins_[(binnedRows_ & (binRows_ - 1)) * size_t{call_.width}];
            kernels_.binRow(Row(binnedRows_), call_.width, rule_, bins);
        }
    }

    void MakeTileRow(uint32_t y) {
        BinRowsUpTo((y + 1) * tileHeight_);
        for (uint32_t x = 0; x < call_.tilesX; ++x) {
            CountTile(x * tileWidth_, y * tileHeight_);
            const std::span<uint32_t> block = std::span(counts_).first(call_.bins);
            ClipHistogram(block, call_.clip);
            // No pixel asks for the bins beyond.
            const std::span<uint32_t> used = block.first(usedBins_);
            MapHistogram(used, call_.min, call_.max, tileWidth_ * tileHeight_);
            std::transform(used.begin(), used.end(), Curve(x, y).begin(),
                           [](uint32_t level) { return static_cast<uint16_t>(level); });
        }
    }

    void CountTile(uint32_t x0, uint32_t y0) {
        std::fill(counts_.begin(), counts_.end(), 0);
        const uint32_t yEnd = y0 + tileHeight_;
        const uint32_t inside = std::clamp(call_.width, x0, x0 + tileWidth_) - x0;
        const uint32_t borderColumns = tileWidth_ - inside;
        for (uint32_t y = y0; y < std::min(yEnd, call_.height); ++y) {
            const Index* const row = BinsOfRow(y);
            if (inside != 0) CountInside(row + x0, inside);
            if (borderColumns != 0) counts_[row[call_.width - 1]] += borderColumns;
        }
        const uint32_t borderRows = yEnd - std::clamp(call_.height, y0, yEnd);
        if (borderRows != 0) CountBorderRows(x0, inside, borderColumns, borderRows);
        if constexpr (kTables > 1) AddTables(counts_.data());
    }

    // A number of bins that the compiler knows is one that it makes vectors for.
    static void AddTables(uint32_t* counts) {
        for (size_t bin = 0; bin < kNarrowBins; ++bin) {
            counts[bin] +=
                counts[kTableStride + bin] + counts[2 * kTableStride + bin] + counts[3 * kTableStride + bin];
        }
    }

    void CountInside(const Index* bins, uint32_t count) {
        uint32_t* const counts = counts_.data();  // a copy that counts cannot change
        constexpr uint32_t kStep = 8;
        uint32_t x = 0;
        for (; x + kStep <= count; x += kStep) {
#pragma GCC unroll 8
            for (size_t k = 0; k < kStep; ++k) ++counts[k % kTables * kTableStride + bins[x + k]];
        }
        for (; x < count; ++x) ++counts[bins[x]];
    }

    // The frame's last row stands for those below it.
    void CountBorderRows(uint32_t x0, uint32_t inside, uint32_t borderColumns, uint32_t borderRows) {
        const Index* const row = BinsOfRow(call_.height - 1);
        for (uint32_t x = 0; x < inside; ++x) counts_[row[x0 + x]] += borderRows;
        counts_[row[call_.width - 1]] += borderColumns * borderRows;
    }

    void FillCorners(const Span& rows, const Span& columns) {
        const auto biased = [](uint16_t level) { return static_cast<int16_t>(level - kLevelBias); };
        const uint16_t* leftUpper = Curve(columns.before, rows.before).data();
        const uint16_t* rightUpper = Curve(columns.after, rows.before).data();
        const uint16_t* leftBottom = Curve(columns.before, rows.after).data();
        const uint16_t* rightBottom = Curve(columns.after, rows.after).data();
        for (size_t bin = 0; bin < usedBins_; ++bin) {
            corners_[bin] = {biased(leftUpper[bin]), biased(rightUpper[bin]), biased(leftBottom[bin]),
                             biased(rightBottom[bin])};
        }
    }

    // Maps the patch whose first pixel stands at a position of the padded frame.
    void MapPatch(int64_t position, const Span& rows, const Span& columns) {
        FillCorners(rows, columns);
        const BlendPatch patch = {
            .width = columns.edge,
            .height = rows.edge,
            .corners = corners_.data(),
            .columns = columns.edge == tileWidth_ ? columns_.data() : halfColumns_.data(),
            .division = MakeSumDivision(rows.edge * columns.edge, call_.max)};
        // Only with tiles one pixel high and of odd width can a patch start before the frame, and by one
        // pixel.
        int64_t y = position < 0 ? -1 : position / paddedWidth_;
        const auto x = static_cast<uint32_t>(position - y * paddedWidth_);
        if (y >= 0 && x + columns.edge <= paddedWidth_) {
            MapPiece(patch, 0, 0, rows.edge, columns.edge, x, y);
            return;
        }
        for (uint32_t r = 0; r < rows.edge; ++r, ++y) {
            const uint32_t untilEnd = std::min(columns.edge, paddedWidth_ - x);
            MapPiece(patch, r, 0, 1, untilEnd, x, y);
            if (untilEnd < columns.edge) MapPiece(patch, r, untilEnd, 1, columns.edge - untilEnd, 0, y + 1);
        }
    }

    // Maps some rows and columns of a patch, from a row and a column of it on, as far as they lie in the
    // frame.
    void MapPiece(const BlendPatch& patch, uint32_t r, uint32_t column, uint32_t rows, uint32_t count,
                  uint32_t x, int64_t y) {
        if (y < 0 || y >= call_.height || x >= call_.width) return;
        auto row = static_cast<uint32_t>(y);
        const uint32_t end = row + std::min(rows, call_.height - row);
        BlendPiece<Index> piece = {.row = r,
                                   .column = column,
                                   .rows = 1,
                                   .columns = std::min(count, call_.width - x),
                                   .bins = nullptr,
                                   .pixels = nullptr,
                                   .stride = call_.width};
        for (; row < end; row += piece.rows, piece.row += piece.rows) {
            piece.pixels = Row(row) + x;
            if (HasBinsOfRow(row)) {
                // Up to where the rows of bins start anew.
                piece.rows = std::min({end, binnedRows_, (row | (binRows_ - 1)) + 1}) - row;
                piece.bins = BinsOfRow(row) + x;
            } else {
                // In a narrow frame of odd tiles a patch can slip by rows.
                piece.rows = 1;
                kernels_.binRow(piece.pixels, piece.columns, rule_, pieceBins_.data());
                piece.bins = pieceBins_.data();
            }
            kernels_.blend(patch, piece);
        }
    }

    const ClaheCall& call_;
    const ClaheKernels<Index>& kernels_;
    BinRule rule_;
    uint32_t paddedWidth_;
    uint32_t tileWidth_;
    uint32_t tileHeight_;
    size_t usedBins_;  // bins that a level can fall into
    std::vector<uint32_t> counts_;
    uint32_t binRows_;         // rows that bins_ holds, a power of two
    std::vector<Index> bins_;  // of the last rows that were counted, row y in place y % binRows_
    std::vector<Index> pieceBins_;
    uint32_t binnedRows_ = 0;
    std::vector<uint16_t> curves_;  // of even and of odd rows of tiles
    std::vector<CornerLevels> corners_;
    std::vector<ColumnWeights> halfColumns_;
    std::vector<ColumnWeights> columns_;
};

}  // namespace

void RunClaheSchedule(const ClaheCall& call, const ClaheKernels<uint8_t>& narrow,
                      const ClaheKernels<uint16_t>& wide) {
    constexpr uint32_t kMostColumns = 32767;
    constexpr uint64_t kMostPixels = uint64_t{1} << 31U;
    const uint64_t tileWidth = (call.width + call.padRight) / call.tilesX;
    const uint64_t tileHeight = (call.height + call.padBottom) / call.tilesY;
    if (tileWidth > kMostColumns || tileWidth * tileHeight > kMostPixels) {
        ClaheTilesScalar(call);
    } else if (call.bins <= kNarrowBins) {
        Schedule<uint8_t>(call, narrow).Run();
    } else {
        Schedule<uint16_t>(call, wide).Run();
    }
}

}  // namespace vastrelline

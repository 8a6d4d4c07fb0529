// SPDX-License-Identifier: Apache-2.0
#include "sensor/QuarterTurn.h"

#include <algorithm>

#include "pixels/ScratchVector.h"

#if VASTRELLINE_VECTOR_FORMS
#include <immintrin.h>
#endif

namespace vastrelline {

namespace {

const uint16_t* SourceRow(const TransposeCall& call, size_t y) {
    return call.source + static_cast<ptrdiff_t>(y) * call.sourceStride;
}

uint16_t* TargetRow(const TransposeCall& call, size_t x) {
    return call.target + static_cast<ptrdiff_t>(x) * call.targetStride;
}

// The definition. The walk goes in square blocks, so that the rows of both sides stay in the cache.
void TransposeScalar(const TransposeCall& call) {
    constexpr size_t kBlock = 32;
    for (size_t blockY = 0; blockY < call.height; blockY += kBlock) {
        const size_t endY = std::min(blockY + kBlock, call.height);
        for (size_t blockX = 0; blockX < call.width; blockX += kBlock) {
            const size_t endX = std::min(blockX + kBlock, call.width);
            for (size_t x = blockX; x < endX; ++x)
                for (size_t y = blockY; y < endY; ++y) TargetRow(call, x)[y] = SourceRow(call, y)[x];
        }
    }
}

#if VASTRELLINE_VECTOR_FORMS

// Of eight pixels of eight rows each: what is beside one another lies below one another after three rounds,
// which pair single pixels, pairs and fours of rows half a block apart.
constexpr size_t kSide = 8;

// Rows of the source, columns of the target, in a band: their part of the source stays in the first cache for
// as long as its lines are read, and where the target's rows fight for places of the cache, few of its lines
// are written in two pieces.
constexpr size_t kBand = 256;

// Where the next block begins. The last one ends with the frame and may overlap the one before.
size_t NextBlock(size_t place, size_t block, size_t end) {
    return place + block < end ? std::min(place + block, end - block) : end;
}

TARGET_BASELINE void TransposeBlock(const TransposeCall& call, size_t x, size_t y) {
    __m128i rows[kSide];
    for (size_t i = 0; i < kSide; ++i)
        rows[i] = _mm_loadu_si128(reinterpret_cast<const __m128i*>(SourceRow(call, y + i) + x));
    for (int round = 0; round < 3; ++round) {
        __m128i paired[kSide];
        for (size_t i = 0; i < kSide / 2; ++i) {
            paired[2 * i] = _mm_unpacklo_epi16(rows[i], rows[i + kSide / 2]);
            paired[2 * i + 1] = _mm_unpackhi_epi16(rows[i], rows[i + kSide / 2]);
        }
        std::copy(paired, paired + kSide, rows);
    }
    for (size_t i = 0; i < kSide; ++i)
        _mm_storeu_si128(reinterpret_cast<__m128i*>(TargetRow(call, x + i) + y), rows[i]);
}

TARGET_BASELINE void TransposeBaseline(const TransposeCall& call) {
    if (call.width < kSide || call.height < kSide) return TransposeScalar(call);
    for (size_t bandY = 0; bandY < call.height; bandY += kBand) {
        const size_t first = std::min(bandY, call.height - kSide);
        const size_t end = std::min(bandY + kBand, call.height);
        for (size_t x = 0; x < call.width; x = NextBlock(x, kSide, call.width))
            for (size_t y = first; y < end; y = NextBlock(y, kSide, end)) TransposeBlock(call, x, y);
    }
}

// Two blocks one below the other, each in its half of the vectors.
TARGET_AVX2 void TransposeTwoBlocks(const TransposeCall& call, size_t x, size_t y) {
    __m256i rows[kSide];
    for (size_t i = 0; i < kSide; ++i) {
        const auto* upper = reinterpret_cast<const __m128i*>(SourceRow(call, y + i) + x);
        const auto* lower = reinterpret_cast<const __m128i*>(SourceRow(call, y + kSide + i) + x);
        rows[i] = _mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadu_si128(upper)),
                                          _mm_loadu_si128(lower), 1);
    }
    for (int round = 0; round < 3; ++round) {
        __m256i paired[kSide];
        for (size_t i = 0; i < kSide / 2; ++i) {
            paired[2 * i] = _mm256_unpacklo_epi16(rows[i], rows[i + kSide / 2]);
            paired[2 * i + 1] = _mm256_unpackhi_epi16(rows[i], rows[i + kSide / 2]);
        }
        std::copy(paired, paired + kSide, rows);
    }
    for (size_t i = 0; i < kSide; ++i)
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(TargetRow(call, x + i) + y), rows[i]);
}

TARGET_AVX2 void TransposeAvx2(const TransposeCall& call) {
    constexpr size_t kRows = 2 * kSide;
    if (call.width < kSide || call.height < kRows) return TransposeBaseline(call);
    for (size_t bandY = 0; bandY < call.height; bandY += kBand) {
        const size_t first = std::min(bandY, call.height - kRows);
        const size_t end = std::min(bandY + kBand, call.height);
        for (size_t x = 0; x < call.width; x = NextBlock(x, kSide, call.width))
            for (size_t y = first; y < end; y = NextBlock(y, kRows, end)) TransposeTwoBlocks(call, x, y);
    }
}

#endif

constexpr TransposeVariant kVariants[] = {
    {"scalar", InstructionSet::Reference, TransposeScalar},
#if VASTRELLINE_VECTOR_FORMS
    {"baseline", InstructionSet::Baseline, TransposeBaseline},
    {"avx2", InstructionSet::Avx2, TransposeAvx2},
#endif
};

// Pixels from one row of the copy to the next: a whole number of the cache's lines, and an odd one, since the
// rows of a band would fight for a few places of the cache where it is a power of two. Narrow rows lie
// without gaps, which could take more than the pixels.
size_t StrideOfCopy(size_t width) {
    constexpr size_t kLine = 32;
    constexpr size_t kLeastWidthWithGaps = 512;
    return width < kLeastWidthWithGaps ? width : ((width + kLine - 1) / kLine | 1U) * kLine;
}

}  // namespace

std::span<const TransposeVariant> TransposeVariants() { return AllowedVariants(kVariants); }

void TurnByQuarter(uint16_t* pixels, int32_t width, int32_t height, bool isClockwise) {
    if (width <= 0 || height <= 0) return;
    const auto columns = static_cast<size_t>(width);
    const auto rows = static_cast<size_t>(height);
    const size_t stride = StrideOfCopy(columns);
    ScratchVector<uint16_t> copy(stride * rows);
    for (size_t y = 0; y < rows; ++y) std::copy_n(pixels + y * columns, columns, copy.data() + y * stride);
    // Clockwise the last row becomes the first column; the other way the last column becomes the first row.
    const auto sourceStride = static_cast<ptrdiff_t>(stride);
    const ptrdiff_t targetStride = height;
    const TransposeVariant& transpose = FastestOf(TransposeVariants());
    if (isClockwise)
        transpose.run(
            {copy.data() + (rows - 1) * stride, -sourceStride, pixels, targetStride, columns, rows});
    else
        transpose.run(
            {copy.data(), sourceStride, pixels + (columns - 1) * rows, -targetStride, columns, rows});
}

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0

// The loops over a band, once for each instruction set: the including file defines TARGET, and the compiler
// makes the vectors. Sums and differences of 16-bit values are whole numbers, so every form gives the same
// bits.

TARGET void Subtract(uint16_t* level, const uint16_t* coarse, size_t count) {
    for (size_t i = 0; i < count; ++i) level[i] = static_cast<uint16_t>(level[i] - coarse[i]);
}

TARGET BandRange FindRange(const int16_t* band, size_t count, BandRange start) {
    if (count == 0) return start;
    int16_t min = band[0];
    int16_t max = band[0];
    for (size_t i = 0; i < count; ++i) {
        min = band[i] < min ? band[i] : min;
        max = band[i] > max ? band[i] : max;
    }
    return {min < start.min ? min : start.min, max > start.max ? max : start.max};
}

// Neighbouring values are often alike: four tables keep one count from waiting for the one before it.
TARGET std::vector<uint32_t> CountValues(const int16_t* band, size_t count, BandRange range) {
    // The tables begin so low that each has a bin for 0, and pointers to these need no offset.
    const ptrdiff_t below = range.min < 0 ? -ptrdiff_t{range.min} : 0;
    const size_t bins = static_cast<size_t>(below + (range.max > 0 ? range.max : 0)) + 1;
    std::vector<uint32_t> counts(4 * bins);
    uint32_t* const zero0 = counts.data() + below;
    uint32_t* const zero1 = zero0 + bins;
    uint32_t* const zero2 = zero1 + bins;
    uint32_t* const zero3 = zero2 + bins;
    size_t i = 0;
    for (; i + 4 <= count; i += 4) {
        const ptrdiff_t values[4] = {band[i], band[i + 1], band[i + 2], band[i + 3]};
        ++zero0[values[0]];
        ++zero1[values[1]];
        ++zero2[values[2]];
        ++zero3[values[3]];
    }
    for (; i < count; ++i) ++zero0[band[i]];
    std::vector<uint32_t> sums;
    sums.reserve(static_cast<size_t>(range.max - range.min) + 1);
    for (ptrdiff_t v = range.min; v <= range.max; ++v)
        sums.push_back(zero0[v] + zero1[v] + zero2[v] + zero3[v]);
    return sums;
}

TARGET void Remap(int16_t* band, size_t count, const int16_t* responses) {
    size_t i = 0;
    for (; i + 8 <= count; i += 8) {
        int16_t mapped[8];
#pragma GCC unroll 8
        for (size_t j = 0; j < 8; ++j) mapped[j] = responses[ptrdiff_t{band[i + j]}];
#pragma GCC unroll 8
        for (size_t j = 0; j < 8; ++j) band[i + j] = mapped[j];
    }
    for (; i < count; ++i) band[i] = responses[band[i]];
}

TARGET inline uint16_t ClampedSum(int32_t sum, int32_t maxValue) {
    sum = sum > maxValue ? maxValue : sum;
    return static_cast<uint16_t>(sum < 0 ? 0 : sum);
}

// In blocks that are read before they are written, so that the sums may lie where the band does.
TARGET void Add(const uint16_t* coarse, const int16_t* band, size_t count, int32_t maxValue, uint16_t* sums) {
    constexpr size_t kBlock = 32;
    size_t i = 0;
    for (; i + kBlock <= count; i += kBlock) {
        uint16_t block[kBlock];
        for (size_t j = 0; j < kBlock; ++j) block[j] = ClampedSum(coarse[i + j] + band[i + j], maxValue);
        for (size_t j = 0; j < kBlock; ++j) sums[i + j] = block[j];
    }
    for (; i < count; ++i) sums[i] = ClampedSum(coarse[i] + band[i], maxValue);
}

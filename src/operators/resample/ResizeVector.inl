// SPDX-License-Identifier: Apache-2.0

// The loops of the resampling, once for each instruction set: the including file defines TARGET, BlendRow and
// BlendInRow, and the compiler makes the vectors. Scale 0.5 reads every other pixel. At scale 2 the weights
// are 1, 1/2 and 1/4, so that whole numbers give the same bits as the sums of doubles. All other scales take
// the definition's sums in the two of the including file.

TARGET void HalveRow(const uint16_t* source, int32_t count, uint16_t* result) {
    for (int32_t x = 0; x < count; ++x) result[x] = source[2 * x];
}

// A row of the result that lies on a source row.
TARGET void DoubleRow(const uint16_t* source, int32_t width, uint16_t* result) {
    for (int32_t x = 0; x < width - 1; ++x) {
        const uint32_t sum = uint32_t{source[x]} + source[x + 1];
        result[2 * x] = source[x];
        result[2 * x + 1] = static_cast<uint16_t>(sum / 2);
    }
}

// A row of the result that lies between two source rows.
TARGET void DoubleBetweenRows(const uint16_t* above, const uint16_t* below, int32_t width, uint16_t* result) {
    for (int32_t x = 0; x < width - 1; ++x) {
        const uint32_t left = uint32_t{above[x]} + below[x];
        const uint32_t right = uint32_t{above[x + 1]} + below[x + 1];
        result[2 * x] = static_cast<uint16_t>(left / 2);
        result[2 * x + 1] = static_cast<uint16_t>((left + right) / 4);
    }
}

// The last source row: every pixel twice.
TARGET void RepeatRow(const uint16_t* source, int32_t width, uint16_t* result) {
    for (int32_t x = 0; x < width; ++x) {
        result[2 * x] = source[x];
        result[2 * x + 1] = source[x];
    }
}

constexpr ResizeKernels kKernels = {HalveRow, DoubleRow, DoubleBetweenRows, RepeatRow, BlendRow, BlendInRow};

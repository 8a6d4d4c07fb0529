// The fast form of FilterFrame, once for each instruction set. The file that includes it defines the macro
// TARGET and, in an unnamed namespace, Vector, kLanes, kColumnVectors, Zero, Load, Store, Broadcast,
// MultiplyAdd, LoadPixels and StorePixels.
//
// Lanes are neighbouring pixels, so each pixel is summed in the order of the definition and no bit can
// differ. Rows are filtered just ahead of the columns that read them, into a ring of so many rows as the
// kernel is high; no image of doubles exists. Four rows of the result are made at once, so that a filtered
// row is loaded once for four taps.

// Rows of the result that are made together.
constexpr int32_t kRowsAtOnce = 4;
// Vectors of a row that are filtered together: enough sums to hide the latency of one.
constexpr int32_t kRowVectors = 8;

// Filters `count` places of a line; `line` begins `half` places before the first and is readable, as `out` is
// writable, up to the next multiple of kLanes.
TARGET void FilterLine(const double* line, int32_t count, const double* taps, int32_t size, double* out) {
    int32_t x = 0;
    for (; x + kRowVectors * kLanes <= count; x += kRowVectors * kLanes) {
        Vector sums[kRowVectors];
#pragma GCC unroll 8
        for (int32_t v = 0; v < kRowVectors; ++v) sums[v] = Zero();
        for (int32_t k = 0; k < size; ++k) {
            const Vector tap = Broadcast(taps[k]);
#pragma GCC unroll 8
            for (int32_t v = 0; v < kRowVectors; ++v) {
                sums[v] = MultiplyAdd(sums[v], Load(line + x + k + v * kLanes), tap);
            }
        }
#pragma GCC unroll 8
        for (int32_t v = 0; v < kRowVectors; ++v) Store(out + x + v * kLanes, sums[v]);
    }
    for (; x < count; x += kLanes) {
        Vector sum = Zero();
        for (int32_t k = 0; k < size; ++k) sum = MultiplyAdd(sum, Load(line + x + k), Broadcast(taps[k]));
        Store(out + x, sum);
    }
}

// Makes kRowsAtOnce rows of the result at the columns from x on, kColumnVectors vectors of them. `rows` are
// the size + kRowsAtOnce - 1 filtered rows that they see; `size` is at least kRowsAtOnce - 1.
TARGET inline void FilterFourRows(const double* const* rows, int32_t x, const double* taps, int32_t size,
                                  Vector sums[kRowsAtOnce][kColumnVectors]) {
#pragma GCC unroll 4
    for (int32_t j = 0; j < kRowsAtOnce; ++j) {
#pragma GCC unroll 4
        for (int32_t v = 0; v < kColumnVectors; ++v) sums[j][v] = Zero();
    }
    // The first rows are not seen by all four rows of the result yet.
#pragma GCC unroll 4
    for (int32_t r = 0; r < kRowsAtOnce - 1; ++r) {
#pragma GCC unroll 4
        for (int32_t j = 0; j < kRowsAtOnce; ++j) {
#pragma GCC unroll 4
            for (int32_t v = 0; v < kColumnVectors; ++v) {
                if (j <= r) {
                    sums[j][v] =
                        MultiplyAdd(sums[j][v], Load(rows[r] + x + v * kLanes), Broadcast(taps[r - j]));
                }
            }
        }
    }
    for (int32_t r = kRowsAtOnce - 1; r < size; ++r) {
        Vector values[kColumnVectors];
#pragma GCC unroll 4
        for (int32_t v = 0; v < kColumnVectors; ++v) values[v] = Load(rows[r] + x + v * kLanes);
#pragma GCC unroll 4
        for (int32_t j = 0; j < kRowsAtOnce; ++j) {
            const Vector tap = Broadcast(taps[r - j]);
#pragma GCC unroll 4
            for (int32_t v = 0; v < kColumnVectors; ++v) sums[j][v] = MultiplyAdd(sums[j][v], values[v], tap);
        }
    }
    // The last rows are no longer seen by all four.
#pragma GCC unroll 4
    for (int32_t e = 0; e < kRowsAtOnce - 1; ++e) {
#pragma GCC unroll 4
        for (int32_t j = 0; j < kRowsAtOnce; ++j) {
#pragma GCC unroll 4
            for (int32_t v = 0; v < kColumnVectors; ++v) {
                if (j > e) {
                    sums[j][v] = MultiplyAdd(sums[j][v], Load(rows[size + e] + x + v * kLanes),
                                             Broadcast(taps[size + e - j]));
                }
            }
        }
    }
}

// Stores one vector of the result, or what of it lies left of `width`.
TARGET inline void StoreResult(uint16_t* row, int32_t x, int32_t width, Vector sum, int32_t maxValue) {
    if (x + kLanes <= width) {
        StorePixels(row + x, sum, maxValue);
        return;
    }
    uint16_t last[kLanes];
    StorePixels(last, sum, maxValue);
    for (int32_t i = 0; x + i < width; ++i) row[x + i] = last[i];
}

TARGET void MakeFourRows(const double* const* rows, const double* taps, int32_t size, uint16_t* out,
                         int32_t width, int32_t maxValue) {
    for (int32_t x = 0; x < width; x += kColumnVectors * kLanes) {
        Vector sums[kRowsAtOnce][kColumnVectors];
        FilterFourRows(rows, x, taps, size, sums);
#pragma GCC unroll 4
        for (int32_t j = 0; j < kRowsAtOnce; ++j) {
            uint16_t* row = out + static_cast<size_t>(j) * static_cast<size_t>(width);
#pragma GCC unroll 4
            for (int32_t v = 0; v < kColumnVectors; ++v) {
                const int32_t column = x + v * kLanes;
                if (column < width) StoreResult(row, column, width, sums[j][v], maxValue);
            }
        }
    }
}

TARGET void MakeOneRow(const double* const* rows, const double* taps, int32_t size, uint16_t* out,
                       int32_t width, int32_t maxValue) {
    for (int32_t x = 0; x < width; x += kLanes) {
        Vector sum = Zero();
        for (int32_t k = 0; k < size; ++k) sum = MultiplyAdd(sum, Load(rows[k] + x), Broadcast(taps[k]));
        StoreResult(out, x, width, sum, maxValue);
    }
}

TARGET void WidenPixels(const uint16_t* pixels, int32_t count, double* out) {
    int32_t x = 0;
    for (; x + kLanes <= count; x += kLanes) Store(out + x, LoadPixels(pixels + x));
    for (; x < count; ++x) out[x] = pixels[x];
}

constexpr FilterKernels kKernels = {FilterLine, MakeFourRows, MakeOneRow, WidenPixels,
                                    kLanes*(kRowVectors > kRowsAtOnce ? kRowVectors : kRowsAtOnce)};

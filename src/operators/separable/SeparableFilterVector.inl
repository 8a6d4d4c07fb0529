// SPDX-License-Identifier: Apache-2.0

// The fast form of FilterFrame, once for each instruction set. The file that includes it defines the macro
// TARGET and, in an unnamed namespace, Vector, kLanes, kColumnVectors, Zero, Load, Store, Broadcast,
// MultiplyAdd, Shifted, LoadPixels, LoadPairs and StorePixels.
//
// Lanes are neighbouring pixels, so each pixel is summed in the order of the definition and no bit can
// differ. Rows are filtered just ahead of the columns that read them, into a ring of so many rows as the
// kernel is high; no image of doubles exists. Four rows of the result are made at once, so that a filtered
// row is loaded once for four taps.

// Rows of the result that are made together.
constexpr int32_t kRowsAtOnce = 4;
// Vectors of a row that are filtered together: enough sums to hide the latency of one.
constexpr int32_t kRowVectors = 8;
// The same where one row of the result is made.
constexpr int32_t kOneRowVectors = 4;

// Adds the taps from `place` on of the first `count` to kRowVectors sums. Tap 0 sees the vectors from `line`
// on, which are `whole`, tap 1 those one place further, and so on.
//
// A load that is split by the end of a line of the cache takes twice as long, and of the widest vectors all
// are but tap 0's. So some are put together from the two whole ones that they lie in. With three of eight the
// units that shift and those that load are about as long busy.
template <int32_t place>
[[gnu::always_inline]] TARGET inline void AddTaps(const double* line, const Vector* whole, const double* taps,
                                                  int32_t count, Vector* sums) {
    constexpr int32_t kShiftedOf = 3;
    if constexpr (place < kLanes) {
        if (place >= count) return;
        const Vector tap = Broadcast(taps[place]);
#pragma GCC unroll 8
        for (int32_t v = 0; v < kRowVectors; ++v) {
            const double* from = line + place + v * kLanes;
            if constexpr (place == 0) {
                sums[v] = MultiplyAdd(sums[v], whole[v], tap);
            } else if (v % kShiftedOf == 0) {
                sums[v] = MultiplyAdd(sums[v], Shifted<place>(from, whole[v], whole[v + 1]), tap);
            } else {
                sums[v] = MultiplyAdd(sums[v], Load(from), tap);
            }
        }
        AddTaps<place + 1>(line, whole, taps, count, sums);
    }
}

// Filters `count` places of a line; `line` begins `half` places before the first and is readable, as `out` is
// writable, up to the next multiple of kLanes.
TARGET void FilterLine(const double* line, int32_t count, const double* taps, int32_t size, double* out) {
    int32_t x = 0;
    for (; x + kRowVectors * kLanes <= count; x += kRowVectors * kLanes) {
        Vector sums[kRowVectors];
#pragma GCC unroll 8
        for (int32_t v = 0; v < kRowVectors; ++v) sums[v] = Zero();
        for (int32_t k = 0; k < size; k += kLanes) {
            Vector whole[kRowVectors];
#pragma GCC unroll 8
            for (int32_t v = 0; v < kRowVectors; ++v) whole[v] = Load(line + x + k + v * kLanes);
            AddTaps<0>(line + x + k, whole, taps + k, size - k, sums);
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
    // The taps that the rows of the result see a filtered row with; each row takes them over from the one
    // above it.
    Vector tapOf[kRowsAtOnce];
#pragma GCC unroll 4
    for (int32_t j = 0; j < kRowsAtOnce - 1; ++j) tapOf[j] = Broadcast(taps[kRowsAtOnce - 2 - j]);
    for (int32_t r = kRowsAtOnce - 1; r < size; ++r) {
        Vector values[kColumnVectors];
#pragma GCC unroll 4
        for (int32_t v = 0; v < kColumnVectors; ++v) values[v] = Load(rows[r] + x + v * kLanes);
#pragma GCC unroll 4
        for (int32_t j = kRowsAtOnce - 1; j > 0; --j) tapOf[j] = tapOf[j - 1];
        tapOf[0] = Broadcast(taps[r]);
#pragma GCC unroll 4
        for (int32_t j = 0; j < kRowsAtOnce; ++j) {
#pragma GCC unroll 4
            for (int32_t v = 0; v < kColumnVectors; ++v)
                sums[j][v] = MultiplyAdd(sums[j][v], values[v], tapOf[j]);
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

// Makes `vectors` vectors of one row of the result, side by side.
template <int32_t vectors>
TARGET inline void MakeRowBlock(const double* const* rows, const double* taps, int32_t size, uint16_t* out,
                                int32_t x, int32_t width, int32_t maxValue) {
    Vector sums[static_cast<size_t>(vectors)];
#pragma GCC unroll 8
    for (int32_t v = 0; v < vectors; ++v) sums[v] = Zero();
    for (int32_t k = 0; k < size; ++k) {
        const Vector tap = Broadcast(taps[k]);
#pragma GCC unroll 8
        for (int32_t v = 0; v < vectors; ++v)
            sums[v] = MultiplyAdd(sums[v], Load(rows[k] + x + v * kLanes), tap);
    }
#pragma GCC unroll 8
    for (int32_t v = 0; v < vectors; ++v) StoreResult(out, x + v * kLanes, width, sums[v], maxValue);
}

TARGET void MakeOneRow(const double* const* rows, const double* taps, int32_t size, uint16_t* out,
                       int32_t width, int32_t maxValue) {
    int32_t x = 0;
    for (; x + kOneRowVectors * kLanes <= width; x += kOneRowVectors * kLanes) {
        MakeRowBlock<kOneRowVectors>(rows, taps, size, out, x, width, maxValue);
    }
    for (; x < width; x += kLanes) MakeRowBlock<1>(rows, taps, size, out, x, width, maxValue);
}

TARGET void WidenPixels(const uint16_t* pixels, int32_t count, double* out) {
    int32_t x = 0;
    for (; x + kLanes <= count; x += kLanes) Store(out + x, LoadPixels(pixels + x));
    for (; x < count; ++x) out[x] = pixels[x];
}

TARGET void SplitPixels(const uint16_t* pixels, int32_t count, double* firsts, double* seconds) {
    int32_t i = 0;
    for (; i + kLanes <= count; i += kLanes) {
        Vector first;
        Vector second;
        LoadPairs(pixels + 2 * i, first, second);
        Store(firsts + i, first);
        Store(seconds + i, second);
    }
    for (; i < count; ++i) {
        firsts[i] = pixels[2 * i];
        seconds[i] = pixels[2 * i + 1];
    }
}

// Filters `vectors` vectors of even places, side by side. Tap k of place 2 * x sits on place 2 * x + k.
template <int32_t vectors>
TARGET inline void FilterEvenBlock(const double* evens, const double* odds, const double* taps, int32_t size,
                                   double* out) {
    Vector sums[static_cast<size_t>(vectors)];
#pragma GCC unroll 8
    for (int32_t v = 0; v < vectors; ++v) sums[v] = Zero();
    for (int32_t k = 0; k < size; ++k) {
        const Vector tap = Broadcast(taps[k]);
        const double* line = (k % 2 == 0 ? evens : odds) + k / 2;
#pragma GCC unroll 8
        for (int32_t v = 0; v < vectors; ++v) sums[v] = MultiplyAdd(sums[v], Load(line + v * kLanes), tap);
    }
#pragma GCC unroll 8
    for (int32_t v = 0; v < vectors; ++v) Store(out + v * kLanes, sums[v]);
}

TARGET void FilterEvenPlaces(const double* evens, const double* odds, int32_t count, const double* taps,
                             int32_t size, double* out) {
    int32_t x = 0;
    for (; x + kRowVectors * kLanes <= count; x += kRowVectors * kLanes) {
        FilterEvenBlock<kRowVectors>(evens + x, odds + x, taps, size, out + x);
    }
    for (; x < count; x += kLanes) FilterEvenBlock<1>(evens + x, odds + x, taps, size, out + x);
}

constexpr FilterKernels kKernels = {FilterLine,
                                    MakeFourRows,
                                    MakeOneRow,
                                    WidenPixels,
                                    SplitPixels,
                                    FilterEvenPlaces,
                                    kLanes*(kRowVectors > kRowsAtOnce ? kRowVectors : kRowsAtOnce)};

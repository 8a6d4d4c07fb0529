// SPDX-License-Identifier: Apache-2.0

// The kernels of the fast local deviation and the blending, once for each instruction set: the including file
// defines TARGET and the lanes of pixels. What is left beside whole vectors takes the same steps one by one.
// Of loops over whole numbers the compiler makes the vectors.

// A seventh of `sum`, with the very bits of a division by 7, at less than half of its cost. The remainder
// 7 * seventh - sum is formed without rounding, for in both differences neither number is above twice the
// other. After it is taken off, the error is 2^-50 of the last place, while no double has a seventh within
// 1/28 of the last place of a rounding border.
template <typename Value>
TARGET inline Value SeventhOf(Value sum, Value seventh, Value eight) {
    const Value quotient = sum * seventh;
    const Value remainder = (quotient * eight - sum) - quotient;
    return quotient - remainder * seventh;
}

// The same of a whole number below 2^35. kHighOfSeventh has 18 bits, so its product is exact, and the rest of
// a seventh is 2^-18 of it: the sum is off by 2^-70 before its one rounding.
constexpr double kHighOfSeventh = 149796.0 / 1048576.0;
constexpr double kLowOfSeventh = 4.0 / 7.0 / 1048576.0;  // 1048576 - 7 * 149796 is 4
template <typename Value>
TARGET inline Value SeventhOfWhole(Value sum, Value high, Value low) {
    return sum * high + sum * low;
}

static_assert(kDeviationRadius == 3, "seven neighbours are added by name");

// Seven integers of 32 bits: the sum of squares is exact.
TARGET void MeanOfRow(const uint16_t* __restrict row, size_t count, RowScratch& scratch,
                      double* __restrict means, double* __restrict squareMeans) {
    double* __restrict squares = scratch.wideSquares.data();
    for (size_t x = 0; x < count + 2 * kDeviationRadius; ++x)
        squares[x] = static_cast<int32_t>(uint32_t{row[x]} * row[x]);
    for (size_t x = 0; x < count; ++x) {
        const int32_t sum =
            row[x] + row[x + 1] + row[x + 2] + row[x + 3] + row[x + 4] + row[x + 5] + row[x + 6];
        means[x] = SeventhOfWhole<double>(sum, kHighOfSeventh, kLowOfSeventh);
    }
    for (size_t x = 0; x < count; ++x) {
        const double sum = squares[x] + squares[x + 1] + squares[x + 2] + squares[x + 3] + squares[x + 4] +
                           squares[x + 5] + squares[x + 6];
        squareMeans[x] = SeventhOfWhole(sum, kHighOfSeventh, kLowOfSeventh);
    }
}

// A window of seven is three pairs and one more.
TARGET inline Doubles MeanOfSeven(const int32_t* single, const int32_t* pairs) {
    const Ints low = AddInts(LoadInts(pairs), LoadInts(pairs + 2));
    const Ints high = AddInts(LoadInts(pairs + 4), LoadInts(single + 6));
    return SeventhOfWhole(Widen(AddInts(low, high)), Broadcast(kHighOfSeventh), Broadcast(kLowOfSeventh));
}

// Seven squares of such pixels are below 2^31.
static_assert(7 * int64_t{kTopNarrowPixel} * kTopNarrowPixel <= INT32_MAX);
TARGET void MeanOfNarrowRow(const uint16_t* __restrict row, size_t count, RowScratch& scratch,
                            double* __restrict means, double* __restrict squareMeans) {
    int32_t* __restrict pixels = scratch.pixels.data();
    int32_t* __restrict pairs = scratch.pairs.data();
    int32_t* __restrict squares = scratch.squares.data();
    int32_t* __restrict squarePairs = scratch.squarePairs.data();
    const size_t end = count + 2 * kDeviationRadius;
    for (size_t x = 0; x < end; ++x) {
        const int32_t pixel = row[x];
        pixels[x] = pixel;
        squares[x] = pixel * pixel;
    }
    for (size_t x = 0; x < end - 1; ++x) {
        pairs[x] = pixels[x] + pixels[x + 1];
        squarePairs[x] = squares[x] + squares[x + 1];
    }
    // The strip's rows hold whole vectors.
    for (size_t x = 0; x < count; x += kLanes) {
        StoreDoubles(means + x, MeanOfSeven(pixels + x, pairs + x));
        StoreDoubles(squareMeans + x, MeanOfSeven(squares + x, squarePairs + x));
    }
}

static_assert(kStripColumns % kLanes == 0);
TARGET void MakeVariances(const ColumnSums& pixels, const ColumnSums& squares, size_t count,
                          double* variances) {
    const Doubles seventh = Broadcast(1.0 / 7.0);
    const Doubles eight = Broadcast(8.0);
    for (size_t x = 0; x < count; x += kLanes) {
        const Doubles sums = (LoadDoubles(pixels.sums + x) - LoadDoubles(pixels.leaving + x)) +
                             LoadDoubles(pixels.entering + x);
        const Doubles squareSums = (LoadDoubles(squares.sums + x) - LoadDoubles(squares.leaving + x)) +
                                   LoadDoubles(squares.entering + x);
        StoreDoubles(pixels.sums + x, sums);
        StoreDoubles(squares.sums + x, squareSums);
        const Doubles mean = SeventhOf(sums, seventh, eight);
        StoreDoubles(variances + x, SeventhOf(squareSums, seventh, eight) - mean * mean);
    }
}

TARGET void KeepLargest(const double* __restrict variances, size_t count, double* __restrict largest) {
    for (size_t x = 0; x < count; ++x) largest[x] = variances[x] > largest[x] ? variances[x] : largest[x];
}

TARGET inline Ints LevelsOf(const double* variances, Doubles largest) {
    const Doubles deviations = RootOf(Greatest(LoadDoubles(variances), Broadcast(0.0)));
    return Truncate(deviations / largest * Broadcast(kTopDeviationLevel));
}

TARGET void QuantiseRow(const double* variances, size_t count, double largestDeviation, uint16_t* levels) {
    const Doubles largest = Broadcast(largestDeviation);
    size_t x = 0;
    for (; x + kLanes <= count; x += kLanes) StorePixels(levels + x, LevelsOf(variances + x, largest));
    if (x == count) return;
    uint16_t last[kLanes];
    StorePixels(last, LevelsOf(variances + x, largest));
    for (size_t i = 0; x + i < count; ++i) levels[x + i] = last[i];
}

// No result leaves 32 bits, so this is the conversion of the definition.
TARGET void Blend(const BlendCall& call) {
    const auto count = static_cast<size_t>(call.count);
    const Doubles one = Broadcast(1.0);
    size_t i = 0;
    for (; i + kLanes <= count; i += kLanes) {
        const Doubles weights = LookUp(call.weights.data(), call.levels + i);
        const Doubles mixed = Widen(LoadPixels(call.smooth + i)) * (one - weights) +
                              Widen(LoadPixels(call.pixels + i)) * weights;
        StorePixels(call.pixels + i, Truncate(mixed));
    }
    BlendByLevelScalar(
        {call.pixels + i, call.smooth + i, call.levels + i, call.weights, static_cast<int64_t>(count - i)});
}

constexpr DeviationKernels kKernels = {MeanOfRow, MeanOfNarrowRow, MakeVariances, KeepLargest, QuantiseRow};

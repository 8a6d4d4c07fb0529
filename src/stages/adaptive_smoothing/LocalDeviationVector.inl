// The kernels of the fast local deviation and the blending, once for each instruction set. The file that
// includes it defines the macro TARGET and, in an unnamed namespace, Vector, kLanes, Load, Store, Broadcast,
// Divide, Multiply, RootAboveZero and StoreLevels. Most loops are plain: the compiler makes the vectors. Only
// the root is asked for by name, since the library's own may have to report an error and so stays scalar.

// A seventh of `sum`, with the very bits of a division by 7, at less than half of its cost. The remainder
// 7 * seventh - sum is formed without rounding, for in both differences neither number is above twice the
// other. After it is taken off, the error is 2^-50 of the last place, while no double has a seventh within
// 1/28 of the last place of a rounding border.
TARGET inline double SeventhOf(double sum) {
    constexpr double kSeventh = 1.0 / 7.0;
    const double seventh = sum * kSeventh;
    const double remainder = (seventh * 8.0 - sum) - seventh;
    return seventh - remainder * kSeventh;
}

static_assert(kDeviationRadius == 3, "seven neighbours are added by name");

TARGET void MeanOfRow(const uint16_t* __restrict row, int32_t count, double* __restrict squares,
                      double* __restrict means, double* __restrict squareMeans) {
    for (int32_t x = 0; x < count + 2 * kDeviationRadius; ++x)
        squares[x] = static_cast<int32_t>(uint32_t{row[x]} * row[x]);
    for (int32_t x = 0; x < count; ++x) {
        const int32_t sum =
            row[x] + row[x + 1] + row[x + 2] + row[x + 3] + row[x + 4] + row[x + 5] + row[x + 6];
        means[x] = SeventhOf(sum);
    }
    // Seven integers of 32 bits: the sum is exact.
    for (int32_t x = 0; x < count; ++x) {
        const double sum = squares[x] + squares[x + 1] + squares[x + 2] + squares[x + 3] + squares[x + 4] +
                           squares[x + 5] + squares[x + 6];
        squareMeans[x] = SeventhOf(sum);
    }
}

TARGET void MakeVariances(const ColumnSums& pixels, const ColumnSums& squares, int32_t count,
                          double* __restrict variances) {
    double* __restrict sums = pixels.sums;
    const double* __restrict leaving = pixels.leaving;
    const double* __restrict entering = pixels.entering;
    double* __restrict squareSums = squares.sums;
    const double* __restrict leavingSquares = squares.leaving;
    const double* __restrict enteringSquares = squares.entering;
    for (int32_t x = 0; x < count; ++x) {
        sums[x] = (sums[x] - leaving[x]) + entering[x];
        squareSums[x] = (squareSums[x] - leavingSquares[x]) + enteringSquares[x];
        const double mean = SeventhOf(sums[x]);
        variances[x] = SeventhOf(squareSums[x]) - mean * mean;
    }
}

TARGET void KeepLargest(const double* __restrict variances, int32_t count, double* __restrict largest) {
    for (int32_t x = 0; x < count; ++x) largest[x] = variances[x] > largest[x] ? variances[x] : largest[x];
}

TARGET void QuantiseRow(const double* variances, int32_t count, double largestDeviation, uint16_t* levels) {
    const Vector largest = Broadcast(largestDeviation);
    const Vector top = Broadcast(kTopDeviationLevel);
    int32_t x = 0;
    for (; x + kLanes <= count; x += kLanes) {
        StoreLevels(levels + x, Multiply(Divide(RootAboveZero(Load(variances + x)), largest), top));
    }
    if (x == count) return;
    double rest[kLanes] = {};
    uint16_t last[kLanes];
    for (int32_t i = 0; x + i < count; ++i) rest[i] = variances[x + i];
    StoreLevels(last, Multiply(Divide(RootAboveZero(Load(rest)), largest), top));
    for (int32_t i = 0; x + i < count; ++i) levels[x + i] = last[i];
}

TARGET void Blend(const BlendCall& call) {
    uint16_t* __restrict pixels = call.pixels;
    const uint16_t* __restrict smooth = call.smooth;
    const uint16_t* __restrict levels = call.levels;
    const double* __restrict weights = call.weights.data();
    for (int64_t i = 0; i < call.count; ++i) {
        const double weight = weights[levels[i]];
        const double mixed = smooth[i] * (1.0 - weight) + pixels[i] * weight;
        // No result leaves 32 bits, so this is the conversion of the definition.
        pixels[i] = static_cast<uint16_t>(static_cast<int32_t>(mixed));
    }
}

constexpr DeviationKernels kKernels = {MeanOfRow, MakeVariances, KeepLargest, QuantiseRow};

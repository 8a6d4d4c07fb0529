// SPDX-License-Identifier: Apache-2.0

// The fast form of the fusion's kernels, once for each instruction set. The file that includes it defines the
// macro TARGET and, in an unnamed namespace, Vector, kLanes, Load, Store, Broadcast, Add, Subtract, Multiply,
// Lowest, Highest, LoadPixels, and for doubles Wide, kWideLanes, LoadWide, StoreWide, BroadcastWide, AddWide,
// SubtractWide, MultiplyWide, DivideWide, LoadWidePixels, LoadWideFloats and StorePixels.
//
// Lanes are neighbouring pixels; multiply and add stay two instructions. What is left over at the end of a
// row is done by the reference.

// Vectors of a row that are summed together: enough sums to hide the latency of one.
constexpr int32_t kVectors = 4;

TARGET void WidenRow(const uint16_t* pixels, int32_t offset, int32_t count, float* out) {
    const Vector offsets = Broadcast(static_cast<float>(offset));
    int32_t x = 0;
    for (; x + kLanes <= count; x += kLanes) Store(out + x, Subtract(LoadPixels(pixels + x), offsets));
    kFusionKernelsScalar.widenRow(pixels + x, offset, count - x, out + x);
}

// Pixels and offsets are whole numbers below 2^24, so their difference is exact in floats, too.
TARGET inline Vector Mix(const uint16_t* a, const uint16_t* b, const FusionMix& mix) {
    const Vector first = Subtract(LoadPixels(a), Broadcast(static_cast<float>(mix.firstOffset)));
    const Vector second = Subtract(LoadPixels(b), Broadcast(static_cast<float>(mix.secondOffset)));
    return Add(Multiply(first, Broadcast(mix.first)), Multiply(second, Broadcast(mix.second)));
}

TARGET void MixRows(const uint16_t* a, const uint16_t* b, const FusionMix& mix, int32_t count, float* out) {
    int32_t x = 0;
    for (; x + kLanes <= count; x += kLanes) Store(out + x, Mix(a + x, b + x, mix));
    kFusionKernelsScalar.mixRows(a + x, b + x, mix, count - x, out + x);
}

template <int32_t vectors>
TARGET inline void CombineRowsAt(const float* const* rows, const float* weights, int32_t taps, int32_t x,
                                 float* out) {
    Vector sums[static_cast<size_t>(vectors)];
#pragma GCC unroll 4
    for (int32_t v = 0; v < vectors; ++v) sums[v] = Broadcast(0);
    for (int32_t t = 0; t < taps; ++t) {
        const Vector weight = Broadcast(weights[t]);
        const float* row = rows[t] + x;
#pragma GCC unroll 4
        for (int32_t v = 0; v < vectors; ++v) {
            sums[v] = Add(sums[v], Multiply(Load(row + v * kLanes), weight));
        }
    }
#pragma GCC unroll 4
    for (int32_t v = 0; v < vectors; ++v) Store(out + x + v * kLanes, sums[v]);
}

TARGET void CombineRows(const float* const* rows, const float* weights, int32_t taps, int32_t count,
                        float* out) {
    int32_t x = 0;
    for (; x + kVectors * kLanes <= count; x += kVectors * kLanes) {
        CombineRowsAt<kVectors>(rows, weights, taps, x, out);
    }
    for (; x + kLanes <= count; x += kLanes) CombineRowsAt<1>(rows, weights, taps, x, out);
    for (; x < count; ++x) {
        float sum = 0;
        for (int32_t t = 0; t < taps; ++t) sum += rows[t][x] * weights[t];
        out[x] = sum;
    }
}

template <int32_t vectors>
TARGET inline void CombinePairsAt(const float* const* rows, const float* weights, int32_t pairs, int32_t x,
                                  float* out) {
    Vector sums[static_cast<size_t>(vectors)];
#pragma GCC unroll 4
    for (int32_t v = 0; v < vectors; ++v) sums[v] = Broadcast(0);
    for (int32_t k = 0; k < pairs; ++k) {
        const Vector weight = Broadcast(weights[k]);
        const float* const* both = rows + ptrdiff_t{2} * k;
        const float* before = both[0] + x;
        const float* after = both[1] + x;
#pragma GCC unroll 4
        for (int32_t v = 0; v < vectors; ++v) {
            const Vector pair = Add(Load(before + v * kLanes), Load(after + v * kLanes));
            sums[v] = Add(sums[v], Multiply(pair, weight));
        }
    }
#pragma GCC unroll 4
    for (int32_t v = 0; v < vectors; ++v) Store(out + x + v * kLanes, sums[v]);
}

TARGET void CombinePairs(const float* const* rows, const float* weights, int32_t pairs, int32_t count,
                         float* out) {
    int32_t x = 0;
    for (; x + kVectors * kLanes <= count; x += kVectors * kLanes) {
        CombinePairsAt<kVectors>(rows, weights, pairs, x, out);
    }
    for (; x + kLanes <= count; x += kLanes) CombinePairsAt<1>(rows, weights, pairs, x, out);
    for (; x < count; ++x) {
        float sum = 0;
        for (int32_t k = 0; k < pairs; ++k) {
            const float* const* pair = rows + ptrdiff_t{2} * k;
            sum += (pair[0][x] + pair[1][x]) * weights[k];
        }
        out[x] = sum;
    }
}

TARGET void SumLayers(const uint16_t* a, const uint16_t* b, const FusionMix& mix, const float* fine,
                      int32_t count, float* out, FusionRange& range) {
    Vector lowest = Broadcast(range.lowest);
    Vector highest = Broadcast(range.highest);
    int32_t x = 0;
    for (; x + kLanes <= count; x += kLanes) {
        const Vector rest = Subtract(Mix(a + x, b + x, mix), Load(fine + x));
        const Vector sum = Subtract(rest, Load(out + x));
        // The second operand stays where the first is not a number.
        lowest = Lowest(sum, lowest);
        highest = Highest(sum, highest);
        Store(out + x, sum);
    }
    float ends[2][kLanes];
    Store(ends[0], lowest);
    Store(ends[1], highest);
    for (int32_t i = 0; i < kLanes; ++i) {
        range.lowest = std::min(range.lowest, ends[0][i]);
        range.highest = std::max(range.highest, ends[1][i]);
    }
    kFusionKernelsScalar.sumLayers(a + x, b + x, mix, fine + x, count - x, out + x, range);
}

TARGET void TurnRow(const uint16_t* pixels, const double* cosines, const double* sines, int32_t count,
                    double* sums) {
    constexpr int32_t kWides = kPartialTurns / kWideLanes;
    Wide real[static_cast<size_t>(kWides)];
    Wide imaginary[static_cast<size_t>(kWides)];
#pragma GCC unroll 4
    for (int32_t v = 0; v < kWides; ++v) real[v] = imaginary[v] = BroadcastWide(0);
    for (int32_t x = 0; x + kPartialTurns <= count; x += kPartialTurns) {
#pragma GCC unroll 4
        for (int32_t v = 0; v < kWides; ++v) {
            const int32_t place = x + v * kWideLanes;
            const Wide values = LoadWidePixels(pixels + place);
            real[v] = AddWide(real[v], MultiplyWide(LoadWide(cosines + place), values));
            imaginary[v] = AddWide(imaginary[v], MultiplyWide(LoadWide(sines + place), values));
        }
    }
#pragma GCC unroll 4
    for (int32_t v = 0; v < kWides; ++v) {
        StoreWide(sums + v * kWideLanes, real[v]);
        StoreWide(sums + kPartialTurns + v * kWideLanes, imaginary[v]);
    }
}

TARGET void TurnRowPair(const uint16_t* above, const uint16_t* below, double cosine, double sine,
                        int32_t count, double* real, double* imaginary) {
    const Wide cosines = BroadcastWide(cosine);
    const Wide sines = BroadcastWide(sine);
    int32_t x = 0;
    for (; x + kWideLanes <= count; x += kWideLanes) {
        const Wide upper = LoadWidePixels(above + x);
        const Wide lower = LoadWidePixels(below + x);
        StoreWide(real + x, AddWide(LoadWide(real + x), MultiplyWide(cosines, AddWide(upper, lower))));
        StoreWide(imaginary + x,
                  AddWide(LoadWide(imaginary + x), MultiplyWide(sines, SubtractWide(upper, lower))));
    }
    kFusionKernelsScalar.turnRowPair(above + x, below + x, cosine, sine, count - x, real + x, imaginary + x);
}

TARGET void StretchRow(const float* sums, const FusionStretch& stretch, int32_t count, uint16_t* out) {
    int32_t x = 0;
    for (; x + kWideLanes <= count; x += kWideLanes) {
        const Wide shifted = AddWide(LoadWideFloats(sums + x), BroadcastWide(stretch.shift));
        const Wide share = DivideWide(shifted, BroadcastWide(stretch.largest));
        const Wide stretched =
            AddWide(MultiplyWide(share, BroadcastWide(stretch.range)), BroadcastWide(stretch.low));
        StorePixels(out + x, MultiplyWide(BroadcastWide(kFusionScale), stretched), stretch);
    }
    kFusionKernelsScalar.stretchRow(sums + x, stretch, count - x, out + x);
}

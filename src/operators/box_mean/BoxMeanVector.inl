// SPDX-License-Identifier: Apache-2.0

// The inner loops of the box mean, once for each instruction set: the including file defines TARGET and what
// is done with vectors of sums, WideLanes of 32 bits and NarrowLanes of 16. A running sum is a prefix sum of
// what enters less what leaves; numbers wrap on the way, and the sums themselves fit their lanes.

template <typename Lanes>
TARGET void MeanLine(typename Lanes::Sum sum, const uint16_t* entering, const uint16_t* leaving,
                     int32_t count, WindowDivision division, uint16_t* means) {
    const Divider divider = Lanes::MakeDivider(division);
    Vector carried = Lanes::Broadcast(sum);
    for (int32_t i = 0; i < count; i += Lanes::kCount) {
        const Vector changes =
            Lanes::Subtract(Lanes::LoadPixels(entering + i), Lanes::LoadPixels(leaving + i));
        const Vector moved = Lanes::PrefixSums(changes);
        Lanes::StorePixels(means + i, Lanes::Divide(Lanes::Add(moved, carried), divider));
        // Not the last lane of the sum above: each step would then wait for the one before to be spread.
        carried = Lanes::Add(carried, Lanes::BroadcastLast(moved));
    }
}

template <typename Lanes>
TARGET void MeanColumns(typename Lanes::Sum* sums, const uint16_t* entering, const uint16_t* leaving,
                        int32_t count, WindowDivision division, uint16_t* means) {
    using Sum = typename Lanes::Sum;
    const Divider divider = Lanes::MakeDivider(division);
    int32_t x = 0;
    for (; x + Lanes::kCount <= count; x += Lanes::kCount) {
        const Vector changes =
            Lanes::Subtract(Lanes::LoadPixels(entering + x), Lanes::LoadPixels(leaving + x));
        const Vector moved = Lanes::Add(Lanes::Load(sums + x), changes);
        Lanes::Store(sums + x, moved);
        Lanes::StorePixels(means + x, Lanes::Divide(moved, divider));
    }
    for (; x < count; ++x) {
        sums[x] = static_cast<Sum>(sums[x] + static_cast<Sum>(entering[x] - leaving[x]));
        means[x] = DivideByWindow(sums[x], division);
    }
}

constexpr BoxMeanKernels kKernels = {
    {MeanLine<NarrowLanes>, MeanColumns<NarrowLanes>, NarrowLanes::kCount},
    {MeanLine<WideLanes>, MeanColumns<WideLanes>, WideLanes::kCount},
};

// The inner loops of the box mean, once for each instruction set: the including file defines TARGET, the
// vector of 32-bit lanes and what is done with it. A running sum is a prefix sum of what enters less what
// leaves; numbers wrap on the way, and the sums themselves are below 2^31.

TARGET void MeanLine(uint32_t sum, const uint16_t* entering, const uint16_t* leaving, int32_t count,
                     WindowDivision division, uint16_t* means) {
    const Divider divider = MakeDivider(division);
    Vector carried = Broadcast(sum);
    for (int32_t i = 0; i < count; i += kLanes) {
        const Vector changes = Subtract(LoadPixels(entering + i), LoadPixels(leaving + i));
        const Vector moved = PrefixSums(changes);
        StorePixels(means + i, Divide(Add(moved, carried), divider));
        // Not the last lane of the sum above: each step would then wait for the one before to be spread.
        carried = Add(carried, BroadcastLast(moved));
    }
}

TARGET void MeanColumns(uint32_t* sums, const uint16_t* entering, const uint16_t* leaving, int32_t count,
                        WindowDivision division, uint16_t* means) {
    const Divider divider = MakeDivider(division);
    int32_t x = 0;
    for (; x + kLanes <= count; x += kLanes) {
        const Vector changes = Subtract(LoadPixels(entering + x), LoadPixels(leaving + x));
        const Vector moved = Add(Load(sums + x), changes);
        Store(sums + x, moved);
        StorePixels(means + x, Divide(moved, divider));
    }
    for (; x < count; ++x) {
        sums[x] += static_cast<uint32_t>(entering[x] - leaving[x]);
        const uint64_t product = uint64_t{sums[x]} * division.factor;
        means[x] = static_cast<uint16_t>(product >> 32U >> division.shift);
    }
}

constexpr BoxMeanKernels kKernels = {MeanLine, MeanColumns, kLanes};

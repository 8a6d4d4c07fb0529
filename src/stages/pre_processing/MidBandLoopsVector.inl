// SPDX-License-Identifier: Apache-2.0

// The loops of preProcessing, once for each instruction set: the including file defines TARGET and the lanes
// of pixels. Of loops over whole numbers the compiler makes the vectors.

// With its top bit inverted a pixel orders as a number with a sign, the only one that every x86-64 has
// vectors for. Less 1 before, 0 becomes the largest.
TARGET uint16_t FindFloor(const uint16_t* pixels, size_t count, uint16_t start) {
    constexpr uint16_t kTopBit = 0x8000;
    auto smallest = static_cast<int16_t>((start - 1) ^ kTopBit);
    for (size_t i = 0; i < count; ++i) {
        const auto pixel = static_cast<int16_t>((pixels[i] - 1) ^ kTopBit);
        smallest = pixel < smallest ? pixel : smallest;
    }
    return static_cast<uint16_t>((static_cast<uint16_t>(smallest) ^ kTopBit) + 1);
}

TARGET void Subtract(const uint16_t* __restrict first, const uint16_t* __restrict base, size_t count,
                     uint16_t* __restrict detail) {
    for (size_t i = 0; i < count; ++i) detail[i] = static_cast<uint16_t>(first[i] - base[i]);
}

TARGET void Boost(uint16_t* pixels, const uint16_t* smoothed, size_t count, int32_t maxValue, double gain) {
    const Ints top = BroadcastInt(maxValue);
    const Doubles gains = Broadcast(gain);
    size_t i = 0;
    for (; i + kLanes <= count; i += kLanes) {
        const Ints base = LoadPixels(smoothed + i);
        const Doubles difference = Widen(SubtractInts(LoadPixels(pixels + i), base));
        StorePixels(pixels + i, ClampInts(Truncate(Widen(base) + difference * gains), top));
    }
    kMidBandLoopsScalar.boost(pixels + i, smoothed + i, count - i, maxValue, gain);
}

TARGET void AddFine(uint16_t* __restrict pixels, const uint16_t* __restrict smoothed,
                    const uint16_t* __restrict boosted, size_t count, int32_t maxValue) {
    for (size_t i = 0; i < count; ++i) {
        const int32_t sum = boosted[i] + (pixels[i] - smoothed[i]);
        const int32_t lowered = sum > maxValue ? maxValue : sum;
        pixels[i] = static_cast<uint16_t>(lowered < 0 ? 0 : lowered);
    }
}

TARGET void Finish(const uint16_t* __restrict base, uint16_t* __restrict detail, size_t count,
                   int32_t maxValue, uint16_t floor) {
    for (size_t i = 0; i < count; ++i) {
        const int32_t sum = base[i] + detail[i];
        const int32_t kept = (sum > maxValue ? base[i] : sum) & 0xFFFF;
        detail[i] = static_cast<uint16_t>(kept < floor ? floor : kept);
    }
}

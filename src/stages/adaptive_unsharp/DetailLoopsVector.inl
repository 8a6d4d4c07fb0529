// SPDX-License-Identifier: Apache-2.0

// The loops of sharpening, once for each instruction set: the including file defines TARGET and the lanes of
// pixels. Loops over doubles are lanes of the definition, and what is left at the end runs the definition
// itself; of loops over whole numbers the compiler makes the vectors.

TARGET void BlendByEdges(const EdgeBlendCall& call) {
    const Ints top = BroadcastInt(call.maxValue);
    size_t i = 0;
    for (; i + kLanes <= call.count; i += kLanes) {
        const Ints base = LoadPixels(call.base + i);
        const Doubles detail = Widen(SubtractInts(LoadPixels(call.original + i), base));
        const Doubles sharpened = Widen(base) + detail * LookUp(call.gains.data(), call.pixels + i);
        StorePixels(call.pixels + i, ClampInts(Truncate(sharpened), top));
    }
    kDetailLoopsScalar.blendByEdges(
        {call.pixels + i, call.original + i, call.base + i, call.count - i, call.maxValue, call.gains});
}

TARGET void ScaleDetail(const uint16_t* __restrict pixels, const uint16_t* __restrict smooth, size_t count,
                        uint16_t* __restrict detail) {
    for (size_t i = 0; i < count; ++i) {
        const auto difference = static_cast<int16_t>(pixels[i] - smooth[i]);
        const int32_t scaled = difference + kZeroDetail;
        const int32_t raised = scaled < 0 ? 0 : scaled;
        detail[i] = static_cast<uint16_t>(raised > kTopDetail ? kTopDetail : raised);
    }
}

TARGET void AddShapedEverywhere(const ShapedDetailCall& call) {
    const Ints top = BroadcastInt(call.maxValue);
    size_t i = 0;
    for (; i + kLanes <= call.count; i += kLanes) {
        const Doubles sum =
            Widen(LoadPixels(call.smooth + i)) + LookUp(call.enhanced.data(), call.detail + i);
        StorePixels(call.pixels + i, ClampInts(Truncate(sum), top));
    }
    kDetailLoopsScalar.addShaped({call.pixels + i, call.smooth + i, call.detail + i, nullptr, call.count - i,
                                  call.maxValue, call.enhanced});
}

TARGET void AddShapedByMask(const ShapedDetailCall& call) {
    const Ints top = BroadcastInt(call.maxValue);
    const Doubles one = Broadcast(1.0);
    const Doubles topOfMask = Broadcast(255.0);
    size_t i = 0;
    for (; i + kLanes <= call.count; i += kLanes) {
        const Doubles sum =
            Widen(LoadPixels(call.smooth + i)) + LookUp(call.enhanced.data(), call.detail + i);
        const Doubles weight = Least(Widen(LoadPixels(call.mask + i)) / topOfMask, one);
        const Doubles mixed = Widen(LoadPixels(call.pixels + i)) * weight + sum * (one - weight);
        StorePixels(call.pixels + i, ClampInts(Truncate(mixed), top));
    }
    kDetailLoopsScalar.addShaped({call.pixels + i, call.smooth + i, call.detail + i, call.mask + i,
                                  call.count - i, call.maxValue, call.enhanced});
}

TARGET void AddShaped(const ShapedDetailCall& call) {
    if (call.mask == nullptr) {
        AddShapedEverywhere(call);
    } else {
        AddShapedByMask(call);
    }
}

TARGET void AddFinest(uint16_t* __restrict image, const uint16_t* __restrict base,
                      const uint16_t* __restrict shaped, size_t count, int32_t maxValue) {
    for (size_t i = 0; i < count; ++i) {
        const int32_t sum = shaped[i] + (image[i] - base[i]);
        const int32_t lowered = sum > maxValue ? maxValue : sum;
        image[i] = static_cast<uint16_t>(lowered < 0 ? 0 : lowered);
    }
}

TARGET void TakeMagnitude(uint16_t* __restrict band, const uint16_t* __restrict wide, size_t count) {
    for (size_t i = 0; i < count; ++i) {
        const int32_t difference = band[i] - wide[i];
        band[i] = static_cast<uint16_t>(difference < 0 ? -difference : difference);
    }
}

TARGET void ClampToLevels(uint16_t* pixels, size_t count, uint16_t low, uint16_t high) {
    for (size_t i = 0; i < count; ++i) {
        const uint16_t lowered = pixels[i] > high ? high : pixels[i];
        pixels[i] = lowered < low ? low : lowered;
    }
}

// A table's weights by level: loads from it need no offset.
std::vector<double> WeightsFromZero(const WeightTable& table) {
    std::vector<double> weights(static_cast<size_t>(table.base));
    weights.insert(weights.end(), table.values.begin(), table.values.end());
    return weights;
}

TARGET inline Ints DetailOf(const DetailTerm& term, size_t i, Ints pixels, Doubles weights) {
    const Doubles difference = Widen(SubtractInts(pixels, LoadPixels(term.smooth + i)));
    return Truncate(difference * weights * Broadcast(term.gain));
}

TARGET void AddWeighted(const WeightedDetailCall& call) {
    const std::vector<double> brightnessWeights = WeightsFromZero(call.brightnessTable);
    const std::vector<double> activityWeights = WeightsFromZero(call.activityTable);
    const Ints top = BroadcastInt(call.maxValue);
    size_t i = 0;
    for (; i + kLanes <= call.count; i += kLanes) {
        const Ints pixels = LoadPixels(call.pixels + i);
        const Doubles weights = LookUp(brightnessWeights.data(), call.first.smooth + i) *
                                LookUp(activityWeights.data(), call.activity + i);
        Ints detail = DetailOf(call.first, i, pixels, weights);
        if (call.second.smooth != nullptr)
            detail = AddInts(detail, DetailOf(call.second, i, pixels, weights));
        const Ints sum = KeepLowBits16(AddInts(pixels, KeepWhereAboveZero(weights, detail)));
        StorePixels(call.pixels + i, ClampInts(sum, top));
    }
    const DetailTerm second = {call.second.smooth == nullptr ? nullptr : call.second.smooth + i,
                               call.second.gain};
    kDetailLoopsScalar.addWeighted({call.pixels + i,
                                    call.activity + i,
                                    call.count - i,
                                    call.maxValue,
                                    {call.first.smooth + i, call.first.gain},
                                    second,
                                    call.brightnessTable,
                                    call.activityTable});
}

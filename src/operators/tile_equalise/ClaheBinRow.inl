// SPDX-License-Identifier: Apache-2.0

// The bins of a row of levels, once for each instruction set: the including file defines TARGET, and the
// compiler makes the vectors.

template <typename Index>
TARGET void BinRow(const uint16_t* levels, uint32_t count, const BinRule& bins, Index* result) {
    const BinRule rule = bins;  // a copy that `result` cannot change
    for (uint32_t x = 0; x < count; ++x) {
        const auto above = static_cast<uint16_t>(std::clamp(levels[x], rule.min, rule.max) - rule.min);
        const auto product = static_cast<uint16_t>((uint32_t{above} * rule.multiplier) >> 16U);
        const auto rest = static_cast<uint16_t>(static_cast<uint16_t>(above - product) >> rule.firstShift);
        result[x] = static_cast<Index>(static_cast<uint16_t>(product + rest) >> rule.secondShift);
    }
}

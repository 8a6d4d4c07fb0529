// SPDX-License-Identifier: Apache-2.0
#include "operators/tile_equalise/SumDivision.h"

#include <bit>

namespace vastrelline {

SumDivision MakeSumDivision(uint32_t divisor, uint16_t max) {
    const auto log = static_cast<uint32_t>(std::bit_width(divisor - 1));
    if (std::has_single_bit(divisor)) return {DivisionRule::Shift, 0, log};
    if (uint64_t{divisor} * max < uint64_t{1} << 31U) {
        const uint64_t multiplier = ((uint64_t{1} << (31 + log)) + divisor - 1) / divisor;
        return {DivisionRule::Product, static_cast<uint32_t>(multiplier), 31 + log};
    }
    // A multiplier of 33 bits without its top bit, which the rule makes up for.
    const uint64_t multiplier = (((uint64_t{1} << log) - divisor) << 32U) / divisor + 1;
    return {DivisionRule::WideProduct, static_cast<uint32_t>(multiplier), log - 1};
}

}  // namespace vastrelline

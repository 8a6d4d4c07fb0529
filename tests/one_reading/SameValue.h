// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <bit>
#include <cstdint>
#include <variant>

#include "profile/ValueReading.h"

namespace vastrelline {

// The same bits, also of what is not a number.
inline bool IsSameValue(const ReadValue& one, const ReadValue& other) {
    const auto* const oneDouble = std::get_if<double>(&one);
    const auto* const otherDouble = std::get_if<double>(&other);
    if (oneDouble != nullptr && otherDouble != nullptr)
        return std::bit_cast<uint64_t>(*oneDouble) == std::bit_cast<uint64_t>(*otherDouble);
    const auto* const oneFloat = std::get_if<float>(&one);
    const auto* const otherFloat = std::get_if<float>(&other);
    if (oneFloat != nullptr && otherFloat != nullptr)
        return std::bit_cast<uint32_t>(*oneFloat) == std::bit_cast<uint32_t>(*otherFloat);
    return one == other;
}

}  // namespace vastrelline

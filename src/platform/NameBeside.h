// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace vastrelline {

// The name under which the next version of a file is made, in the same folder. It is always the same for one
// file, so that what a killed process left there is found again without a search.
//
// hash    of the file's own name. Files of one folder hardly ever share one; if they do, their writers wait
//         for each other
// length  characters of the file's own name; the new one has no more, since that may be as long as names or
//         paths can be. Only below five it needs five
std::string NameBeside(uint64_t hash, size_t length);

// A hash of a name's characters (FNV-1a), the same in every process. Letters A to Z count as small ones:
// where the cases are not told apart, a file has one such name however it is written.
template <typename Text>
uint64_t HashName(const Text& name) {
    constexpr uint64_t kOffset = 0xCBF29CE484222325U;
    constexpr uint64_t kPrime = 0x100000001B3U;
    uint64_t hash = kOffset;
    for (const auto character : name) {
        const bool isCapital = character >= 'A' && character <= 'Z';
        const auto small = static_cast<uint64_t>(isCapital ? character - 'A' + 'a' : character);
        hash = (hash ^ small) * kPrime;
    }
    return hash;
}

}  // namespace vastrelline

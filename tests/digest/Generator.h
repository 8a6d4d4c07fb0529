// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vastrelline::digest {

// Numbers without order, the same on every machine and with every standard library: the multiply-and-shift
// mixing of a counter (Steele, Lea, Flood, 2014), in whole numbers of 64 bits.
class Generator {
public:
    explicit Generator(uint64_t seed) : state_(seed) {}

    // A seed from a name, so that what is drawn for one name does not depend on other names (FNV-1a).
    explicit Generator(std::string_view name) : state_(0xcbf29ce484222325U) {
        for (const char letter : name) state_ = (state_ ^ static_cast<uint8_t>(letter)) * 0x100000001b3U;
    }

    uint64_t Next() {
        uint64_t mixed = state_ += 0x9e3779b97f4a7c15U;
        mixed = (mixed ^ mixed >> 30U) * 0xbf58476d1ce4e5b9U;
        mixed = (mixed ^ mixed >> 27U) * 0x94d049bb133111ebU;
        return mixed ^ mixed >> 31U;
    }

    // 0 .. bound - 1; bound above 0.
    int32_t Below(int32_t bound) { return static_cast<int32_t>(Next() % static_cast<uint64_t>(bound)); }

    template <typename List>
    const auto& Pick(const List& list) {
        return list[static_cast<size_t>(Next() % list.size())];
    }

private:
    uint64_t state_;
};

}  // namespace vastrelline::digest

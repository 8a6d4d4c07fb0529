// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "profile_text/ProfileEncoding.h"

namespace vastrelline {

// Tells where in a text the first line of each name stands, in a time that does not grow with their number.
// It knows where the names stand and their hashes: whether two names of one hash are the same is for the
// caller to say.
//
// Positions   below 2^32 - 1
class NameTable {
public:
    // Whether the name that stands there is the one in question.
    using IsName = std::function<bool(ByteRange name)>;

    // Takes in the line at a position, unless one of the same name is there already.
    void Add(uint64_t hash, size_t position, ByteRange name, const IsName& isName);

    std::optional<size_t> Find(uint64_t hash, const IsName& isName) const;

private:
    // Small, for a profile may have millions of them.
    struct Slot {
        uint32_t hash = 0;
        uint32_t next = 0;  // one more than the position; 0: the slot is free
        uint32_t nameBegin = 0;
        uint32_t nameEnd = 0;

        bool IsTaken() const { return next > 0; }
        size_t Position() const { return next - 1; }
        ByteRange Name() const { return {nameBegin, nameEnd}; }
    };

    // The slot of the name, or the free one where it belongs. There is always a free one.
    size_t FindSlot(uint32_t hash, const IsName& isName) const;
    void Grow();

    std::vector<Slot> slots_;  // their number is a power of two, or 0
    size_t count_ = 0;         // of the taken ones
};

}  // namespace vastrelline

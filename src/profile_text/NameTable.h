#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace vastrelline {

// Tells where in a text the first line of each name stands, in a time that does not grow with their number.
// It knows the hashes of the names only: whether two names of one hash are the same is for the caller to say.
class NameTable {
public:
    // Whether the line at a position has the name in question.
    using IsNamed = std::function<bool(size_t position)>;

    // Takes in the line at a position, unless one of the same name is there already.
    void Add(uint64_t hash, size_t position, const IsNamed& isNamed);

    std::optional<size_t> Find(uint64_t hash, const IsNamed& isNamed) const;

private:
    struct Slot {
        uint64_t hash = 0;
        size_t next = 0;  // one more than the position; 0: the slot is free

        bool IsTaken() const { return next > 0; }
        size_t Position() const { return next - 1; }
    };

    // The slot of the name, or the free one where it belongs. There is always a free one.
    size_t FindSlot(uint64_t hash, const IsNamed& isNamed) const;
    void Grow();

    std::vector<Slot> slots_;  // their number is a power of two, or 0
    size_t count_ = 0;         // of the taken ones
};

}  // namespace vastrelline

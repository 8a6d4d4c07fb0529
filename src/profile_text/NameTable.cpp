#include "profile_text/NameTable.h"

#include <utility>

namespace vastrelline {

// Open addressing with linear probing (Knuth 1973).

void NameTable::Add(uint64_t hash, size_t position, const IsNamed& isNamed) {
    // At most half of the slots are taken, so that a search meets a free one soon.
    if (2 * (count_ + 1) > slots_.size()) Grow();
    Slot& slot = slots_[FindSlot(hash, isNamed)];
    if (slot.IsTaken()) return;
    slot = {hash, position + 1};
    ++count_;
}

std::optional<size_t> NameTable::Find(uint64_t hash, const IsNamed& isNamed) const {
    if (slots_.empty()) return std::nullopt;
    const Slot& slot = slots_[FindSlot(hash, isNamed)];
    return slot.IsTaken() ? std::optional(slot.Position()) : std::nullopt;
}

size_t NameTable::FindSlot(uint64_t hash, const IsNamed& isNamed) const {
    const size_t mask = slots_.size() - 1;
    size_t index = static_cast<size_t>(hash) & mask;
    while (slots_[index].IsTaken() && (slots_[index].hash != hash || !isNamed(slots_[index].Position())))
        index = (index + 1) & mask;
    return index;
}

void NameTable::Grow() {
    constexpr size_t kFirstSize = 64;
    const std::vector<Slot> old =
        std::exchange(slots_, std::vector<Slot>(slots_.empty() ? kFirstSize : 2 * slots_.size()));
    const IsNamed differs = [](size_t /*position*/) { return false; };  // all names in the table do
    for (const Slot& slot : old) {
        if (slot.IsTaken()) slots_[FindSlot(slot.hash, differs)] = slot;
    }
}

}  // namespace vastrelline

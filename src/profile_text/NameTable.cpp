// SPDX-License-Identifier: Apache-2.0
#include "profile_text/NameTable.h"

#include <utility>

namespace vastrelline {

// Open addressing with linear probing (Knuth 1973).

void NameTable::Add(uint64_t hash, size_t position, ByteRange name, const IsName& isName) {
    // At most half of the slots are taken, so that a search meets a free one soon.
    if (2 * (count_ + 1) > slots_.size()) Grow();
    const auto shortHash = static_cast<uint32_t>(hash);
    Slot& slot = slots_[FindSlot(shortHash, isName)];
    if (slot.IsTaken()) return;
    slot = {shortHash, static_cast<uint32_t>(position + 1), static_cast<uint32_t>(name.begin),
            static_cast<uint32_t>(name.end)};
    ++count_;
}

std::optional<size_t> NameTable::Find(uint64_t hash, const IsName& isName) const {
    if (slots_.empty()) return std::nullopt;
    const Slot& slot = slots_[FindSlot(static_cast<uint32_t>(hash), isName)];
    return slot.IsTaken() ? std::optional(slot.Position()) : std::nullopt;
}

size_t NameTable::FindSlot(uint32_t hash, const IsName& isName) const {
    const size_t mask = slots_.size() - 1;
    size_t index = hash & mask;
    while (slots_[index].IsTaken() && (slots_[index].hash != hash || !isName(slots_[index].Name())))
        index = (index + 1) & mask;
    return index;
}

void NameTable::Grow() {
    constexpr size_t kFirstSize = 64;
    const std::vector<Slot> old =
        std::exchange(slots_, std::vector<Slot>(slots_.empty() ? kFirstSize : 2 * slots_.size()));
    const IsName differs = [](ByteRange /*name*/) { return false; };  // all names in the table do
    for (const Slot& slot : old) {
        if (slot.IsTaken()) slots_[FindSlot(slot.hash, differs)] = slot;
    }
}

}  // namespace vastrelline

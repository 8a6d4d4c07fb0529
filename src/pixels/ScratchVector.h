// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstring>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

#include "pixels/ScratchArena.h"

namespace vastrelline {

// Takes a vector's elements from the shared arena, and leaves those alone that a vector would zero: what is
// overwritten anyway needs no zero before.
template <typename Element>
class ScratchAllocator {
public:
    static_assert(std::is_trivially_copyable_v<Element>);
    using value_type = Element;
    using is_always_equal = std::true_type;

    ScratchAllocator() = default;
    template <typename Other>
    explicit(false) ScratchAllocator(const ScratchAllocator<Other>& /*other*/) noexcept {}

    Element* allocate(size_t count) {
        if (count > std::numeric_limits<size_t>::max() / sizeof(Element)) throw std::bad_array_new_length();
        const size_t bytes = count * sizeof(Element);
        void* const block = ScratchArena::Shared().Take(bytes);
#ifndef NDEBUG
        // What reads an element before it is written shall not find a likely value there.
        constexpr int kUnlikely = 0xA5;
        std::memset(block, kUnlikely, bytes);
#endif
        return static_cast<Element*>(block);
    }

    void deallocate(Element* block, size_t count) noexcept {
        ScratchArena::Shared().Give(block, count * sizeof(Element));
    }

    template <typename Other, typename... Arguments>
    void construct(Other* place, Arguments&&... arguments) {
        if constexpr (sizeof...(Arguments) == 0)
            ::new (static_cast<void*>(place)) Other;
        else
            ::new (static_cast<void*>(place)) Other(std::forward<Arguments>(arguments)...);
    }

    friend bool operator==(const ScratchAllocator&, const ScratchAllocator&) { return true; }
};

// A vector for what is as large as a frame, or as some of its rows. Elements that are given no value have
// any: ScratchVector<uint16_t>(n) is not zeroed, ScratchVector<uint16_t>(n, 0) is.
template <typename Element>
using ScratchVector = std::vector<Element, ScratchAllocator<Element>>;

}  // namespace vastrelline

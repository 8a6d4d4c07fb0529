// SPDX-License-Identifier: Apache-2.0
#include <sys/mman.h>

#include <cassert>
#include <cstddef>
#include <cstdint>

#include "platform/PageMemory.h"

namespace vastrelline {

namespace {

constexpr size_t kLargePage = size_t{1} << 21;

void* Map(size_t bytes) {
    void* const mapped = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return mapped == MAP_FAILED ? nullptr : mapped;
}

}  // namespace

void* MapPages(size_t bytes) {
    assert(bytes % kPageStep == 0);
    if (bytes < kLargePage) return Map(bytes);
    // Large pages begin at multiples of their size: what is too much on either side goes back at once.
    auto* const start = static_cast<std::byte*>(Map(bytes + kLargePage));
    if (start == nullptr) return nullptr;
    const size_t before = (kLargePage - reinterpret_cast<uintptr_t>(start) % kLargePage) % kLargePage;
    std::byte* const block = start + before;
    if (before > 0) munmap(start, before);
    munmap(block + bytes, kLargePage - before);
#ifdef MADV_HUGEPAGE
    // Without them the block is as good, only slower to fill.
    madvise(block, bytes, MADV_HUGEPAGE);
#endif
    return block;
}

void UnmapPages(void* block, size_t bytes) { munmap(block, bytes); }

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace vastrelline {

// Large blocks straight from the operating system: what the C library's allocator would give back and fetch
// anew, page fault by page fault, with every frame.

// Sizes of blocks are whole multiples of this.
inline constexpr size_t kPageStep = size_t{1} << 16;

// A zeroed block; null if there is no room. One of two MiB and more is made of the system's large pages,
// where it has them to spare.
void* MapPages(size_t bytes);

// Gives a block of MapPages back, whole.
void UnmapPages(void* block, size_t bytes);

}  // namespace vastrelline

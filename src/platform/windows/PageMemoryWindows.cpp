// SPDX-License-Identifier: Apache-2.0
#include <windows.h>

#include "platform/PageMemory.h"

namespace vastrelline {

// Large pages need a right that hosts rarely have.
void* MapPages(size_t bytes) {
    return VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}

void UnmapPages(void* block, size_t /*bytes*/) { VirtualFree(block, 0, MEM_RELEASE); }

}  // namespace vastrelline

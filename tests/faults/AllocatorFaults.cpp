// SPDX-License-Identifier: Apache-2.0

// Stands before the allocator. Not for a program under a sanitizer, which brings an allocator of its own.

#include <cerrno>
#include <cstddef>

#include "faults/FaultInjector.h"

using vastrelline::CountBlock;
using vastrelline::Fails;
using vastrelline::FaultKind;

// The C library's own allocator, under the names that it keeps for programs with a malloc of their own.
extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* block, size_t size);
void* __libc_memalign(size_t alignment, size_t size);
void __libc_free(void* block);

static void* Refuse() {
    errno = ENOMEM;
    return nullptr;
}

static void* Count(void* block) {
    if (block != nullptr) CountBlock(1);
    return block;
}

void* malloc(size_t size) {
    return Fails(FaultKind::Memory, "malloc") ? Refuse() : Count(__libc_malloc(size));
}
void* calloc(size_t count, size_t size) {
    return Fails(FaultKind::Memory, "calloc") ? Refuse() : Count(__libc_calloc(count, size));
}
void* realloc(void* block, size_t size) {
    if (Fails(FaultKind::Memory, "realloc")) return Refuse();
    return block == nullptr ? Count(__libc_malloc(size)) : __libc_realloc(block, size);
}
void* memalign(size_t alignment, size_t size) {
    return Fails(FaultKind::Memory, "memalign") ? Refuse() : Count(__libc_memalign(alignment, size));
}
void* aligned_alloc(size_t alignment, size_t size) { return memalign(alignment, size); }
int posix_memalign(void** block, size_t alignment, size_t size) {
    *block = memalign(alignment, size);
    return *block == nullptr ? ENOMEM : 0;
}
void free(void* block) {
    if (block != nullptr) CountBlock(-1);
    __libc_free(block);
}
}

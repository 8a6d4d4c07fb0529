// SPDX-License-Identifier: Apache-2.0
#include <sys/resource.h>

#include <algorithm>

#include "platform/MemoryLimit.h"

namespace vastrelline {
namespace {

#if defined(__has_feature)
#define VASTRELLINE_HAS_FEATURE(name) __has_feature(name)
#else
#define VASTRELLINE_HAS_FEATURE(name) 0
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__) ||                           \
    VASTRELLINE_HAS_FEATURE(address_sanitizer) || VASTRELLINE_HAS_FEATURE(thread_sanitizer) || \
    VASTRELLINE_HAS_FEATURE(memory_sanitizer)
constexpr bool kIsWatched = true;
#else
constexpr bool kIsWatched = false;
#endif

}  // namespace

bool CanLimitMemory() { return !kIsWatched; }

void LimitMemory(uint64_t bytes) {
    if (!CanLimitMemory()) return;
    // Of the data, not of the addresses: those that are only reserved cost nothing.
    rlimit limit = {};
    if (getrlimit(RLIMIT_DATA, &limit) != 0) return;
    limit.rlim_cur = std::min<rlim_t>(limit.rlim_cur, bytes);
    setrlimit(RLIMIT_DATA, &limit);
}

}  // namespace vastrelline

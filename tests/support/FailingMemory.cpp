// SPDX-License-Identifier: Apache-2.0
#include "support/FailingMemory.h"

#include <atomic>
#include <cstddef>
#include <cstdlib>

namespace vastrelline {

namespace {

// Requests until one fails; it goes on falling below 0. Before and after a sweep it is never 0.
constexpr int64_t kNone = INT64_MIN;
std::atomic<int64_t> requestsLeft{kNone};

// Null where the request has its turn to fail.
void* Request(size_t size) noexcept {
    if (requestsLeft.load() > 0 && requestsLeft.fetch_sub(1) == 1) return nullptr;
    return std::malloc(size == 0 ? 1 : size);  // NOLINT(*-no-malloc,*-owning-memory): this is operator new
}

void* RequestOrThrow(size_t size) {
    void* const block = Request(size);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

void Release(void* block) noexcept { std::free(block); }  // NOLINT(*-no-malloc,*-owning-memory): see above

void* RequestAlignedOrThrow(size_t size, std::align_val_t alignment) {
    if (requestsLeft.load() > 0 && requestsLeft.fetch_sub(1) == 1) throw std::bad_alloc();
    const auto step = static_cast<size_t>(alignment);
    const size_t whole = (size + step - 1) / step * step;
#ifdef _WIN32
    void* const block = _aligned_malloc(whole, step);
#else
    void* const block = std::aligned_alloc(step, whole);  // NOLINT(*-no-malloc,*-owning-memory): see above
#endif
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

void ReleaseAligned(void* block) noexcept {
#ifdef _WIN32
    _aligned_free(block);
#else
    Release(block);
#endif
}

}  // namespace

FailingMemory::FailingMemory(int64_t n) { requestsLeft = n; }
FailingMemory::~FailingMemory() { requestsLeft = kNone; }
bool FailingMemory::HasFailed() const { return requestsLeft.load() <= 0; }

}  // namespace vastrelline

// All forms, so that a sanitizer's own ones never meet a block of these.
void* operator new(size_t size) { return vastrelline::RequestOrThrow(size); }
void* operator new[](size_t size) { return vastrelline::RequestOrThrow(size); }
void* operator new(size_t size, const std::nothrow_t& /*tag*/) noexcept { return vastrelline::Request(size); }
void* operator new[](size_t size, const std::nothrow_t& /*tag*/) noexcept {
    return vastrelline::Request(size);
}
void* operator new(size_t size, std::align_val_t alignment) {
    return vastrelline::RequestAlignedOrThrow(size, alignment);
}
void operator delete(void* block, std::align_val_t /*alignment*/) noexcept {
    vastrelline::ReleaseAligned(block);
}
void operator delete(void* block, size_t /*size*/, std::align_val_t /*alignment*/) noexcept {
    vastrelline::ReleaseAligned(block);
}
void operator delete(void* block) noexcept { vastrelline::Release(block); }
void operator delete[](void* block) noexcept { vastrelline::Release(block); }
void operator delete(void* block, size_t /*size*/) noexcept { vastrelline::Release(block); }
void operator delete[](void* block, size_t /*size*/) noexcept { vastrelline::Release(block); }
void operator delete(void* block, const std::nothrow_t& /*tag*/) noexcept { vastrelline::Release(block); }
void operator delete[](void* block, const std::nothrow_t& /*tag*/) noexcept { vastrelline::Release(block); }

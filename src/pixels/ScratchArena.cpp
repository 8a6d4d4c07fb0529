// SPDX-License-Identifier: Apache-2.0
#include "pixels/ScratchArena.h"

#include <algorithm>
#include <functional>
#include <new>
#include <utility>

#include "pixels/FrameLimits.h"
#include "platform/PageMemory.h"

namespace vastrelline {

namespace {

// The system has no smaller pieces than a step: frames that need less have their blocks on the heap.
constexpr size_t BudgetOf(size_t pixels) {
    return ScratchArena::kKeptBytesPerPixel * pixels / kPageStep * kPageStep;
}

constexpr size_t RoundUp(size_t bytes, size_t step) { return (bytes + step - 1) / step * step; }

// Sanitizers see what reaches beyond a block of the heap, and nothing of what happens inside a piece.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kHasPieces = false;
#else
constexpr bool kHasPieces = true;
#endif

constexpr std::align_val_t kBlockAlignment{ScratchArena::kAlignment};

}  // namespace

ScratchArena& ScratchArena::Shared() {
    // A thread that the process ends in the middle of a call may come back here when all else is gone, so the
    // arena itself stays.
    union Lasting {
        ScratchArena arena;
        Lasting() : arena() {}
        ~Lasting() {}
    };
    struct AtUnload {
        ScratchArena& arena;
        ~AtUnload() { arena.ReleaseUnused(); }
    };
    static Lasting lasting;
    static const AtUnload atUnload{lasting.arena};
    return lasting.arena;
}

ScratchArena::~ScratchArena() { ReleaseUnused(); }

void ScratchArena::ReleaseUnused() noexcept {
    const std::lock_guard lock(mutex_);
    KeepWithin(0);
}

void ScratchArena::BeginCall(size_t pixels) {
    const std::lock_guard lock(mutex_);
    ++openCalls_;
    openPixels_ = std::max(openPixels_, pixels);
}

void ScratchArena::EndCall(size_t pixels) noexcept {
    const std::lock_guard lock(mutex_);
    // A call that ended before it had a use for its memory tells nothing about the next one.
    if (hasTaken_) lastPixels_[nextPlace_++ % kRememberedCalls] = pixels;
    if (--openCalls_ > 0) return;
    openPixels_ = 0;
    hasTaken_ = false;
    KeepWithin(BudgetOf(*std::max_element(lastPixels_.begin(), lastPixels_.end())));
}

void* ScratchArena::Take(size_t bytes) {
    if (kHasPieces && bytes >= kSmallestBlock) {
        const std::lock_guard lock(mutex_);
        void* block = nullptr;
        for (size_t i = 0; block == nullptr && i < regions_.size(); ++i) block = TakeFrom(regions_[i], bytes);
        if (block == nullptr && AddRegion(bytes)) block = TakeFrom(regions_.back(), bytes);
        if (block != nullptr) {
            hasTaken_ = true;
            return block;
        }
    }
    return ::operator new(bytes, kBlockAlignment);
}

void ScratchArena::Give(void* block, size_t bytes) noexcept {
    if (kHasPieces && bytes >= kSmallestBlock) {
        const std::lock_guard lock(mutex_);
        if (Region* const region = FindRegion(block)) {
            const auto start = static_cast<size_t>(static_cast<std::byte*>(block) - region->bytes);
            const auto used = std::find_if(region->used.begin(), region->used.end(),
                                           [=](const Block& other) { return other.start == start; });
            region->used.erase(used);
            return;
        }
    }
    ::operator delete(block, kBlockAlignment);
}

size_t ScratchArena::MappedBytes() const {
    const std::lock_guard lock(mutex_);
    size_t sum = 0;
    for (const Region& region : regions_) sum += region.size;
    return sum;
}

// The lowest gap that takes it: so the blocks of a call stay close together, and its memory is what it uses
// at its fullest.
void* ScratchArena::TakeFrom(Region& region, size_t bytes) {
    const size_t size = RoundUp(bytes, kAlignment);
    size_t start = 0;
    auto next = region.used.begin();
    for (; next != region.used.end() && next->start - start < size; ++next) start = next->end;
    if (region.size - start < size) return nullptr;
    region.used.insert(next, {start, start + size});
    return region.bytes + start;
}

// A new piece with room for a block, and for a whole call if it is the first. None where no call is open that
// would own it, and where the system has none.
bool ScratchArena::AddRegion(size_t bytes) {
    const size_t budget = BudgetOf(openPixels_);
    if (budget == 0) return false;
    const size_t needed = RoundUp(bytes, kPageStep);
    regions_.reserve(regions_.size() + 1);
    std::vector<Block> used;
    // As many as no call has at a time, so that few pieces grow this list.
    constexpr size_t kBlocks = 64;
    used.reserve(kBlocks);
    size_t size = regions_.empty() ? std::max(needed, budget) : needed;
    void* mapped = MapPages(size);
    if (mapped == nullptr && size > needed) {
        size = needed;
        mapped = MapPages(size);
    }
    if (mapped == nullptr) return false;
    regions_.push_back({static_cast<std::byte*>(mapped), size, std::move(used)});
    return true;
}

ScratchArena::Region* ScratchArena::FindRegion(const void* block) {
    const auto* const place = static_cast<const std::byte*>(block);
    const auto found = std::find_if(regions_.begin(), regions_.end(), [=](const Region& region) {
        return std::less_equal<>()(region.bytes, place) && std::less<>()(place, region.bytes + region.size);
    });
    return found == regions_.end() ? nullptr : &*found;
}

void ScratchArena::KeepWithin(size_t limit) noexcept {
    size_t kept = 0;
    for (const Region& region : regions_) kept += region.size;
    // The last ones first: the first one is made for whole calls.
    for (size_t i = regions_.size(); i-- > 0 && kept > limit;) {
        if (!regions_[i].used.empty()) continue;
        kept -= regions_[i].size;
        UnmapPages(regions_[i].bytes, regions_[i].size);
        regions_.erase(regions_.begin() + static_cast<std::ptrdiff_t>(i));
    }
    if (regions_.empty()) std::vector<Region>().swap(regions_);
}

ScratchCall::ScratchCall(int32_t width, int32_t height)
    : pixels_(width <= 0 || height <= 0 || IsBeyondPixelLimit(width, height)
                  ? 0
                  : static_cast<size_t>(width) * static_cast<size_t>(height)) {
    ScratchArena::Shared().BeginCall(pixels_);
}

}  // namespace vastrelline

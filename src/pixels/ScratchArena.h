// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <vector>

namespace vastrelline {

// The memory of a call: blocks of a frame's size, which steps take and give back. It comes from the system in
// large pieces that stay with the process from call to call, since to fetch them anew costs a page fault for
// every 4096 bytes, a quarter of the time of a call.
//
// Kept between calls   at most kKeptBytesPerPixel bytes for each pixel of the largest of the last
//                      kRememberedCalls calls; nothing where that is less than the system's smallest piece
// Threads              any may take and give
class ScratchArena {
public:
    static constexpr size_t kKeptBytesPerPixel = 16;
    static constexpr size_t kRememberedCalls = 4;
    // Smaller blocks come from the heap, which does not give memory of their size back to the system.
    static constexpr size_t kSmallestBlock = size_t{1} << 16;
    // What every block begins at: a line of the cache, and the widest vector.
    static constexpr size_t kAlignment = 64;

    ScratchArena() = default;
    ~ScratchArena();
    ScratchArena(const ScratchArena&) = delete;
    ScratchArena& operator=(const ScratchArena&) = delete;
    ScratchArena(ScratchArena&&) = delete;
    ScratchArena& operator=(ScratchArena&&) = delete;

    // Of the process. Its memory goes when the library is unloaded, but for what is in use then.
    static ScratchArena& Shared();

    // Tells that a call on a frame of so many pixels begins or ends. Calls may overlap and nest.
    void BeginCall(size_t pixels);
    void EndCall(size_t pixels) noexcept;

    // A block of that many bytes, whatever they hold; aligned to kAlignment.
    //
    // Errors   std::bad_alloc
    void* Take(size_t bytes);
    // Gives back a block that Take gave, with the size that was asked for.
    void Give(void* block, size_t bytes) noexcept;

    // Gives back to the system what no step uses at the moment.
    void ReleaseUnused() noexcept;

    // What the process has from the system for this, in bytes, used or not.
    size_t MappedBytes() const;

private:
    struct Block {
        size_t start;
        size_t end;
    };
    // A piece from the system, and what of it is in use, by place.
    struct Region {
        std::byte* bytes;
        size_t size;
        std::vector<Block> used;
    };

    void* TakeFrom(Region& region, size_t bytes);
    bool AddRegion(size_t bytes);
    Region* FindRegion(const void* block);
    void KeepWithin(size_t limit) noexcept;

    mutable std::mutex mutex_;
    std::vector<Region> regions_;
    std::array<size_t, kRememberedCalls> lastPixels_{};  // of the last calls that ended
    size_t nextPlace_ = 0;
    size_t openPixels_ = 0;  // of the largest call that is open
    int32_t openCalls_ = 0;
    bool hasTaken_ = false;  // since the first of them began
};

// A call on a frame: as long as this lives, its scratch comes from the shared arena.
class ScratchCall {
public:
    // A frame without pixels, or with too many for any call, is none of the arena's.
    ScratchCall(int32_t width, int32_t height);
    ~ScratchCall() { ScratchArena::Shared().EndCall(pixels_); }
    ScratchCall(const ScratchCall&) = delete;
    ScratchCall& operator=(const ScratchCall&) = delete;
    ScratchCall(ScratchCall&&) = delete;
    ScratchCall& operator=(ScratchCall&&) = delete;

private:
    size_t pixels_;
};

}  // namespace vastrelline

// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <random>
#include <thread>
#include <vector>

#include "pixels/ScratchArena.h"
#include "platform/PageMemory.h"

namespace vastrelline {
namespace {

// Under the address sanitizer every block is one of the heap.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kHasPieces = false;
#else
constexpr bool kHasPieces = true;
#endif

constexpr size_t kPixels = size_t{1} << 20;
constexpr size_t kFrameBytes = 2 * kPixels;
constexpr size_t kBudget = ScratchArena::kKeptBytesPerPixel * kPixels;

// A call that uses so many bytes of the arena at a time.
void Call(ScratchArena& arena, size_t pixels, size_t bytes) {
    arena.BeginCall(pixels);
    void* const block = arena.Take(bytes);
    arena.Give(block, bytes);
    arena.EndCall(pixels);
}

TEST(ScratchArena, BlocksBeginAtALineOfTheCache) {
    ScratchArena arena;
    arena.BeginCall(kPixels);
    for (const size_t bytes : {size_t{1}, size_t{100}, ScratchArena::kSmallestBlock, kFrameBytes + 2}) {
        void* const first = arena.Take(bytes);
        void* const second = arena.Take(bytes);
        EXPECT_EQ(reinterpret_cast<uintptr_t>(first) % ScratchArena::kAlignment, 0U) << bytes;
        EXPECT_EQ(reinterpret_cast<uintptr_t>(second) % ScratchArena::kAlignment, 0U) << bytes;
        arena.Give(first, bytes);
        arena.Give(second, bytes);
    }
    arena.EndCall(kPixels);
}

TEST(ScratchArena, ACallTakesAllItsFramesFromOnePiece) {
    ScratchArena arena;
    arena.BeginCall(kPixels);
    std::vector<void*> blocks;
    for (int i = 0; i < 8; ++i) blocks.push_back(arena.Take(kFrameBytes));
    EXPECT_EQ(arena.MappedBytes(), kHasPieces ? kBudget : 0);
    for (void* const block : blocks) arena.Give(block, kFrameBytes);
    arena.EndCall(kPixels);
}

TEST(ScratchArena, AGapTakesTheNextBlockThatFits) {
    if (!kHasPieces) GTEST_SKIP() << "each block is one of the heap here";
    ScratchArena arena;
    arena.BeginCall(kPixels);
    void* const first = arena.Take(kFrameBytes);
    void* const second = arena.Take(kFrameBytes);
    void* const third = arena.Take(kFrameBytes);
    arena.Give(second, kFrameBytes);
    void* const tooLarge = arena.Take(kFrameBytes + 1);
    EXPECT_GT(tooLarge, third);
    EXPECT_EQ(arena.Take(kFrameBytes / 2), second);
    EXPECT_EQ(arena.Take(kFrameBytes / 2), static_cast<std::byte*>(second) + kFrameBytes / 2);
    arena.Give(first, kFrameBytes);
    EXPECT_EQ(arena.Take(kFrameBytes), first);
    arena.Give(first, kFrameBytes);
    arena.Give(second, kFrameBytes / 2);
    arena.Give(static_cast<std::byte*>(second) + kFrameBytes / 2, kFrameBytes / 2);
    arena.Give(third, kFrameBytes);
    arena.Give(tooLarge, kFrameBytes + 1);
    arena.EndCall(kPixels);
}

TEST(ScratchArena, KeepsItsPieceForTheNextCall) {
    ScratchArena arena;
    Call(arena, kPixels, kFrameBytes);
    EXPECT_EQ(arena.MappedBytes(), kHasPieces ? kBudget : 0);
    Call(arena, kPixels, kFrameBytes);
    EXPECT_EQ(arena.MappedBytes(), kHasPieces ? kBudget : 0);
}

TEST(ScratchArena, WhatGoesBeyondTheBudgetGoesBackAtTheEndOfTheCall) {
    if (!kHasPieces) GTEST_SKIP() << "each block is one of the heap here";
    ScratchArena arena;
    arena.BeginCall(kPixels);
    void* const usual = arena.Take(kFrameBytes);
    void* const large = arena.Take(kBudget);
    EXPECT_EQ(arena.MappedBytes(), 2 * kBudget);
    arena.Give(usual, kFrameBytes);
    arena.Give(large, kBudget);
    arena.EndCall(kPixels);
    EXPECT_EQ(arena.MappedBytes(), kBudget);
}

TEST(ScratchArena, AHostThatGoesOnToSmallerFramesGetsTheMemoryBack) {
    if (!kHasPieces) GTEST_SKIP() << "each block is one of the heap here";
    ScratchArena arena;
    Call(arena, kPixels, kFrameBytes);
    for (size_t i = 1; i < ScratchArena::kRememberedCalls; ++i) {
        Call(arena, kPixels / 4, kFrameBytes / 4);
        EXPECT_EQ(arena.MappedBytes(), kBudget) << i;
    }
    Call(arena, kPixels / 4, kFrameBytes / 4);
    EXPECT_LE(arena.MappedBytes(), kBudget / 4);
}

TEST(ScratchArena, SmallFramesKeepNothing) {
    ScratchArena arena;
    constexpr size_t kSmall = 32 * 32;
    static_assert(kSmall * ScratchArena::kKeptBytesPerPixel < kPageStep);
    Call(arena, kSmall, kFrameBytes);
    EXPECT_EQ(arena.MappedBytes(), 0U);
}

TEST(ScratchArena, OutsideOfCallsBlocksComeFromTheHeap) {
    ScratchArena arena;
    void* const block = arena.Take(kFrameBytes);
    std::memset(block, 1, kFrameBytes);
    arena.Give(block, kFrameBytes);
    EXPECT_EQ(arena.MappedBytes(), 0U);
}

// A host without a frame may name any size.
TEST(ScratchArena, ACallThatUsesNothingTellsNothingAboutTheNext) {
    if (!kHasPieces) GTEST_SKIP() << "each block is one of the heap here";
    ScratchArena arena;
    constexpr size_t kNamed = size_t{1} << 28;
    arena.BeginCall(kNamed);
    arena.EndCall(kNamed);
    Call(arena, kPixels, kFrameBytes);
    EXPECT_EQ(arena.MappedBytes(), kBudget);
}

TEST(ScratchArena, ABlockThatOutlivesItsCallStaysWhole) {
    ScratchArena arena;
    arena.BeginCall(kPixels);
    auto* const block = static_cast<unsigned char*>(arena.Take(kFrameBytes));
    arena.EndCall(kPixels);
    for (size_t i = 0; i <= ScratchArena::kRememberedCalls; ++i) Call(arena, kPixels / 16, kFrameBytes / 16);
    arena.ReleaseUnused();
    std::fill_n(block, kFrameBytes, static_cast<unsigned char>(7));
    EXPECT_EQ(std::count(block, block + kFrameBytes, 7), static_cast<std::ptrdiff_t>(kFrameBytes));
    arena.Give(block, kFrameBytes);
    arena.ReleaseUnused();
    EXPECT_EQ(arena.MappedBytes(), 0U);
}

TEST(ScratchArena, WhatIsNowhereToBeHadThrows) {
    if (!kHasPieces) GTEST_SKIP() << "the sanitizer ends a program that asks for so much";
    ScratchArena arena;
    arena.BeginCall(kPixels);
    EXPECT_THROW((void)arena.Take(SIZE_MAX / 4), std::bad_alloc);
    arena.EndCall(kPixels);
}

// Every block is marked over its whole length, and its mark is still there when it goes back.
void TakeAndGiveAtRandom(ScratchArena& arena, uint32_t seed) {
    struct Taken {
        unsigned char* bytes;
        size_t size;
        unsigned char mark;
    };
    std::mt19937 random(seed);
    std::vector<Taken> taken;
    const auto giveOne = [&] {
        const size_t which = random() % taken.size();
        const Taken block = taken[which];
        taken.erase(taken.begin() + static_cast<std::ptrdiff_t>(which));
        EXPECT_EQ(std::count(block.bytes, block.bytes + block.size, block.mark),
                  static_cast<std::ptrdiff_t>(block.size));
        arena.Give(block.bytes, block.size);
    };
    for (int step = 0; step < 300; ++step) {
        if (taken.size() > 12 || (!taken.empty() && random() % 3 == 0)) {
            giveOne();
            continue;
        }
        const size_t size = 1 + random() % (size_t{1} << (6 + random() % 14));
        const auto mark = static_cast<unsigned char>(random());
        auto* const bytes = static_cast<unsigned char*>(arena.Take(size));
        std::fill_n(bytes, size, mark);
        taken.push_back({bytes, size, mark});
    }
    while (!taken.empty()) giveOne();
}

TEST(ScratchArena, BlocksNeverOverlap) {
    ScratchArena arena;
    for (uint32_t seed = 0; seed < 8; ++seed) {
        arena.BeginCall(kPixels / 16);
        TakeAndGiveAtRandom(arena, seed);
        arena.EndCall(kPixels / 16);
    }
    EXPECT_LE(arena.MappedBytes(), kBudget / 16);
}

TEST(ScratchArena, ThreadsShareIt) {
    ScratchArena arena;
    std::vector<std::thread> threads;
    for (uint32_t seed = 0; seed < 4; ++seed) {
        threads.emplace_back([&arena, seed] {
            arena.BeginCall(kPixels / 16);
            TakeAndGiveAtRandom(arena, 100 + seed);
            arena.EndCall(kPixels / 16);
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_LE(arena.MappedBytes(), kBudget / 16);
}

}  // namespace
}  // namespace vastrelline

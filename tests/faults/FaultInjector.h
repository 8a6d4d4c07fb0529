// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <limits>

namespace vastrelline {

// What the system refuses.
enum class FaultKind {
    Memory,   // malloc and its kin, and so every operator new; large blocks straight from the system
    Files,    // everything that opens, reads, writes, asks about, renames, makes or removes files and folders
    Threads,  // the start of a thread
};

// Why a call on a file fails, each as the call in question may.
enum class FaultReason {
    Broken,  // the device gives up; a file cannot be opened for want of a free handle
    Refused  // no room, or no permission; a lock is held by another
};

struct FaultPlan {
    FaultKind kind = FaultKind::Memory;
    int64_t first = std::numeric_limits<int64_t>::max();  // the call that fails, counted from 1
    bool isForGood = false;                               // and all behind it
    FaultReason reason = FaultReason::Broken;
};

// While it lives, the calls of a kind are counted in all threads, and those of the plan fail. A program has
// it by being built with FaultInjector.cpp, which takes the place of these functions of the C library. One at
// a time.
class ScopedFaults {
public:
    explicit ScopedFaults(const FaultPlan& plan);
    ~ScopedFaults();
    ScopedFaults(const ScopedFaults&) = delete;
    ScopedFaults& operator=(const ScopedFaults&) = delete;

    int64_t CallCount() const;
    // Blocks that were asked for since, less those that were freed.
    int64_t OpenBlocks() const;
    // The function of the first call that failed; null if none did.
    const char* FailedFunction() const;
    // Whether a file could not be taken away.
    bool HasKeptFile() const;
};

// For the functions that stand before those of the C library: whether the call that is about to be made
// fails, and how the number of open blocks changes.
bool Fails(FaultKind kind, const char* function);
void CountBlock(int64_t difference);

}  // namespace vastrelline

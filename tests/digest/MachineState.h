// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace vastrelline::digest {

// How a host may have left its thread before it calls. None of it may show in a result.
struct HostHabits {
    bool x87Double = false;         // results of the x87 unit are rounded to 53 bits
    bool roundsUp = false;          // inexact results are rounded upwards
    bool flushesDenormals = false;  // tiny results and operands become 0
};

// Whether this processor can be put into that state.
bool CanHave(const HostHabits& habits);

// Puts the thread into the given state as long as the object lives.
class ScopedHabits {
public:
    explicit ScopedHabits(const HostHabits& habits);
    ~ScopedHabits();
    ScopedHabits(const ScopedHabits&) = delete;
    ScopedHabits& operator=(const ScopedHabits&) = delete;

private:
    HostHabits habits_;
};

// Sets the locale of the process, for C and where it can be for C++. Returns false if there is none of that
// name, or if it has no comma as its decimal point.
bool SetCommaLocale(const char* name);

}  // namespace vastrelline::digest

// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "EachFunction.h"

namespace vastrelline {

// A little more than a million arguments of one function: the ranges in which frames, kernels and curves ask
// for it, the places where results are hardest to round, and all doubles (or floats) there are. Made by whole
// numbers, so that they are the same on every machine.
inline constexpr size_t kMadeArguments = size_t{1} << 20;
// Where checks make everything slow, the first of them do.
inline constexpr size_t kFewArguments = size_t{1} << 15;
std::vector<Arguments> MakeArguments(Elementary function, size_t count);

// One number for many results, each of whose bits counts (Fowler, Noll and Vo's sum of bytes).
class ResultSum {
public:
    void Add(double result);
    uint64_t Value() const { return value_; }

private:
    uint64_t value_ = 0xcbf29ce484222325;
};

// The sum of the results of all made arguments, or of the few first, computed from correctly rounded ones of
// another library, not of this one.
uint64_t ExpectedSum(Elementary function, size_t count);

}  // namespace vastrelline

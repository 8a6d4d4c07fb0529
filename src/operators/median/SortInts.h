// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace vastrelline {

// Sorts `count` integers ascending, in place. A count of 1 or less leaves the array as it is.
void SortInts(int32_t* values, int32_t count);

// Sorts the elements from `left` to `right`, both inclusive. Quicksort (Hoare, 1961) with the first element
// as pivot and a hole that moves: quick for mixed values, quadratic for equal or sorted ones, so for
// arrays as small as the window of a median filter. Its depth stays below 32.
void SortIntRange(int32_t* values, int32_t left, int32_t right);

}  // namespace vastrelline
